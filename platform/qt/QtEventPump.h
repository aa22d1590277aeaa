#pragma once

#include "platform/EventPump.h"

namespace platform {

class QtEventPump final : public EventPump
{
public:
    void processPending() override;
    void processWithoutInput() override;
    void waitForEvents() override;
};

} // namespace platform
