#include "platform/TerminalKeys.h"

#include <array>
#include <cerrno>

#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace platform {

namespace {

class PosixTerminalKeys final : public TerminalKeys
{
public:
    PosixTerminalKeys() = default;
    ~PosixTerminalKeys() override
    {
        if (m_before) {
            ::tcsetattr(STDIN_FILENO, TCSANOW, &*m_before);
        }
    }

    [[nodiscard]] bool takeEveryKey() override
    {
        termios settings{};
        if (::tcgetattr(STDIN_FILENO, &settings) != 0) {
            return false;
        }
        const termios before = settings;
        settings.c_iflag &= ~static_cast<tcflag_t>(BRKINT | ICRNL | INLCR | IGNCR | INPCK | ISTRIP | IXON);
        settings.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHONL | ICANON | ISIG | IEXTEN);
        settings.c_cc[VMIN] = 1;
        settings.c_cc[VTIME] = 0;
        if (::tcsetattr(STDIN_FILENO, TCSANOW, &settings) != 0) {
            return false;
        }
        m_before = before;
        return true;
    }

    [[nodiscard]] std::optional<std::string> read(std::chrono::milliseconds limit) override
    {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        if (::poll(&input, 1, static_cast<int>(limit.count())) <= 0) {
            return std::string();
        }
        std::array<char, 1024> buffer{};
        const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) {
            return std::string();
        }
        return count > 0 ? std::optional(std::string(buffer.data(), static_cast<std::size_t>(count))) : std::nullopt;
    }

private:
    std::optional<termios> m_before;
};

} // namespace

bool isTerminal(Stream stream)
{
    constexpr std::array kDescriptors = {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO};
    return ::isatty(kDescriptors[static_cast<std::size_t>(stream)]) != 0;
}

std::unique_ptr<TerminalKeys> makeTerminalKeys()
{
    return std::make_unique<PosixTerminalKeys>();
}

} // namespace platform
