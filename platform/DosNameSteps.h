#pragma once

#include <string>
#include <string_view>
#include <vector>

// The forms of DOS names, the same on every system.
namespace platform {

inline constexpr std::string_view kDevicePrefix = R"(\\.\)";

// True for "COM" and a number, in letters of either case.
[[nodiscard]] bool isPortName(std::string_view dosName);

// The names to walk from the folder of devices and drives on: "teslin" for \\.\teslin, "C:", "Windows" for C:\Windows.
// None when the DOS name has none of the forms of DosNames, or holds a slash, "..", a NUL or an empty step.
[[nodiscard]] std::vector<std::string> dosNameSteps(std::string_view dosName);

// With the letters A to Z in lower case.
[[nodiscard]] std::string withLowerCase(std::string_view text);

} // namespace platform
