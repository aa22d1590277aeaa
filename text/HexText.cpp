#include "text/HexText.h"

#include <cstddef>

namespace text {

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

constexpr bool isSkipped(char c)
{
    return c == ' ' || c == '\t' || c == '\n';
}

// 0 to 15, or -1 when the character is no hex digit.
constexpr int hexDigitValue(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return -1; // unseen: any number below 0 says so
}

constexpr bool isDecimalDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string withoutSkipped(std::string_view text)
{
    std::string kept;
    for (const char c : text) {
        if (!isSkipped(c)) {
            kept += c;
        }
    }
    return kept;
}

} // namespace

std::uint32_t hexNumber(std::string_view text)
{
    std::uint32_t number = 0;
    for (const char c : text) {
        if (isSkipped(c)) {
            continue;
        }
        const int digit = hexDigitValue(c);
        if (digit < 0) {
            break;
        }
        number = number * 16 + static_cast<std::uint32_t>(digit);
    }
    return number;
}

std::uint8_t hexByte(std::string_view text)
{
    return static_cast<std::uint8_t>(hexNumber(text) & 0xFF);
}

double decimalNumber(std::string_view text)
{
    const std::string kept = withoutSkipped(text);
    std::size_t at = 0;
    double sign = 1.0;
    if (at < kept.size() && (kept[at] == '+' || kept[at] == '-')) {
        sign = kept[at] == '-' ? -1.0 : 1.0;
        ++at;
    }
    double number = 0.0;
    for (; at < kept.size() && isDecimalDigit(kept[at]); ++at) {
        number = number * 10.0 + (kept[at] - '0');
    }
    if (at < kept.size() && kept[at] == '.') {
        double unit = 0.1;
        for (++at; at < kept.size() && isDecimalDigit(kept[at]); ++at) {
            number += (kept[at] - '0') * unit;
            unit /= 10.0;
        }
    }
    return sign * number;
}

std::string hexTwoDigits(std::uint8_t value)
{
    return {kHexDigits[value >> 4], kHexDigits[value & 0x0F]};
}

std::string hexThreeDigits(std::uint32_t value)
{
    return {kHexDigits[(value >> 8) & 0x0F], kHexDigits[(value >> 4) & 0x0F], kHexDigits[value & 0x0F]};
}

std::string nextAddress(std::string_view address)
{
    return hexThreeDigits(hexNumber(address) + 1);
}

} // namespace text
