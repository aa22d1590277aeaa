#pragma once

#include "platform/Result.h"
#include "platform/posix/Descriptor.h"

#include <filesystem>
#include <string_view>
#include <utility>

#include <sys/stat.h>

namespace platform {

// Writes all bytes where the file stands.
[[nodiscard]] Result<void> writeAll(const Descriptor& file, std::string_view bytes);

// A file under a name of its own, beside the one whose place it is to take. It is removed unless it gets there. It is
// locked for as long as it is being written, which tells it from what a process that died has left.
class NewFile final
{
public:
    // Made with the given mode, less what the process masks out. Removes what dead processes have left in the folder.
    [[nodiscard]] static Result<NewFile> beside(const std::filesystem::path& place, mode_t mode);

    NewFile(NewFile&& other) noexcept
        : m_path(std::exchange(other.m_path, {}))
        , m_file(std::move(other.m_file))
        , m_lock(std::move(other.m_lock))
    {}
    NewFile& operator=(NewFile&&) = delete;
    ~NewFile();

    // Takes over mode, group and owner, as far as the system allows, and the list of who else may do what. Fails when
    // that list cannot be taken over.
    [[nodiscard]] Result<void> resemble(const std::filesystem::path& old, const struct stat& look);

    // Writes the whole content and brings it to the disk.
    [[nodiscard]] Result<void> write(std::string_view bytes);

    [[nodiscard]] Result<void> moveTo(const std::filesystem::path& place);

private:
    NewFile(std::filesystem::path path, Descriptor file);

    std::filesystem::path m_path; // empty when there is nothing to remove
    Descriptor m_file;
    Descriptor m_lock; // of the same file, which is closed before it is moved
};

} // namespace platform
