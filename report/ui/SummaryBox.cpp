#include "report/ui/SummaryBox.h"

#include "platform/qt/AnsiText.h"
#include "platform/qt/ColumnFont.h"
#include "platform/qt/VisibleText.h"

namespace report {

namespace {

constexpr int kFontPoints = 12;

} // namespace

SummaryBox::SummaryBox(QWidget* parent)
    : QPlainTextEdit(parent)
{
    QFont reportFont = platform::columnFont(platform::toQString(kFontName));
    reportFont.setPointSize(kFontPoints);
    setFont(reportFont);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTabChangesFocus(true);
}

void SummaryBox::setText(std::string_view text)
{
    setPlainText(platform::toVisible(text));
}

std::string SummaryBox::text() const
{
    // The raw text: toPlainText() would turn no-break spaces into blanks.
    return platform::fromVisible(document()->toRawText());
}

void SummaryBox::moveCaretToEnd()
{
    moveCursor(QTextCursor::End);
    ensureCursorVisible();
}

} // namespace report
