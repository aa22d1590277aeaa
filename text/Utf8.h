#pragma once

#include <string>
#include <string_view>

// UTF-8, which terminals, JSON and file names speak on most systems, and the program's own text, Windows-1252.
namespace text {

// Appends a character of at most 0xFFFF, which is all that the code page has.
void appendUtf8(std::string& utf8, char32_t character);

[[nodiscard]] std::string toUtf8(std::string_view ansi);

// What the code page does not have becomes '?', and so does each byte that is no UTF-8: a form that is too long, half
// of a pair and what is beyond the last character among them.
[[nodiscard]] std::string fromUtf8(std::string_view utf8);

} // namespace text
