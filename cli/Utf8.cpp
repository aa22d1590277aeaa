#include "cli/Utf8.h"

#include "text/AnsiText.h"
#include "text/Utf8.h"

#include <cstdint>

namespace cli {

namespace {

constexpr unsigned kBlank = 0x20;
constexpr unsigned kDelete = 0x7F;
constexpr unsigned kControlPictures = 0x2400;
constexpr unsigned kDeletePicture = 0x2421;

} // namespace

std::string toHarmlessUtf8(std::string_view ansi)
{
    std::string shown;
    for (const char c : ansi) {
        const unsigned character = text::ansiToUnicode(static_cast<std::uint8_t>(c));
        const bool isLineEnd = c == '\r' || c == '\n';
        if (character < kBlank && !isLineEnd) {
            text::appendUtf8(shown, kControlPictures + character);
        } else if (character >= kDelete && character < 0xA0) {
            text::appendUtf8(shown, kDeletePicture);
        } else {
            text::appendUtf8(shown, character);
        }
    }
    return shown;
}

} // namespace cli
