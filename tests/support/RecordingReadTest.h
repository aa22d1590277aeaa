#pragma once

#include "device/ReadTestDisplay.h"
#include "tests/support/CallLog.h"

#include <string>
#include <string_view>

namespace testsupport {

// What shows the read test: everything it is told goes to the log, and it remembers what it shows.
class RecordingReadTest final : public device::ReadTestDisplay
{
public:
    explicit RecordingReadTest(CallLog& log)
        : m_log(log)
    {}

    std::string text; // of the test's box

    void setReadTestText(std::string_view newText) override
    {
        m_log.push_back("box = " + shown(newText));
        text = newText;
    }
    void appendReadTestText(std::string_view more) override
    {
        m_log.push_back("box += " + shown(more));
        text += more;
    }
    void focusReadTest() override { m_log.emplace_back("focus"); }
    void hideNotesButton() override { m_log.emplace_back("hide btnNotes"); }

private:
    CallLog& m_log;
};

} // namespace testsupport
