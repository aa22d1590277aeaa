#include "platform/ReplaceFile.h"

#include "platform/KeptCopy.h"
#include "platform/windows/NewFile.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::size_t kPiece = 65536;

// Some file systems know the mark and open the file all the same.
bool isMarkedReadOnly(const fs::path& path)
{
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

Handle openExisting(const fs::path& path, DWORD access)
{
    return Handle(
        ::CreateFileW(path.c_str(), access, kShareAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool isThere(const fs::path& path)
{
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool isPlainFile(const Handle& file)
{
    return ::GetFileType(file.get()) == FILE_TYPE_DISK;
}

// The file that a link leads to; the path itself when it is none, or a link to nothing.
fs::path realFile(const fs::path& path)
{
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return path;
    }
    const Handle file = openExisting(path, 0);
    std::array<wchar_t, 32768> name{};
    const DWORD length =
        ::GetFinalPathNameByHandleW(file.get(), name.data(), static_cast<DWORD>(name.size()), FILE_NAME_NORMALIZED);
    return length == 0 || length >= name.size() ? path : fs::path(std::wstring(name.data(), length));
}

// Reads on from where the file stands.
Result<std::string> readToEnd(const Handle& file)
{
    std::string bytes;
    for (;;) {
        const std::size_t size = bytes.size();
        bytes.resize(size + kPiece);
        DWORD count = 0;
        if (::ReadFile(file.get(), bytes.data() + size, static_cast<DWORD>(kPiece), &count, nullptr) == 0) {
            return lastSystemError();
        }
        bytes.resize(size + count);
        if (bytes.size() > kLargestFile) {
            return systemError(ERROR_FILE_TOO_LARGE);
        }
        if (count == 0) {
            return bytes;
        }
    }
}

Result<void> writeAt(const Handle& file, std::size_t position, std::string_view bytes)
{
    LARGE_INTEGER place = {};
    place.QuadPart = static_cast<LONGLONG>(position);
    if (::SetFilePointerEx(file.get(), place, nullptr, FILE_BEGIN) == 0) {
        return lastSystemError();
    }
    Result<void> written = writeAll(file, bytes);
    if (written && ::FlushFileBuffers(file.get()) == 0) {
        return lastSystemError();
    }
    return written;
}

Result<void> cutTo(const Handle& file, std::size_t size)
{
    LARGE_INTEGER end = {};
    end.QuadPart = static_cast<LONGLONG>(size);
    if (::SetFilePointerEx(file.get(), end, nullptr, FILE_BEGIN) == 0 || ::SetEndOfFile(file.get()) == 0 ||
        ::FlushFileBuffers(file.get()) == 0) {
        return lastSystemError();
    }
    return {};
}

Result<void> writeFromStart(const Handle& file, std::string_view bytes)
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
Overwritten overwrite(const Handle& file, std::string_view bytes, const std::optional<std::string>& old)
{
    LARGE_INTEGER length = {};
    if (::GetFileSizeEx(file.get(), &length) == 0) {
        return {.result = lastSystemError(), .isWhole = true}; // nothing was touched
    }
    const auto size = static_cast<std::size_t>(length.QuadPart);
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
    Handle file = openExisting(path, GENERIC_READ | GENERIC_WRITE);
    if (file.isOpen()) {
        Result<std::string> content = readToEnd(file);
        if (content) {
            old = std::move(content).value();
        }
    } else {
        file = openExisting(path, GENERIC_WRITE);
    }
    if (!file.isOpen()) {
        return lastSystemError();
    }
    KeptCopy copy(copies, path, bytes);
    const Overwritten written = overwrite(file, bytes, old);
    if (written.isWhole) {
        copy.remove();
    }
    return written.result;
}

// A folder without permission for new files, a file that another program holds open, a name that is so long that the
// one of a file beside it is too long, ...
bool isRefusalOfTheFolder(const SystemError& error)
{
    constexpr std::array<int, 7> kRefusals = {ERROR_ACCESS_DENIED,
                                              ERROR_SHARING_VIOLATION,
                                              ERROR_WRITE_PROTECT,
                                              ERROR_PATH_NOT_FOUND,
                                              ERROR_FILENAME_EXCED_RANGE,
                                              ERROR_UNABLE_TO_REMOVE_REPLACED,
                                              ERROR_UNABLE_TO_MOVE_REPLACEMENT};
    return std::find(kRefusals.begin(), kRefusals.end(), error.number) != kRefusals.end();
}

Result<void> writeBeside(const fs::path& path, std::string_view bytes)
{
    Result<NewFile> made = NewFile::beside(path);
    if (!made) {
        return made.error();
    }
    NewFile file = std::move(made).value();
    const Result<void> written = file.write(bytes);
    return written ? file.moveTo(path) : written;
}

bool allowsNewFiles(const fs::path& folder)
{
    const fs::path path = folder.empty() ? fs::path(L".") : folder;
    return Handle(::CreateFileW(path.c_str(), FILE_ADD_FILE, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS, nullptr))
        .isOpen();
}

} // namespace

Result<std::string> readFile(const fs::path& path)
{
    const Handle file = openExisting(path, GENERIC_READ);
    if (!file.isOpen()) {
        return lastSystemError();
    }
    if (!isPlainFile(file)) {
        return systemError(ERROR_INVALID_NAME);
    }
    LARGE_INTEGER size = {};
    if (::GetFileSizeEx(file.get(), &size) == 0) {
        return lastSystemError();
    }
    if (static_cast<std::uintmax_t>(size.QuadPart) > kLargestFile) {
        return systemError(ERROR_FILE_TOO_LARGE);
    }
    return readToEnd(file);
}

Result<void> replaceFile(const fs::path& path, std::string_view bytes, const fs::path& copies)
{
    const fs::path real = realFile(path);
    if (!isThere(real)) {
        return writeBeside(real, bytes);
    }
    if (isMarkedReadOnly(real)) {
        return systemError(ERROR_ACCESS_DENIED);
    }
    Handle file = openExisting(real, GENERIC_WRITE);
    if (!file.isOpen()) {
        return lastSystemError();
    }
    if (!isPlainFile(file)) {
        return writeAll(file, bytes);
    }
    file.close();
    // What another program has open and does not let go has to stay where it is.
    if (!openExisting(real, DELETE).isOpen()) {
        return writeInPlace(real, bytes, copies);
    }
    Result<void> replaced = writeBeside(real, bytes);
    // Not where the old file is gone: what is left then is the new one.
    if (!replaced && isRefusalOfTheFolder(replaced.error()) && isThere(real)) {
        return writeInPlace(real, bytes, copies);
    }
    return replaced;
}

bool canReplaceFile(const fs::path& path)
{
    const fs::path real = realFile(path);
    if (!real.has_filename()) {
        return false;
    }
    if (!isThere(real)) {
        return allowsNewFiles(real.parent_path());
    }
    const Handle file = openExisting(real, GENERIC_WRITE);
    return file.isOpen() && isPlainFile(file) && !isMarkedReadOnly(real);
}

} // namespace platform
