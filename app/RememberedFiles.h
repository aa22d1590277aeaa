#pragma once

#include <string>

namespace app {

// The file last opened or saved of each table, as the user named it. Empty, or a pattern with a "*", means none yet.
struct RememberedFiles
{
    std::string ConfigFileName;
    std::string LanguageFileName;
};

} // namespace app
