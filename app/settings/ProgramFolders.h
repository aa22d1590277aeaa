#pragma once

#include <filesystem>
#include <vector>

// Where the program's own files lie, by the folder of its executable. A program that was built or unpacked somewhere
// has them beside it; one that was installed has them in the system's data folder, and must not write beside itself.
namespace app {

// The places of the list of keyboard layouts; the first one that exists counts alone, even when it cannot be read.
[[nodiscard]] std::vector<std::filesystem::path> layoutLists(const std::filesystem::path& programFolder);

// The settings file of a program that starts now: beside it when that file can be written and the user's own is no
// later one; else, and always for an installed program, a file of the same name in the user's own folder for settings.
// Creates nothing.
[[nodiscard]] std::filesystem::path GetIniFileName(const std::filesystem::path& executable,
                                                   const std::filesystem::path& userConfigFolder);

// Where the settings go when that file cannot be written after all; empty without a folder of the user's own.
[[nodiscard]] std::filesystem::path settingsRefuge(const std::filesystem::path& executable,
                                                   const std::filesystem::path& userConfigFolder);

} // namespace app
