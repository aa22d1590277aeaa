#pragma once

#include <QElapsedTimer>
#include <QtGlobal>

#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace test {

// The driver's side of a serial port: a pseudo-terminal whose other half the program opens. Raw, and with a descriptor
// of its own on the program's half, so that the line stays up when the program closes it.
class PseudoTerminal final
{
public:
    static constexpr int kLimit = 5000; // milliseconds until a condition counts as failed

    PseudoTerminal()
        : m_master(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
        if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0) {
            qFatal("no pseudo-terminal");
        }
        m_path = ::ptsname(m_master);
        m_keeper = ::open(m_path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        termios settings = {};
        if (m_keeper < 0 || ::tcgetattr(m_keeper, &settings) != 0) {
            qFatal("cannot open %s", m_path.c_str());
        }
        ::cfmakeraw(&settings);
        ::tcsetattr(m_keeper, TCSANOW, &settings);
    }
    ~PseudoTerminal() { hangUp(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    // What the program opens.
    [[nodiscard]] const std::string& path() const { return m_path; }

    void send(std::string_view bytes) const
    {
        if (::write(m_master, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
            qFatal("cannot write to the pseudo-terminal");
        }
    }

    // The driver stops reading: the line is filled from the program's side until it takes nothing more. Gives how many
    // bytes stand on it.
    [[nodiscard]] std::size_t fill() const
    {
        const std::string bytes(1024, '.');
        std::size_t piece = bytes.size();
        std::size_t size = 0;
        // The system moves bytes on a little later, and then there is room again.
        for (int refusals = 0; refusals < 20;) {
            const ssize_t count = ::write(m_keeper, bytes.data(), piece);
            if (count > 0) {
                size += static_cast<std::size_t>(count);
                refusals = 0;
            } else if (piece > 1) {
                piece = 1;
            } else {
                ++refusals;
                ::poll(nullptr, 0, 5);
            }
        }
        return size;
    }

    // Everything the program has sent so far. Does not wait.
    [[nodiscard]] std::string received() const
    {
        std::string bytes;
        char buffer[4096];
        for (ssize_t count = ::read(m_master, buffer, sizeof buffer); count > 0;
             count = ::read(m_master, buffer, sizeof buffer)) {
            bytes.append(buffer, static_cast<std::size_t>(count));
        }
        return bytes;
    }

    // Waits until so many bytes came from the program; gives what came.
    [[nodiscard]] std::string receive(std::size_t size) const
    {
        std::string bytes = received();
        QElapsedTimer clock;
        clock.start();
        while (bytes.size() < size && clock.elapsed() < kLimit) {
            pollfd door = {m_master, POLLIN, 0};
            ::poll(&door, 1, 10);
            bytes += received();
        }
        return bytes;
    }

    // Bytes that stand before the program's half and were not read yet.
    [[nodiscard]] int held() const
    {
        int size = -1;
        ::ioctl(m_keeper, FIONREAD, &size);
        return size;
    }
    // Sends bytes and waits, without events, until they stand before the program's half; false when they do not come.
    [[nodiscard]] bool deliver(std::string_view bytes) const
    {
        const int wanted = held() + static_cast<int>(bytes.size());
        send(bytes);
        QElapsedTimer clock;
        clock.start();
        while (held() < wanted && clock.elapsed() < kLimit) {
            ::poll(nullptr, 0, 1);
        }
        return held() == wanted;
    }

    [[nodiscard]] termios settings() const
    {
        termios settings = {};
        ::tcgetattr(m_keeper, &settings);
        return settings;
    }

    // The driver goes away.
    void hangUp()
    {
        for (int* const descriptor : {&m_keeper, &m_master}) {
            if (*descriptor >= 0) {
                ::close(std::exchange(*descriptor, -1));
            }
        }
    }

private:
    int m_master = -1;
    int m_keeper = -1;
    std::string m_path;
};

} // namespace test
