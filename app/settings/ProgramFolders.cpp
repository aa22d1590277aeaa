#include "app/settings/ProgramFolders.h"

#include "platform/ProfileStrings.h"

#include <system_error>

namespace app {

namespace {

namespace fs = std::filesystem;

fs::path dataFolder(const fs::path& programFolder)
{
    return (programFolder / TESLIN_DATA_FOLDER).lexically_normal();
}

// Root may write anywhere. What it would write beside an installed program stays when the package has gone.
bool isInstalled(const fs::path& programFolder)
{
    std::error_code unreadable;
    return fs::exists(dataFolder(programFolder), unreadable);
}

} // namespace

std::vector<fs::path> layoutLists(const fs::path& programFolder)
{
    constexpr const char* kName = "Languages.txt";
    return {programFolder / kName, dataFolder(programFolder) / kName};
}

fs::path GetIniFileName(const fs::path& executable, const fs::path& userConfigFolder)
{
    if (!userConfigFolder.empty() && isInstalled(executable.parent_path())) {
        return settingsRefuge(executable, userConfigFolder);
    }
    return platform::settingsFilePath(executable, userConfigFolder);
}

fs::path settingsRefuge(const fs::path& executable, const fs::path& userConfigFolder)
{
    return userConfigFolder.empty() ? fs::path()
                                    : userConfigFolder / platform::settingsFileBeside(executable).filename();
}

} // namespace app
