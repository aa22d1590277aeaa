#pragma once

#include "device/ReplyPeriod.h"

#include <cstdint>
#include <string>

namespace device {

// The state of the link to the reader, owned by ReaderLink and shared by everything that talks to the reader.
struct LinkState
{
    ReplyPeriod period;

    bool UserAbort = false;       // ends every wait at once; cleared by the next toolbar press
    std::string LastResponse;     // value part of the last parameter reply
    int ReadStatus = 0;           // of the last received line: the status of a "/read" report, else 0
    std::string RequestedAddress; // address of the last parameter asked for

    std::string DriverFriendlyName = "Teslin"; // names the driver's device object
    std::int16_t PortNumber = 0;               // of the driver's virtual port; 0 = not known yet
    std::string FirmwareVersion;
    std::string KeyboardLanguageId; // parameters 081 and 082, joined

    bool recvLampLit = false;
    bool connectionLost = false; // the port hung up during the operation that is running
};

} // namespace device
