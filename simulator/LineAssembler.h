#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

// Turns what arrives at a door, in whatever pieces, into command lines. A line ends with a line feed; no byte is lost.
class LineAssembler final
{
public:
    // More than any command; a stream without line feeds is given out in pieces of this size.
    static constexpr std::size_t kLongestLine = 4096;

    struct Line
    {
        std::string text;     // without its line feed
        bool complete = true; // false: a piece of a line that never seems to end

        bool operator==(const Line&) const = default;
    };

    // Takes the bytes of one read and gives out every line that they complete.
    [[nodiscard]] std::vector<Line> take(std::string_view bytes);

    // Gives out, and forgets, the beginning of the line that is not complete; mostly empty.
    [[nodiscard]] std::string takeRest();

private:
    std::string m_rest;
};

} // namespace simulator
