#pragma once

#include "device/LinkState.h"
#include "device/VirtualPort.h"
#include "platform/ProfileStrings.h"

#include <QWidget>

// The settings kept between runs: the driver's device name, the virtual port's name and the main window's placement.
namespace app {

// Reads the driver's name and the port's name; missing and empty ones get the factory values. The port's number is not
// taken from here: the first use of the device detects it.
void GetProgramConfig(const platform::ProfileStrings& settings, device::LinkState& link, device::VirtualPort& port);

// Writes the window's placement and both names, in one go. A file that cannot be written is no error.
void SaveProgramConfig(platform::ProfileStrings& settings, const device::LinkState& link,
                       const device::VirtualPort& port, const QWidget& mainWindow);

} // namespace app
