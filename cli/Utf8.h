#pragma once

#include "text/Utf8.h"

#include <string>
#include <string_view>

// Terminals and JSON speak UTF-8; the wire, the files and the tables Windows-1252.
namespace cli {

using text::toUtf8;

// For a terminal: UTF-8, and control characters that could do something to it as the pictures of their names. Line ends
// stay.
[[nodiscard]] std::string toHarmlessUtf8(std::string_view ansi);

} // namespace cli
