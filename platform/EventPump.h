#pragma once

namespace platform {

// The event loop as the program's waits see it. A wait that has nothing to do sleeps in waitForEvents(): nothing in the
// program spins or sleeps for a fixed time.
class EventPump
{
public:
    virtual ~EventPump() = default;

    // Handles the events that are pending and returns at once.
    virtual void processPending() = 0;
    // The same, but what the user does waits. For a wait that nothing may cut into, and that must not leave the windows
    // unpainted.
    virtual void processWithoutInput() = 0;
    // Sleeps until at least one event comes and handles it. The 50 ms tick guarantees one.
    virtual void waitForEvents() = 0;
};

} // namespace platform
