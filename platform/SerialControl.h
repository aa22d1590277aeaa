#pragma once

#include "platform/Result.h"

#include <functional>
#include <string>
#include <string_view>

namespace platform {

// A serial-port control with the properties that the program uses. One receive event stands for one whole line: the
// control assembles lines from whatever pieces the port delivers.
class SerialControl
{
public:
    static constexpr int kDataReceived = 2; // CommEvent of a receive event
    static constexpr int kHighestPort = 256;

    virtual ~SerialControl() = default;

    // The port number, 1 to kHighestPort. Refused outside that range and while the port is open.
    virtual Result<void> setCommPort(int number) = 0;

    // Opening an open port and closing a closed one do nothing. Opening discards what the port received before.
    [[nodiscard]] virtual bool PortOpen() const = 0;
    virtual Result<void> setPortOpen(bool open) = 0;

    // 1: a receive event for every complete line. 0: no events, what arrives waits for Input.
    virtual void setRThreshold(int threshold) = 0;
    // 0: Input returns all that is there. The only value in use.
    virtual void setInputLen(int length) = 0;

    // Bytes that Input would return outside a receive event, an unfinished line included.
    [[nodiscard]] virtual int InBufferCount() const = 0;
    // Inside a receive event the line it announces, with its one terminator; otherwise, and for a second call inside
    // the event, everything received so far. Empties what it returns. Never fails.
    [[nodiscard]] virtual std::string Input() = 0;
    // Writes bytes; returns when the system has them all, which may take two seconds. A failure counts as a lost
    // connection, and so does a port that has not taken them whole by then: what it has of them is purged, and nothing
    // goes out any more until the port is opened again.
    virtual void Output(std::string_view bytes) = 0;
    [[nodiscard]] virtual int CommEvent() const = 0;

    // Called for each event, from the event loop and never from inside Output or Input.
    virtual void setOnComm(std::function<void()> handler) = 0;
    // Called once when the port hangs up or a write fails. PortOpen stays true until the port is closed.
    virtual void setOnConnectionLost(std::function<void()> handler) = 0;
};

} // namespace platform
