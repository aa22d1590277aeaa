#pragma once

#include <string>
#include <string_view>

namespace platform {

// The one line assembler of the wire. A line ends in one terminator, a line feed or a carriage return; a line feed
// directly after a carriage return that ended a line belongs to it and starts no line of its own.
class ReceivedLines final
{
public:
    void append(std::string_view bytes);

    [[nodiscard]] bool hasLine() const;
    // The first complete line with its terminator; call only while hasLine().
    [[nodiscard]] std::string takeLine();
    // Everything received, complete or not.
    [[nodiscard]] std::string takeAll();
    [[nodiscard]] int size() const { return static_cast<int>(m_bytes.size()); }
    void clear();

private:
    std::string m_bytes;
    bool m_endedInCarriageReturn = false; // the last line taken away did
};

} // namespace platform
