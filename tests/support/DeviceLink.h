#pragma once

#include "device/TableTransfer.h"
#include "tests/support/FakeDriver.h"
#include "tests/support/FakeEventPump.h"
#include "tests/support/LoggedMessageBoxes.h"
#include "tests/support/PlainTables.h"
#include "tests/support/RecordingPortSettings.h"
#include "tests/support/RecordingWindow.h"
#include "tests/support/ScriptedSerial.h"

namespace testsupport {

// The whole device link on doubles: the objects are the program's, everything they stand on is the test's.
struct DeviceLink
{
    DeviceLink()
    {
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

    // Opens the port without the program's help, receive events on, and forgets that it happened.
    void openPort()
    {
        (void)port.setPortOpen(true);
        port.setRThreshold(1);
        log.clear();
    }

    CallLog log;
    device::LinkState link;
    device::Operations operations;
    ScriptedSerial port{log};
    FakeDriver driver{log};
    FakeEventPump pump;
    RecordingWindow window{log};
    RecordingPortSettings settings{log};
    LoggedMessageBoxes loggedBoxes{log};
    TestMessageBoxes& boxes = loggedBoxes.boxes;
    PlainTables tables;
    device::CommandProtocol protocol{link, operations, port, pump, window, loggedBoxes, tables.tables};
    device::DriverConnection connection{link, protocol, port, driver, pump, window, settings, loggedBoxes};
    device::TableTransfer transfer{link, operations, protocol, connection, port, window, window, tables.tables};
};

} // namespace testsupport
