#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace simulator {

// Files and folders that were made, to be removed again in reverse order. A folder that is not empty by then stays.
class MadePaths final
{
public:
    MadePaths() = default;
    ~MadePaths();
    MadePaths(const MadePaths&) = delete;
    MadePaths& operator=(const MadePaths&) = delete;

    void makeFolder(const std::filesystem::path& folder); // unless it is there; throws SetupError
    void makeFile(const std::filesystem::path& file);     // empty; throws SetupError, also when it is there

private:
    std::vector<std::filesystem::path> m_paths;
};

// The folder of DOS names, made if it is missing. Everything that this object has made is removed with it; entries only
// if they still lead where they led.
class DosFolder final
{
public:
    explicit DosFolder(const std::filesystem::path& folder); // throws SetupError
    ~DosFolder();
    DosFolder(const DosFolder&) = delete;
    DosFolder& operator=(const DosFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_folder; } // absolute, without links

    // Makes an entry that leads to a terminal. An entry of that name, in whatever case, that leads to something alive
    // is left alone and throws SetupError; one that leads nowhere any more is replaced.
    void addEntry(const std::string& name, const std::string& terminal);
    // Lets an entry of ours lead to another terminal; at no moment is it missing.
    void changeEntry(const std::string& name, const std::string& terminal);
    void removeEntry(const std::string& name);

    // Puts an empty driver file where the program looks for one at its start: the entry "c:", a folder or a link to
    // one, then Windows/system32/drivers/Teslin.sys, each step in whatever case it already stands there.
    void putDriverFile();

private:
    struct Entry
    {
        std::string name;
        std::string terminal;
    };

    [[nodiscard]] std::filesystem::path stepInto(const std::filesystem::path& folder, const std::string& name);

    MadePaths m_made;
    std::filesystem::path m_folder;
    std::vector<Entry> m_entries;
};

} // namespace simulator
