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

// A file under a name of its own, beside the one whose place it is to take. It is removed unless it gets there.
class NewFile final
{
public:
    // Made with the given mode, less what the process masks out.
    [[nodiscard]] static Result<NewFile> beside(const std::filesystem::path& place, mode_t mode);

    NewFile(NewFile&& other) noexcept
        : m_path(std::exchange(other.m_path, {}))
        , m_file(std::move(other.m_file))
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
    NewFile(std::filesystem::path path, Descriptor file)
        : m_path(std::move(path))
        , m_file(std::move(file))
    {}

    std::filesystem::path m_path; // empty when there is nothing to remove
    Descriptor m_file;
};

} // namespace platform
