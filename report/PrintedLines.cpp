#include "report/PrintedLines.h"

#include <cstddef>

namespace report {

PrintedLines printedLines(std::string_view text)
{
    constexpr std::string_view kMargin = "               ";
    constexpr std::string_view kLineEnd = "\r\n";

    PrintedLines printed;
    std::size_t at = 0;
    while (at + 1 < text.size()) { // so that a single last character is passed over
        const std::size_t lineEnd = text.find(kLineEnd, at);
        if (lineEnd == std::string_view::npos) {
            // Kept behaviour kb-last-line: the document is left unfinished, and nobody is told.
            printed.end = PrintEnd::UnfinishedLine;
            break;
        }
        printed.lines.push_back(std::string(kMargin).append(text.substr(at, lineEnd - at)));
        at = lineEnd + kLineEnd.size();
    }
    return printed;
}

} // namespace report
