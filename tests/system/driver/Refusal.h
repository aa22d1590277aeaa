#pragma once

#include <QString>

namespace windowdriver {

// Thrown by a command that cannot be carried out; the reason goes back to the one who sent it.
struct Refusal
{
    QString reason;
};

} // namespace windowdriver
