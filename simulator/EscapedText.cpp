#include "simulator/EscapedText.h"

#include "text/HexText.h"

#include <cstddef>
#include <cstdint>

namespace simulator {

namespace {

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

std::string escapedByte(char c)
{
    switch (c) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    case '\\':
        return "\\\\";
    case '"':
        return "\\\"";
    default:
        break;
    }
    const auto code = static_cast<std::uint8_t>(c);
    return code >= 0x20 && code < 0x7F ? std::string(1, c) : "\\x" + text::hexTwoDigits(code);
}

// The byte of a one-letter escape, or '\0' when there is none of that letter.
char byteOfLetter(char letter)
{
    switch (letter) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case '\\':
    case '"':
        return letter;
    default:
        return '\0';
    }
}

} // namespace

std::string quoted(std::string_view bytes)
{
    std::string text = "\"";
    for (const char c : bytes) {
        text += escapedByte(c);
    }
    return text + '"';
}

Verdict unescape(std::string_view text, std::string& bytes)
{
    std::string read;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            read += text[at];
            continue;
        }
        const char letter = ++at < text.size() ? text[at] : '\0';
        if (letter == 'x') {
            const std::string_view digits = text.substr(at + 1, 2);
            if (digits.size() != 2 || !isHexDigit(digits[0]) || !isHexDigit(digits[1])) {
                return {"\\x wants two hexadecimal digits"};
            }
            read += static_cast<char>(text::hexByte(digits));
            at += 2;
        } else if (const char byte = byteOfLetter(letter); byte != '\0') {
            read += byte;
        } else {
            return {R"(unknown escape; known are \n \r \t \\ \" and \xHH)"};
        }
    }
    bytes = std::move(read);
    return {};
}

} // namespace simulator
