#pragma once

#include "simulator/posix/Descriptor.h"

namespace simulator {

// From its construction on, SIGINT and SIGTERM no longer end the process but wait to be taken.
class Signals final
{
public:
    Signals(); // throws SetupError

    [[nodiscard]] int descriptor() const { return m_descriptor.get(); } // readable when one waits
    [[nodiscard]] const char* take() const;                             // its name; null when none waits

private:
    Descriptor m_descriptor;
};

} // namespace simulator
