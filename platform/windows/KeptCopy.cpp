#include "platform/KeptCopy.h"

#include "platform/KeptCopyName.h"
#include "platform/windows/NewFile.h"

#include <system_error>

namespace platform {

namespace fs = std::filesystem;

KeptCopy::KeptCopy(const fs::path& folder, const fs::path& file, std::string_view bytes)
{
    if (folder.empty()) {
        return;
    }
    std::error_code existsAlready;
    fs::create_directories(folder, existsAlready);
    for (int number = 1; number <= kMostKeptCopies; ++number) {
        const fs::path path = folder / keptCopyName(file, number);
        Handle copy(::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (copy.isOpen()) {
            m_path = path;
            if (!writeAll(copy, bytes) || ::FlushFileBuffers(copy.get()) == 0) {
                copy.close();
                remove(); // half of a copy would pass for a whole one
            }
            return;
        }
        if (::GetLastError() != ERROR_FILE_EXISTS) {
            return;
        }
    }
}

void KeptCopy::remove()
{
    if (!m_path.empty()) {
        ::DeleteFileW(m_path.c_str());
        m_path.clear();
    }
}

} // namespace platform
