#include "cli/Utf8.h"

#include "text/AnsiText.h"

#include <cstddef>
#include <cstdint>

namespace cli {

namespace {

constexpr unsigned kBlank = 0x20;
constexpr unsigned kDelete = 0x7F;
constexpr unsigned kControlPictures = 0x2400;
constexpr unsigned kDeletePicture = 0x2421;

void append(std::string& text, unsigned character)
{
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        text += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | (character >> 12));
        text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (character & 0x3F));
    }
}

// How many bytes follow the first one of a character; none for one that stands alone or begins nothing.
std::size_t furtherBytes(unsigned char first)
{
    if (first >= 0xF0 && first < 0xF8) {
        return 3;
    }
    if (first >= 0xE0 && first < 0xF0) {
        return 2;
    }
    return first >= 0xC0 && first < 0xE0 ? 1 : 0;
}

constexpr bool isFurther(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// Takes one character off the front; 0xFFFD for what is none.
char32_t takeCharacter(std::string_view& utf8)
{
    const auto first = static_cast<unsigned char>(utf8.front());
    const std::size_t further = furtherBytes(first);
    char32_t character = first;
    std::size_t length = 1;
    if (further > 0) {
        character = first & (0x3FU >> further);
        while (length <= further && length < utf8.size() && isFurther(utf8[length])) {
            character = (character << 6) | (static_cast<unsigned char>(utf8[length]) & 0x3F);
            ++length;
        }
    }
    utf8.remove_prefix(length);
    const bool isNone = first >= 0x80 && (further == 0 || length <= further);
    return isNone ? 0xFFFD : character;
}

} // namespace

std::string toUtf8(std::string_view ansi)
{
    std::string text;
    for (const char c : ansi) {
        append(text, text::ansiToUnicode(static_cast<std::uint8_t>(c)));
    }
    return text;
}

std::string toAnsi(std::string_view utf8)
{
    std::string text;
    while (!utf8.empty()) {
        text += static_cast<char>(text::unicodeToAnsi(takeCharacter(utf8)));
    }
    return text;
}

std::string toHarmlessUtf8(std::string_view ansi)
{
    std::string text;
    for (const char c : ansi) {
        const unsigned character = text::ansiToUnicode(static_cast<std::uint8_t>(c));
        const bool isLineEnd = c == '\r' || c == '\n';
        if (character < kBlank && !isLineEnd) {
            append(text, kControlPictures + character);
        } else if (character >= kDelete && character < 0xA0) {
            append(text, kDeletePicture);
        } else {
            append(text, character);
        }
    }
    return text;
}

} // namespace cli
