#pragma once

#include "device/CommandProtocol.h"
#include "device/VirtualPort.h"
#include "platform/DeviceObject.h"

#include <string>

namespace device {

// Finds, opens and closes the driver's virtual port and reads the identification of driver and reader.
class DriverConnection final
{
public:
    // Everything outlives this object.
    DriverConnection(LinkState& link, CommandProtocol& protocol, const LinkServices& services,
                     const LinkSurfaces& surfaces, VirtualPort& virtualPort);
    ~DriverConnection();

    DriverConnection(const DriverConnection&) = delete;
    DriverConnection& operator=(const DriverConnection&) = delete;

    // Asks the driver's device object for the port's name; true when a name came. PortNumber and the port's name in the
    // options follow it. The windows stay painted while the driver is waited for; what the user does meanwhile is
    // handled at the end of the wait.
    bool Detect();

    // Closes and opens the port, detecting it first while its number is not known, and reads the identification. On
    // failure the user has been told, the port is closed and the result is false.
    bool OpenTheDeviceDriver();

    // Closes the port and takes the driver's name and the device's identification off the window.
    void CloseTheDeviceDriver();

    // Reads the identification of driver and device and the keyboard layout. Does nothing while the port is closed.
    void GetDriverSettings();

    // Empties and hides all identification labels.
    void ClearSettings();

private:
    bool openPort();
    [[nodiscard]] platform::Result<std::string> askForPortName();
    void checkPortText();
    void sayCouldNotOpen(const platform::SystemError& error);
    [[nodiscard]] std::string exchange(std::string_view cmd);
    void identify(Identification which, std::string_view text);
    void readKeyboardLanguageId();

    LinkState& m_link;
    CommandProtocol& m_protocol;
    platform::SerialControl& m_port;
    platform::DeviceObject& m_driver;
    platform::EventPump& m_events;
    LinkDisplay& m_display;
    tables::StatusLine& m_status;
    tables::OperationButtons& m_buttons;
    VirtualPort& m_virtualPort;
    platform::MessageBoxes& m_boxes;
};

} // namespace device
