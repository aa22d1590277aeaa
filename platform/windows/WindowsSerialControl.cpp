#include "platform/windows/WindowsSerialControl.h"

namespace platform {

WindowsSerialControl::WindowsSerialControl(const DosNames& names, QObject* parent)
    : PortControl(names, ERROR_INVALID_PARAMETER, ERROR_BUSY, parent)
    , m_port(kLongestWrite)
{
    m_port.setOnReceived([this](std::string_view bytes) { append(bytes); });
    m_port.setOnFailed([this] { loseConnection(); });
}

} // namespace platform
