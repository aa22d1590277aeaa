#pragma once

#include "platform/Beep.h"
#include "platform/Clock.h"
#include "platform/DeviceObject.h"
#include "platform/DosNames.h"
#include "platform/EventPump.h"
#include "platform/FileDialogs.h"
#include "platform/MessageBoxes.h"
#include "platform/Printer.h"
#include "platform/ProfileStrings.h"
#include "platform/Registry.h"
#include "platform/SerialControl.h"
#include "platform/StartProgram.h"
#include "platform/qt/WindowOrder.h"

#include <filesystem>
#include <string>

namespace app {

// What the program uses of the system, handed to the main window at construction. Everything outlives the main window.
struct Services
{
    platform::SerialControl& MSComm1;
    platform::DeviceObject& driver;
    platform::MessageBoxes& boxes;
    platform::FileDialogs& fileDialogs;
    platform::Printer& printer;
    const platform::Clock& clock;
    platform::Beep& beep;
    platform::EventPump& events;
    platform::ProfileStrings& settings;
    const platform::DosNames& dosNames;
    const platform::Registry& registry;
    platform::StartProgram& programs;
    platform::WindowOrder& windowOrder;
    std::filesystem::path programFolder; // leads to Languages.txt; dialogs start here
    std::string commandLine;             // without the program's name
    int tickMilliseconds;                // of Timer1; 0 = no timer, ticks come from outside
};

} // namespace app
