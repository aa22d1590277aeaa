#pragma once

#include "platform/Beep.h"

#include <QApplication>

namespace platform {

class QtBeep final : public Beep
{
public:
    void sound() override { QApplication::beep(); }
};

} // namespace platform
