#pragma once

#include "device/LinkDisplay.h"
#include "device/ReadTestDisplay.h"
#include "platform/DeviceObject.h"
#include "platform/EventPump.h"
#include "platform/MessageBoxes.h"
#include "platform/SerialControl.h"
#include "tables/OperationButtons.h"
#include "tables/StatusLine.h"
#include "tables/UnsavedChanges.h"

namespace device {

// What the link to the reader uses of the system. All of it outlives the link.
struct LinkServices
{
    platform::SerialControl& MSComm1;
    platform::DeviceObject& driver;
    platform::EventPump& events;
    platform::MessageBoxes& boxes;
};

// The pieces of the window that the link works with. All of them outlive it.
struct LinkSurfaces
{
    LinkDisplay& display;
    tables::StatusLine& status;
    tables::OperationButtons& buttons;
    ReadTestDisplay& readTest;
    tables::UnsavedChanges& unsaved;
};

} // namespace device
