#include "app/mainwindow/EditorPane.h"

#include <QScrollBar>

namespace app {

namespace {

// What must be seen of an editor in the smallest window, in lines and in average characters.
constexpr int kSmallestLines = 8;
constexpr int kSmallestColumns = 36;

} // namespace

EditorPane::EditorPane(QWidget& editor, QWidget* parent)
    : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus); // its controls take the keyboard
    setWidgetResizable(true);
    setWidget(&editor);
    // As if the editor stood on the page itself.
    editor.setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}

QSize EditorPane::sizeHint() const
{
    return widget()->minimumSize();
}

QSize EditorPane::minimumSizeHint() const
{
    const QSize smallest(fontMetrics().averageCharWidth() * kSmallestColumns + verticalScrollBar()->sizeHint().width(),
                         fontMetrics().lineSpacing() * kSmallestLines);
    return smallest.boundedTo(widget()->minimumSize());
}

} // namespace app
