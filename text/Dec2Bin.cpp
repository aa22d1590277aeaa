#include "text/Dec2Bin.h"

namespace text {

std::string Dec2Bin(std::uint8_t b)
{
    std::string digits;
    for (unsigned mask = 0x80; mask != 0; mask >>= 1) {
        digits += (b & mask) != 0 ? '1' : '0';
        if (mask == 0x10) {
            digits += ' ';
        }
    }
    return digits;
}

} // namespace text
