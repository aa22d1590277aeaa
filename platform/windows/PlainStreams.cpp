#include "platform/PlainStreams.h"

#include "platform/windows/Windows.h"

#include <cstdio>

#include <fcntl.h>
#include <io.h>

namespace platform {

PlainStreams::PlainStreams()
{
    ::_setmode(::_fileno(stdout), _O_BINARY);
    ::_setmode(::_fileno(stderr), _O_BINARY);
    if (::_isatty(::_fileno(stdout)) != 0 || ::_isatty(::_fileno(stderr)) != 0) {
        m_codePage = ::GetConsoleOutputCP();
        ::SetConsoleOutputCP(CP_UTF8);
    }
}

PlainStreams::~PlainStreams()
{
    std::fflush(stdout);
    std::fflush(stderr);
    if (m_codePage != 0) {
        ::SetConsoleOutputCP(m_codePage);
    }
}

} // namespace platform
