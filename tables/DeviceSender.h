#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tables {

// What sending one row to the reader needs of the device link.
class DeviceSender
{
public:
    virtual ~DeviceSender() = default;

    // True while another operation is running: nothing should be asked then, run() would refuse.
    [[nodiscard]] virtual bool isBusy() const = 0;

    // Runs a piece of work as the one device operation; false, and nothing done, while another one is running.
    virtual bool run(const std::function<void()>& work) = 0;

    // True when the operation that runs has lost its connection, or the program is being closed: nobody may be told
    // that it has done its work.
    [[nodiscard]] virtual bool wasCutShort() const { return false; }

    // Opens the link; false when it did not open, which the user has then been told.
    [[nodiscard]] virtual bool OpenTheDeviceDriver() = 0;
    virtual void CloseTheDeviceDriver() = 0;
    // Sends one command line and waits for its reply period.
    virtual void Send_Cmd(std::string_view cmd) = 0;
    // Writes the Configuration row of an address to the reader.
    virtual void Send_Parameter_CFG(const std::string& address) = 0;
};

} // namespace tables
