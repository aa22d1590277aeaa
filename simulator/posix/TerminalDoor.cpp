#include "simulator/posix/TerminalDoor.h"

#include "simulator/posix/SetupError.h"

#include <poll.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace simulator {

TerminalDoor::TerminalDoor(Door door, std::string entry, const Surroundings& surroundings)
    : m_door(door)
    , m_name(door == Door::Port ? "port" : "device")
    , m_entry(std::move(entry))
    , m_around(surroundings)
{
    open();
}

int TerminalDoor::descriptor() const
{
    return m_terminal ? m_terminal->master() : -1;
}

short TerminalDoor::events() const
{
    return static_cast<short>(m_unsent.empty() ? POLLIN : POLLIN | POLLOUT);
}

std::optional<TerminalDoor::Clock::time_point> TerminalDoor::nextDue() const
{
    return m_backAt || m_due.empty() ? m_backAt : std::optional(m_due.front().at);
}

void TerminalDoor::open()
{
    PseudoTerminal terminal;
    const int watch = m_around.watch.add(terminal.slavePath()); // first, so that no client slips in unseen
    m_around.folder.addEntry(m_entry, terminal.slavePath());
    m_watch = watch;
    m_terminal = std::move(terminal);
}

void TerminalDoor::reopen()
{
    m_backAt.reset();
    try {
        open();
        record("back", m_terminal->slavePath());
    } catch (const SetupError& error) {
        record("failed", error.what());
    }
}

void TerminalDoor::receive()
{
    const std::string bytes = m_terminal ? m_terminal->read() : std::string();
    for (const LineAssembler::Line& line : m_lines.take(bytes)) {
        takeLine(line);
    }
    if (m_terminal && m_watch < 0) {
        // Nobody will tell when the client goes, so its claim to the terminal is lifted whenever it speaks.
        m_terminal->restoreAfterClient();
    }
}

void TerminalDoor::takeLine(const LineAssembler::Line& line)
{
    if (!line.complete) {
        record("unfinished", line.text);
        return;
    }
    record("recv", line.text + '\n');
    Reaction reaction = m_around.driver.receive(m_door, line.text);
    if (!reaction.rule.empty()) {
        record("fault", reaction.rule);
    }
    schedule(std::move(reaction.actions));
}

void TerminalDoor::schedule(std::vector<Action> actions)
{
    const Clock::time_point now = Clock::now();
    for (Action& action : actions) {
        const Clock::time_point at = now + action.after;
        const auto place = std::ranges::upper_bound(m_due, at, {}, &DueAction::at);
        m_due.insert(place, {at, std::move(action)});
    }
}

void TerminalDoor::carryOut(Clock::time_point now)
{
    if (m_backAt && *m_backAt <= now) {
        reopen();
    }
    while (!m_due.empty() && m_due.front().at <= now) {
        const Action action = std::move(m_due.front().action);
        m_due.erase(m_due.begin());
        if (action.kind == Action::Kind::HangUp) {
            hangUp(action);
        } else {
            m_unsent += action.bytes;
            send();
        }
    }
}

void TerminalDoor::send()
{
    if (!m_terminal || m_unsent.empty()) {
        return;
    }
    const std::optional<std::size_t> count = m_terminal->write(m_unsent);
    if (!count) {
        record("lost", std::exchange(m_unsent, {}));
    } else if (*count > 0) {
        record("sent", m_unsent.substr(0, *count));
        m_unsent.erase(0, *count);
    }
}

void TerminalDoor::hangUp(const Action& action)
{
    if (!m_terminal) {
        return;
    }
    receive();
    record("hang-up");
    dropPending();
    m_around.watch.remove(std::exchange(m_watch, -1));
    if (!action.backAfter || action.backAfter->count() > 0) {
        m_around.folder.removeEntry(m_entry);
        m_terminal.reset();
        m_backAt = action.backAfter ? std::optional(Clock::now() + *action.backAfter) : std::nullopt;
        return;
    }
    // The new line is there before the old one dies: who sees the hang-up can open the port again at once.
    try {
        PseudoTerminal next;
        const int watch = m_around.watch.add(next.slavePath());
        m_around.folder.changeEntry(m_entry, next.slavePath());
        m_watch = watch;
        m_terminal = std::move(next);
        record("back", m_terminal->slavePath());
    } catch (const SetupError& error) {
        m_terminal.reset();
        record("failed", error.what());
    }
}

void TerminalDoor::clientHas(ClientWatch::Event event)
{
    m_clientLeft = event == ClientWatch::Event::Closed;
    if (m_clientLeft) {
        receive();
    }
    record(m_clientLeft ? "close" : "open");
}

void TerminalDoor::clearUp()
{
    if (std::exchange(m_clientLeft, false) && m_terminal) {
        m_terminal->restoreAfterClient();
    }
}

void TerminalDoor::dropPending()
{
    if (const std::string rest = m_lines.takeRest(); !rest.empty()) {
        record("unfinished", rest);
    }
    for (const DueAction& due : m_due) {
        if (due.action.kind == Action::Kind::Write) {
            m_unsent += due.action.bytes;
        }
    }
    m_due.clear();
    if (!m_unsent.empty()) {
        record("lost", std::exchange(m_unsent, {}));
    }
}

void TerminalDoor::end()
{
    receive();
    dropPending();
}

} // namespace simulator
