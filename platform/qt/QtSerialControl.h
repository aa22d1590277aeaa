#pragma once

#include "platform/qt/PortControl.h"

#include <QSerialPort>

namespace platform {

// The serial control on Qt's serial port, for systems where a port is a terminal device. Ports are found by their DOS
// name. The driver's virtual port ignores line settings.
class QtSerialControl final : public PortControl
{
    Q_OBJECT

public:
    // The names outlive the control.
    explicit QtSerialControl(const DosNames& names, QObject* parent = nullptr);

private:
    [[nodiscard]] Result<void> openPort(const std::filesystem::path& path) override;
    void closePort() override { m_port.close(); }
    [[nodiscard]] bool write(std::string_view bytes) override;
    void handleError(QSerialPort::SerialPortError error);

    QSerialPort m_port;
};

} // namespace platform
