#pragma once

#include <QPlainTextEdit>

#include <string>
#include <string_view>

namespace report {

// The text box that holds a report. What it shows and what the user types into it is the report, nothing else keeps
// it. The text is in bytes of Windows-1252, of any value, and its lines end in CR LF.
class SummaryBox final : public QPlainTextEdit
{
    Q_OBJECT

public:
    // The columns of a report line up in it.
    static constexpr std::string_view kFontName = "Courier New";

    explicit SummaryBox(QWidget* parent = nullptr);

    // Replaces the text; the caret stands at its start.
    void setText(std::string_view text);
    [[nodiscard]] std::string text() const;

    // Moves the caret behind the last character and into view.
    void moveCaretToEnd();
};

} // namespace report
