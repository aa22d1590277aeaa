#include "device/ReadTest.h"

#include "device/Commands.h"

#include <utility>

namespace device {

ReadTest::ReadTest(LinkState& link, CommandProtocol& protocol, DriverConnection& connection,
                   platform::SerialControl& MSComm1, platform::EventPump& events, LinkWindow& window,
                   ReadTestWindow& testWindow)
    : m_link(link)
    , m_protocol(protocol)
    , m_connection(connection)
    , m_port(MSComm1)
    , m_events(events)
    , m_window(window)
    , m_testWindow(testWindow)
{
    m_protocol.setOnCountdownOver([this] { showRawBlock(); });
}

ReadTest::~ReadTest()
{
    m_protocol.setOnCountdownOver({});
}

void ReadTest::StartReadTest()
{
    m_swipe.emptyRawBuffer();
    m_testWindow.setReadTestText("Please wait...\r\n");
    m_connection.CloseTheDeviceDriver();
    m_window.EnableButtons(false);
    m_hadLink = m_connection.OpenTheDeviceDriver();
    if (m_hadLink) {
        m_connection.GetDriverSettings();
    }
    m_testWindow.Hide_All();
    m_window.EnableButtons(false); // a link that did not open has enabled them
    m_testWindow.hideNotesButton();
    m_connection.ClearSettings();
    m_testWindow.appendReadTestText("(Setting the Teslin to normal mode.  Ignore these values)\r\n");
    m_testWindow.focusReadTest();
    m_events.processPending();
    m_protocol.settle(kSettleTicks);
    setNormalMode();
    if (m_port.PortOpen()) {
        (void)m_port.setPortOpen(false); // closing cannot be refused
    }
    m_protocol.settle(kAfterModeTicks);
    m_testWindow.setEditTitle_CFG("Read test (Click &Cancel test button to exit)");
    cmdClearReadDisplay_Click();
    m_testWindow.enableExitButton();
}

// Nobody would take the reader out of it again when the program ends.
void ReadTest::setNormalMode()
{
    for (const std::string_view command : {commands::kNormalMode1, commands::kNormalMode2}) {
        if (!m_protocol.isClosing()) {
            m_protocol.Send_Cmd(command);
        }
    }
}

// Kept behaviour kb-ends-in-read-test: only the tabs come here, so a program that ends leaves the reader in this mode.
void ReadTest::leave()
{
    const bool hadLink = std::exchange(m_hadLink, false);
    if (!hadLink && !m_port.PortOpen()) {
        return;
    }
    m_connection.OpenTheDeviceDriver();
    m_protocol.Send_Cmd(commands::kLeaveReadTest);
    m_connection.CloseTheDeviceDriver();
}

char ReadTest::txtReadTest_KeyPress(char KeyAscii, const SentinelSets& sets)
{
    const SwipeText::Typed typed = m_swipe.keyPress(KeyAscii, sets);
    m_testWindow.appendReadTestText(typed.heading);
    m_link.period.ResponseCountdown = kPauseTicks;
    return typed.shown;
}

void ReadTest::showRawBlock()
{
    if (const auto block = m_swipe.takeRawBlock()) {
        m_testWindow.appendReadTestText(*block);
    }
}

void ReadTest::cmdClearReadDisplay_Click()
{
    m_testWindow.setReadTestText(std::string("(spaces represented by \"") + SwipeText::kVisibleBlank + "\")\r\n" +
                                 "===========================");
}

} // namespace device
