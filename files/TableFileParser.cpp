#include "files/TableFileParser.h"

#include "text/HexText.h"
#include "text/TextLines.h"

#include <cstddef>
#include <string>
#include <utility>

namespace files {

namespace {

constexpr std::size_t kLongestComment = 255;
constexpr unsigned char kControlShift = 0x80;

// Positions in a row's line, counted from 0.
constexpr std::size_t kAddressLength = 3;
constexpr std::size_t kValueAt = 4;
constexpr std::size_t kSecondValueAt = 7;
constexpr std::size_t kValueLength = 2;
constexpr std::size_t kNotesMarkAt_CFG = 5;
constexpr std::size_t kShortestRow = 6;
constexpr std::size_t kShortestPair = 9;

// Kept behaviour kb-comment-changes: a comma ends it, a long one is dropped, the upper half comes back as the lower.
std::string decodedComment(std::string_view firstLine)
{
    const std::size_t comma = firstLine.find(',');
    if (comma == std::string_view::npos) {
        return {};
    }
    std::string_view field = firstLine.substr(comma + 1);
    field = field.substr(0, field.find(','));
    if (field.size() > kLongestComment) {
        return {};
    }
    std::string comment;
    for (const char c : field) {
        const auto code = static_cast<unsigned char>(c);
        comment += static_cast<char>(code % kControlShift);
    }
    return comment;
}

// Takes the line as a further line of the comment if it is marked as one.
bool takeComment(std::string_view prm, TableFile& table)
{
    if (!prm.starts_with(';')) {
        return false;
    }
    table.comment.append(prm.substr(1)).append("\r\n");
    return true;
}

std::string_view addressIn(std::string_view prm)
{
    return prm.substr(0, kAddressLength);
}

std::string_view valueIn(std::string_view prm)
{
    return prm.substr(kValueAt, kValueLength);
}

} // namespace

// Kept behaviour kb-other-lines: the first line is the comment in any case, and lines that do not fit go unsaid.
TableFile parseTableFile_CFG(std::string_view bytes)
{
    TableFile table;
    text::TextLines lines(bytes);
    if (const auto first = lines.next()) {
        table.comment = decodedComment(*first);
    }
    while (const auto line = lines.next()) {
        ParseLine_CFG(*line, table);
    }
    return table;
}

TableFile parseTableFile_KB(std::string_view bytes)
{
    TableFile table;
    text::TextLines lines(bytes);
    while (const auto line = lines.next()) {
        ParseLine_KB(*line, table);
    }
    return table;
}

void ParseLine_CFG(std::string_view prm, TableFile& table)
{
    if (takeComment(prm, table)) {
        return;
    }
    const bool isRow = prm.size() >= kShortestRow && prm.find(',') != std::string_view::npos;
    if (!isRow || table.rows.size() == kMostRows) {
        return;
    }
    tables::ParamRow row;
    row.address = addressIn(prm);
    row.value = valueIn(prm);
    const std::size_t mark = prm.find(';', kNotesMarkAt_CFG);
    if (mark != std::string_view::npos) {
        row.notes = prm.substr(mark + 1);
    }
    table.rows.push_back(std::move(row));
}

void ParseLine_KB(std::string_view prm, TableFile& table)
{
    if (prm.empty() || takeComment(prm, table) || table.rows.size() == kMostRows) {
        return;
    }
    const std::size_t mark = prm.find(';');
    const std::size_t comma = prm.find(',');
    const bool hasComma = comma != std::string_view::npos;
    const std::size_t secondComma = hasComma ? prm.find(',', comma + 1) : std::string_view::npos;
    const bool hasSecondComma = secondComma != std::string_view::npos;

    tables::ParamRow row;
    if (prm.size() >= kShortestRow && hasComma) {
        row.address = addressIn(prm);
        row.value = valueIn(prm);
        if (prm.size() >= kShortestPair && hasSecondComma) {
            row.address.append("-").append(text::nextAddress(addressIn(prm)));
            row.value.append("-").append(prm.substr(kSecondValueAt, kValueLength));
        }
    }
    if (mark == std::string_view::npos) {
        table.rows.push_back(std::move(row));
        return;
    }
    row.notes = prm.substr(mark + 1);
    // A comma that is missing stands nowhere, so not behind the mark either.
    const bool commasBeforeMark = (!hasComma || comma < mark) && (!hasSecondComma || secondComma < mark);
    if (!row.notes.empty() && commasBeforeMark) {
        table.rows.push_back(std::move(row));
    }
}

} // namespace files
