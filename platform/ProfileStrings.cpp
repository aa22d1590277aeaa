#include "platform/ProfileStrings.h"

#include "platform/ReplaceFile.h"

#include <system_error>
#include <utility>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr const char* kExtension = ".INI";

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
    const bool staysBeside = userConfigFolder.empty() || canReplaceFile(beside);
    return staysBeside ? beside : userConfigFolder / beside.filename();
}

ProfileStrings::ProfileStrings(fs::path file, fs::path fallback)
    : m_file(std::move(file))
    , m_fallback(std::move(fallback))
{}

std::string ProfileStrings::get(std::string_view section, std::string_view key, std::size_t bufferSize) const
{
    const Result<std::string> bytes = readEither(m_file, m_fallback);
    return bytes ? profileString(bytes.value(), section, key, bufferSize) : std::string();
}

bool ProfileStrings::set(std::string_view section, std::string_view key, std::string_view value)
{
    const Result<std::string> bytes = readEither(m_file, m_fallback);
    // A file that is there but cannot be read must not be taken for an empty one.
    if (!bytes && !isNotFound(bytes.error())) {
        return false;
    }
    const std::string before = bytes ? bytes.value() : std::string();
    const std::string after = withProfileString(before, section, key, value);
    if (after == before) {
        return true;
    }
    std::error_code existsAlready;
    fs::create_directories(m_file.parent_path(), existsAlready);
    return static_cast<bool>(replaceFile(m_file, after));
}

} // namespace platform
