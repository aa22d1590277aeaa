#pragma once

#include "tests/support/CallLog.h"
#include "tests/support/TestMessageBoxes.h"

#include <functional>
#include <string>

namespace testsupport {

// Message boxes for tests that also look at what else happened before and after a box.
class LoggedMessageBoxes final : public platform::MessageBoxes
{
public:
    explicit LoggedMessageBoxes(CallLog& log)
        : m_log(log)
    {}

    // See TestMessageBoxes.
    TestMessageBoxes boxes;

    platform::BoxAnswer show(const platform::MessageBox& box) override
    {
        m_log.push_back("box: " + box.text);
        return boxes.show(box);
    }

private:
    CallLog& m_log;
};

} // namespace testsupport
