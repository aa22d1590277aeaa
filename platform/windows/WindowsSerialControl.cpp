#include "platform/windows/WindowsSerialControl.h"

namespace platform {

WindowsSerialControl::WindowsSerialControl(const DosNames& names, QObject* parent)
    : QObject(parent)
    , m_names(names)
{
    m_port.setOnReceived([this](std::string_view bytes) { m_received.append(bytes); });
    m_port.setOnFailed([this] { loseConnection(); });
}

Result<void> WindowsSerialControl::setCommPort(int number)
{
    if (number < 1 || number > kHighestPort) {
        return systemError(ERROR_INVALID_PARAMETER);
    }
    if (m_isOpen && number != m_number) {
        return systemError(ERROR_BUSY);
    }
    m_number = number;
    return {};
}

Result<void> WindowsSerialControl::setPortOpen(bool open)
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

Result<void> WindowsSerialControl::open()
{
    const auto path = m_names.find("COM" + std::to_string(m_number));
    if (!path) {
        return path.error();
    }
    m_received.clear();
    const Result<void> opened = m_port.open(path.value());
    if (!opened) {
        return opened;
    }
    m_isLost = false;
    m_isOpen = true;
    return {};
}

void WindowsSerialControl::Output(std::string_view bytes)
{
    if (m_isOpen && !m_isLost && !m_port.write(bytes)) {
        loseConnection();
    }
}

void WindowsSerialControl::loseConnection()
{
    if (!m_isOpen || m_isLost) {
        return;
    }
    m_isLost = true;
    m_port.close();
    if (m_onConnectionLost) {
        m_onConnectionLost();
    }
}

} // namespace platform
