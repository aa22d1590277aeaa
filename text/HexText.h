#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The text forms of numbers that the tables, the wire and the files share: an address is three upper-case hexadecimal
// digits, a value two. Reading is forgiving because the text may come from a file or a text box.
namespace text {

// Reads hexadecimal text of any length. Blanks, tabs and line feeds are skipped anywhere; reading stops at the first
// other character that is no hex digit (either case). Text without digits reads as 0. Never fails; of a text too long
// for 32 bits the low 32 bits are kept.
[[nodiscard]] std::uint32_t hexNumber(std::string_view text);

// The low 8 bits of hexNumber(text): "1FF" gives 0xFF.
[[nodiscard]] std::uint8_t hexByte(std::string_view text);

// Reads the leading decimal number of a text (blanks skipped, sign, digits, fraction) as the program's text boxes
// understand it. Stops at the first other character; no number reads as 0. Not limited to any integer's range.
[[nodiscard]] double decimalNumber(std::string_view text);

// A byte as two upper-case hexadecimal digits: 5 gives "05".
[[nodiscard]] std::string hexTwoDigits(std::uint8_t value);

// The low 12 bits of a number as three upper-case hexadecimal digits: 0x1A gives "01A".
[[nodiscard]] std::string hexThreeDigits(std::uint32_t value);

// The address after the given one: "0FF" gives "100", "FFF" gives "000".
[[nodiscard]] std::string nextAddress(std::string_view address);

} // namespace text
