#include "app/TablePage.h"

#include "platform/qt/Spoken.h"

#include <QHBoxLayout>
#include <QLabel>

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

    auto* row = new QHBoxLayout(this);
    row->addWidget(m_grid, 3);
    row->addLayout(m_editColumn, 2);
}

void TablePage::setEditor(QWidget* editor)
{
    m_editColumn->insertWidget(0, editor, 1);
    // The editor's controls came last of all in the window. They belong between grid and comments, in their own order.
    QWidget* before = m_grid;
    for (QWidget* control : editor->findChildren<QWidget*>()) {
        if (control->focusPolicy() != Qt::NoFocus) {
            setTabOrder(before, control);
            before = control;
        }
    }
}

} // namespace app
