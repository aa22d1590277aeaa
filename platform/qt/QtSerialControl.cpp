#include "platform/qt/QtSerialControl.h"

#include "platform/qt/AnsiText.h"

#include <QDeadlineTimer>
#include <QFile>

#include <cerrno>

#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace platform {

QtSerialControl::QtSerialControl(const DosNames& names, QObject* parent)
    : PortControl(names, EINVAL, EBUSY, parent)
{
    connect(&m_port, &QSerialPort::readyRead, this, [this] {
        const QByteArray bytes = m_port.readAll();
        append({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    });
    connect(&m_port, &QSerialPort::errorOccurred, this, &QtSerialControl::handleError);
}

Result<void> QtSerialControl::openPort(const std::filesystem::path& path)
{
    m_port.setPortName(QFile::decodeName(path.c_str()));
    errno = 0;
    if (!m_port.open(QIODevice::ReadWrite)) {
        // Qt's own text comes in the user's language.
        const int number = errno;
        return number != 0 ? systemError(number) : SystemError{.description = toAnsi(m_port.errorString())};
    }
    // What the driver said while nobody listened must not pass for the first reply.
    m_port.clear(QSerialPort::Input);
    return {};
}

// Past Qt, which takes a line that is full for a moment for one that is broken.
bool QtSerialControl::write(std::string_view bytes)
{
    const int port = m_port.handle();
    const QDeadlineTimer deadline(kLongestWrite);
    while (!bytes.empty()) {
        const ssize_t count = ::write(port, bytes.data(), bytes.size());
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if ((count == 0 || errno == EAGAIN) && !deadline.hasExpired()) {
            pollfd room = {port, POLLOUT, 0};
            ::poll(&room, 1, static_cast<int>(deadline.remainingTime()));
        } else if (count == 0 || errno != EINTR) {
            ::tcflush(port, TCOFLUSH);
            return false;
        }
    }
    return true;
}

void QtSerialControl::handleError(QSerialPort::SerialPortError error)
{
    if (error == QSerialPort::ResourceError || error == QSerialPort::ReadError) {
        loseConnection();
    }
}

} // namespace platform
