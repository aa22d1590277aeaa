#include "platform/FileNameText.h"

#include "text/AnsiText.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace platform {

namespace {

constexpr char32_t kNoText = U'\uFFFD';
constexpr char32_t kFirstSurrogate = 0xD800;
constexpr char32_t kFirstLowSurrogate = 0xDC00;
constexpr char32_t kLastSurrogate = 0xDFFF;
constexpr char32_t kLastCharacter = 0x10FFFF;

struct Decoded
{
    char32_t character = kNoText;
    std::size_t length = 1; // in units of the text
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
[[maybe_unused]] Decoded firstOf(std::string_view text)
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

// The character that a text of UTF-16 begins with. Half of a pair may stand alone in a name.
[[maybe_unused]] Decoded firstOf(std::wstring_view text)
{
    const auto unit = static_cast<char32_t>(text.front());
    if (unit < kFirstSurrogate || unit > kLastSurrogate) {
        return {.character = unit};
    }
    const char32_t next = text.size() > 1 ? static_cast<char32_t>(text[1]) : 0;
    if (unit >= kFirstLowSurrogate || next < kFirstLowSurrogate || next > kLastSurrogate) {
        return {};
    }
    return {.character = 0x10000U + ((unit - kFirstSurrogate) << 10U) + (next - kFirstLowSurrogate), .length = 2};
}

} // namespace

// The system's own text: its conversions throw for a name that is none.
std::string fileNameText(const std::filesystem::path& name)
{
    std::string ansi;
    for (std::basic_string_view<std::filesystem::path::value_type> rest = name.native(); !rest.empty();) {
        const Decoded first = firstOf(rest);
        ansi += static_cast<char>(text::unicodeToAnsi(first.character));
        rest.remove_prefix(first.length);
    }
    return ansi;
}

} // namespace platform
