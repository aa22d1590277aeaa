#pragma once

#include "simulator/posix/Descriptor.h"

#include <string>
#include <vector>

namespace simulator {

// Tells when clients open and close terminals. Best effort: where the system grants no watch, nothing is ever told.
class ClientWatch final
{
public:
    enum class Event { Opened, Closed };

    struct Seen
    {
        int watch;
        Event event;
    };

    ClientWatch();

    [[nodiscard]] int descriptor() const { return m_inotify.get(); } // readable when there is news; -1 without watch
    [[nodiscard]] int add(const std::string& terminal) const;        // the number of the watch, or -1
    void remove(int watch) const;
    [[nodiscard]] std::vector<Seen> news() const; // in order; equal ones in a row may be told once

private:
    Descriptor m_inotify;
};

} // namespace simulator
