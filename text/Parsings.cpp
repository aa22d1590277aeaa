#include "text/Parsings.h"

#include <array>
#include <string_view>

namespace text {

namespace {

// Index = character code; 0 has no name because the NUL is never replaced.
constexpr std::array<std::string_view, 32> kControlNames = {
    "",    "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS",  "HT", "LF",  "VT",  "FF", "CR", "SO", "SI",
    "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB", "CAN", "EM", "SUB", "ESC", "FS", "GS", "RS", "US"};

} // namespace

void NameControlChars(std::string& s)
{
    std::string named;
    named.reserve(s.size());
    for (const char c : s) {
        const auto code = static_cast<unsigned char>(c);
        if (code >= 1 && code < kControlNames.size()) {
            named.append("<").append(kControlNames[code]).append(">");
        } else {
            named += c;
        }
    }
    s = std::move(named);
}

} // namespace text
