#include "cli/TableFiles.h"

#include "cli/Failure.h"
#include "files/TableFileParser.h"
#include "files/TableFileWriter.h"
#include "platform/DosNameSteps.h"
#include "platform/ReplaceFile.h"
#include "tables/Parameters.h"
#include "text/HexText.h"
#include "text/PairValue.h"
#include "text/TextLines.h"

#include <map>
#include <optional>
#include <set>
#include <span>

namespace cli {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kCommentKey = "Comments,";
constexpr std::size_t kAddressLength = 3;
constexpr std::size_t kMostDoubtsTold = 20;

std::span<const tables::Parameter> defaultRows(Table table)
{
    return table == Table::Configuration ? tables::parameters_CFG() : tables::parameters_KB();
}

bool isHex(std::string_view text, std::size_t length, bool anyCase)
{
    return text.size() == length &&
           text.find_first_not_of(anyCase ? "0123456789ABCDEFabcdef" : "0123456789ABCDEF") == std::string_view::npos;
}

// The parts of a row's line that is exactly as the program writes it.
struct Form
{
    std::string_view address;
    std::string_view value;
    std::string_view second; // empty when the row is none of a pair
};

std::optional<Form> formOf(std::string_view line)
{
    Form form{.address = line.substr(0, kAddressLength), .value = {}, .second = {}};
    line.remove_prefix(form.address.size());
    const auto takeValue = [&line](std::string_view& value) {
        if (!line.starts_with(',')) {
            return false;
        }
        value = line.substr(1, 2);
        line.remove_prefix(1 + value.size());
        return isHex(value, 2, false);
    };
    if (!isHex(form.address, kAddressLength, false) || !takeValue(form.value)) {
        return std::nullopt;
    }
    if (line.starts_with(',') && !takeValue(form.second)) {
        return std::nullopt;
    }
    const bool isEnd = line.empty() || line.starts_with(" ;");
    return isEnd ? std::optional(form) : std::nullopt;
}

const tables::Parameter* rowOf(Table table, std::string_view address)
{
    for (const tables::Parameter& row : defaultRows(table)) {
        if (row.address == address || row.address.substr(0, kAddressLength) == address) {
            return &row;
        }
    }
    return nullptr;
}

std::string quoted(std::string_view text)
{
    constexpr std::size_t kMost = 40;
    std::string shown = "\"";
    for (const char c : text.substr(0, kMost)) {
        shown += c >= ' ' && c <= '~' ? c : '.';
    }
    return shown + (text.size() > kMost ? "...\"" : "\"");
}

// Walks through a file's lines.
class TableReading final
{
public:
    explicit TableReading(Table table) { m_content.table = table; }

    [[nodiscard]] TableContent read(std::string_view bytes)
    {
        const bool isConfiguration = m_content.table == Table::Configuration;
        m_content.rows = isConfiguration ? files::parseTableFile_CFG(bytes) : files::parseTableFile_KB(bytes);
        text::TextLines lines(bytes);
        while (const auto line = lines.next()) {
            ++m_line;
            if (m_line == 1 && isConfiguration) {
                takeCommentLine(*line);
            } else {
                takeLine(*line);
            }
        }
        if (!bytes.empty() && bytes.back() != '\r' && bytes.back() != '\n') {
            doubt("the last line has no end, so the file may have been cut short", false);
        }
        if (m_content.values.empty()) {
            m_content.doubts.push_back({.line = 0, .reason = "no parameter of the reader is in it", .isLeftOut = true});
        }
        return std::move(m_content);
    }

private:
    void doubt(std::string reason, bool isLeftOut)
    {
        m_content.doubts.push_back({.line = m_line, .reason = std::move(reason), .isLeftOut = isLeftOut});
    }

    void takeCommentLine(std::string_view line)
    {
        if (!line.starts_with(kCommentKey)) {
            doubt("the first line does not begin with \"Comments,\"; the window takes it for a comment all the same",
                  true);
        }
    }

    void takeLine(std::string_view line)
    {
        if (line.empty() || line.starts_with(';')) {
            return;
        }
        files::TableFile read;
        if (m_content.table == Table::Configuration) {
            files::ParseLine_CFG(line, read);
        } else {
            files::ParseLine_KB(line, read);
        }
        const bool isUsed = !read.rows.empty() && takeRow(read.rows.front());
        if (auto reason = objection(line, read)) {
            doubt(std::move(*reason), !isUsed);
        } else if (!isUsed) {
            doubt("a parameter of this line is given in line " + std::to_string(m_lineOf[m_known]) + " already", true);
        }
    }

