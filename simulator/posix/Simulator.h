#pragma once

#include "simulator/CommandLine.h"
#include "simulator/Driver.h"
#include "simulator/posix/ClientWatch.h"
#include "simulator/posix/DosFolder.h"
#include "simulator/posix/PostedValues.h"
#include "simulator/posix/Signals.h"
#include "simulator/posix/TerminalDoor.h"
#include "simulator/posix/WireLog.h"

#include <array>
#include <optional>
#include <string>

namespace simulator {

// The running simulator: both doors, open from construction to destruction, and the loop that serves them.
class Simulator final
{
public:
    Simulator(const CommandLine& commandLine, Driver& driver); // throws SetupError

    // One line for scripts that wait until the doors can be opened.
    [[nodiscard]] std::string readyLine() const;

    // Serves the doors until SIGINT or SIGTERM; sleeps whenever there is nothing to do.
    void run();

private:
    void serve(std::optional<TerminalDoor::Clock::time_point> until);
    [[nodiscard]] std::optional<TerminalDoor::Clock::time_point> nextDue() const;
    void tellDoors();
    void drain();

    CommandLine m_commandLine;
    Signals m_signals;
    DosFolder m_folder;
    WireLog m_log;
    ClientWatch m_watch;
    std::array<TerminalDoor, 2> m_doors;
    PostedValues m_values; // goes before the folder that it lies in
};

} // namespace simulator
