#pragma once

#include "platform/MessageBoxes.h"

#include <QTest>

#include <deque>
#include <functional>
#include <vector>

namespace testsupport {

// Message boxes for tests: answers from a queue, records every box, and fails the test on a box that nobody expected
// and on an answer that nobody used.
class TestMessageBoxes final : public platform::MessageBoxes
{
public:
    ~TestMessageBoxes() override { verifyAllUsed(); }

    // The next box gets this answer. What `meanwhile` does happens while the box is up.
    void expect(platform::BoxAnswer answer, std::function<void()> meanwhile = {})
    {
        m_answers.push_back({answer, std::move(meanwhile)});
    }

    platform::BoxAnswer show(const platform::MessageBox& box) override
    {
        shown.push_back(box);
        if (m_answers.empty()) {
            QTest::qFail(("unexpected message box: " + box.text).c_str(), __FILE__, __LINE__);
            return box.buttons == platform::BoxButtons::Ok ? platform::BoxAnswer::Ok : platform::BoxAnswer::Cancel;
        }
        const Answer next = m_answers.front();
        m_answers.pop_front();
        if (next.meanwhile) {
            next.meanwhile();
        }
        return next.answer;
    }

    // Fails the test when an expected box did not come; true when all came.
    bool verifyAllUsed()
    {
        const bool allUsed = m_answers.empty();
        if (!allUsed) {
            QTest::qFail("a message box that was expected did not come", __FILE__, __LINE__);
        }
        m_answers.clear();
        return allUsed;
    }

    // The text of the last box, empty when there was none.
    [[nodiscard]] std::string lastText() const { return shown.empty() ? std::string() : shown.back().text; }

    std::vector<platform::MessageBox> shown;

private:
    struct Answer
    {
        platform::BoxAnswer answer;
        std::function<void()> meanwhile;
    };
    std::deque<Answer> m_answers;
};

} // namespace testsupport
