#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// Replies read by somebody who must not be wrong. The window shows whatever arrives; a program that reports "done" to a
// script believes a line only when everything in it fits. Lines come without their terminator.
namespace device::strict {

// The value in the reply to a question for a parameter: a line of exactly 28 characters that names a parameter reply,
// with two hexadecimal digits at its end. A line that tells an address ("WPV" and three characters) must tell this one.
[[nodiscard]] std::optional<std::uint8_t> parameterValue(std::string_view line, std::string_view address);

// The driver's echo of a write. One that tells what was written must tell this address and value.
[[nodiscard]] bool isEchoOfWrite(std::string_view line, std::string_view address, std::string_view value);

} // namespace device::strict
