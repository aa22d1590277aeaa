#pragma once

#include "platform/qt/PortControl.h"
#include "platform/windows/SerialPort.h"

namespace platform {

// The serial control on the system's own calls.
class WindowsSerialControl final : public PortControl
{
    Q_OBJECT

public:
    // The names outlive the control.
    explicit WindowsSerialControl(const DosNames& names, QObject* parent = nullptr);

private:
    [[nodiscard]] Result<void> openPort(const std::filesystem::path& path) override { return m_port.open(path); }
    void closePort() override { m_port.close(); }
    [[nodiscard]] bool write(std::string_view bytes) override { return static_cast<bool>(m_port.write(bytes)); }

    SerialPort m_port;
};

} // namespace platform
