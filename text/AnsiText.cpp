#include "text/AnsiText.h"

#include <array>
#include <cstddef>

namespace text {

namespace {

constexpr std::uint8_t kFirstDifferent = 0x80;

// Bytes 80 to 9F; all others are the same in Windows-1252 and in Unicode.
constexpr std::array<char16_t, 32> kFrom80To9F = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                  0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

} // namespace

char16_t ansiToUnicode(std::uint8_t byte)
{
    const std::size_t index = static_cast<std::size_t>(byte) - kFirstDifferent;
    if (byte >= kFirstDifferent && index < kFrom80To9F.size()) {
        return kFrom80To9F[index];
    }
    return byte;
}

std::uint8_t unicodeToAnsi(char32_t character)
{
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
        return static_cast<std::uint8_t>(character);
    }
    for (std::size_t index = 0; index < kFrom80To9F.size(); ++index) {
        if (kFrom80To9F[index] == character) {
            return static_cast<std::uint8_t>(kFirstDifferent + index);
        }
    }
    return '?';
}

} // namespace text
