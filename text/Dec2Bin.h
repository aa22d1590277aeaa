#pragma once

#include <cstdint>
#include <string>

namespace text {

// A byte as eight binary digits, most significant first, with one blank after the fourth: 0x95 gives "1001 0101".
[[nodiscard]] std::string Dec2Bin(std::uint8_t b);

} // namespace text
