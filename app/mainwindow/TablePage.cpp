#include "app/mainwindow/TablePage.h"

#include "platform/qt/Spoken.h"

#include <QLabel>
#include <QScrollBar>

#include <algorithm>

namespace app {

namespace {

constexpr int kCommentLines = 4;

} // namespace

TablePage::TablePage(tables::ParamTable& table, const QString& gridName, const QString& commentsName,
                     const QString& spokenName, QWidget* parent)
    : QWidget(parent)
{
    m_grid = new tables::ParamGrid(table, this);
    m_grid->setObjectName(gridName);
    platform::setSpoken(*m_grid, spokenName,
                        tr("Select a row to edit its value. A double click offers to send it to the Teslin."));
    m_comments = new QPlainTextEdit(this);
    m_comments->setObjectName(commentsName);
    m_comments->setToolTip(tr("Type in any comments you want saved with this configuration"));
    m_comments->setTabChangesFocus(true);
    m_comments->setAcceptDrops(false); // a file dropped on the window is for the window
    m_comments->setFixedHeight(m_comments->fontMetrics().lineSpacing() * kCommentLines + 14);
    auto* commentsTitle = new QLabel(tr("&Comments"), this);
    commentsTitle->setBuddy(m_comments);

    m_editColumn = new QVBoxLayout;
    m_editColumn->addWidget(commentsTitle);
    m_editColumn->addWidget(m_comments);

    m_row = new QHBoxLayout(this);
    m_row->addWidget(m_grid, 3);
    m_row->addLayout(m_editColumn, 2);
}

void TablePage::setEditor(QWidget* editor)
{
    m_pane = new EditorPane(*editor, this);
    m_editColumn->insertWidget(0, m_pane, 1);
    // The editor's controls came last of all in the window. They belong between grid and comments, in their own order.
    QWidget* before = m_grid;
    for (QWidget* control : editor->findChildren<QWidget*>()) {
        if (control->focusPolicy() != Qt::NoFocus) {
            setTabOrder(before, control);
            before = control;
        }
    }
    // Another row begins at its top.
    connect(m_grid, &tables::ParamGrid::rowCurrentChanged, m_pane,
            [this] { m_pane->verticalScrollBar()->setValue(0); });
}

// The column has two fifths of the width, and in a small window up to two thirds before its editor must be scrolled
// sideways.
void TablePage::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const int room = m_pane != nullptr ? m_pane->sizeHint().width() : 0;
    const QMargins margins = m_row->contentsMargins();
    const int both = width() - margins.left() - margins.right() - m_row->spacing();
    const int column = std::max(both * 2 / 5, std::min(room, both * 2 / 3));
    m_row->setStretch(0, both - column);
    m_row->setStretch(1, column);
}

} // namespace app
