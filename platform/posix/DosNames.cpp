#include "platform/DosNames.h"

#include "platform/DosNameSteps.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace platform {

namespace {

namespace fs = std::filesystem;

// The entry of a folder that a name means.
Result<fs::path> entryOf(const fs::path& folder, const std::string& name)
{
    std::error_code error;
    if (fs::exists(folder / name, error)) {
        return folder / name;
    }
    if (error) {
        return systemError(error.value());
    }
    const std::string wanted = withLowerCase(name);
    std::string found;
    for (fs::directory_iterator entry(folder, error); entry != fs::directory_iterator(); entry.increment(error)) {
        // Of names that differ in case alone the lower-case one comes last in the order of bytes.
        const std::string candidate = entry->path().filename().string();
        if (withLowerCase(candidate) == wanted) {
            found = std::max(found, candidate);
        }
    }
    if (found.empty()) {
        return systemError(error ? error.value() : ENOENT);
    }
    return folder / found;
}

} // namespace

DosNames::DosNames(fs::path folder)
    : m_folder(std::move(folder))
{}

fs::path DosNames::defaultFolder()
{
    const char* const chosen = std::getenv("TESLIN_DOSDEVICES");
    if (chosen != nullptr && *chosen != '\0') {
        return chosen;
    }
    const char* const home = std::getenv("HOME");
    if (home != nullptr && *home != '\0') {
        return fs::path(home) / ".teslin" / "dosdevices";
    }
    return {};
}

Result<fs::path> DosNames::find(std::string_view dosName) const
{
    const std::vector<std::string> steps = dosNameSteps(dosName);
    if (steps.empty()) {
        return systemError(EINVAL);
    }
    // An empty folder would make the names relative to wherever the program was started.
    if (m_folder.empty()) {
        return systemError(ENOENT);
    }
    fs::path path = m_folder;
    for (const std::string& step : steps) {
        Result<fs::path> entry = entryOf(path, text::toUtf8(step));
        if (!entry) {
            return entry;
        }
        path = std::move(entry).value();
    }
    // The last entry may be a link to a device that has been unplugged.
    std::error_code error;
    if (!fs::exists(path, error)) {
        return systemError(error ? error.value() : ENOENT);
    }
    return path;
}

} // namespace platform
