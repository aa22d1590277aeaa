#include "app/DriverCheck.h"

#include "app/ProgramText.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace app {

namespace {

constexpr std::array<std::string_view, 3> kDriverFiles = {
    R"(C:\Windows\System\Teslin.vxd)",           // 95, 98, ME
    R"(C:\WINNT\system32\drivers\Teslin.sys)",   // NT
    R"(C:\Windows\system32\drivers\Teslin.sys)", // 2000 and later
};

bool isFile(const platform::DosNames& names, std::string_view dosName)
{
    const auto path = names.find(dosName);
    std::error_code ignored;
    return path && !std::filesystem::is_directory(path.value(), ignored);
}

} // namespace

bool KSD_Driver_Is_Installed(const platform::DosNames& names, platform::MessageBoxes& boxes, platform::Beep& beep)
{
    const bool installed = std::any_of(kDriverFiles.begin(), kDriverFiles.end(),
                                       [&names](std::string_view file) { return isFile(names, file); });
    if (!installed) {
        beep.sound();
        boxes.show({.text = driverMissing(), .icon = platform::BoxIcon::Critical});
    }
    return installed;
}

} // namespace app
