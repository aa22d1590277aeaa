#include "files/TableFileWriter.h"

namespace files {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr unsigned char kFirstPrintable = 0x20;
constexpr unsigned char kControlShift = 0x80;
constexpr std::size_t kAddressLength = 3;
constexpr std::size_t kValueLength = 2;

void appendComment_CFG(std::string& bytes, std::string_view comment)
{
    bytes += "Comments,";
    for (const char c : comment) {
        const auto code = static_cast<unsigned char>(c);
        bytes += code < kFirstPrintable ? static_cast<char>(code + kControlShift) : c;
    }
    bytes += kLineEnd;
}

void appendComment_KB(std::string& bytes, std::string_view comment)
{
    if (comment.empty()) {
        return;
    }
    bytes += ';';
    // Kept behaviour kb-comment-of-lines: only the first line is marked as a comment.
    for (const char c : comment) {
        if (c == '\n') {
            bytes.append(kLineEnd).append(kLineEnd);
        } else if (c != '\r') {
            bytes += c;
        }
    }
    bytes.append("\n").append(kLineEnd);
}

void appendRow_KB(std::string& bytes, const tables::ParamRow& row)
{
    const std::string_view address = row.address;
    const std::string_view value = row.value;
    if (value.size() > kValueLength) {
        bytes.append(address.substr(0, kAddressLength)).append(",");
        bytes.append(value.substr(0, kValueLength)).append(",");
        bytes.append(value.substr(value.size() - kValueLength));
    } else {
        bytes.append(address).append(",").append(value);
    }
    if (row.notes.empty()) {
        bytes += kLineEnd;
    } else {
        bytes.append(" ;").append(row.notes);
    }
    bytes += kLineEnd;
}

} // namespace

std::string writeTableFile_CFG(std::string_view comment, std::span<const tables::ParamRow> rows)
{
    std::string bytes;
    appendComment_CFG(bytes, comment);
    for (const tables::ParamRow& row : rows) {
        bytes.append(row.address).append(",").append(row.value).append(" ;").append(row.notes).append(kLineEnd);
    }
    return bytes;
}

std::string writeTableFile_KB(std::string_view comment, std::span<const tables::ParamRow> rows)
{
    std::string bytes;
    appendComment_KB(bytes, comment);
    for (const tables::ParamRow& row : rows) {
        appendRow_KB(bytes, row);
    }
    return bytes;
}

} // namespace files
