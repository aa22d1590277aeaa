#pragma once

#include <string>
#include <string_view>

// The program's version information.
namespace app {

struct ProgramVersion
{
    int majorNumber = 0;
    int minorNumber = 0;
    int revision = 0;
};

// Of this build.
[[nodiscard]] ProgramVersion programVersion();

inline constexpr std::string_view kLegalNotice = "Copyright \xA9 2026 Brennic";

// The two windows that show the version number it differently; each form is required.
[[nodiscard]] std::string versionInAbout(const ProgramVersion& version);  // "Version: 1.04.0001"
[[nodiscard]] std::string versionOnSplash(const ProgramVersion& version); // "Version 01.04.0001"
// With the name of the executable, as programs answer to --version.
[[nodiscard]] std::string versionOnCommandLine(const ProgramVersion& version); // "TeslinConfigure 1.4.1"

} // namespace app
