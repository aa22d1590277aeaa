#pragma once

#include <string_view>

namespace platform {

// True when what the driver's device object has answered so far names a port to its end: "COM" and something behind it
// that a control character ends.
[[nodiscard]] bool namesAPort(std::string_view answer);

} // namespace platform
