#pragma once

#include "simulator/posix/Descriptor.h"

#include <chrono>
#include <string>
#include <string_view>

namespace simulator {

// The log of everything that passes the doors: one line an event, written at once and in one piece.
//
//     12.345 2026-11-21T08:12:11.123Z port recv "/ver\n"
//
// Milliseconds since the log was made, time of day (UTC), door, event, bytes or words between quotation marks.
class WireLog final
{
public:
    // Lines are appended to the file (none when the name is empty) and, if toStandardError, written there too. Throws
    // SetupError when the file cannot be opened.
    WireLog(const std::string& file, bool toStandardError);

    void event(std::string_view door, std::string_view event) { write(door, event, {}); }
    void event(std::string_view door, std::string_view event, std::string_view detail);

private:
    void write(std::string_view door, std::string_view event, std::string_view quotedDetail);
    void report(const std::string& line);

    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    Descriptor m_file;
    bool m_toStandardError;
    bool m_failed = false;
};

} // namespace simulator
