#include "simulator/posix/PseudoTerminal.h"

#include "simulator/posix/SetupError.h"

#include <fcntl.h>
#include <sys/ioctl.h>

#include <array>
#include <cerrno>
#include <cstdlib>

namespace simulator {

PseudoTerminal::PseudoTerminal()
    : m_master(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
{
    std::array<char, 64> name{};
    if (!m_master.isOpen() || ::grantpt(master()) != 0 || ::unlockpt(master()) != 0 ||
        ::ptsname_r(master(), name.data(), name.size()) != 0) {
        throw systemError("open a pseudo-terminal");
    }
    m_slavePath = name.data();
    m_slave = Descriptor(::open(m_slavePath.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!m_slave.isOpen() || ::tcgetattr(m_slave.get(), &m_rawSettings) != 0) {
        throw systemError("open " + m_slavePath);
    }
    ::cfmakeraw(&m_rawSettings);
    if (::tcsetattr(m_slave.get(), TCSANOW, &m_rawSettings) != 0) {
        throw systemError("make " + m_slavePath + " raw");
    }
}

std::string PseudoTerminal::read() const
{
    std::string bytes;
    std::array<char, 4096> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by read
    while (true) {
        const ssize_t count = ::read(master(), buffer.data(), buffer.size());
        if (count > 0) {
            bytes.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return bytes;
        }
    }
}

std::optional<std::size_t> PseudoTerminal::write(std::string_view bytes) const
{
    while (true) {
        const ssize_t count = ::write(master(), bytes.data(), bytes.size());
        if (count >= 0) {
            return static_cast<std::size_t>(count);
        }
        if (errno == EAGAIN) {
            return 0;
        }
        if (errno != EINTR) {
            return std::nullopt;
        }
    }
}

void PseudoTerminal::restoreAfterClient() const
{
    ::ioctl(m_slave.get(), TIOCNXCL);
    ::tcsetattr(m_slave.get(), TCSANOW, &m_rawSettings);
}

} // namespace simulator
