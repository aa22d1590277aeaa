#include "files/TableFileParser.h"
#include "files/TableFileWriter.h"
#include "tests/files/fuzz/Properties.h"
#include "tests/files/fuzz/Require.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

namespace {

using files::TableFile;
using tables::ParamRow;

bool sameRow(const ParamRow& one, const ParamRow& other)
{
    return one.changed == other.changed && one.address == other.address && one.value == other.value &&
           one.notes == other.notes;
}

bool sameRows(const std::vector<ParamRow>& one, const std::vector<ParamRow>& other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), sameRow);
}

void requireSame(const TableFile& one, const TableFile& other, const char* property)
{
    require(one.comment == other.comment && sameRows(one.rows, other.rows), property);
}

bool isHex(std::string_view text)
{
    return text.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

void requireTexts(const TableFile& table)
{
    require(table.rows.size() <= 255, "a table has at most 255 rows");
    for (const ParamRow& row : table.rows) {
        require(row.changed.empty(), "a row that was read has no changed mark");
        require(!hasLineEnd(row.address) && !hasLineEnd(row.value) && !hasLineEnd(row.notes),
                "a row holds no line end");
    }
}

// What the reader makes of a comment that the writer wrote.
std::string commentReadBack(std::string_view comment)
{
    const std::string_view kept = comment.substr(0, comment.find(','));
    std::string readBack;
    if (kept.size() <= 255) {
        for (const char c : kept) {
            readBack += static_cast<char>(static_cast<unsigned char>(c) & 0x7F);
        }
    }
    return readBack;
}

// A row that its own line tells apart from everything else in a keyboard language file.
bool isUnmistakable(const ParamRow& row)
{
    if (row.address.size() == 7) {
        return isHex(row.address.substr(0, 3)) && isHex(row.value.substr(0, 2)) && isHex(row.value.substr(3));
    }
    return row.address.size() == 3 && isHex(row.address) && isHex(row.value) &&
           row.notes.find(',') == std::string::npos;
}

void checkRow_KB(const ParamRow& row)
{
    const bool isEmpty = row.address.empty() && row.value.empty();
    const bool isSingle = row.address.size() == 3 && row.value.size() == 2;
    const bool isPair = row.address.size() == 7 && row.value.size() == 5;
    require(isEmpty || isSingle || isPair, "address and value are both empty, both single or both a pair");
    if (isPair) {
        require(row.address[3] == '-' && row.value[2] == '-', "the halves of a pair are joined by a hyphen");
        require(isHex(row.address.substr(4)), "the second address is hexadecimal");
    }
    require(row.address.empty() || row.address.front() != ';', "a marked line is no row");
}

} // namespace

void checkConfigurationFile(std::string_view bytes)
{
    const TableFile table = files::parseTableFile_CFG(bytes);
    requireTexts(table);
    for (const ParamRow& row : table.rows) {
        require(row.address.size() == 3 && row.value.size() == 2, "a row has an address and a value");
        require(row.address.front() != ';', "a marked line is no row");
    }
    if (bytes.find('\r') == std::string_view::npos) {
        requireSame(files::parseTableFile_CFG(withLineEnds(bytes, "\r\n")), table, "CR LF reads as LF does");
        requireSame(files::parseTableFile_CFG(withLineEnds(bytes, "\r")), table, "CR reads as LF does");
    }

    const TableFile again = files::parseTableFile_CFG(files::writeTableFile_CFG(table.comment, table.rows));
    require(again.comment == commentReadBack(table.comment), "the comment comes back as far as the file can hold it");
    require(again.rows.size() == table.rows.size(), "every row comes back");
    for (std::size_t index = 0; index < table.rows.size(); ++index) {
        // A ";" as the value's second character is taken for the start of the notes.
        if (!table.rows[index].value.ends_with(';')) {
            require(sameRow(again.rows[index], table.rows[index]), "a row comes back as it was");
        }
    }
}

void checkKeyboardLanguageFile(std::string_view bytes)
{
    const TableFile table = files::parseTableFile_KB(bytes);
    requireTexts(table);
    require(table.comment.empty() || table.comment.ends_with("\r\n"), "every line of a comment is ended");
    for (const ParamRow& row : table.rows) {
        checkRow_KB(row);
    }
    if (bytes.find('\r') == std::string_view::npos) {
        requireSame(files::parseTableFile_KB(withLineEnds(bytes, "\r\n")), table, "CR LF reads as LF does");
    }

    std::vector<ParamRow> rows;
    std::copy_if(table.rows.begin(), table.rows.end(), std::back_inserter(rows), isUnmistakable);
    // The comment's first line is the only one that is marked when it is written.
    const std::string line = table.comment.substr(0, table.comment.find_first_of("\r\n"));
    const TableFile again = files::parseTableFile_KB(files::writeTableFile_KB(line, rows));
    require(again.comment == (line.empty() ? line : line + "\r\n"), "a comment of one line comes back");
    require(sameRows(again.rows, rows), "an unmistakable row comes back as it was");

    // The whole table need not come back, but writing it must give a file that reads.
    requireTexts(files::parseTableFile_KB(files::writeTableFile_KB(table.comment, table.rows)));
}

} // namespace fuzz
