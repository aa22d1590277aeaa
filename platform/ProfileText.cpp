#include "platform/ProfileText.h"

#include <algorithm>
#include <optional>

namespace platform {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kNewLine = "\r\n";
constexpr unsigned char kFirstPrintable = ' ';

struct Line
{
    std::size_t start;
    std::size_t end;  // of the text
    std::size_t next; // behind the line end, which the last line of a file may lack
};

// What the search for a key has come upon.
struct Place
{
    std::optional<std::size_t> sectionEnd; // behind the last line of the section that is not blank
    std::optional<Line> keyLine;
};

Line lineAt(std::string_view bytes, std::size_t start)
{
    const std::size_t end = std::min(bytes.find_first_of(kLineEnds, start), bytes.size());
    const std::size_t length = bytes.substr(end, kNewLine.size()) == kNewLine ? 2 : 1;
    return {start, end, std::min(end + length, bytes.size())};
}

std::string_view textOf(std::string_view bytes, const Line& line)
{
    return bytes.substr(line.start, line.end - line.start);
}

std::string_view withoutBlanksAround(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view withoutQuotesAround(std::string_view text)
{
    const bool isQuoted =
        text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front();
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

constexpr char lowerCase(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isSameName(std::string_view inFile, std::string_view wanted)
{
    const std::string_view name = withoutBlanksAround(inFile);
    return std::equal(name.begin(), name.end(), wanted.begin(), wanted.end(),
                      [](char a, char b) { return lowerCase(a) == lowerCase(b); });
}

// The name in a section's first line; nothing when the line is another.
std::optional<std::string_view> sectionName(std::string_view line)
{
    const std::string_view text = withoutBlanksAround(line);
    if (text.empty() || text.front() != '[') {
        return {};
    }
    return text.substr(1, text.find(']') - 1);
}

bool isLineOf(std::string_view key, std::string_view line)
{
    const std::size_t equalSign = line.find('=');
    return equalSign != std::string_view::npos && isSameName(line.substr(0, equalSign), key);
}

Place find(std::string_view bytes, std::string_view section, std::string_view key)
{
    Place place;
    for (std::size_t at = 0; at < bytes.size();) {
        const Line line = lineAt(bytes, at);
        at = line.next;
        const std::string_view text = textOf(bytes, line);
        const std::optional<std::string_view> name = sectionName(text);
        if (!place.sectionEnd) {
            if (name && isSameName(*name, section)) {
                place.sectionEnd = line.next;
            }
            continue;
        }
        if (name) {
            break;
        }
        if (isLineOf(key, text)) {
            place.keyLine = line;
            break;
        }
        if (!withoutBlanksAround(text).empty()) {
            place.sectionEnd = line.next;
        }
    }
    return place;
}

std::string_view upToControlCharacter(std::string_view value)
{
    const auto end = std::find_if(value.begin(), value.end(),
                                  [](char c) { return static_cast<unsigned char>(c) < kFirstPrintable; });
    return value.substr(0, static_cast<std::size_t>(end - value.begin()));
}

void endLastLine(std::string& bytes)
{
    if (!bytes.empty() && kLineEnds.find(bytes.back()) == std::string_view::npos) {
        bytes += kNewLine;
    }
}

} // namespace

std::string profileString(std::string_view bytes, std::string_view section, std::string_view key,
                          std::size_t bufferSize)
{
    const Place place = find(bytes, section, key);
    if (!place.keyLine || bufferSize == 0) {
        return {};
    }
    const std::string_view line = textOf(bytes, *place.keyLine);
    const std::string_view value = withoutQuotesAround(withoutBlanksAround(line.substr(line.find('=') + 1)));
    return std::string(value.substr(0, bufferSize - 1));
}

std::string withProfileString(std::string_view bytes, std::string_view section, std::string_view key,
                              std::string_view value)
{
    const Place place = find(bytes, section, key);
    const std::string_view written = upToControlCharacter(value);
    if (place.keyLine) {
        const Line line = *place.keyLine;
        std::string result(bytes.substr(0, bytes.find('=', line.start) + 1));
        result += written;
        result += line.end == line.next ? kNewLine : bytes.substr(line.end, line.next - line.end);
        result += bytes.substr(line.next);
        return result;
    }
    const std::size_t at = place.sectionEnd.value_or(bytes.size());
    std::string result(bytes.substr(0, at));
    endLastLine(result);
    if (!place.sectionEnd) {
        result.append("[").append(section).append("]").append(kNewLine);
    }
    result.append(key).append("=").append(written).append(kNewLine);
    result += bytes.substr(at);
    return result;
}

} // namespace platform
