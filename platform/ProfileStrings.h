#pragma once

#include "platform/ProfileText.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// The settings file of a program: in the program's own folder, named as the program without its extension (what follows
// the last dot of its name), with the extension ".INI". Links to the program are followed.
[[nodiscard]] std::filesystem::path settingsFileBeside(const std::filesystem::path& executablePath);

// Where the program keeps its settings: beside itself when that file can be written, else a file of the same name in
// the user's own folder for settings. A file there that was written after the one beside the program counts as well:
// the settings went there because writing beside the program failed. Creates nothing.
[[nodiscard]] std::filesystem::path settingsFilePath(const std::filesystem::path& executablePath,
                                                     const std::filesystem::path& userConfigFolder);

// The profile strings of one file. The file is read at each call and replaced whole or not at all at each change;
// nothing is kept in memory. Failures are silent: settings are a convenience, and the program works without.
class ProfileStrings final
{
public:
    // Settings that a file does not have yet come from the fallback file, if one is given: the file beside an installed
    // program, which a user may read but not write. As soon as the file exists it alone counts; it begins as a copy.
    //
    // When the file cannot be written after all, the settings go to the refuge, if one is given, and stay there.
    explicit ProfileStrings(std::filesystem::path file, std::filesystem::path fallback = {},
                            std::filesystem::path refuge = {});

    // See profileString(). Empty also when the file cannot be read.
    [[nodiscard]] std::string get(std::string_view section, std::string_view key,
                                  std::size_t bufferSize = kProfileBufferSize) const;

    // See withProfileString(). Makes the file and its folder when they are missing. False when the value could not be
    // stored; the file is then as it was.
    bool set(std::string_view section, std::string_view key, std::string_view value);

    // What is set during its life is stored in one go when it ends, all of it or nothing. One inside another ends with
    // the outer one.
    class Together final
    {
    public:
        explicit Together(ProfileStrings& settings)
            : m_settings(settings)
        {
            ++m_settings.m_together;
        }
        ~Together() { m_settings.endTogether(); }
        Together(const Together&) = delete;
        Together& operator=(const Together&) = delete;

    private:
        ProfileStrings& m_settings;
    };

    // Where the file is, or will be.
    [[nodiscard]] std::filesystem::path folder() const { return m_file.parent_path(); }

private:
    struct Value
    {
        std::string section;
        std::string key;
        std::string value;
    };

    void endTogether();
    // Stores what waits.
    bool store();
    [[nodiscard]] std::string withWaiting(std::string bytes) const;

    std::filesystem::path m_file;
    std::filesystem::path m_fallback;
    std::filesystem::path m_refuge;
    std::vector<Value> m_waiting;
    int m_together = 0;
};

} // namespace platform
