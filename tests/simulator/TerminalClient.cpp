#include "TerminalClient.h"

#include "SimulatorProcess.h"

#include <QFile>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

TerminalClient::TerminalClient(const QString& path)
    : m_fd(::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
{}

TerminalClient::~TerminalClient()
{
    close();
}

void TerminalClient::close()
{
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
    }
}

bool TerminalClient::send(const QByteArray& bytes) const
{
    return ::write(m_fd, bytes.constData(), static_cast<std::size_t>(bytes.size())) == bytes.size();
}

// False at the limit of the tests and at a hang-up.
bool TerminalClient::readByte(QByteArray& bytes) const
{
    pollfd polled{m_fd, POLLIN, 0};
    char byte = 0;
    if (::poll(&polled, 1, SimulatorProcess::kLimit) != 1 || ::read(m_fd, &byte, 1) != 1) {
        return false;
    }
    bytes.append(byte);
    return true;
}

QByteArray TerminalClient::read(qsizetype count) const
{
    QByteArray bytes;
    while (bytes.size() < count && readByte(bytes)) {
    }
    return bytes;
}

QByteArray TerminalClient::readTo(char end) const
{
    QByteArray bytes;
    while (!bytes.endsWith(end) && readByte(bytes)) {
    }
    return bytes;
}

bool TerminalClient::waitForHangUp() const
{
    pollfd polled{m_fd, 0, 0};
    return ::poll(&polled, 1, SimulatorProcess::kLimit) == 1 && (polled.revents & POLLHUP) != 0;
}
