#pragma once

#include "platform/Result.h"
#include "platform/windows/Handle.h"

#include <filesystem>
#include <string_view>

namespace platform {

[[nodiscard]] Result<void> writeAll(const Handle& file, std::string_view bytes);

// A file that is being written and does not stand in its place yet, out of sight. It is removed again unless it gets
// there.
class NewFile final
{
public:
    // Makes one in the folder of the place that it is meant for. Removes what dead processes have left there.
    [[nodiscard]] static Result<NewFile> beside(const std::filesystem::path& place);

    NewFile(NewFile&& other) noexcept = default;
    NewFile& operator=(NewFile&& other) = delete;
    ~NewFile();

    // Writes the content and brings it to the disk.
    [[nodiscard]] Result<void> write(std::string_view bytes);
    // Takes the place of a file and its attributes, rights and time of creation; of none when there is no file. When
    // that fails half-way, so that the old file is gone, this one stays under its own name.
    [[nodiscard]] Result<void> moveTo(const std::filesystem::path& place);

private:
    NewFile(std::filesystem::path path, Handle file);

    std::filesystem::path m_path; // empty when it has been moved away
    Handle m_file;
};

} // namespace platform
