#pragma once

#include "tests/support/ScriptedSerial.h"

#include <QByteArrayList>

#include <map>
#include <string>
#include <vector>

// What the link is told, in order, by the steps that several tests go through.
namespace calls {

inline const std::string kUnableBox =
    "Was unable to open the Teslin Device Driver.  Check to see if the driver is installed "
    "and the Teslin is attached";

// What every detection begins with, up to the opening of the device object.
inline const QByteArrayList kDetectBegins = {
    "Firmware: ",
    "Copyright: ",
    "Driver: ",
    "hide Firmware",
    "hide Copyright",
    "hide Driver",
    "P1: ",
    "Driver: Getting virtual com port number...",
    "Copyright: ", // the closing of the port
    "Driver: ",
    "send lit",
    "driver: open \\\\.\\Teslin",
    "send dark",
};
// The exchange with the device object.
inline const QByteArrayList kExchange = {
    "send lit",  "recv lit",  "driver: write /get port_name\\n", "driver: read 2000", "driver: close",
    "send dark", "recv dark",
};
// What every opening begins with.
inline const QByteArrayList kOpenBegins = {"ShowPleaseWait", "Copyright: ", "Driver: "};
// How it ends when there was no detection.
inline const QByteArrayList kDetectFailed = {"box: " + QByteArray::fromStdString(kUnableBox), "EnableButtons true",
                                             "HidePleaseWait", "P1: "};
inline const QByteArrayList kOpenEnds = {"P1: ", "HidePleaseWait"};

// A driver that answers everything, as the product's own one does.
[[nodiscard]] inline std::map<std::string, std::vector<testsupport::Reply>> goodReplies()
{
    return {
        {"/ver", {{"/ver reply: Teslin KSD 2.10\n"}}},
        {"/get dev_version", {{"/get dev_version reply: 3.07/Teslin\n"}}},
        {"/rawxact WCY", {{"/rawxact WCY reply 00 ok: Teslin 60044718\n"}}},
        {"/rawxact WPV081", {{"/rawxact WPV081 reply 00: 04\n"}}},
        {"/rawxact WPV082", {{"/rawxact WPV082 reply 00: 09\n"}}},
    };
}

} // namespace calls
