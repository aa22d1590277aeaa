#include "platform/PortClaim.h"

#include "platform/windows/Windows.h"

namespace platform {

// A port is opened by one program at a time there, and the system does not tell by which.

Result<void> claimPort(std::intptr_t /*handle*/)
{
    return {};
}

void releasePort(std::intptr_t /*handle*/) {}

bool isInUse(const SystemError& error)
{
    return error.number == ERROR_ACCESS_DENIED || error.number == ERROR_SHARING_VIOLATION;
}

std::vector<PortHolder> portHolders(const std::filesystem::path& /*device*/)
{
    return {};
}

// Names of devices are no files there, and only opening them tells.

bool mayReadAndWrite(const std::filesystem::path& /*device*/)
{
    return true;
}

bool isDevice(const std::filesystem::path& /*device*/)
{
    return true;
}

} // namespace platform
