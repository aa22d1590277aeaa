#pragma once

#include "platform/EventPump.h"

#include <QTest>

#include <functional>
#include <map>
#include <stdexcept>
#include <utility>
#include <vector>

namespace testsupport {

// An event loop whose time is the test's: a wait handles one thing that is due, or else lets the next tick pass. So a
// test knows exactly how many ticks an operation took, and no time passes while it runs.
class FakeEventPump final : public platform::EventPump
{
public:
    // More waits than any operation of the program needs.
    static constexpr int kMostWaits = 20000;

    // Handles one event that is due; false when none is.
    void setEvents(std::function<bool()> handleOne) { m_handleOne = std::move(handleOne); }
    void setOnTick(std::function<void()> onTick) { m_onTick = std::move(onTick); }
    // Ends the waits of a test that has run away.
    void setOnRunaway(std::function<void()> onRunaway) { m_onRunaway = std::move(onRunaway); }

    // A user action right after the given tick, counted from the construction or the last restart.
    void atTick(int tick, std::function<void()> action) { m_actions.emplace(tick, std::move(action)); }

    [[nodiscard]] int ticks() const { return m_ticks; }
    // Counts ticks from 0 again and forgets the actions that have not come.
    void restart()
    {
        m_ticks = 0;
        m_waits = 0;
        m_actions.clear();
    }

    // One tick, with the events that are due before it, as time passing while nobody waits.
    void pass()
    {
        processPending();
        tick();
    }
    void pass(int ticks)
    {
        for (int i = 0; i < ticks; ++i) {
            pass();
        }
    }

    void processPending() override
    {
        while (m_handleOne && m_handleOne()) {
        }
    }
    // Nothing here is the user's input but what a test does at a tick.
    void processWithoutInput() override { ++m_looksWithoutInput; }
    [[nodiscard]] int looksWithoutInput() const { return m_looksWithoutInput; }
    void waitForEvents() override
    {
        guard();
        if (!m_handleOne || !m_handleOne()) {
            tick();
        }
    }

private:
    void tick()
    {
        ++m_ticks;
        if (m_onTick) {
            m_onTick();
        }
        const auto due = m_actions.equal_range(m_ticks);
        std::vector<std::function<void()>> actions;
        for (auto action = due.first; action != due.second; ++action) {
            actions.push_back(action->second);
        }
        for (const auto& action : actions) {
            action();
        }
    }

    // A wait that would never end fails the test instead of hanging it.
    void guard()
    {
        ++m_waits;
        if (m_waits == kMostWaits) {
            QTest::qFail("the program waits without end", __FILE__, __LINE__);
            if (m_onRunaway) {
                m_onRunaway();
            }
        } else if (m_waits > 2 * kMostWaits) {
            throw std::runtime_error("the program waits without end and cannot be stopped");
        }
    }

    std::function<bool()> m_handleOne;
    std::function<void()> m_onTick;
    std::function<void()> m_onRunaway;
    std::multimap<int, std::function<void()>> m_actions;
    int m_ticks = 0;
    int m_waits = 0;
    int m_looksWithoutInput = 0;
};

} // namespace testsupport