    // Why the line is none that the program writes.
    [[nodiscard]] std::optional<std::string> objection(std::string_view line, const files::TableFile& read) const
    {
        const std::optional<Form> form = formOf(line);
        if (!form) {
            return quoted(line) + " is no row of a " + std::string(nameOf(m_content.table)) + " table";
        }
        const tables::Parameter* const row = rowOf(m_content.table, form->address);
        if (row == nullptr) {
            return "the " + std::string(nameOf(m_content.table)) + " table has no row " + std::string(form->address);
        }
        if ((row->address.size() > kAddressLength) != !form->second.empty()) {
            return "row " + std::string(row->address) + " has " + (form->second.empty() ? "two values" : "one value");
        }
        if (read.rows.empty()) {
            return "the window leaves this line out, because of the comma or the missing text behind its \";\"";
        }
        return std::nullopt;
    }

    // Takes over the parameters of a row, if all of them are of the reader and new.
    [[nodiscard]] bool takeRow(const tables::ParamRow& row)
    {
        const tables::Parameter* const known = rowOf(m_content.table, row.address);
        if (known == nullptr || known->address != row.address) {
            return false;
        }
        const bool isPair = row.address.size() > kAddressLength;
        const std::string_view first = std::string_view(row.value).substr(0, 2);
        const std::string_view second = text::rightOf(row.value, 2);
        if (!isHex(first, 2, true) || !isHex(second, 2, true) || row.value.size() != (isPair ? 5U : 2U)) {
            return false;
        }
        m_known = row.address.substr(0, kAddressLength);
        if (!m_content.values.emplace(m_known, text::hexByte(first)).second) {
            return false;
        }
        m_lineOf[m_known] = m_line;
        if (isPair) {
            m_content.values.emplace(text::rightOf(row.address, kAddressLength), text::hexByte(second));
        }
        return true;
    }

    TableContent m_content;
    int m_line = 0;
    std::string m_known; // the address of the row that was looked at last
    std::map<std::string, int> m_lineOf;
};

Table tableOfFile(const fs::path& file, std::string_view bytes, const FileReading& reading)
{
    if (platform::withLowerCase(file.extension().string()) == extensionOf(Table::Configuration)) {
        return Table::Configuration;
    }
    if (reading.isTableGiven) {
        return reading.table;
    }
    return bytes.starts_with(kCommentKey) ? Table::Configuration : Table::KeyboardLanguage;
}

} // namespace

TableContent readTable(Table table, std::string_view bytes)
{
    return TableReading(table).read(bytes);
}

NamedTable readTableFile(const fs::path& file, const FileReading& reading)
{
    const platform::Result<std::string> bytes = platform::readFile(file);
    if (!bytes) {
        throw Failure(Exit::File, file.string() + " cannot be read: " + bytes.error().description);
    }
    NamedTable table{.file = file, .content = readTable(tableOfFile(file, bytes.value(), reading), bytes.value())};
    const std::vector<Doubt>& doubts = table.content.doubts;
    if (doubts.empty() || (reading.isLenient && !table.content.values.empty())) {
        return table;
    }
    std::string sentence;
    for (std::size_t i = 0; i < doubts.size() && i < kMostDoubtsTold; ++i) {
        sentence += (i == 0 ? "" : "\n") + doubtText(file, doubts[i]);
    }
    if (doubts.size() > kMostDoubtsTold) {
        sentence += "\nand " + std::to_string(doubts.size() - kMostDoubtsTold) + " more";
    }
    throw Failure(Exit::File, sentence,
                  table.content.values.empty() ? "" : "--lenient takes what the window would take of it.");
}

std::string doubtText(const fs::path& file, const Doubt& doubt)
{
    return file.string() + (doubt.line > 0 ? ", line " + std::to_string(doubt.line) : std::string()) + ": " +
           doubt.reason;
}

files::TableFile tableOf(Table table, const Values& values)
{
    files::TableFile rows;
    for (const tables::Parameter& row : defaultRows(table)) {
        std::string value = text::hexTwoDigits(values.at(std::string(row.address.substr(0, kAddressLength))));
        if (row.address.size() > kAddressLength) {
            value += "-" + text::hexTwoDigits(values.at(std::string(text::rightOf(row.address, kAddressLength))));
        }
        rows.rows.push_back({.changed = {},
                             .address = std::string(row.address),
                             .value = std::move(value),
                             .notes = std::string(row.notes)});
    }
    return rows;
}

std::string fileBytes(Table table, const files::TableFile& rows)
{
    return table == Table::Configuration ? files::writeTableFile_CFG(rows.comment, rows.rows)
                                         : files::writeTableFile_KB(rows.comment, rows.rows);
}

void writeTableFile(const fs::path& file, Table table, const Values& values)
{
    if (const auto written = platform::replaceFile(file, fileBytes(table, tableOf(table, values))); !written) {
        throw Failure(Exit::File, file.string() + " cannot be written: " + written.error().description);
    }
}

std::string_view extensionOf(Table table)
{
    return table == Table::Configuration ? ".tlc" : ".txt";
}

} // namespace cli
