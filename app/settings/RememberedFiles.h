#pragma once

#include <filesystem>

namespace app {

// The file last opened or saved of each table, as the user named it. Empty, or a pattern with a "*", means none yet.
struct RememberedFiles
{
    std::filesystem::path ConfigFileName;
    std::filesystem::path LanguageFileName;
};

} // namespace app
