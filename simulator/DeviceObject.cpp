#include "simulator/DeviceObject.h"

namespace simulator {

std::optional<std::string> DeviceObject::answerTo(std::string_view command) const
{
    if (command != "/get port_name") {
        return std::nullopt;
    }
    return "/get port_name=COM" + std::to_string(m_portNumber);
}

} // namespace simulator
