#pragma once

#include <QtGlobal>

#ifdef Q_OS_WIN
#include "platform/windows/WindowsSerialControl.h"
#else
#include "platform/qt/QtSerialControl.h"
#endif

namespace platform {

// The serial control of this system, made from the DOS names.
#ifdef Q_OS_WIN
using SystemSerialControl = WindowsSerialControl;
#else
using SystemSerialControl = QtSerialControl;
#endif

} // namespace platform
