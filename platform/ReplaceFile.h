#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

// Whole files, in and out. A file of this program is a technician's work: a save leaves the complete new file or the
// old one untouched, whatever happens on the way, wherever the system lets a file be replaced.
namespace platform {

// The largest file that readFile reads. The program's own files have a few kilobytes; the limit keeps a disk image that
// was chosen by mistake from filling the memory.
constexpr std::uintmax_t kLargestFile = std::uintmax_t{256} * 1024 * 1024;

// The bytes of a plain file. Anything else (a folder, a device, a pipe, which might never end) is an error.
[[nodiscard]] Result<std::string> readFile(const std::filesystem::path& path);

// Gives a file new content: a new file is written beside it, brought to the disk and renamed into its place, with the
// old one's mode and, where the system allows, its owner. A link is followed and stays a link; one that cannot be read
// is a failure. A file that may not be written is not replaced either. The new file is removed on failure. Only a
// process that dies in the middle may leave it behind (a hidden file, .teslin- and numbers); the next save in the
// folder removes what dead processes have left.
//
// Where the folder allows no new file or no renaming, the file is written in place: first what goes behind its old
// content, then the rest. Its old content is put back if that fails. A process that is killed in the middle leaves the
// old content, the old content with the end of the new one behind it, or the beginning of the new content and the rest
// of the old one. Until the file is whole the new content is therefore kept in the folder for copies as well, if one is
// given: under the file's name with ".unfinished" behind it. It remains when the process is killed in the middle, and
// when a disk fails so that neither the new content nor the old one is known to be whole. What is no plain file (a
// device) is written as it is.
[[nodiscard]] Result<void> replaceFile(const std::filesystem::path& path, std::string_view bytes,
                                       const std::filesystem::path& copies = {});

// True when replaceFile would be allowed to write this file, or to make it if it does not exist. Changes nothing.
[[nodiscard]] bool canReplaceFile(const std::filesystem::path& path);

} // namespace platform
