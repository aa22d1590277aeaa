#pragma once

#include "device/ReadTest.h"
#include "device/SingleSetting.h"
#include "device/TableTransfer.h"
#include "device/VirtualPort.h"
#include "tables/DeviceSender.h"

#include <functional>
#include <span>
#include <string>

namespace device {

// The link to the reader: its state, and everything that uses it. Counts time in the ticks that it is given.
class ReaderLink final : public tables::DeviceSender
{
public:
    // The tables outlive this object. Takes over the port's and the driver's event handlers.
    ReaderLink(const LinkServices& services, const LinkSurfaces& surfaces, tables::ParamTables& tables);

    // One tick of 50 ms.
    void Timer1_Timer() { m_protocol.Timer1_Timer(); }

    [[nodiscard]] bool isBusy() const override { return m_operations.isRunning(); }
    bool sendRow_CFG(const std::string& address) override;
    void sendSettings(std::span<const std::string> settings, const std::function<void()>& whenSent) override;

    // Ends every wait; the program is about to end.
    void beginClosing();

    [[nodiscard]] LinkState& state() { return m_state; }
    [[nodiscard]] const LinkState& state() const { return m_state; }
    [[nodiscard]] VirtualPort& virtualPort() { return m_virtualPort; }
    [[nodiscard]] Operations& operations() { return m_operations; }
    [[nodiscard]] const Operations& operations() const { return m_operations; }
    [[nodiscard]] CommandProtocol& protocol() { return m_protocol; }
    [[nodiscard]] DriverConnection& connection() { return m_connection; }
    [[nodiscard]] TableTransfer& transfer() { return m_transfer; }
    [[nodiscard]] ReadTest& readTest() { return m_readTest; }
    [[nodiscard]] SingleSetting& singleSetting() { return m_singleSetting; }

private:
    [[nodiscard]] bool wasCutShort() const { return m_state.connectionLost || m_operations.isClosing(); }

    tables::StatusLine& m_status;
    LinkState m_state;
    VirtualPort m_virtualPort;
    Operations m_operations;
    CommandProtocol m_protocol;
    DriverConnection m_connection;
    TableTransfer m_transfer;
    ReadTest m_readTest;
    SingleSetting m_singleSetting;
};

} // namespace device
