#pragma once

#include "device/LinkState.h"
#include "device/LinkSurfaces.h"
#include "device/Operations.h"
#include "tables/ParamTables.h"

#include <functional>
#include <string>
#include <string_view>

namespace device {

// The conversation with the reader's driver: one command line out, a fixed reply period, lines in. One command is
// outstanding at a time and nothing matches replies to commands.
class CommandProtocol final
{
public:
    // Everything outlives this object. Takes over the port's event handlers.
    CommandProtocol(LinkState& link, Operations& operations, const LinkServices& services, const LinkSurfaces& surfaces,
                    tables::ParamTables& tables);
    ~CommandProtocol();

    CommandProtocol(const CommandProtocol&) = delete;
    CommandProtocol& operator=(const CommandProtocol&) = delete;

    // Sends a command line and waits for its reply period. Does nothing while the port is closed.
    void Send_Cmd(std::string_view cmd);
    // Asks for the parameter at an address and waits for the reply period. The value, if one came, is in LastResponse
    // then or after WaitForResponse. Does nothing, not even to LastResponse, while the port is closed.
    void Ask_For_Parameter(std::string_view address);
    // Waits up to five ticks more for LastResponse. UserAbort is set when nothing came.
    void WaitForResponse();

    // Writes the Configuration row of an address to the reader.
    void Send_Parameter_CFG(std::string_view address);
    // Writes the Keyboard Language row of an address to the reader. For a pair the second byte goes to the next
    // address, and that address is stored into the argument: the caller's list of addresses holds it from then on.
    void Send_Parameter_KB(std::string& address);

    // True while the program waits to end and only puts its things in order.
    [[nodiscard]] bool isClosing() const { return m_operations.isClosing(); }

    // Waits for the countdown to reach 0, whether or not the user aborted: the reader needs the time to settle.
    void settle(double ticks);

    // The link's share of a tick. Never waits and never opens a box.
    void Timer1_Timer();
    // What happens in ticks after the countdown has run out.
    void setOnCountdownOver(std::function<void()> handler) { m_onCountdownOver = std::move(handler); }

    void ShowActiveSend();
    void ShowInactiveSend();
    void ShowActiveRecv();
    void ShowInactiveRecv();

private:
    void MSComm1_OnComm();
    void sayNoData();
    void connectionLost();
    void output(std::string_view cmd);
    void waitForReplyPeriod();
    void sendAndShow(std::string_view cmd);
    void showSent(std::string_view cmd);

    LinkState& m_link;
    Operations& m_operations;
    platform::SerialControl& m_port;
    platform::EventPump& m_events;
    LinkDisplay& m_display;
    tables::StatusLine& m_status;
    platform::MessageBoxes& m_boxes;
    tables::ParamTables& m_tables;
    std::function<void()> m_onCountdownOver;
    bool m_isSayingNoData = false; // the box is open
};

} // namespace device
