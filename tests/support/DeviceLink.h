#pragma once

#include "device/ReaderLink.h"
#include "tests/support/FakeDriver.h"
#include "tests/support/FakeEventPump.h"
#include "tests/support/LoggedMessageBoxes.h"
#include "tests/support/PlainTables.h"
#include "tests/support/RecordingReadTest.h"
#include "tests/support/RecordingVirtualPort.h"
#include "tests/support/RecordingWindow.h"
#include "tests/support/ScriptedSerial.h"

namespace testsupport {

// The whole device link on doubles: the objects are the program's, everything they stand on is the test's.
struct DeviceLink
{
    DeviceLink()
    {
        typePort({});
        tables.CFG.onHide = [this] { log.emplace_back("Hide_All"); };
        tables.CFG.onTitle = [this](std::string_view title) { log.push_back("title: " + shown(title)); };
        pump.setEvents([this] { return port.deliverOne(); });
        pump.setOnTick([this] {
            port.tickPassed();
            protocol.Timer1_Timer();
        });
        pump.setOnRunaway([this] {
            link.UserAbort = true;
            operations.setClosing(true);
        });
    }

    // The table that a transfer is asked for: that of the tab.
    void chooseTab(int tab)
    {
        table = tab == 0 ? tables::TableId::Configuration : tables::TableId::KeyboardLanguage;
        tables.session.tableInEffect = table;
    }

    // A port's name that stands in the options before anything else happens.
    void typePort(std::string_view name)
    {
        settings.setPortText(name);
        log.clear();
    }

    // Opens the port without the program's help, receive events on, and forgets that it happened.
    void openPort()
    {
        (void)port.setPortOpen(true);
        port.setRThreshold(1);
        log.clear();
    }

    tables::TableId table = tables::TableId::Configuration;
    CallLog log;
    ScriptedSerial port{log};
    FakeDriver driver{log};
    FakeEventPump pump;
    RecordingWindow window{log};
    RecordingReadTest readTestPage{log};
    LoggedMessageBoxes loggedBoxes{log};
    TestMessageBoxes& boxes = loggedBoxes.boxes;
    PlainTables tables;
    device::LinkServices services{.MSComm1 = port, .driver = driver, .events = pump, .boxes = loggedBoxes};
    device::LinkSurfaces surfaces{
        .display = window, .status = window, .buttons = window, .readTest = readTestPage, .unsaved = window};
    device::LinkState link;
    device::Operations operations;
    device::VirtualPort settings;
    RecordingVirtualPort dialog{log, settings};
    device::CommandProtocol protocol{link, operations, services, surfaces, tables.tables};
    device::DriverConnection connection{link, protocol, services, surfaces, settings};
    device::TableTransfer transfer{link, operations, protocol, connection, services, surfaces, tables.tables};
};

} // namespace testsupport
