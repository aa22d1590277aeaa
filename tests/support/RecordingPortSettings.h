#pragma once

#include "device/LinkWindow.h"
#include "tests/support/CallLog.h"

#include <string>
#include <string_view>

namespace testsupport {

// The options dialog as the device link sees it.
class RecordingPortSettings final : public device::PortSettings
{
public:
    explicit RecordingPortSettings(CallLog& log)
        : m_log(log)
    {}

    std::string text; // of the port's box
    int scroll = 0;

    [[nodiscard]] std::string portText() const override { return text; }
    void setPortText(std::string_view newText) override
    {
        m_log.push_back("port box: " + shown(newText));
        text = newText;
    }
    void setPortScroll(int number) override
    {
        m_log.push_back("port scroll: " + std::to_string(number));
        scroll = number;
    }

private:
    CallLog& m_log;
};

} // namespace testsupport
