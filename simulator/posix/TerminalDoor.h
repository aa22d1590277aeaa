#pragma once

#include "simulator/Driver.h"
#include "simulator/LineAssembler.h"
#include "simulator/Reaction.h"
#include "simulator/posix/ClientWatch.h"
#include "simulator/posix/DosFolder.h"
#include "simulator/posix/PseudoTerminal.h"
#include "simulator/posix/WireLog.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

// What the doors share; all of it outlives them.
struct Surroundings
{
    Driver& driver;
    DosFolder& folder;
    ClientWatch& watch;
    WireLog& log;
};

// One door of the driver as a pseudo-terminal with its entry in the folder of DOS names. The owner polls it:
// descriptor() for events(), and a call of carryOut() when nextDue() has come.
class TerminalDoor final
{
public:
    using Clock = std::chrono::steady_clock;

    TerminalDoor(Door door, std::string entry, const Surroundings& surroundings); // opens it; throws SetupError

    [[nodiscard]] int descriptor() const; // -1 while the line is dead
    [[nodiscard]] short events() const;   // what to poll for
    [[nodiscard]] std::optional<Clock::time_point> nextDue() const;
    [[nodiscard]] bool isWatchedBy(int watch) const { return m_watch == watch; }

    void receive();
    void send();
    void carryOut(Clock::time_point now);
    void clientHas(ClientWatch::Event event);
    void clearUp(); // after all news of clients: the last one may have left something behind
    void end();     // accounts for what is left; to be called last

private:
    struct DueAction
    {
        Clock::time_point at;
        Action action;
    };

    void open();
    void reopen();
    void hangUp(const Action& action);
    void takeLine(const LineAssembler::Line& line);
    void schedule(std::vector<Action> actions);
    void dropPending();
    void record(std::string_view event) { m_around.log.event(m_name, event); }
    void record(std::string_view event, std::string_view detail) { m_around.log.event(m_name, event, detail); }

    Door m_door;
    std::string_view m_name; // in the log
    std::string m_entry;
    Surroundings m_around;
    std::optional<PseudoTerminal> m_terminal; // none while the line is dead
    int m_watch = -1;                         // none
    bool m_clientLeft = false;                // and no other one has come since
    LineAssembler m_lines;
    std::vector<DueAction> m_due; // in order of time; those of the same time in order of their coming
    std::string m_unsent;         // due, but the client has not made room for it
    std::optional<Clock::time_point> m_backAt;
};

} // namespace simulator
