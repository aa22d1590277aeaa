#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What the driver's replies mean. A reply is recognised by the text it contains; its payload stands at a fixed column
// that depends on the kind of reply. Columns count from 1 and count bytes.
namespace device::replies {

// A line that came as a receive event, its terminator already dropped.
struct Line
{
    enum class Kind {
        Identification, // of the device; the text is empty when the line is too short to carry one
        Parameter,      // the value of a parameter
        Ignored,        // everything else, the echo of a write and parameter lines without a value included
    };
    Kind kind = Kind::Ignored;
    bool hasText = false; // an identification of up to 24 characters leaves the label as it is
    std::string text;
    // Of a "/read" report: its status, 99 when the line is too short, 0 when the number does not fit 0 to 32767.
    // Otherwise 0.
    int readStatus = 0;
};

inline constexpr int kUnknownReadStatus = 99;

[[nodiscard]] Line parseLine(std::string_view line);

// Replies that identification reads straight from the input, terminator included. Nothing when the reply is not of its
// kind or too short. The driver's and the device's version keep the terminator; the other two lose their last
// character.
[[nodiscard]] std::optional<std::string> driverName(std::string_view reply);
[[nodiscard]] std::optional<std::string> firmwareVersion(std::string_view reply); // cut before the first "/"
[[nodiscard]] std::optional<std::string> identification(std::string_view reply);
[[nodiscard]] std::optional<std::string> parameterValue(std::string_view reply);

// The port's name in the answer of the device object: from the first "COM" to the end of the text (a character 0 ends
// it), less one control character at the end. Nothing when there is no "COM", or no number of a port behind it.
[[nodiscard]] std::optional<std::string> portName(std::string_view answer);

// The number after the first "COM" in a port's name; nothing when there is no "COM" or no port can have the number.
[[nodiscard]] std::optional<std::int16_t> portNumber(std::string_view portName);

} // namespace device::replies
