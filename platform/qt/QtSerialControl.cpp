#include "platform/qt/QtSerialControl.h"

#include "platform/qt/AnsiText.h"

#include <QDeadlineTimer>
#include <QFile>

#include <cerrno>
#include <chrono>

namespace platform {

namespace {

// How long a write may wait for the system to take its bytes. A line is a few dozen bytes, so it waits only when the
// driver has stopped reading.
constexpr std::chrono::milliseconds kLongestWrite{200};

} // namespace

QtSerialControl::QtSerialControl(const DosNames& names, QObject* parent)
    : QObject(parent)
    , m_names(names)
{
    connect(&m_port, &QSerialPort::readyRead, this, [this] {
        const QByteArray bytes = m_port.readAll();
        m_received.append({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    });
    connect(&m_port, &QSerialPort::errorOccurred, this, &QtSerialControl::handleError);
}

Result<void> QtSerialControl::setCommPort(int number)
{
    if (number < 1 || number > kHighestPort) {
        return systemError(EINVAL);
    }
    if (m_isOpen && number != m_number) {
        return systemError(EBUSY);
    }
    m_number = number;
    return {};
}

Result<void> QtSerialControl::setPortOpen(bool open)
{
    if (open == m_isOpen) {
        return {};
    }
    if (open) {
        return this->open();
    }
    m_isOpen = false;
    m_port.close();
    m_received.clear();
    return {};
}

Result<void> QtSerialControl::open()
{
    const auto path = m_names.find("COM" + std::to_string(m_number));
    if (!path) {
        return path.error();
    }
    m_port.setPortName(QFile::decodeName(path.value().c_str()));
    errno = 0;
    if (!m_port.open(QIODevice::ReadWrite)) {
        // Qt's own text comes in the user's language.
        const int number = errno;
        return number != 0 ? systemError(number) : SystemError{.description = toAnsi(m_port.errorString())};
    }
    // What the driver said while nobody listened must not pass for the first reply.
    m_port.clear(QSerialPort::Input);
    m_received.clear();
    m_isLost = false;
    m_isOpen = true;
    return {};
}

void QtSerialControl::Output(std::string_view bytes)
{
    if (!m_isOpen || m_isLost) {
        return;
    }
    m_port.write(bytes.data(), static_cast<qint64>(bytes.size()));
    // Closing throws away what Qt has not handed to the system yet, so nothing is left for later.
    const QDeadlineTimer deadline(kLongestWrite);
    m_port.flush();
    while (m_port.isOpen() && m_port.bytesToWrite() > 0 && !deadline.hasExpired()) {
        if (!m_port.waitForBytesWritten(static_cast<int>(deadline.remainingTime()))) {
            break;
        }
    }
}

void QtSerialControl::handleError(QSerialPort::SerialPortError error)
{
    const bool isLoss = error == QSerialPort::ResourceError || error == QSerialPort::WriteError ||
                        error == QSerialPort::ReadError || error == QSerialPort::PermissionError;
    if (!isLoss || !m_isOpen || m_isLost) {
        return;
    }
    m_isLost = true;
    // Queued, because the port must not be closed from inside its own signal; closed at once, because a terminal that
    // has hung up reports its error without end.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_isLost) {
                m_port.close();
            }
        },
        Qt::QueuedConnection);
    if (m_onConnectionLost) {
        m_onConnectionLost();
    }
}

} // namespace platform
