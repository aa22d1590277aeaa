#include "platform/ReplaceFile.h"

#include "platform/KeptCopy.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/NewFile.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40; // as many as the system itself follows

// Neither a pipe without a writer nor a line without a carrier may hold the program up.
Descriptor openExisting(const fs::path& path, int access)
{
    return Descriptor(uninterrupted([&] { return ::open(path.c_str(), access | O_NOCTTY | O_NONBLOCK | O_CLOEXEC); }));
}

// That the file is none, that it does not exist, or that its folder is a file. Everything else leaves it open.
bool isNoLink(int error)
{
    return error == EINVAL || error == ENOENT || error == ENOTDIR;
}

// The file that a chain of links ends at; it need not exist.
Result<fs::path> realFile(fs::path path)
{
    for (int links = 0; links < kMostLinks; ++links) {
        std::error_code error;
        const fs::path target = fs::read_symlink(path, error);
        if (error) {
            // A link that a broken disk or a server does not tell must not be replaced by a file.
            return isNoLink(error.value()) ? Result<fs::path>(path) : systemError(error.value());
        }
        path = path.parent_path() / target;
    }
    return systemError(ELOOP);
}

// Reads on from where the file stands; the size is a hint.
Result<std::string> readToEnd(const Descriptor& file, std::size_t expected)
{
    std::string bytes;
    std::size_t size = 0;
    for (;;) {
        if (size == bytes.size()) {
            bytes.resize(std::max(expected + 1, 2 * size));
        }
        const ssize_t count =
            uninterrupted([&] { return ::read(file.number(), bytes.data() + size, bytes.size() - size); });
        if (count < 0) {
            return lastSystemError();
        }
        size += static_cast<std::size_t>(count);
        if (size > kLargestFile) {
            return systemError(EFBIG);
        }
        if (count == 0) {
            bytes.resize(size);
            return bytes;
        }
    }
}

Result<void> writeAt(const Descriptor& file, std::size_t position, std::string_view bytes)
{
    if (::lseek(file.number(), static_cast<off_t>(position), SEEK_SET) < 0) {
        return lastSystemError();
    }
    Result<void> written = writeAll(file, bytes);
    if (written && ::fsync(file.number()) != 0) {
        return lastSystemError();
    }
    return written;
}

Result<void> cutTo(const Descriptor& file, std::size_t size)
{
    if (::ftruncate(file.number(), static_cast<off_t>(size)) != 0 || ::fsync(file.number()) != 0) {
        return lastSystemError();
    }
    return {};
}

Result<void> writeFromStart(const Descriptor& file, std::string_view bytes)
{
    Result<void> written = writeAt(file, 0, bytes);
    return written ? cutTo(file, bytes.size()) : written;
}

struct Overwritten
{
    Result<void> result;
    bool isWhole; // the new content, or the old one, is on the disk
};

// First what goes behind the old content, because only that can lack room: should it fail, or the process be killed in
// it, the old content is still there. The file keeps its space until the new content stands, so that there is room for
// the old one again.
Overwritten overwrite(const Descriptor& file, std::string_view bytes, const std::optional<std::string>& old)
{
    struct stat look = {};
    if (::fstat(file.number(), &look) != 0) {
        return {.result = lastSystemError(), .isWhole = true}; // nothing was touched
    }
    const auto size = static_cast<std::size_t>(look.st_size);
    if (bytes.size() > size) {
        Result<void> behind = writeAt(file, size, bytes.substr(size));
        if (!behind) {
            return {.result = behind, .isWhole = bool(cutTo(file, size))};
        }
    }
    Result<void> written = writeFromStart(file, bytes);
    if (written) {
        return {.result = written, .isWhole = true};
    }
    return {.result = written, .isWhole = old && writeFromStart(file, *old)};
}

