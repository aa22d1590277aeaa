#include "platform/posix/NewFile.h"

#include "platform/NewFileName.h"

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace platform {

namespace fs = std::filesystem;

namespace {

// Other saves of this process, and those that died with the same process number, may hold a few names.
constexpr int kMostNames = 1000;

// Without this a loss of power may undo the renaming. The file is in its place already, so a failure is none of its.
void bringToDisk(const fs::path& folder)
{
    const char* const path = folder.empty() ? "." : folder.c_str();
    const Descriptor descriptor(::open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen()) {
        static_cast<void>(::fsync(descriptor.number()));
    }
}

constexpr const char* kAccessList = "system.posix_acl_access";

// As the system keeps it; empty where there is none.
std::string accessList(const fs::path& path)
{
    const ssize_t size = ::getxattr(path.c_str(), kAccessList, nullptr, 0);
    std::string list(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    const ssize_t got = list.empty() ? 0 : ::getxattr(path.c_str(), kAccessList, list.data(), list.size());
    list.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return list;
}

bool isDead(unsigned long process)
{
    const auto number = static_cast<pid_t>(process);
    return number > 0 && static_cast<unsigned long>(number) == process && ::kill(number, 0) != 0 && errno == ESRCH;
}

// On a disk that several machines share another one's process has a number that is nobody's here; it holds a lock.
bool isBeingWritten(const fs::path& path)
{
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    return !file.isOpen() || ::flock(file.number(), LOCK_EX | LOCK_NB) != 0;
}

// What is in the way of that stays where it is: it hinders nobody.
void removeLeftovers(const fs::path& folder)
{
    std::error_code error;
    fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::optional<unsigned long> writer = writerOf(entry->path().filename().native());
        std::error_code unknown;
        if (writer && isDead(*writer) && fs::is_regular_file(entry->symlink_status(unknown)) &&
            !isBeingWritten(entry->path())) {
            ::unlink(entry->path().c_str());
        }
    }
}

} // namespace

Result<void> writeAll(const Descriptor& file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = uninterrupted([&] { return ::write(file.number(), bytes.data(), bytes.size()); });
        if (count < 0) {
            return lastSystemError();
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

Result<NewFile> NewFile::beside(const fs::path& place, mode_t mode)
{
    removeLeftovers(place.parent_path());
    const auto process = static_cast<unsigned long>(::getpid());
    for (int number = 0; number < kMostNames; ++number) {
        fs::path path = place.parent_path() / newFileName(process, number);
        Descriptor file(
            uninterrupted([&] { return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); }));
        if (file.isOpen()) {
            return NewFile(std::move(path), std::move(file));
        }
        if (errno != EEXIST) {
            return lastSystemError();
        }
    }
    return systemError(EEXIST);
}

NewFile::NewFile(fs::path path, Descriptor file)
    : m_path(std::move(path))
    , m_file(std::move(file))
    , m_lock(::fcntl(m_file.number(), F_DUPFD_CLOEXEC, 0))
{
    static_cast<void>(::flock(m_lock.number(), LOCK_EX | LOCK_NB)); // not every file system has locks
}

NewFile::~NewFile()
{
    if (!m_path.empty()) {
        ::unlink(m_path.c_str());
    }
}

Result<void> NewFile::resemble(const fs::path& old, const struct stat& look)
{
    constexpr mode_t kPermissions = 07777;
    constexpr auto kSameOwner = static_cast<uid_t>(-1);
    // An ordinary user may give a file to a group of his, but not away. The mode comes last: a change of owner clears
    // parts of it.
    const bool isOwnerKept = ::fchown(m_file.number(), look.st_uid, look.st_gid) == 0;
    if (!isOwnerKept) {
        static_cast<void>(::fchown(m_file.number(), kSameOwner, look.st_gid) == 0);
    }
    static_cast<void>(::fchmod(m_file.number(), look.st_mode & kPermissions));
    // Beside a list of users and groups the mode's group part is only the most that the list may grant, so without the
    // list the group would come into rights that it never had.
    const std::string list = accessList(old);
    if (!list.empty() && ::fsetxattr(m_file.number(), kAccessList, list.data(), list.size(), 0) != 0) {
        return lastSystemError();
    }
    return {};
}

Result<void> NewFile::write(std::string_view bytes)
{
    Result<void> written = writeAll(m_file, bytes);
    if (!written) {
        return written;
    }
    if (::fsync(m_file.number()) != 0 || !m_file.close()) {
        return lastSystemError();
    }
    return {};
}

Result<void> NewFile::moveTo(const fs::path& place)
{
    if (::rename(m_path.c_str(), place.c_str()) != 0) {
        return lastSystemError();
    }
    m_path.clear();
    bringToDisk(place.parent_path());
    return {};
}

} // namespace platform
