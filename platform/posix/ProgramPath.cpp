#include "platform/ProgramPath.h"

#include <system_error>

namespace platform {

std::filesystem::path programPath()
{
    std::error_code unknown;
    return std::filesystem::read_symlink("/proc/self/exe", unknown);
}

} // namespace platform
