#include "platform/FileNameText.h"

#include "text/AnsiText.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace platform {

namespace {

struct Decoded
{
    char32_t character = U'\uFFFD'; // what no text is
    std::size_t length = 1;         // in bytes
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
Decoded firstOf(std::u8string_view text)
{
    const auto lead = static_cast<std::uint8_t>(text.front());
    const std::size_t length = lengthOf(lead);
    if (length == 0 || length > text.size()) {
        return {};
    }
    char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
    for (const char8_t following : text.substr(1, length - 1)) {
        if ((following & 0xC0U) != 0x80U) {
            return {};
        }
        character = (character << 6U) | (following & 0x3FU);
    }
    return {.character = character, .length = length};
}

} // namespace

std::string fileNameText(const std::filesystem::path& name)
{
    const std::u8string utf8 = name.u8string();
    std::string ansi;
    for (std::u8string_view rest = utf8; !rest.empty();) {
        const Decoded first = firstOf(rest);
        ansi += static_cast<char>(text::unicodeToAnsi(first.character));
        rest.remove_prefix(first.length);
    }
    return ansi;
}

} // namespace platform
