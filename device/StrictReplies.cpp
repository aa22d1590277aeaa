#include "device/StrictReplies.h"

#include "device/Replies.h"
#include "text/HexText.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace device::strict {

namespace {

constexpr std::size_t kParameterLine = 28;
constexpr std::size_t kValueLength = 2;
constexpr std::size_t kAddressLength = 3;
constexpr std::string_view kReadLetters = "WPV";
constexpr std::string_view kWriteLetters = "WPW";
constexpr std::string_view kEcho = "/rawsend";

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

bool isPrintable(char c)
{
    return c >= ' ' && c <= '~';
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool holdsEcho(std::string_view line)
{
    return !std::ranges::search(line, kEcho, {}, lower).empty();
}

// True when the line does not tell what stands behind the letters, or tells this.
bool agrees(std::string_view line, std::string_view letters, std::string_view wanted)
{
    const std::size_t at = line.find(letters);
    return at == std::string_view::npos || line.substr(at + letters.size(), wanted.size()) == wanted;
}

} // namespace

std::optional<std::uint8_t> parameterValue(std::string_view line, std::string_view address)
{
    if (line.size() != kParameterLine || address.size() != kAddressLength || holdsEcho(line) ||
        !std::ranges::all_of(line, isPrintable)) {
        return std::nullopt;
    }
    const replies::Line parsed = replies::parseLine(line);
    if (parsed.kind != replies::Line::Kind::Parameter || parsed.text.size() != kValueLength ||
        !std::ranges::all_of(parsed.text, isHexDigit) || !agrees(line, kReadLetters, address)) {
        return std::nullopt;
    }
    return text::hexByte(parsed.text);
}

bool isEchoOfWrite(std::string_view line, std::string_view address, std::string_view value)
{
    return holdsEcho(line) && agrees(line, kWriteLetters, std::string(address) + "=" + std::string(value));
}

} // namespace device::strict
