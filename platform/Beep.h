#pragma once

namespace platform {

// The system's beep.
class Beep
{
public:
    virtual ~Beep() = default;
    virtual void sound() = 0;
};

} // namespace platform
