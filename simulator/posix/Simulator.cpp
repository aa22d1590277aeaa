#include "simulator/posix/Simulator.h"

#include "simulator/posix/SetupError.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <ctime>

namespace simulator {

namespace {

using Clock = TerminalDoor::Clock;

// Time left until then for the system's wait, which takes none for "for ever".
std::optional<timespec> timeLeft(std::optional<Clock::time_point> until)
{
    if (!until) {
        return std::nullopt;
    }
    const auto left = std::max(*until - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(left - seconds);
    return timespec{seconds.count(), nanoseconds.count()};
}

} // namespace

Simulator::Simulator(const CommandLine& commandLine, Driver& driver)
    : m_commandLine(commandLine)
    , m_folder(commandLine.dosDevices)
    , m_log(commandLine.logFile, commandLine.verbose)
    , m_doors{TerminalDoor(Door::DeviceObject, commandLine.name, {driver, m_folder, m_watch, m_log}),
              TerminalDoor(Door::Port, commandLine.portEntry(), {driver, m_folder, m_watch, m_log})}
    , m_values(m_folder.path(), commandLine.portEntry(), driver.reader().memory())
{
    m_folder.putDriverFile();
    m_log.event("-", "start", readyLine());
}

std::string Simulator::readyLine() const
{
    return "ready: device object " + m_commandLine.name + ", port COM" + std::to_string(m_commandLine.port) +
           ", folder " + m_folder.path().string();
}

void Simulator::run()
{
    const char* signal = nullptr;
    while (signal == nullptr) {
        serve(nextDue());
        signal = m_signals.take();
    }
    drain();
    for (TerminalDoor& door : m_doors) {
        door.end();
    }
    m_log.event("-", "end", signal);
}

std::optional<Clock::time_point> Simulator::nextDue() const
{
    std::optional<Clock::time_point> next;
    for (const TerminalDoor& door : m_doors) {
        const std::optional<Clock::time_point> due = door.nextDue();
        if (due && (!next || *due < *next)) {
            next = due;
        }
    }
    return next;
}

// Sleeps until something happens, or the time has come, and deals with it. Descriptors below zero are passed over by
// the system.
void Simulator::serve(std::optional<Clock::time_point> until)
{
    std::array<pollfd, 4> polled{};
    std::ranges::transform(m_doors, polled.begin(), [](const TerminalDoor& door) {
        return pollfd{door.descriptor(), door.events(), 0};
    });
    polled[2] = {m_watch.descriptor(), POLLIN, 0};
    polled[3] = {m_signals.descriptor(), POLLIN, 0};
    const std::optional<timespec> limit = timeLeft(until);
    if (::ppoll(polled.data(), polled.size(), limit ? &*limit : nullptr, nullptr) < 0 && errno != EINTR) {
        throw systemError("wait for the terminals");
    }
    if ((polled[2].revents & POLLIN) != 0) {
        tellDoors();
    }
    for (std::size_t i = 0; i < m_doors.size(); ++i) {
        if ((polled[i].revents & POLLIN) != 0) {
            m_doors[i].receive();
            m_values.update();
        }
        if ((polled[i].revents & POLLOUT) != 0) {
            m_doors[i].send();
        }
    }
    for (TerminalDoor& door : m_doors) {
        door.carryOut(Clock::now());
    }
}

// Comes before the bytes: who sends has opened first.
void Simulator::tellDoors()
{
    for (const ClientWatch::Seen& seen : m_watch.news()) {
        for (TerminalDoor& door : m_doors) {
            if (door.isWatchedBy(seen.watch)) {
                door.clientHas(seen.event);
            }
        }
    }
    for (TerminalDoor& door : m_doors) {
        door.clearUp();
    }
}

// What a client wrote just before the end may still be on its way through the terminal.
void Simulator::drain()
{
    constexpr std::chrono::milliseconds kOnItsWay{20};
    const Clock::time_point end = Clock::now() + kOnItsWay;
    while (Clock::now() < end) {
        serve(end);
    }
}

} // namespace simulator
