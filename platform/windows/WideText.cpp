#include "platform/windows/WideText.h"

#include "text/AnsiText.h"

#include <cstdint>

namespace platform {

std::wstring toWide(std::string_view ansi)
{
    std::wstring wide;
    wide.reserve(ansi.size());
    for (const char c : ansi) {
        wide += static_cast<wchar_t>(text::ansiToUnicode(static_cast<std::uint8_t>(c)));
    }
    return wide;
}

std::string fromWide(std::wstring_view wide)
{
    std::string ansi;
    ansi.reserve(wide.size());
    for (const wchar_t c : wide) {
        ansi += static_cast<char>(text::unicodeToAnsi(static_cast<char32_t>(c)));
    }
    return ansi;
}

} // namespace platform
