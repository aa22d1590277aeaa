#pragma once

#include <string>
#include <string_view>

namespace device {

enum class Identification { Driver, Firmware, Copyright };

// What the device link shows in the main window and asks of it.
class LinkWindow
{
public:
    virtual ~LinkWindow() = default;

    virtual void setStatusText(std::string_view text) = 0; // first status panel: commands and progress
    virtual void setPortText(std::string_view text) = 0;   // second status panel: the port
    virtual void setSendLamp(bool lit) = 0;
    virtual void setRecvLamp(bool lit) = 0;

    // The value label of an identification. A driver caption that really changes is copied to the first status panel.
    virtual void setIdentification(Identification which, std::string_view caption) = 0;
    // Value label and title label together.
    virtual void showIdentification(Identification which, bool visible) = 0;
    // The driver's value label alone.
    virtual void showDriverName() = 0;
    // Looks up the reader's keyboard layout and shows its name.
    virtual void GetLanguageName() = 0;

    virtual void ShowPleaseWait() = 0;
    virtual void HidePleaseWait() = 0;
    // Toolbar buttons 1 to 6.
    virtual void EnableButtons(bool enabled) = 0;
};

// The port's name and number as the options dialog holds them.
class PortSettings
{
public:
    virtual ~PortSettings() = default;

    [[nodiscard]] virtual std::string portText() const = 0;
    virtual void setPortText(std::string_view text) = 0;
    // Moves the dialog's scroll bar to a port number without changing the port's name.
    virtual void setPortScroll(int number) = 0;
};

} // namespace device
