#include "device/ReadTest.h"

#include "device/Commands.h"

#include <utility>

namespace device {

ReadTest::ReadTest(LinkState& link, CommandProtocol& protocol, DriverConnection& connection,
                   const LinkServices& services, const LinkSurfaces& surfaces, tables::ParamTables& tables)
    : m_link(link)
    , m_protocol(protocol)
    , m_connection(connection)
    , m_port(services.MSComm1)
    , m_events(services.events)
    , m_buttons(surfaces.buttons)
    , m_display(surfaces.readTest)
    , m_tables(tables)
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
    m_display.setReadTestText("Please wait...\r\n");
    m_connection.CloseTheDeviceDriver();
    m_buttons.EnableButtons(false);
    m_hadLink = m_connection.OpenTheDeviceDriver();
    if (m_hadLink) {
        m_connection.GetDriverSettings();
    }
    m_tables.session.Hide_All();
    m_buttons.EnableButtons(false); // a link that did not open has enabled them
    m_display.hideNotesButton();
    m_connection.ClearSettings();
    m_display.appendReadTestText("(Setting the Teslin to normal mode.  Ignore these values)\r\n");
    m_display.focusReadTest();
    m_events.processPending();
    m_protocol.settle(kSettleTicks);
    setNormalMode();
    if (m_port.PortOpen()) {
        (void)m_port.setPortOpen(false); // closing cannot be refused
    }
    m_protocol.settle(kAfterModeTicks);
    m_tables.CFG.editor().setEditTitle("Read test (Click &Cancel test button to exit)");
    cmdClearReadDisplay_Click();
    m_buttons.enableExitButton();
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
    m_display.appendReadTestText(typed.heading);
    m_link.period.ResponseCountdown = kPauseTicks;
    return typed.shown;
}

void ReadTest::showRawBlock()
{
    if (const auto block = m_swipe.takeRawBlock()) {
        m_display.appendReadTestText(*block);
    }
}

void ReadTest::cmdClearReadDisplay_Click()
{
    m_display.setReadTestText(std::string("(spaces represented by \"") + SwipeText::kVisibleBlank + "\")\r\n" +
                              "===========================");
}

} // namespace device
