#pragma once

#include <optional>
#include <string_view>

namespace platform {

// The system's printer, one line of text at a time. Texts are Windows-1252. Every document is a print job of its own.
// The printer's errors are told by false and by nothing else: no box is shown.
class Printer
{
public:
    // Characters of the longest line that fits the width of A4 and of Letter paper between their margins. The font gets
    // the size for it; what a line has beyond that is not lost, its characters are drawn narrower.
    static constexpr int kColumns = 101;

    virtual ~Printer() = default;

    // Chooses the font of the documents to come, which should be one whose characters have one width; a system that
    // lacks it takes its nearest substitute. False when there is no printer or it has no font.
    [[nodiscard]] virtual bool setFontName(std::string_view family) = 0;

    // Shows the print dialog. The number of copies that the user asked for, or nothing when the dialog was cancelled.
    // The copies are the caller's to make, each a document: a document prints once.
    [[nodiscard]] virtual std::optional<int> askForCopies() = 0;

    // Starts a document; the name is what the system calls the job.
    [[nodiscard]] virtual bool beginDocument(std::string_view name) = 0;
    // Prints one line, without a line end, below the last one. Pages break by the height of the paper.
    [[nodiscard]] virtual bool printLine(std::string_view line) = 0;
    // Prints what is left of the document. Also after an error the document is closed.
    [[nodiscard]] virtual bool endDocument() = 0;
    // Gives an unfinished document up; as far as it lies with the system, nothing of it comes out.
    virtual void abortDocument() = 0;
};

} // namespace platform
