#include "platform/KeptCopyName.h"

#include <string>

namespace platform {

std::filesystem::path keptCopyName(const std::filesystem::path& file, int number)
{
    std::filesystem::path name = file.filename();
    name += ".unfinished";
    if (number > 1) {
        name += '-';
        name += std::to_string(number);
    }
    return name;
}

} // namespace platform
