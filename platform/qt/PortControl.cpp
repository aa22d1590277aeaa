#include "platform/qt/PortControl.h"

namespace platform {

PortControl::PortControl(const DosNames& names, int outOfRange, int busy, QObject* parent)
    : QObject(parent)
    , m_names(names)
    , m_outOfRange(outOfRange)
    , m_busy(busy)
{}

Result<void> PortControl::setCommPort(int number)
{
    if (number < 1 || number > kHighestPort) {
        return systemError(m_outOfRange);
    }
    if (m_isOpen && number != m_number) {
        return systemError(m_busy);
    }
    m_number = number;
    return {};
}

Result<void> PortControl::setPortOpen(bool open)
{
    if (open == m_isOpen) {
        return {};
    }
    m_received.clear();
    if (!open) {
        m_isOpen = false;
        closePort();
        return {};
    }
    const auto path = m_names.find("COM" + std::to_string(m_number));
    if (!path) {
        return path.error();
    }
    Result<void> opened = openPort(path.value());
    if (opened) {
        m_isLost = false;
        m_isOpen = true;
    }
    return opened;
}

void PortControl::Output(std::string_view bytes)
{
    if (m_isOpen && !m_isLost && !write(bytes)) {
        loseConnection();
    }
}

void PortControl::loseConnection()
{
    if (!m_isOpen || m_isLost) {
        return;
    }
    m_isLost = true;
    // Queued, because a port must not be closed from inside its own signal; closed at once, because a terminal that has
    // hung up reports its error without end.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_isLost) {
                closePort();
            }
        },
        Qt::QueuedConnection);
    if (m_onConnectionLost) {
        m_onConnectionLost();
    }
}

} // namespace platform