Result<void> writeInPlace(const fs::path& path, std::string_view bytes, const fs::path& copies)
{
    std::optional<std::string> old;
    Descriptor file = openExisting(path, O_RDWR);
    if (file.isOpen()) {
        Result<std::string> content = readToEnd(file, 0);
        if (content) {
            old = std::move(content).value();
        }
    } else {
        file = openExisting(path, O_WRONLY);
    }
    if (!file.isOpen()) {
        return lastSystemError();
    }
    KeptCopy copy(copies, path, bytes);
    Overwritten written = overwrite(file, bytes, old);
    if (!file.close()) {
        const SystemError late = lastSystemError();
        written = {.result = written.result ? Result<void>(late) : written.result, .isWhole = false};
    }
    if (written.isWhole) {
        copy.remove();
    }
    return written.result;
}

Result<void> writeDevice(const fs::path& path, std::string_view bytes)
{
    Descriptor device = openExisting(path, O_WRONLY);
    if (!device.isOpen()) {
        return lastSystemError();
    }
    Result<void> written = writeAll(device, bytes);
    if (written && !device.close()) {
        return lastSystemError();
    }
    return written;
}

bool allowsNewFiles(const fs::path& folder)
{
    const char* const path = folder.empty() ? "." : folder.c_str();
    return ::faccessat(AT_FDCWD, path, W_OK | X_OK, AT_EACCESS) == 0;
}

// A folder without write permission, a sticky folder with another's file in it, a read-only folder in which this file
// alone is mounted, ...
bool isRefusalOfTheFolder(const SystemError& error)
{
    return error.number == EACCES || error.number == EPERM || error.number == EROFS || error.number == EBUSY;
}

// An empty look is that of a file that does not exist yet.
Result<void> writeBeside(const fs::path& path, std::string_view bytes, const std::optional<struct stat>& look)
{
    // Nobody else may look into what replaces a private file, not even before it has that file's mode.
    Result<NewFile> made = NewFile::beside(path, look ? 0600 : 0666);
    if (!made) {
        return made.error();
    }
    NewFile file = std::move(made).value();
    if (look) {
        const Result<void> resembles = file.resemble(path, *look);
        if (!resembles) {
            return systemError(EPERM); // what the old file grants cannot be granted to a new one
        }
    }
    const Result<void> written = file.write(bytes);
    return written ? file.moveTo(path) : written;
}

} // namespace

Result<std::string> readFile(const fs::path& path)
{
    const Descriptor file = openExisting(path, O_RDONLY);
    struct stat look = {};
    if (!file.isOpen() || ::fstat(file.number(), &look) != 0) {
        return lastSystemError();
    }
    if (!S_ISREG(look.st_mode)) {
        return systemError(S_ISDIR(look.st_mode) ? EISDIR : EINVAL);
    }
    const auto size = static_cast<std::uintmax_t>(look.st_size);
    if (size > kLargestFile) {
        return systemError(EFBIG);
    }
    return readToEnd(file, static_cast<std::size_t>(size));
}

Result<void> replaceFile(const fs::path& path, std::string_view bytes, const fs::path& copies)
{
    const Result<fs::path> file = realFile(path);
    if (!file) {
        return file.error();
    }
    struct stat look = {};
    if (::stat(file.value().c_str(), &look) != 0) {
        const SystemError error = lastSystemError();
        return error.number == ENOENT && !path.empty() ? writeBeside(file.value(), bytes, {}) : error;
    }
    if (!S_ISREG(look.st_mode)) {
        return writeDevice(file.value(), bytes);
    }
    if (!openExisting(file.value(), O_WRONLY).isOpen()) {
        return lastSystemError();
    }
    Result<void> replaced = writeBeside(file.value(), bytes, look);
    if (!replaced && isRefusalOfTheFolder(replaced.error())) {
        return writeInPlace(file.value(), bytes, copies);
    }
    return replaced;
}

bool canReplaceFile(const fs::path& path)
{
    const Result<fs::path> file = realFile(path);
    if (!file || !file.value().has_filename()) {
        return false;
    }
    struct stat look = {};
    if (::stat(file.value().c_str(), &look) != 0) {
        return errno == ENOENT && allowsNewFiles(file.value().parent_path());
    }
    return S_ISREG(look.st_mode) && openExisting(file.value(), O_WRONLY).isOpen();
}

} // namespace platform
