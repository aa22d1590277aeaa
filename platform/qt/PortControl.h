#pragma once

#include "platform/DosNames.h"
#include "platform/SerialControl.h"
#include "platform/qt/ReceiveEvents.h"

#include <QObject>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace platform {

// A serial control without its port: the number, whether the port is open and whether it is lost, and the receive
// events, which are the same on every system. Each system adds the port itself.
class PortControl : public QObject, public SerialControl
{
    Q_OBJECT

public:
    // How long a port may take for a command. A line is a few dozen bytes, so it waits only when the driver has stopped
    // reading; a reader that takes longer than this is gone for the user, too.
    static constexpr std::chrono::milliseconds kLongestWrite{2000};

    Result<void> setCommPort(int number) final;
    [[nodiscard]] bool PortOpen() const final { return m_isOpen; }
    Result<void> setPortOpen(bool open) final;
    void setRThreshold(int threshold) final { m_received.setRThreshold(threshold); }
    void setInputLen([[maybe_unused]] int length) final {}
    [[nodiscard]] int InBufferCount() const final { return m_received.InBufferCount(); }
    [[nodiscard]] std::string Input() final { return m_received.Input(); }
    void Output(std::string_view bytes) final;
    [[nodiscard]] int CommEvent() const final { return m_received.CommEvent(); }
    void setOnComm(std::function<void()> handler) final { m_received.setOnComm(std::move(handler)); }
    void setOnConnectionLost(std::function<void()> handler) final { m_onConnectionLost = std::move(handler); }

protected:
    // The names outlive the control. The two errors are the system's numbers for a port number out of range and for a
    // port that is open already.
    PortControl(const DosNames& names, int outOfRange, int busy, QObject* parent);

    // Opens the port raw at 9600 baud, 8 data bits, and throws away what it received before.
    [[nodiscard]] virtual Result<void> openPort(const std::filesystem::path& path) = 0;
    virtual void closePort() = 0;
    // Writes all bytes within kLongestWrite. False when that fails: then nothing of them stays behind to become the
    // beginning of another command, as far as the system still has it.
    [[nodiscard]] virtual bool write(std::string_view bytes) = 0;

    void append(std::string_view received) { m_received.append(received); }
    // Told once for each time that the port was opened; later calls do nothing.
    void loseConnection();

private:
    const DosNames& m_names;
    ReceiveEvents m_received;
    std::function<void()> m_onConnectionLost;
    int m_outOfRange;
    int m_busy;
    int m_number = 0;
    bool m_isOpen = false; // as the program sees it: a lost port stays open until it is closed
    bool m_isLost = false;
};

} // namespace platform
