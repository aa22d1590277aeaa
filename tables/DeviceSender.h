#pragma once

#include <functional>
#include <span>
#include <string>

namespace tables {

// Sends settings to the reader, as one device operation each.
class DeviceSender
{
public:
    virtual ~DeviceSender() = default;

    // True while another operation is running: nothing should be asked then, nothing would be sent.
    [[nodiscard]] virtual bool isBusy() const = 0;

    // Writes the Configuration row of an address ("013") to the reader. False when nothing was sent: another operation
    // was running, or the link did not open, which the user has been told.
    virtual bool sendRow_CFG(const std::string& address) = 0;

    // Writes each setting ("083=20") to the reader. Calls whenSent, still as part of the operation, when every one went
    // out and nobody is about to close the program; not when the connection was lost, nor in the cases above.
    virtual void sendSettings(std::span<const std::string> settings, const std::function<void()>& whenSent) = 0;
};

} // namespace tables
