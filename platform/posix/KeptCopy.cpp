#include "platform/KeptCopy.h"

#include "platform/KeptCopyName.h"
#include "platform/posix/NewFile.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

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
        // For nobody else: who may read the file itself is not known here.
        Descriptor copy(
            uninterrupted([&path] { return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600); }));
        if (copy.isOpen()) {
            m_path = path;
            if (!writeAll(copy, bytes) || ::fsync(copy.number()) != 0) {
                remove(); // half of a copy would pass for a whole one
            }
            return;
        }
        if (errno != EEXIST) {
            return;
        }
    }
}

void KeptCopy::remove()
{
    if (!m_path.empty()) {
        ::unlink(m_path.c_str());
        m_path.clear();
    }
}

} // namespace platform
