#include "simulator/posix/DosFolder.h"

#include "simulator/posix/Descriptor.h"
#include "simulator/posix/SetupError.h"

#include <fcntl.h>
#include <strings.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <system_error>

namespace simulator {

namespace fs = std::filesystem;

namespace {

constexpr mode_t kFolderMode = 0777; // less the umask
constexpr mode_t kFileMode = 0666;

// Keeps other simulators from changing the folder at the same moment: two that are started together must not both find
// an entry stale and replace each other's.
class FolderLock final
{
public:
    explicit FolderLock(const fs::path& folder)
        : m_folder(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        // A file system without locks is no reason to refuse service.
        ::flock(m_folder.get(), LOCK_EX);
    }

private:
    Descriptor m_folder;
};

// The entry of a folder that has this name in whatever case; the exact one is preferred, then the first in order.
std::optional<fs::path> findEntry(const fs::path& folder, const std::string& name)
{
    std::error_code error;
    std::optional<std::string> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const std::string candidate = entry.path().filename().string();
        if (candidate == name) {
            return folder / name;
        }
        if (::strcasecmp(candidate.c_str(), name.c_str()) == 0 && (!found || candidate < *found)) {
            found = candidate;
        }
    }
    return found ? std::optional(folder / *found) : std::nullopt;
}

bool isPseudoTerminal(const struct stat& file)
{
    constexpr unsigned kFirstMajor = 136; // the numbers that the kernel keeps for slaves of pseudo-terminals
    constexpr unsigned kLastMajor = 143;
    return S_ISCHR(file.st_mode) && major(file.st_rdev) >= kFirstMajor && major(file.st_rdev) <= kLastMajor;
}

bool isLater(const timespec& a, const timespec& b)
{
    return a.tv_sec != b.tv_sec ? a.tv_sec > b.tv_sec : a.tv_nsec > b.tv_nsec;
}

// Whether an entry is left over from a simulator that was killed. Its terminal is gone with it, but the number may have
// been given away again: a terminal that is younger than the link is somebody else's.
bool isStale(const fs::path& entry)
{
    struct stat link
    {};
    if (::lstat(entry.c_str(), &link) != 0 || !S_ISLNK(link.st_mode)) {
        return false;
    }
    struct stat target
    {};
    if (::stat(entry.c_str(), &target) != 0) {
        return errno == ENOENT;
    }
    return isPseudoTerminal(target) && isLater(target.st_ctim, link.st_ctim);
}

bool leadsTo(const fs::path& entry, const std::string& terminal)
{
    std::error_code error;
    return fs::read_symlink(entry, error) == terminal;
}

} // namespace

MadePaths::~MadePaths()
{
    while (!m_paths.empty()) {
        std::error_code notEmpty;
        fs::remove(m_paths.back(), notEmpty);
        m_paths.pop_back();
    }
}

void MadePaths::makeFolder(const fs::path& folder)
{
    if (::mkdir(folder.c_str(), kFolderMode) == 0) {
        m_paths.push_back(folder);
        return;
    }
    const int reason = errno;
    if (std::error_code error; fs::is_directory(folder, error)) {
        return;
    }
    errno = reason;
    throw reason == EEXIST ? SetupError(folder.string() + " is not a folder")
                           : systemError("make the folder " + folder.string());
}

void MadePaths::makeFile(const fs::path& file)
{
    const Descriptor made(::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kFileMode));
    if (!made.isOpen()) {
        throw systemError("make " + file.string());
    }
    m_paths.push_back(file);
}

DosFolder::DosFolder(const fs::path& folder)
{
    fs::path step;
    for (const fs::path& name : fs::absolute(folder)) {
        step /= name;
        m_made.makeFolder(step);
    }
    m_folder = fs::canonical(folder);
}

DosFolder::~DosFolder()
{
    while (!m_entries.empty()) {
        removeEntry(std::string(m_entries.back().name));
    }
}

void DosFolder::addEntry(const std::string& name, const std::string& terminal)
{
    const FolderLock lock(m_folder);
    const auto isOurs = [&](const fs::path& link) {
        return leadsTo(link, terminal) ||
               std::ranges::any_of(m_entries, [&](const Entry& own) { return leadsTo(link, own.terminal); });
    };
    while (const std::optional<fs::path> existing = findEntry(m_folder, name)) {
        // A link to a terminal that we have only just opened is older than the terminal, whatever the clocks say.
        if (!isOurs(*existing) && !isStale(*existing)) {
            throw SetupError(existing->string() + " is in use; is another simulator running on this folder?");
        }
        if (::unlink(existing->c_str()) != 0) {
            throw systemError("replace " + existing->string());
        }
    }
    const fs::path entry = m_folder / name;
    if (::symlink(terminal.c_str(), entry.c_str()) != 0) {
        throw systemError("make " + entry.string());
    }
    m_entries.push_back({name, terminal});
}

void DosFolder::changeEntry(const std::string& name, const std::string& terminal)
{
    const auto entry = std::ranges::find(m_entries, name, &Entry::name);
    const fs::path path = m_folder / name;
    const fs::path next = m_folder / ("." + name + "." + std::to_string(::getpid()));
    if (::symlink(terminal.c_str(), next.c_str()) != 0) {
        throw systemError("make " + next.string());
    }
    if (::rename(next.c_str(), path.c_str()) != 0) {
        const int reason = errno;
        ::unlink(next.c_str());
        errno = reason;
        throw systemError("change " + path.string());
    }
    entry->terminal = terminal;
}

void DosFolder::removeEntry(const std::string& name)
{
    const auto entry = std::ranges::find(m_entries, name, &Entry::name);
    if (entry == m_entries.end()) {
        return;
    }
    const FolderLock lock(m_folder);
    if (leadsTo(m_folder / name, entry->terminal)) {
        ::unlink((m_folder / name).c_str());
    }
    m_entries.erase(entry);
}

fs::path DosFolder::stepInto(const fs::path& folder, const std::string& name)
{
    fs::path step = findEntry(folder, name).value_or(folder / name);
    m_made.makeFolder(step);
    return step;
}

void DosFolder::putDriverFile()
{
    fs::path folder = m_folder;
    for (const char* const name : {"c:", "Windows", "system32", "drivers"}) {
        folder = stepInto(folder, name);
    }
    if (!findEntry(folder, "Teslin.sys")) {
        m_made.makeFile(folder / "Teslin.sys");
    }
}

} // namespace simulator
