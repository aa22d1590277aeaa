#include "platform/windows/NewFile.h"

#include "platform/NewFileName.h"

#include <algorithm>
#include <string>
#include <utility>

namespace platform {

namespace fs = std::filesystem;

namespace {

// Other saves of this process, and those that died with the same process number, may hold a few names.
constexpr int kMostNames = 1000;
constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;

bool isDead(unsigned long process)
{
    const Handle handle(::OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(process)));
    return handle.isOpen() ? ::WaitForSingleObject(handle.get(), 0) == WAIT_OBJECT_0
                           : ::GetLastError() == ERROR_INVALID_PARAMETER;
}

// Such names have no other letters; every other character becomes one that no such name has.
std::string plainName(std::wstring_view name)
{
    std::string plain;
    for (const wchar_t c : name) {
        plain += c < 0x80 ? static_cast<char>(c) : '?';
    }
    return plain;
}

// A file that a process of another machine writes cannot be removed, because its writer shares it with nobody. What is
// in the way stays where it is: it hinders nobody.
void removeLeftovers(const fs::path& folder)
{
    WIN32_FIND_DATAW entry = {};
    const HANDLE search = ::FindFirstFileW((folder / L".teslin-*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        const std::optional<unsigned long> writer = writerOf(plainName(entry.cFileName));
        if (writer && isDead(*writer) && (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            ::DeleteFileW((folder / entry.cFileName).c_str());
        }
    } while (::FindNextFileW(search, &entry) != 0);
    ::FindClose(search);
}

// The mark that kept the file out of sight while it was written.
void unhide(const fs::path& path)
{
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        ::SetFileAttributesW(path.c_str(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_HIDDEN));
    }
}

} // namespace

Result<void> writeAll(const Handle& file, std::string_view bytes)
{
    while (!bytes.empty()) {
        DWORD count = 0;
        if (::WriteFile(file.get(), bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce)), &count,
                        nullptr) == 0) {
            return lastSystemError();
        }
        if (count == 0) {
            return systemError(ERROR_WRITE_FAULT);
        }
        bytes.remove_prefix(count);
    }
    return {};
}

NewFile::NewFile(fs::path path, Handle file)
    : m_path(std::move(path))
    , m_file(std::move(file))
{}

Result<NewFile> NewFile::beside(const fs::path& place)
{
    removeLeftovers(place.parent_path());
    for (int number = 0; number < kMostNames; ++number) {
        fs::path path = place.parent_path() / newFileName(::GetCurrentProcessId(), number);
        Handle file(::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_HIDDEN, nullptr));
        if (file.isOpen()) {
            return NewFile(std::move(path), std::move(file));
        }
        if (::GetLastError() != ERROR_FILE_EXISTS) {
            return lastSystemError();
        }
    }
    return systemError(ERROR_FILE_EXISTS);
}

NewFile::~NewFile()
{
    m_file.close();
    if (!m_path.empty()) {
        ::DeleteFileW(m_path.c_str());
    }
}

Result<void> NewFile::write(std::string_view bytes)
{
    Result<void> written = writeAll(m_file, bytes);
    if (written && ::FlushFileBuffers(m_file.get()) == 0) {
        return lastSystemError();
    }
    return written;
}

Result<void> NewFile::moveTo(const fs::path& place)
{
    m_file.close();
    const DWORD before = ::GetFileAttributesW(place.c_str());
    const bool staysHidden = before != INVALID_FILE_ATTRIBUTES && (before & FILE_ATTRIBUTE_HIDDEN) != 0;
    // Before it is in its place: a file that its user cannot see is worse than a left-over one that he can.
    if (!staysHidden) {
        unhide(m_path);
    }
    // What the new file cannot take over of the old one's rights is no reason to fail.
    constexpr DWORD kReplace = REPLACEFILE_IGNORE_MERGE_ERRORS;
    constexpr DWORD kMove = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    // Not every file system can do the former, and it needs a file to replace.
    if (::ReplaceFileW(place.c_str(), m_path.c_str(), nullptr, kReplace, nullptr, nullptr) == 0 &&
        ::MoveFileExW(m_path.c_str(), place.c_str(), kMove) == 0) {
        const SystemError error = lastSystemError();
        // The system may have taken the old file away and then failed to put the new one into its place. What is left
        // of the two is the new one: better under its odd name than gone.
        if (before != INVALID_FILE_ATTRIBUTES && ::GetFileAttributesW(place.c_str()) == INVALID_FILE_ATTRIBUTES) {
            m_path.clear();
        }
        return error;
    }
    m_path.clear();
    return {};
}

} // namespace platform
