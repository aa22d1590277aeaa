#pragma once

#include "platform/ReceivedLines.h"
#include "platform/SerialControl.h"
#include "tests/support/CallLog.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace testsupport {

// Bytes that the driver sends, and how many ticks after the command they arrive.
struct Reply
{
    std::string bytes;
    int afterTicks = 0;
};

// A serial control without a port: records every byte that is written and answers each command line from a script.
// Nothing arrives from inside a call of the program; bytes and receive events come one at a time from deliverOne(),
// and time passes in tickPassed().
class ScriptedSerial final : public platform::SerialControl
{
public:
    // What the driver sends for a command (its text without the line feed); pieces of one line are several replies.
    using Script = std::function<std::vector<Reply>(const std::string& command)>;

    explicit ScriptedSerial(CallLog& log)
        : m_log(log)
    {}

    void setScript(Script script) { m_script = std::move(script); }
    // A script as a plain map; commands that are not in it get no answer.
    void setScript(std::map<std::string, std::vector<Reply>> script)
    {
        m_script = [script = std::move(script)](const std::string& command) {
            const auto found = script.find(command);
            return found == script.end() ? std::vector<Reply>() : found->second;
        };
    }

    // What the system says to attempts to set and to open the port.
    std::optional<platform::SystemError> commPortError;
    std::optional<platform::SystemError> openError;
    bool opens = true; // false: opening succeeds, but the port stays closed

    // What was written: all bytes that reached the driver, and those that could not, port closed or lost.
    [[nodiscard]] const std::string& written() const { return m_written; }
    [[nodiscard]] const std::string& undelivered() const { return m_undelivered; }
    // The command lines that reached the driver, without their line feeds.
    [[nodiscard]] const CallLog& commands() const { return m_commands; }
    void forgetWritten()
    {
        m_written.clear();
        m_undelivered.clear();
        m_commands.clear();
    }

    // The driver sends something on its own.
    void sendUnasked(std::string bytes, int afterTicks = 0) { m_onTheWay.push_back({std::move(bytes), afterTicks}); }
    // An event that is no line, as a control raises for line states.
    void raiseEvent(int commEvent)
    {
        m_commEvent = commEvent;
        m_onComm();
    }
    // The port hangs up.
    void loseConnection()
    {
        m_isLost = true;
        m_onTheWay.clear();
        m_onConnectionLost();
    }
    // The port closes without the program having asked for it.
    void closeByItself() { m_isOpen = false; }

    // Lets one thing arrive that is due: a piece of a reply, with the receive event of a line it completes, or the
    // event of a further line that is already here. False when nothing was due.
    bool deliverOne()
    {
        const bool arrived = takePiece();
        if (m_threshold >= 1 && m_lines.hasLine()) {
            const std::string outer = std::exchange(m_announced, m_lines.takeLine());
            m_commEvent = kDataReceived;
            m_onComm();
            m_announced = outer;
            return true;
        }
        return arrived;
    }

    void tickPassed()
    {
        for (Reply& reply : m_onTheWay) {
            --reply.afterTicks;
        }
    }

    platform::Result<void> setCommPort(int number) override
    {
        m_log.push_back("port: CommPort = " + std::to_string(number));
        if (commPortError) {
            return *commPortError;
        }
        if (number < 1 || number > kHighestPort) {
            return platform::SystemError{.number = 22, .description = "Invalid argument"};
        }
        return {};
    }
    [[nodiscard]] bool PortOpen() const override { return m_isOpen; }
    platform::Result<void> setPortOpen(bool open) override
    {
        m_log.push_back(open ? "port: open" : "port: close");
        if (open && openError) {
            return *openError;
        }
        m_isOpen = open && opens;
        m_isLost = false;
        m_onTheWay.clear();
        m_lines.clear();
        return {};
    }
    void setRThreshold(int threshold) override
    {
        m_log.push_back("port: RThreshold = " + std::to_string(threshold));
        m_threshold = threshold;
    }
    void setInputLen(int length) override { m_log.push_back("port: InputLen = " + std::to_string(length)); }
    [[nodiscard]] int InBufferCount() const override { return m_lines.size(); }
    [[nodiscard]] std::string Input() override
    {
        return m_announced.empty() ? m_lines.takeAll() : std::exchange(m_announced, {});
    }
    void Output(std::string_view bytes) override
    {
        m_log.push_back("port: output " + shown(bytes));
        if (!m_isOpen || m_isLost) {
            m_undelivered += bytes;
            return;
        }
        m_written += bytes;
        m_commandBytes += bytes;
        for (std::size_t end = m_commandBytes.find('\n'); end != std::string::npos; end = m_commandBytes.find('\n')) {
            answer(m_commandBytes.substr(0, end));
            m_commandBytes.erase(0, end + 1);
        }
    }
    [[nodiscard]] int CommEvent() const override { return m_commEvent; }
    void setOnComm(std::function<void()> handler) override { m_onComm = std::move(handler); }
    void setOnConnectionLost(std::function<void()> handler) override { m_onConnectionLost = std::move(handler); }

    [[nodiscard]] bool hasHandlers() const { return m_onComm || m_onConnectionLost; }

private:
    void answer(const std::string& command)
    {
        m_commands.push_back(command);
        if (m_script) {
            for (Reply& reply : m_script(command)) {
                m_onTheWay.push_back(std::move(reply));
            }
        }
    }

    // Pieces that are due arrive in the order in which they were sent.
    bool takePiece()
    {
        for (auto piece = m_onTheWay.begin(); piece != m_onTheWay.end(); ++piece) {
            if (piece->afterTicks <= 0) {
                m_lines.append(piece->bytes);
                m_onTheWay.erase(piece);
                return true;
            }
        }
        return false;
    }

    CallLog& m_log;
    Script m_script;
    std::function<void()> m_onComm;
    std::function<void()> m_onConnectionLost;
    std::deque<Reply> m_onTheWay;
    platform::ReceivedLines m_lines;
    std::string m_announced; // the line of the present event
    std::string m_commandBytes;
    std::string m_written;
    std::string m_undelivered;
    CallLog m_commands;
    int m_threshold = 0;
    int m_commEvent = 0;
    bool m_isOpen = false;
    bool m_isLost = false;
};

} // namespace testsupport
