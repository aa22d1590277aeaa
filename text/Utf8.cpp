#include "text/Utf8.h"

#include "text/AnsiText.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace text {

namespace {

constexpr char32_t kNoText = U'\uFFFD';
constexpr char32_t kFirstSurrogate = 0xD800;
constexpr char32_t kLastSurrogate = 0xDFFF;
constexpr char32_t kLastCharacter = 0x10FFFF;

struct Decoded
{
    char32_t character = kNoText;
    std::size_t length = 1; // in bytes
};

// How many bytes a character has that begins with this one; 0 when none does.
std::size_t lengthOf(std::uint8_t lead)
{
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// The character that a text of UTF-8 begins with.
Decoded firstOf(std::string_view text)
{
    constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000}; // by length: others are too long a form
    const auto lead = static_cast<std::uint8_t>(text.front());
    const std::size_t length = lengthOf(lead);
    if (length == 0 || length > text.size()) {
        return {};
    }
    char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
    for (const char following : text.substr(1, length - 1)) {
        if ((static_cast<std::uint8_t>(following) & 0xC0U) != 0x80U) {
            return {};
        }
        character = (character << 6U) | (static_cast<std::uint8_t>(following) & 0x3FU);
    }
    const bool isSurrogate = character >= kFirstSurrogate && character <= kLastSurrogate;
    if (character < kSmallest[length] || character > kLastCharacter || isSurrogate) {
        return {};
    }
    return {.character = character, .length = length};
}

} // namespace

void appendUtf8(std::string& utf8, char32_t character)
{
    const auto further = [&utf8](char32_t bits) { utf8 += static_cast<char>(0x80U | (bits & 0x3FU)); };
    if (character < 0x80) {
        utf8 += static_cast<char>(character);
    } else if (character < 0x800) {
        utf8 += static_cast<char>(0xC0U | (character >> 6U));
        further(character);
    } else {
        utf8 += static_cast<char>(0xE0U | (character >> 12U));
        further(character >> 6U);
        further(character);
    }
}

std::string toUtf8(std::string_view ansi)
{
    std::string utf8;
    for (const char c : ansi) {
        appendUtf8(utf8, ansiToUnicode(static_cast<std::uint8_t>(c)));
    }
    return utf8;
}

std::string fromUtf8(std::string_view utf8)
{
    std::string ansi;
    while (!utf8.empty()) {
        const Decoded first = firstOf(utf8);
        ansi += static_cast<char>(unicodeToAnsi(first.character));
        utf8.remove_prefix(first.length);
    }
    return ansi;
}

} // namespace text
