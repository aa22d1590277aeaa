#include "app/startup/ProgramVersion.h"

#include "text/PairValue.h"

namespace app {

namespace {

// The last digits of a number, with zeros in front.
std::string digits(int number, std::size_t count)
{
    const std::string padded = std::string(count, '0') + std::to_string(number);
    return std::string(text::rightOf(padded, count));
}

std::string minorAndRevision(const ProgramVersion& version)
{
    return "." + digits(version.minorNumber, 2) + "." + digits(version.revision, 4);
}

} // namespace

ProgramVersion programVersion()
{
    return {.majorNumber = TESLIN_VERSION_MAJOR, .minorNumber = TESLIN_VERSION_MINOR, .revision = TESLIN_VERSION_PATCH};
}

std::string versionInAbout(const ProgramVersion& version)
{
    return "Version: " + std::to_string(version.majorNumber) + minorAndRevision(version);
}

std::string versionOnSplash(const ProgramVersion& version)
{
    return "Version " + digits(version.majorNumber, 2) + minorAndRevision(version);
}

std::string versionOnCommandLine(const ProgramVersion& version)
{
    return "TeslinConfigure " + std::to_string(version.majorNumber) + '.' + std::to_string(version.minorNumber) + '.' +
           std::to_string(version.revision);
}

} // namespace app
