#include "platform/windows/NewFile.h"

#include <algorithm>
#include <string>
#include <utility>

namespace platform {

namespace fs = std::filesystem;

namespace {

// Other saves of this process, and those that died with the same process number, may hold a few names.
constexpr int kMostNames = 1000;
constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;

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
    const std::wstring start = L".teslin-" + std::to_wstring(::GetCurrentProcessId()) + L'-';
    for (int number = 0; number < kMostNames; ++number) {
        fs::path path = place.parent_path() / (start + std::to_wstring(number));
        Handle file(::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
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
    // What the new file cannot take over of the old one's rights is no reason to fail.
    constexpr DWORD kReplace = REPLACEFILE_IGNORE_MERGE_ERRORS;
    constexpr DWORD kMove = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    // Not every file system can do the former, and it needs a file to replace.
    if (::ReplaceFileW(place.c_str(), m_path.c_str(), nullptr, kReplace, nullptr, nullptr) == 0 &&
        ::MoveFileExW(m_path.c_str(), place.c_str(), kMove) == 0) {
        return lastSystemError();
    }
    m_path.clear();
    return {};
}

} // namespace platform
