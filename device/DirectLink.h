#pragma once

#include "device/LinkError.h"
#include "platform/DosNames.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace device {

// A conversation with the reader for programs without a window: it waits for replies and not for ticks, and believes
// only what fits (StrictReplies). One command is outstanding at a time. Every call that needs the reader throws
// LinkError when it cannot be done; nothing is ever taken for done that was not.
class DirectLink final
{
public:
    struct Setup
    {
        platform::DosNames names;
        std::string driverName = "Teslin"; // of the device object
        int port = 0;                      // 0: the driver is asked
        std::chrono::milliseconds timeout{500};
        // Asked while waiting; true ends every call with LinkError::Kind::Interrupted.
        std::function<bool()> isInterrupted = [] { return false; };
    };

    explicit DirectLink(Setup setup);
    ~DirectLink();
    DirectLink(const DirectLink&) = delete;
    DirectLink& operator=(const DirectLink&) = delete;

    // Finds the port through the driver, unless it was given, opens it for this program alone and throws away what
    // stood in it. Sends nothing through it.
    void open();
    void close();
    [[nodiscard]] bool isOpen() const;

    // The port's number, known once open() has found it.
    [[nodiscard]] int port() const;

    // Sends a command and gives the first line that is accepted, without its terminator. What arrived before is thrown
    // away. When none comes in time, the line is drained until it is quiet and the command sent again, twice.
    using Accept = std::function<bool(std::string_view line)>;
    [[nodiscard]] std::string ask(std::string_view command, const Accept& accept);

    // The parameter at an address of three upper-case hexadecimal digits.
    [[nodiscard]] std::uint8_t readParameter(std::string_view address);

    // Sends a parameter's new value and gives the driver the time to echo it. Says nothing about whether the reader has
    // taken it: only reading it back tells.
    void writeParameter(std::string_view address, std::uint8_t value);

    // Sends a command that needs no reply, and waits as long as for an echo.
    void send(std::string_view command);

    // Lets time pass; ends early, by throwing, when the user interrupts.
    void settle(std::chrono::milliseconds duration);

private:
    class Line;

    void findPort();
    [[nodiscard]] std::optional<std::string> exchange(std::string_view command, const Accept& accept,
                                                      std::chrono::milliseconds limit);
    void settleAfterSilence(const Accept& accept);
    [[noreturn]] void failWithoutReply(std::string_view command) const;

    Setup m_setup;
    std::unique_ptr<Line> m_line;
    std::string m_lastUnbelieved; // the last line that came and was not accepted
    int m_unanswered = 0;         // questions whose replies may still come
};

} // namespace device
