#pragma once

#include <QString>

#include <string>
#include <string_view>

// The program's byte text where a user reads it line by line: in a text box, on paper. Every byte is one visible
// character, so that columns line up and no byte is lost on the way through a text box, which takes control characters
// and no-break spaces for its own. Bytes without a picture of their own get a stand-in:
//
//     00 to 1F, 7F          the control pictures U+2400 to U+241F and U+2421
//     81, 8D, 8F, 90, 9D    private characters, U+E000 and the byte
//     AD                    a hyphen, U+2010
//
// CR LF is a line end; a CR or LF alone is a character like any other.
namespace platform {

// Lines are separated by a line feed.
[[nodiscard]] QString toVisible(std::string_view ansi);

// The bytes of a text as a text box holds it: line feeds and the two Unicode separators are line ends, stand-ins the
// bytes that they stand for. Other characters outside the code page become '?'.
[[nodiscard]] std::string fromVisible(const QString& text);

} // namespace platform
