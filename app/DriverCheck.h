#pragma once

#include "platform/Beep.h"
#include "platform/DosNames.h"
#include "platform/MessageBoxes.h"

namespace app {

// True when the driver's file is at one of its fixed places; otherwise beeps, tells the user and returns false. The
// places do not follow the system's own folder: a system installed elsewhere is reported as lacking the driver.
bool KSD_Driver_Is_Installed(const platform::DosNames& names, platform::MessageBoxes& boxes, platform::Beep& beep);

} // namespace app
