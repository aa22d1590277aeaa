#pragma once

#include <string>
#include <string_view>

// Every command that the program sends, as its exact text. On the wire each is followed by one line feed.
namespace device::commands {

inline constexpr std::string_view kGetPortName = "/get port_name"; // to the device object, not to the port
inline constexpr std::string_view kDriverVersion = "/ver";
inline constexpr std::string_view kDeviceVersion = "/get dev_version";
inline constexpr std::string_view kIdentify = "/rawxact WCY";
inline constexpr std::string_view kLeaveReadTest = "/rawsend \\xA5"; // the driver turns \xhh into the byte
inline constexpr std::string_view kNormalMode1 = "/rawsend \\xA8\\x40";
inline constexpr std::string_view kNormalMode2 = "/rawsend \\xA2";

inline constexpr char kLineEnd = '\n';

// Asks for the parameter at an address of three hexadecimal digits.
[[nodiscard]] inline std::string readParameter(std::string_view address)
{
    return "/rawxact WPV" + std::string(address);
}

// Writes one setting, "083=20".
[[nodiscard]] inline std::string writeSetting(std::string_view setting)
{
    return "/rawsend WPW" + std::string(setting);
}

// Writes a value of two hexadecimal digits to an address.
[[nodiscard]] inline std::string writeParameter(std::string_view address, std::string_view value)
{
    return writeSetting(std::string(address) + "=" + std::string(value));
}

} // namespace device::commands
