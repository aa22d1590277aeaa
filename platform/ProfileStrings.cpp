#include "platform/ProfileStrings.h"

#include "platform/ReplaceFile.h"

#include <system_error>
#include <utility>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr const char* kExtension = ".INI";

// The later one of two files that both may be missing is the second.
bool isLater(const fs::path& first, const fs::path& second)
{
    std::error_code noFirst;
    std::error_code noSecond;
    const fs::file_time_type firstTime = fs::last_write_time(first, noFirst);
    const fs::file_time_type secondTime = fs::last_write_time(second, noSecond);
    return !noSecond && (noFirst || secondTime > firstTime);
}

// Makes the folder, too. Where the file has to be written in place, a copy of it is kept in the folder for copies.
bool write(const fs::path& file, std::string_view bytes, const fs::path& copies)
{
    std::error_code existsAlready;
    fs::create_directories(file.parent_path(), existsAlready);
    return static_cast<bool>(replaceFile(file, bytes, copies));
}

// The file's bytes, or the fallback's when there is no such file.
Result<std::string> readEither(const fs::path& file, const fs::path& fallback)
{
    Result<std::string> bytes = readFile(file);
    if (!bytes && isNotFound(bytes.error()) && !fallback.empty()) {
        Result<std::string> others = readFile(fallback);
        return others ? others : bytes;
    }
    return bytes;
}

} // namespace

fs::path settingsFileBeside(const fs::path& executablePath)
{
    std::error_code error;
    const fs::path real = fs::weakly_canonical(executablePath, error);
    const fs::path& program = error ? executablePath : real;
    fs::path name = program.stem();
    name += kExtension;
    return program.parent_path() / name;
}

fs::path settingsFilePath(const fs::path& executablePath, const fs::path& userConfigFolder)
{
    const fs::path beside = settingsFileBeside(executablePath);
    // Without a folder of the user's own the name would be relative to wherever the program was started.
    if (userConfigFolder.empty()) {
        return beside;
    }
    const fs::path own = userConfigFolder / beside.filename();
    return canReplaceFile(beside) && !isLater(beside, own) ? beside : own;
}

ProfileStrings::ProfileStrings(fs::path file, fs::path fallback, fs::path refuge)
    : m_file(std::move(file))
    , m_fallback(std::move(fallback))
    , m_refuge(std::move(refuge))
{}

std::string ProfileStrings::get(std::string_view section, std::string_view key, std::size_t bufferSize) const
{
    const Result<std::string> bytes = readEither(m_file, m_fallback);
    return profileString(withWaiting(bytes ? bytes.value() : std::string()), section, key, bufferSize);
}

bool ProfileStrings::set(std::string_view section, std::string_view key, std::string_view value)
{
    m_waiting.push_back({std::string(section), std::string(key), std::string(value)});
    return m_together > 0 || store();
}

void ProfileStrings::endTogether()
{
    if (--m_together == 0 && !m_waiting.empty()) {
        store();
    }
}

std::string ProfileStrings::withWaiting(std::string bytes) const
{
    for (const Value& value : m_waiting) {
        bytes = withProfileString(bytes, value.section, value.key, value.value);
    }
    return bytes;
}

bool ProfileStrings::store()
{
    const Result<std::string> bytes = readEither(m_file, m_fallback);
    const std::string before = bytes ? bytes.value() : std::string();
    const std::string after = withWaiting(before);
    m_waiting.clear();
    // A file that is there but cannot be read must not be taken for an empty one.
    if (!bytes && !isNotFound(bytes.error())) {
        return false;
    }
    if (after == before || write(m_file, after, m_refuge.parent_path())) {
        return true;
    }
    if (m_refuge.empty() || m_refuge == m_file || !write(m_refuge, after, {})) {
        return false;
    }
    m_file = m_refuge;
    return true;
}

} // namespace platform
