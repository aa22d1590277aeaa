#pragma once

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/Interruption.h"
#include "cli/Parameters.h"
#include "device/DirectLink.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace cli {

// The reader at the end of the direct link, as the commands use it.
class Reader final
{
public:
    // Both outlive this object. What is asked while waiting may end every call: see DirectLink.
    Reader(const Arguments& arguments, Console& console, std::function<bool()> isInterrupted = cli::isInterrupted);

    // Throws LinkError.
    void open();
    void close() { m_link.close(); }
    [[nodiscard]] device::DirectLink& link() { return m_link; }

    // The parameters at these addresses, in order. Throws LinkError when one of them cannot be read.
    [[nodiscard]] Values read(const std::vector<std::string>& addresses);
    [[nodiscard]] Values read(Tables tables);

    // The firmware version as the reports show it; empty when the driver does not tell.
    [[nodiscard]] std::string firmwareVersion();

private:
    Console& m_console;
    device::DirectLink m_link;
};

// The answers to the questions of identification; nothing for one that got none.
struct Identification
{
    std::optional<std::string> driver;
    std::optional<std::string> firmware;
    std::optional<std::string> device;
    std::optional<std::string> layoutId; // four hexadecimal digits
};

// Asks what can be asked. Throws LinkError for anything but a missing reply.
[[nodiscard]] Identification identify(device::DirectLink& link);

} // namespace cli
