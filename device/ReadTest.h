#pragma once

#include "device/DriverConnection.h"
#include "device/SwipeText.h"

#include <string_view>

namespace device {

// The read test: the reader is set to type the cards it reads as a keyboard does, and what it types is shown track by
// track.
class ReadTest final
{
public:
    static constexpr double kSettleTicks = 5;    // before the reader is set to normal mode
    static constexpr double kAfterModeTicks = 2; // after it
    static constexpr double kPauseTicks = 8;     // after the last keystroke, before the raw block

    // Everything outlives this object. Takes over what happens when the link's countdown is over.
    ReadTest(LinkState& link, CommandProtocol& protocol, DriverConnection& connection, const LinkServices& services,
             const LinkSurfaces& surfaces, tables::ParamTables& tables);
    ~ReadTest();

    ReadTest(const ReadTest&) = delete;
    ReadTest& operator=(const ReadTest&) = delete;

    // Enters the test: sets the reader to normal mode and closes the port, so that the reader reaches the program only
    // as a keyboard.
    void StartReadTest();
    // Leaves the test: takes the reader out of normal mode, if the test had a link to it or the port is open.
    void leave();

    // The box got a character from the keyboard. Shows the heading of a track that begins with it and returns the
    // character that the box is to show.
    [[nodiscard]] char txtReadTest_KeyPress(char KeyAscii, const SentinelSets& sets);
    // Clears the display and writes its heading.
    void cmdClearReadDisplay_Click();

private:
    void setNormalMode();
    void showRawBlock();

    LinkState& m_link;
    CommandProtocol& m_protocol;
    DriverConnection& m_connection;
    platform::SerialControl& m_port;
    platform::EventPump& m_events;
    tables::OperationButtons& m_buttons;
    ReadTestDisplay& m_display;
    tables::ParamTables& m_tables;
    SwipeText m_swipe;
    bool m_hadLink = false; // the present test could open the port
};

} // namespace device
