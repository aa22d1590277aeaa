#include "platform/DosNames.h"

#include "platform/DosNameSteps.h"
#include "platform/windows/WideText.h"
#include "platform/windows/Windows.h"

#include <string>
#include <utility>

namespace platform {

namespace fs = std::filesystem;

DosNames::DosNames(fs::path folder)
    : m_folder(std::move(folder))
{}

fs::path DosNames::defaultFolder()
{
    return {};
}

Result<fs::path> DosNames::find(std::string_view dosName) const
{
    if (dosNameSteps(dosName).empty()) {
        return systemError(ERROR_INVALID_NAME);
    }
    // Above nine a port is known by its device's name alone.
    const fs::path path =
        toWide(isPortName(dosName) ? std::string(kDevicePrefix).append(dosName) : std::string(dosName));
    // Whether there is such a device shows when it is opened; to look for it would open it.
    const bool isDevice = isPortName(dosName) || dosName.starts_with(kDevicePrefix);
    if (!isDevice && ::GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
        return lastSystemError();
    }
    return path;
}

} // namespace platform
