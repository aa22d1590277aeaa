#include "platform/DeviceObject.h"

#include "platform/PortAnswer.h"
#include "platform/posix/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace platform {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

// A terminal would otherwise echo the driver's own answer back to it, turn its carriage returns into line feeds, and
// hold an answer back until a line end comes.
Result<void> makeRaw(const Descriptor& terminal)
{
    termios settings{};
    if (::tcgetattr(terminal.number(), &settings) != 0) {
        return lastSystemError();
    }
    ::cfmakeraw(&settings);
    settings.c_cflag |= CLOCAL | CREAD;
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    // Not after a drain: with nobody at the other end that would wait for ever.
    if (::tcsetattr(terminal.number(), TCSANOW, &settings) != 0 || ::tcflush(terminal.number(), TCIFLUSH) != 0) {
        return lastSystemError();
    }
    return {};
}

class PosixDeviceObject final : public DeviceObject
{
public:
    PosixDeviceObject(DosNames names, DeviceObjectLimits limits)
        : m_names(std::move(names))
        , m_limits(limits)
    {}

    [[nodiscard]] Result<void> open(std::string_view dosName) override;
    [[nodiscard]] Result<void> write(std::string_view bytes) override;
    [[nodiscard]] Result<std::string> read(std::size_t most) override;
    void close() override { m_device = Descriptor(); }

private:
    // Waits until the device can be used as asked, or until something has happened to it that its next use will tell.
    [[nodiscard]] Result<void> waitFor(short event, milliseconds limit) const;
    // Adds what can be read now, up to the given size of the whole. False at the end of a plain file.
    [[nodiscard]] Result<bool> append(std::string& answer, std::size_t most) const;

    DosNames m_names;
    DeviceObjectLimits m_limits;
    Descriptor m_device;
    bool m_isTerminal = false;
};

Result<void> PosixDeviceObject::open(std::string_view dosName)
{
    close();
    const Result<std::filesystem::path> path = m_names.find(dosName);
    if (!path) {
        return path.error();
    }
    Descriptor device(
        uninterrupted([&path] { return ::open(path.value().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC); }));
    if (!device.isOpen()) {
        return lastSystemError();
    }
    // A terminal that has hung up no longer says that it is one, so this is asked once.
    m_isTerminal = ::isatty(device.number()) == 1;
    if (m_isTerminal) {
        Result<void> raw = makeRaw(device);
        if (!raw) {
            return raw;
        }
    }
    m_device = std::move(device);
    return {};
}

Result<void> PosixDeviceObject::waitFor(short event, milliseconds limit) const
{
    const Clock::time_point end = Clock::now() + limit;
    for (;;) {
        whileWaiting();
        const auto left = std::max(std::chrono::ceil<milliseconds>(end - Clock::now()), milliseconds::zero());
        pollfd wanted{m_device.number(), event, 0};
        const int ready = ::poll(&wanted, 1, static_cast<int>(std::min(left, m_limits.breath).count()));
        if (ready > 0) {
            return {};
        }
        if (ready == 0 && left <= m_limits.breath) {
            return systemError(ETIMEDOUT);
        }
        if (ready < 0 && errno != EINTR) {
            return lastSystemError();
        }
    }
}

Result<void> PosixDeviceObject::write(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(m_device.number(), bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            Result<void> ready = waitFor(POLLOUT, m_limits.firstByte);
            if (!ready) {
                return ready;
            }
        } else if (errno != EINTR) {
            return lastSystemError();
        }
    }
    return {};
}

Result<std::string> PosixDeviceObject::read(std::size_t most)
{
    if (!m_device.isOpen()) {
        return systemError(EBADF);
    }
    std::string answer;
    while (answer.size() < most && !namesAPort(answer)) {
        const Result<void> ready = waitFor(POLLIN, answer.empty() ? m_limits.firstByte : m_limits.quiet);
        if (!ready && ready.error().number == ETIMEDOUT && !answer.empty()) {
            break;
        }
        if (!ready) {
            return ready.error();
        }
        const Result<bool> goesOn = append(answer, most);
        if (!goesOn) {
            return goesOn.error();
        }
        if (!goesOn.value()) {
            break;
        }
    }
    return answer;
}

Result<bool> PosixDeviceObject::append(std::string& answer, std::size_t most) const
{
    const std::size_t before = answer.size();
    answer.resize(most);
    const ssize_t count =
        uninterrupted([&] { return ::read(m_device.number(), answer.data() + before, most - before); });
    if (count < 0) {
        return lastSystemError();
    }
    answer.resize(before + static_cast<std::size_t>(count));
    if (count == 0 && m_isTerminal) {
        return systemError(EIO);
    }
    return count > 0;
}

} // namespace

std::unique_ptr<DeviceObject> makeDeviceObject(DosNames names, DeviceObjectLimits limits)
{
    return std::make_unique<PosixDeviceObject>(std::move(names), limits);
}

} // namespace platform
