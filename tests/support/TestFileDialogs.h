#pragma once

#include "platform/FileDialogs.h"

#include <QTest>

#include <deque>
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

    // The next dialog of this kind gets this choice; an empty path = cancelled.
    void expect(Kind kind, std::filesystem::path choice) { m_choices.push_back({kind, std::move(choice)}); }

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
        if (m_choices.empty() || m_choices.front().first != kind) {
            QTest::qFail("unexpected file dialog", __FILE__, __LINE__);
            return {};
        }
        const std::filesystem::path choice = m_choices.front().second;
        m_choices.pop_front();
        return choice;
    }

    std::deque<std::pair<Kind, std::filesystem::path>> m_choices;
};

} // namespace testsupport
