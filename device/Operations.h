#pragma once

#include <functional>
#include <utility>

namespace device {

// Only one operation may use the device at a time: while one waits for the reader, the window stays alive and the user
// could start a second one, which would pull the port from under the first. A start that comes too early is ignored; a
// wish to close the program is kept until the operation has unwound.
class Operations final
{
public:
    // Runs work unless an operation is running already; false, and nothing done, then. Work that an operation itself
    // does goes straight to its own calls and not through here.
    bool run(const std::function<void()>& work)
    {
        if (m_running) {
            return false;
        }
        m_running = true;
        if (m_before) {
            m_before();
        }
        work();
        m_running = false;
        if (m_afterwards) {
            m_afterwards();
        }
        return true;
    }

    [[nodiscard]] bool isRunning() const { return m_running; }

    // The program wants to end: every wait ends at once, whatever it waits for.
    void setClosing(bool closing) { m_closing = closing; }
    [[nodiscard]] bool isClosing() const { return m_closing; }

    // Called at the beginning of each operation.
    void setBefore(std::function<void()> before) { m_before = std::move(before); }
    // Called after each operation, when the next one may start.
    void setAfterwards(std::function<void()> afterwards) { m_afterwards = std::move(afterwards); }

private:
    bool m_running = false;
    bool m_closing = false;
    std::function<void()> m_before;
    std::function<void()> m_afterwards;
};

} // namespace device
