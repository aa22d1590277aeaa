#pragma once

#include <cstdint>

// The program's text is one byte a character in the Windows-1252 code page: the wire, the files and the grids all speak
// it, on every system. These two functions are the whole code page; platform/qt/AnsiText.h converts whole texts at the
// window's edge.
namespace text {

// The Unicode character of a Windows-1252 byte. The five bytes that the code page leaves open (81, 8D, 8F, 90, 9D) map
// to the control characters of the same number, so that every byte survives a round trip.
[[nodiscard]] char16_t ansiToUnicode(std::uint8_t byte);

// The Windows-1252 byte of a Unicode character; '?' when the code page has none.
[[nodiscard]] std::uint8_t unicodeToAnsi(char32_t character);

} // namespace text
