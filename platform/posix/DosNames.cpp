#include "platform/DosNames.h"

#include "platform/AnsiText.h"

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

using Steps = std::vector<std::string>;

constexpr std::string_view kDevicePrefix = R"(\\.\)";
constexpr std::string_view kPortPrefix = "com";
constexpr char kSeparator = '\\';

constexpr bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

// File names here are UTF-8.
std::string utf8(std::string_view ansi)
{
    std::string text;
    for (const char c : ansi) {
        const unsigned character = ansiToUnicode(static_cast<std::uint8_t>(c));
        if (character < 0x80) {
            text += static_cast<char>(character);
        } else if (character < 0x800) {
            text += static_cast<char>(0xC0 | (character >> 6));
            text += static_cast<char>(0x80 | (character & 0x3F));
        } else {
            text += static_cast<char>(0xE0 | (character >> 12));
            text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
            text += static_cast<char>(0x80 | (character & 0x3F));
        }
    }
    return text;
}

bool isPort(std::string_view name)
{
    return name.size() > kPortPrefix.size() && lowerCase(name.substr(0, kPortPrefix.size())) == kPortPrefix &&
           std::all_of(name.begin() + kPortPrefix.size(), name.end(), isDigit);
}

bool isDrivePath(std::string_view name)
{
    return name.size() > 2 && isLetter(name[0]) && name[1] == ':' && name[2] == kSeparator;
}

Steps split(std::string_view text)
{
    Steps steps;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(kSeparator, start), text.size());
        steps.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    return steps;
}

// The names to walk from the folder on; none when the DOS name is refused.
Steps stepsOf(std::string_view dosName)
{
    using namespace std::string_view_literals;
    if (dosName.find_first_of("/\0"sv) != std::string_view::npos || dosName.find("..") != std::string_view::npos) {
        return {};
    }
    Steps steps;
    if (dosName.substr(0, kDevicePrefix.size()) == kDevicePrefix) {
        steps = split(dosName.substr(kDevicePrefix.size()));
        if (steps.size() > 1) {
            return {};
        }
    } else if (isPort(dosName)) {
        steps = {std::string(dosName)};
    } else if (isDrivePath(dosName)) {
        steps = split(dosName);
    }
    const bool hasNoName =
        std::any_of(steps.begin(), steps.end(), [](const std::string& step) { return step.empty() || step == "."; });
    return hasNoName ? Steps{} : steps;
}

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
    const std::string wanted = lowerCase(name);
    std::string found;
    for (fs::directory_iterator entry(folder, error); entry != fs::directory_iterator(); entry.increment(error)) {
        // Of names that differ in case alone the lower-case one comes last in the order of bytes.
        const std::string candidate = entry->path().filename().string();
        if (lowerCase(candidate) == wanted) {
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
    const Steps steps = stepsOf(dosName);
    if (steps.empty()) {
        return systemError(EINVAL);
    }
    // An empty folder would make the names relative to wherever the program was started.
    if (m_folder.empty()) {
        return systemError(ENOENT);
    }
    fs::path path = m_folder;
    for (const std::string& step : steps) {
        Result<fs::path> entry = entryOf(path, utf8(step));
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
