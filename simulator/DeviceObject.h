#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

// The driver's device object: it knows one question, under which port the reader is to be found.
class DeviceObject final
{
public:
    // portNumber: 1 to 256.
    explicit DeviceObject(int portNumber)
        : m_portNumber(portNumber)
    {}

    // Command and answer without their line ends; nothing for any other command.
    [[nodiscard]] std::optional<std::string> answerTo(std::string_view command) const;

private:
    int m_portNumber;
};

} // namespace simulator
