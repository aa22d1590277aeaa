#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <poll.h>

#include <termios.h>
#include <unistd.h>

namespace test {

// A wait that only a broken product or a hung machine reaches.
constexpr std::chrono::seconds kPatience{30};

// A fresh pseudo-terminal, cooked as the system makes it: the driver's end is held here, the other end has a path. Like
// a device that stays attached, it keeps an own descriptor of the other end, so that it outlives every open and close.
class PseudoTerminal final
{
public:
    PseudoTerminal()
        : m_driver(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (m_driver < 0 || ::grantpt(m_driver) != 0 || ::unlockpt(m_driver) != 0) {
            qFatal("no pseudo-terminal to be had");
        }
        m_path = ::ptsname(m_driver);
        m_otherEnd = ::open(m_path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (m_otherEnd < 0) {
            qFatal("cannot open %s", m_path.c_str());
        }
    }
    ~PseudoTerminal()
    {
        ::close(m_otherEnd);
        hangUp();
    }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

    [[nodiscard]] termios settings() const
    {
        termios settings{};
        if (::tcgetattr(m_otherEnd, &settings) != 0) {
            qFatal("the pseudo-terminal has no settings");
        }
        return settings;
    }

    void makeRaw() const
    {
        termios raw = settings();
        ::cfmakeraw(&raw);
        if (::tcsetattr(m_otherEnd, TCSANOW, &raw) != 0) {
            qFatal("the pseudo-terminal stays cooked");
        }
    }

    // What the driver receives, up to and including the given byte, or what came until it hung.
    [[nodiscard]] QByteArray receiveUntil(char end) const
    {
        QByteArray received;
        char byte = 0;
        while (!received.endsWith(end) && isReadable(m_driver) && ::read(m_driver, &byte, 1) == 1) {
            received += byte;
        }
        return received;
    }

    void send(const QByteArray& bytes) const
    {
        for (qsizetype sent = 0; sent < bytes.size();) {
            const ssize_t count = ::write(m_driver, bytes.data() + sent, static_cast<size_t>(bytes.size() - sent));
            if (count < 0 && errno != EINTR) {
                return;
            }
            sent += qMax<ssize_t>(count, 0);
        }
    }

    // Waits until something that was sent can be read at the other end.
    [[nodiscard]] bool hasArrived() const { return isReadable(m_otherEnd); }

    void hangUp()
    {
        if (m_driver >= 0) {
            ::close(m_driver);
            m_driver = -1;
        }
    }

private:
    [[nodiscard]] static bool isReadable(int descriptor)
    {
        pollfd wanted{descriptor, POLLIN, 0};
        const auto limit = std::chrono::milliseconds(kPatience).count();
        return ::poll(&wanted, 1, static_cast<int>(limit)) == 1 && (wanted.revents & POLLIN) != 0;
    }

    int m_driver = -1;
    int m_otherEnd = -1;
    std::filesystem::path m_path;
};

} // namespace test
