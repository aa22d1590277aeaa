#pragma once

#include <filesystem>
#include <string_view>

namespace platform {

// What is about to be written into a file in place, kept under a name of its own until that is done. Only a process
// that dies meanwhile leaves it behind.
class KeptCopy final
{
public:
    // Makes the copy in the folder, which is made, too; without a folder, and where that fails, there is none. A copy
    // that is there already is the last of somebody's work and stays.
    KeptCopy(const std::filesystem::path& folder, const std::filesystem::path& file, std::string_view bytes);
    ~KeptCopy();
    KeptCopy(const KeptCopy&) = delete;
    KeptCopy& operator=(const KeptCopy&) = delete;

private:
    std::filesystem::path m_path; // empty: there is none
};

} // namespace platform
