#pragma once

#include "platform/DeviceObject.h"
#include "tests/support/CallLog.h"

#include <optional>
#include <string>
#include <string_view>

namespace testsupport {

// The driver's device object, answering with a text of the test's choice or failing at one of the three steps.
class FakeDriver final : public platform::DeviceObject
{
public:
    explicit FakeDriver(CallLog& log)
        : m_log(log)
    {}

    std::string answer;
    std::optional<platform::SystemError> openError;
    std::optional<platform::SystemError> writeError;
    std::optional<platform::SystemError> readError;

    [[nodiscard]] bool isOpen() const { return m_isOpen; }

    [[nodiscard]] platform::Result<void> open(std::string_view dosName) override
    {
        m_log.push_back("driver: open " + std::string(dosName));
        if (openError) {
            return *openError;
        }
        m_isOpen = true;
        return {};
    }
    [[nodiscard]] platform::Result<void> write(std::string_view bytes) override
    {
        m_log.push_back("driver: write " + shown(bytes));
        return writeError ? platform::Result<void>(*writeError) : platform::Result<void>();
    }
    [[nodiscard]] platform::Result<std::string> read(std::size_t most) override
    {
        m_log.push_back("driver: read " + std::to_string(most));
        if (readError) {
            return *readError;
        }
        return answer.substr(0, most);
    }
    void close() override
    {
        m_log.emplace_back("driver: close");
        m_isOpen = false;
    }

private:
    CallLog& m_log;
    bool m_isOpen = false;
};

} // namespace testsupport
