#pragma once

#include <QString>

#include <string>
#include <string_view>

// The one converter between the program's byte text (Windows-1252) and Qt's text, used where a text enters or leaves a
// window. Every byte, NUL included, survives the way there and back.
namespace platform {

[[nodiscard]] QString toQString(std::string_view ansi);

// Characters outside the code page become '?', one for each character (a surrogate pair is one character).
[[nodiscard]] std::string toAnsi(const QString& text);

} // namespace platform
