#pragma once

#include <string>
#include <string_view>

// Between the program's byte text (Windows-1252) and the system's wide text. The system's own conversions go by the
// code page of the machine, which need not be the program's.
namespace platform {

[[nodiscard]] std::wstring toWide(std::string_view ansi);
// Characters outside the code page become '?'.
[[nodiscard]] std::string fromWide(std::wstring_view wide);

} // namespace platform
