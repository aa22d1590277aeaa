#pragma once

#include "device/ReadTest.h"
#include "tests/support/CallLog.h"

#include <string>
#include <string_view>

namespace testsupport {

// The main window as the read test sees it: everything it is told goes to the log, and it remembers what it shows.
class RecordingReadTestWindow final : public device::ReadTestWindow
{
public:
    explicit RecordingReadTestWindow(CallLog& log)
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
    void Hide_All() override { m_log.emplace_back("Hide_All"); }
    void hideNotesButton() override { m_log.emplace_back("hide btnNotes"); }
    void setEditTitle_CFG(std::string_view title) override { m_log.push_back("title: " + shown(title)); }
    void enableExitButton() override { m_log.emplace_back("enable Exit"); }

private:
    CallLog& m_log;
};

} // namespace testsupport
