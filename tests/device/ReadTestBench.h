#pragma once

#include "device/ReadTest.h"
#include "tests/device/OpeningCalls.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/TextToString.h"

#include <QByteArrayList>

#include <string>
#include <string_view>

namespace readtest {

inline constexpr int kPort = 5;
inline constexpr std::string_view kHeading = "(spaces represented by \"\x95\")\r\n===========================";

// Ticks of an entry: the identification, read twice, ends at 30; five to settle; two commands of three; two to settle.
inline constexpr int kIdentified = 30;
inline constexpr int kSettled = 35;
inline constexpr int kModeSet = 41;
inline constexpr int kEntered = 43;

inline device::SentinelSets sentinels()
{
    return {.Track1Start = "%", .Track2Start = ";", .Track3Start = "+", .TrackEnd = "?"};
}

// The lamps change with every tick; these are all other lines of a log.
inline QByteArrayList withoutLamps(QByteArrayList calls)
{
    calls.removeIf([](const QByteArray& call) { return call.startsWith("send ") || call.startsWith("recv "); });
    return calls;
}

// A read test on a link of doubles, with a driver that answers and a port that is known.
struct Bench
{
    Bench()
    {
        on.port.setScript(calls::goodReplies());
        on.link.PortNumber = kPort;
    }

    // What the reader types.
    void type(std::string_view keys)
    {
        for (const char key : keys) {
            const char shown = readTest.txtReadTest_KeyPress(key, sentinels());
            window.text += shown;
        }
    }
    [[nodiscard]] QByteArrayList told() const { return withoutLamps(testsupport::lines(on.log)); }
    [[nodiscard]] QByteArrayList commands() const { return testsupport::lines(on.port.commands()); }

    testsupport::DeviceLink on;
    testsupport::RecordingReadTest& window = on.readTestPage;
    device::ReadTest readTest{on.link, on.protocol, on.connection, on.services, on.surfaces, on.tables.tables};
};

} // namespace readtest
