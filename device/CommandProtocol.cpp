#include "device/CommandProtocol.h"

#include "device/Commands.h"
#include "device/Replies.h"
#include "text/HexText.h"

namespace device {

namespace {

std::string firstCharacters(const std::string& text, std::size_t count)
{
    return text.substr(0, count);
}

std::string lastCharacters(const std::string& text, std::size_t count)
{
    return text.size() > count ? text.substr(text.size() - count) : text;
}

} // namespace

CommandProtocol::CommandProtocol(LinkState& link, Operations& operations, const LinkServices& services,
                                 const LinkSurfaces& surfaces, tables::ParamTables& tables)
    : m_link(link)
    , m_operations(operations)
    , m_port(services.MSComm1)
    , m_events(services.events)
    , m_display(surfaces.display)
    , m_status(surfaces.status)
    , m_boxes(services.boxes)
    , m_tables(tables)
{
    m_port.setOnComm([this] { MSComm1_OnComm(); });
    m_port.setOnConnectionLost([this] { connectionLost(); });
}

CommandProtocol::~CommandProtocol()
{
    m_port.setOnComm({});
    m_port.setOnConnectionLost({});
}

void CommandProtocol::Send_Cmd(std::string_view cmd)
{
    if (!m_port.PortOpen()) {
        return;
    }
    m_link.period.openForSend();
    output(cmd);
    waitForReplyPeriod();
}

void CommandProtocol::Ask_For_Parameter(std::string_view address)
{
    if (!m_port.PortOpen()) {
        return;
    }
    m_link.LastResponse.clear();
    m_link.RequestedAddress = address;
    m_link.period.openForSend();
    const std::string cmd = commands::readParameter(address);
    showSent(cmd);
    output(cmd);
    waitForReplyPeriod();
}

void CommandProtocol::output(std::string_view cmd)
{
    m_port.Output(std::string(cmd) + commands::kLineEnd);
}

// Kept behaviour kb-no-waiting: an abort lasts until the next press on the toolbar, so nothing waits until then.
void CommandProtocol::waitForReplyPeriod()
{
    while (m_link.period.CommBusy == 1 && !m_link.UserAbort && !m_operations.isClosing()) {
        m_events.waitForEvents();
    }
}

void CommandProtocol::WaitForResponse()
{
    m_link.period.ResponseCountdown = ReplyPeriod::kResponseTicks;
    const auto isOver = [this] { return !m_link.LastResponse.empty() || m_link.UserAbort || m_operations.isClosing(); };
    while (true) {
        if (m_link.period.ResponseCountdown == 0) {
            m_link.UserAbort = true;
        }
        // Without sleeping first: a reply that is already there must not cost another tick.
        m_events.processPending();
        if (isOver()) {
            return;
        }
        m_events.waitForEvents();
    }
}

void CommandProtocol::settle(double ticks)
{
    m_link.period.ResponseCountdown = ticks;
    while (m_link.period.ResponseCountdown > 0 && !m_operations.isClosing()) {
        m_events.waitForEvents();
    }
}

void CommandProtocol::Send_Parameter_CFG(std::string_view address)
{
    sendAndShow(commands::writeParameter(address, m_tables.GetTableEntry_CFG(address)));
}

void CommandProtocol::Send_Parameter_KB(std::string& address)
{
    const std::string value = m_tables.GetTableEntry_KB(address);
    sendAndShow(commands::writeParameter(firstCharacters(address, 3), firstCharacters(value, 2)));
    // Kept behaviour kb-pair-after-abort: the second half goes out in any case.
    if (value.size() > 2) {
        address = text::nextAddress(address);
        sendAndShow(commands::writeParameter(address, lastCharacters(value, 2)));
    }
}

void CommandProtocol::sendAndShow(std::string_view cmd)
{
    Send_Cmd(cmd);
    showSent(cmd);
}

void CommandProtocol::showSent(std::string_view cmd)
{
    m_status.setStatusText("Sent command: " + std::string(cmd));
}

void CommandProtocol::MSComm1_OnComm()
{
    if (m_port.CommEvent() != platform::SerialControl::kDataReceived) {
        return;
    }
    ShowActiveRecv();
    m_link.ReadStatus = 0;
    std::string text = m_port.Input();
    if (!text.empty()) {
        text.pop_back(); // the terminator
    }
    if (text.empty()) {
        sayNoData();
        return;
    }
    const replies::Line line = replies::parseLine(text);
    m_link.ReadStatus = line.readStatus;
    switch (line.kind) {
    case replies::Line::Kind::Identification:
        if (line.hasText) {
            m_display.setIdentification(Identification::Copyright, " " + line.text + " ");
            m_display.showIdentification(Identification::Copyright, Shown::WithTitle);
        }
        break;
    case replies::Line::Kind::Parameter:
        // Kept behaviour kb-late-answer: whichever question it belongs to, it answers the one that waits.
        m_link.LastResponse = line.text;
        break;
    case replies::Line::Kind::Ignored:
        break;
    }
}

// Kept behaviour kb-no-data-read: the reply period of the question that waits runs out behind the box. A driver may
// send blank lines by the thousand. One box at a time says so; those that come behind it are dropped.
void CommandProtocol::sayNoData()
{
    if (m_isSayingNoData) {
        return;
    }
    m_isSayingNoData = true;
    m_boxes.show({.text = "No data read"});
    m_isSayingNoData = false;
}

void CommandProtocol::connectionLost()
{
    // Outside an operation nobody depends on the port; the next operation opens it afresh.
    if (m_operations.isRunning()) {
        m_link.connectionLost = true;
        m_link.UserAbort = true;
    }
}

void CommandProtocol::Timer1_Timer()
{
    if (m_link.recvLampLit) {
        ShowInactiveRecv();
    }
    if (m_link.period.countLamp()) {
        ShowActiveSend();
    } else {
        ShowInactiveSend();
    }
    if (m_link.period.countDown() && m_onCountdownOver) {
        m_onCountdownOver();
    }
}

void CommandProtocol::ShowActiveSend()
{
    m_display.setLamp(Lamp::Send, true);
}

void CommandProtocol::ShowInactiveSend()
{
    m_display.setLamp(Lamp::Send, false);
}

void CommandProtocol::ShowActiveRecv()
{
    m_link.recvLampLit = true;
    m_display.setLamp(Lamp::Recv, true);
}

void CommandProtocol::ShowInactiveRecv()
{
    m_link.recvLampLit = false;
    m_display.setLamp(Lamp::Recv, false);
}

} // namespace device
