#pragma once

#include <filesystem>
#include <string_view>

namespace platform {

// What is about to be written into a file in place, kept under a name of its own for as long as the file may hold a
// mixture. It stays, for the user, unless remove() is called: when the process dies meanwhile, and when neither the new
// content nor the old one could be written whole.
class KeptCopy final
{
public:
    // Makes the copy in the folder, which is made, too; without a folder, and where that fails, there is none, nor half
    // of one. A copy that is there already is the last of somebody's work and stays.
    KeptCopy(const std::filesystem::path& folder, const std::filesystem::path& file, std::string_view bytes);
    KeptCopy(const KeptCopy&) = delete;
    KeptCopy& operator=(const KeptCopy&) = delete;

    // The file is whole and on the disk, with its new content or again with its old one: the copy is not needed.
    void remove();

private:
    std::filesystem::path m_path; // empty: there is none
};

} // namespace platform
