#pragma once

#include "platform/Beep.h"

namespace testsupport {

class CountingBeep final : public platform::Beep
{
public:
    void sound() override { ++count; }
    int count = 0;
};

} // namespace testsupport
