#pragma once

#include <string>

namespace testsupport {

// A reply as the driver gives it: 26 characters, then the value.
[[nodiscard]] inline std::string parameterReply(const std::string& address, const std::string& value)
{
    return "/rawxact WPV" + address + " reply 00: " + value + "\n";
}

} // namespace testsupport
