#pragma once

#include "simulator/Verdict.h"

#include <string>
#include <string_view>

namespace simulator {

// Bytes as one line of ASCII between quotation marks: \n \r \t for these three, \\ and \" for backslash and quotation
// mark, \xHH for every other byte below 20 or above 7E. Nothing is lost: unescape gives the bytes back.
[[nodiscard]] std::string quoted(std::string_view bytes);

// Reads the inside of such a text. Refuses an unknown escape and a \x without two hexadecimal digits; bytes is then
// left as it was.
Verdict unescape(std::string_view text, std::string& bytes);

} // namespace simulator
