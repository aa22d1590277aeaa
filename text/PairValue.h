#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Texts of two halves joined by "-": the addresses and values of the Keyboard Language rows.
namespace text {

// The first or last characters of a text, all of it when it is shorter.
[[nodiscard]] std::string_view leftOf(std::string_view text, std::size_t count);
[[nodiscard]] std::string_view rightOf(std::string_view text, std::size_t count);

// The two bytes of a value such as "20-03": shift flags and scan code, or the two keyboard identification bytes.
struct PairValue
{
    std::uint8_t first = 0;
    std::uint8_t second = 0;
};

// Reads the first two and the last two characters; what is not hexadecimal reads as 0.
[[nodiscard]] PairValue pairValue(std::string_view text);

// "20-03": always two digits a half.
[[nodiscard]] std::string pairText(const PairValue& pair);

} // namespace text
