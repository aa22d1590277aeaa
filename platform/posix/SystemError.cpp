#include "platform/SystemError.h"

#include <cerrno>
#include <clocale>
#include <cstring>

namespace platform {

SystemError systemError(int number)
{
    // The program speaks English in one byte a character; the user's locale may speak another language in UTF-8.
    static const locale_t english = newlocale(LC_ALL_MASK, "C", locale_t{});
    return {number, strerror_l(number, english)};
}

SystemError lastSystemError()
{
    return systemError(errno);
}

bool isNotFound(const SystemError& error)
{
    return error.number == ENOENT || error.number == ENOTDIR;
}

} // namespace platform
