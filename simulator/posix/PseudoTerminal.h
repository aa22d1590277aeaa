#pragma once

#include "simulator/posix/Descriptor.h"

#include <termios.h>

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

// A raw pseudo-terminal without echo. It holds a descriptor of its slave as well: without one the master would report a
// hang-up whenever a client closes the slave. Destroying it is what a client sees as a hang-up.
class PseudoTerminal final
{
public:
    PseudoTerminal(); // throws SetupError

    [[nodiscard]] int master() const { return m_master.get(); } // does not block
    [[nodiscard]] const std::string& slavePath() const { return m_slavePath; }

    // What a client has sent by now; empty when there is nothing.
    [[nodiscard]] std::string read() const;

    // Hands over as much as fits in one write and says how much that was; nothing when the terminal is beyond use.
    [[nodiscard]] std::optional<std::size_t> write(std::string_view bytes) const;

    // Undoes what a client has left behind: its line settings and, if it died, its claim to be the only one.
    void restoreAfterClient() const;

private:
    Descriptor m_master;
    Descriptor m_slave;
    std::string m_slavePath;
    termios m_rawSettings{};
};

} // namespace simulator
