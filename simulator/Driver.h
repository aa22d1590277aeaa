#pragma once

#include "simulator/DeviceObject.h"
#include "simulator/FaultRules.h"
#include "simulator/Reaction.h"
#include "simulator/ReaderModel.h"

#include <string_view>

namespace simulator {

// The whole stand-in: driver, reader and faults behind the two doors. It keeps no clock and touches no device, so that
// a test can play it inside its own process:
//
//     simulator::Driver driver;
//     QVERIFY(driver.faults().add("/rawxact WPV013: silent"));
//     for (const simulator::Action& action : driver.receive(simulator::Door::Port, "/ver").actions) { ... }
class Driver final
{
public:
    explicit Driver(int portNumber = 5)
        : m_deviceObject(portNumber)
    {}

    // One command line, without its line end, has come in at a door. Lines of the port end in a line feed, the answer
    // of the device object in a carriage return.
    [[nodiscard]] Reaction receive(Door door, std::string_view command);

    [[nodiscard]] ReaderModel& reader() { return m_reader; }
    [[nodiscard]] FaultRules& faults() { return m_faults; }

private:
    DeviceObject m_deviceObject;
    ReaderModel m_reader;
    FaultRules m_faults;
};

} // namespace simulator
