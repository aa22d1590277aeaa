#pragma once

#include "platform/DosNames.h"
#include "platform/SerialControl.h"
#include "platform/qt/ReceiveEvents.h"
#include "platform/windows/SerialPort.h"

#include <QObject>

namespace platform {

// The serial control on the system's own calls.
class WindowsSerialControl final : public QObject, public SerialControl
{
    Q_OBJECT

public:
    // The names outlive the control.
    explicit WindowsSerialControl(const DosNames& names, QObject* parent = nullptr);

    Result<void> setCommPort(int number) override;
    [[nodiscard]] bool PortOpen() const override { return m_isOpen; }
    Result<void> setPortOpen(bool open) override;
    void setRThreshold(int threshold) override { m_received.setRThreshold(threshold); }
    void setInputLen([[maybe_unused]] int length) override {}
    [[nodiscard]] int InBufferCount() const override { return m_received.InBufferCount(); }
    [[nodiscard]] std::string Input() override { return m_received.Input(); }
    void Output(std::string_view bytes) override;
    [[nodiscard]] int CommEvent() const override { return m_received.CommEvent(); }
    void setOnComm(std::function<void()> handler) override { m_received.setOnComm(std::move(handler)); }
    void setOnConnectionLost(std::function<void()> handler) override { m_onConnectionLost = std::move(handler); }

private:
    Result<void> open();
    void loseConnection();

    const DosNames& m_names;
    SerialPort m_port;
    ReceiveEvents m_received;
    std::function<void()> m_onConnectionLost;
    int m_number = 0;
    bool m_isOpen = false; // as the program sees it: a lost port stays open until it is closed
    bool m_isLost = false;
};

} // namespace platform
