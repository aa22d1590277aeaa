#pragma once

#include "platform/FileDialogs.h"

#include <QTest>

#include <deque>
#include <functional>
#include <utility>
#include <vector>

namespace testsupport {

// File dialogs for tests: choices from a queue, records every dialog, and fails the test on a dialog that nobody
// expected and on a choice that nobody used.
class TestFileDialogs final : public platform::FileDialogs
{
public:
    enum class Kind { Open, Save };
    struct Shown
    {
        Kind kind;
        platform::FileDialogSetup setup;
    };

    ~TestFileDialogs() override { verifyAllUsed(); }

    // The next dialog is of this kind and gets this choice; an empty path = cancelled. What `meanwhile` does happens
    // while the dialog is up.
    void expect(Kind kind, std::filesystem::path choice, std::function<void()> meanwhile = {})
    {
        m_choices.push_back({kind, std::move(choice), std::move(meanwhile)});
    }

    std::filesystem::path chooseFileToOpen(const platform::FileDialogSetup& setup) override
    {
        return choose(Kind::Open, setup);
    }
    std::filesystem::path chooseFileToSave(const platform::FileDialogSetup& setup) override
    {
        return choose(Kind::Save, setup);
    }

    // Fails the test when an expected dialog did not come; true when all came.
    bool verifyAllUsed()
    {
        const bool allUsed = m_choices.empty();
        if (!allUsed) {
            QTest::qFail("a file dialog that was expected did not come", __FILE__, __LINE__);
        }
        m_choices.clear();
        return allUsed;
    }

    std::vector<Shown> shown;

private:
    std::filesystem::path choose(Kind kind, const platform::FileDialogSetup& setup)
    {
        shown.push_back({kind, setup});
        if (m_choices.empty() || m_choices.front().kind != kind) {
            QTest::qFail("unexpected file dialog", __FILE__, __LINE__);
            return {};
        }
        const Choice next = m_choices.front();
        m_choices.pop_front();
        if (next.meanwhile) {
            next.meanwhile();
        }
        return next.name;
    }

    struct Choice
    {
        Kind kind;
        std::filesystem::path name;
        std::function<void()> meanwhile;
    };
    std::deque<Choice> m_choices;
};

} // namespace testsupport
