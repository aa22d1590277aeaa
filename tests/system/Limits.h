#pragma once

#include "device/ReplyPeriod.h"

// How long a test waits for something before it fails, in milliseconds. Derived from the product's own pace, times a
// patience for busy machines and sanitizers; nothing waits that long when all is well.
namespace systemtest {

inline constexpr int kPatience = 4;

inline constexpr int kTick = device::ReplyPeriod::kTickMilliseconds;
inline constexpr int kCommandTicks = static_cast<int>(device::ReplyPeriod::kSendTicks) + 1;
inline constexpr int kSilenceTicks = kCommandTicks + static_cast<int>(device::ReplyPeriod::kResponseTicks);

// For so many commands, each of them at its slowest.
constexpr int limitFor(int commands)
{
    return kPatience * commands * kSilenceTicks * kTick;
}

// For what the program does at once: open a box, disable a button, close the port.
inline constexpr int kAtOnce = limitFor(8);

// For the device object, which may keep the program for two seconds, and an answer of the window driver behind it.
inline constexpr int kDeviceObject = kPatience * 2'000 + limitFor(8);

// For a program to start or to end.
inline constexpr int kStart = kPatience * 10'000;

} // namespace systemtest
