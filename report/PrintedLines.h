#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace report {

// How far the lines of a text can be printed.
enum class PrintEnd {
    Complete,       // every line
    UnfinishedLine, // up to a last line that no CR LF ends: the print job has to be given up there
};

struct PrintedLines
{
    std::vector<std::string> lines; // in order, each with its margin and without its line end
    PrintEnd end = PrintEnd::Complete;
};

// The lines that a report prints as, each after a margin of fifteen blanks; an empty line prints as the margin alone.
// Lines end at a CR LF only: a CR or LF alone belongs to its line. A single character after the last CR LF (or a text
// of one character) is not printed, and no error; a longer rest is an UnfinishedLine.
[[nodiscard]] PrintedLines printedLines(std::string_view text);

} // namespace report
