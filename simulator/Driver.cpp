#include "simulator/Driver.h"

namespace simulator {

Reaction Driver::receive(Door door, std::string_view command)
{
    if (door == Door::DeviceObject) {
        return m_faults.react(command, m_deviceObject.answerTo(command), "\r");
    }
    return m_faults.react(command, m_reader.answerTo(command), "\n");
}

} // namespace simulator
