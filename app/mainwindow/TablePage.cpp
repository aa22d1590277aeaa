#include "app/mainwindow/TablePage.h"

#include "platform/qt/AnsiText.h"
#include "platform/qt/Spoken.h"
#include "platform/qt/VisibleText.h"
#include "tables/ui/ConfigurationEditor.h"
#include "tables/ui/KeyboardLanguageEditor.h"

#include <QLabel>
#include <QScrollBar>
#include <QTextDocument>

#include <algorithm>

namespace app {

namespace {

constexpr int kCommentLines = 4;

struct Names
{
    const char* grid;
    const char* comments;
    const char* spoken; // of the grid, for a screen reader
};

Names namesOf(tables::TableId table)
{
    return table == tables::TableId::Configuration
               ? Names{.grid = "grdCFG", .comments = "txtComments_CFG", .spoken = "Configuration table"}
               : Names{.grid = "grdKB", .comments = "txtComments_KB", .spoken = "Keyboard Language table"};
}

} // namespace

TablePage::TablePage(const tables::TableKind& kind, const Surroundings& surroundings, QWidget* parent)
    : QWidget(parent)
    , m_surroundings(surroundings)
    , m_rows(kind)
    , m_grid(new tables::ParamGrid(m_rows, this))
    , m_live(m_rows, {.grid = *m_grid,
                      .display = *this,
                      .status = surroundings.status,
                      .unsaved = surroundings.unsaved,
                      .session = surroundings.session})
    , m_comments(new QPlainTextEdit(this))
    , m_document(m_live, *this)
{
    const Names names = namesOf(kind.id);
    m_grid->setObjectName(QLatin1String(names.grid));
    platform::setSpoken(
        *m_grid, QLatin1String(names.spoken),
        QStringLiteral("Select a row to edit its value. A double click offers to send it to the Teslin."));
    m_comments->setObjectName(QLatin1String(names.comments));
    m_comments->setToolTip(QStringLiteral("Type in any comments you want saved with this configuration"));
    m_comments->setTabChangesFocus(true);
    m_comments->setAcceptDrops(false); // a file dropped on the window is for the window
    m_comments->setFixedHeight(m_comments->fontMetrics().lineSpacing() * kCommentLines + 14);
    auto* commentsTitle = new QLabel(QStringLiteral("&Comments"), this);
    commentsTitle->setBuddy(m_comments);

    m_editColumn = new QVBoxLayout;
    m_editColumn->addWidget(commentsTitle);
    m_editColumn->addWidget(m_comments);

    m_row = new QHBoxLayout(this);
    m_row->addWidget(m_grid, 3);
    m_row->addLayout(m_editColumn, 2);

    connect(m_grid, &tables::ParamGrid::rowCurrentChanged, this, [this] {
        m_pane->verticalScrollBar()->setValue(0); // another row's controls begin at their top
        m_live.rowChanged();
    });
    connect(m_grid, &tables::ParamGrid::selectionMoved, this, [this] { m_live.selectionChanged(); });
    // The current row may have lost its editor; a click on it raises no other event.
    connect(m_grid, &tables::ParamGrid::pressed, this, [this] { m_live.rowChanged(); });
}

TablePage::~TablePage()
{
    delete m_pane;
    delete m_grid;
}

void TablePage::addEditor(tables::DeviceSender& device, platform::MessageBoxes& boxes)
{
    if (m_rows.kind().id == tables::TableId::Configuration) {
        addConfigurationEditor(device, boxes);
    } else {
        addKeyboardLanguageEditor(device, boxes);
    }
}

void TablePage::addConfigurationEditor(tables::DeviceSender& device, platform::MessageBoxes& boxes)
{
    using tables::ConfigurationEditor;
    auto* editor = new ConfigurationEditor(m_live, m_surroundings.session, m_surroundings.status, device, boxes, this);
    connect(m_grid, &tables::ParamGrid::rowDoubleClicked, editor, &ConfigurationEditor::grdCFG_DblClick);
    connect(m_comments, &QPlainTextEdit::textChanged, editor, &ConfigurationEditor::txtComments_CFG_Change);
    connect(editor, &ConfigurationEditor::aboutToHide, this, [this, editor] { emit editorAboutToHide(*editor); });
    place(*editor);
}

void TablePage::addKeyboardLanguageEditor(tables::DeviceSender& device, platform::MessageBoxes& boxes)
{
    using tables::KeyboardLanguageEditor;
    auto* editor =
        new KeyboardLanguageEditor(m_live, m_surroundings.session, m_surroundings.status, device, boxes, this);
    connect(m_grid, &tables::ParamGrid::rowDoubleClicked, editor, &KeyboardLanguageEditor::grdKB_DblClick);
    connect(editor, &KeyboardLanguageEditor::aboutToHide, this, [this, editor] { emit editorAboutToHide(*editor); });
    connect(editor, &KeyboardLanguageEditor::emptyDecEntryShown, this, &TablePage::emptyDecEntryShown);
    place(*editor);
}

void TablePage::place(QWidget& editor)
{
    m_pane = new EditorPane(editor, this);
    m_editColumn->insertWidget(0, m_pane, 1);
    // The editor's controls came last of all in the window. They belong between grid and comments, in their own order.
    QWidget* before = m_grid;
    for (QWidget* control : editor.findChildren<QWidget*>()) {
        if (control->focusPolicy() != Qt::NoFocus) {
            setTabOrder(before, control);
            before = control;
        }
    }
}

void TablePage::setTabCaption(std::string_view caption)
{
    emit tabCaptionChanged(platform::toQString(caption));
}

void TablePage::forgetCommentsAndFile()
{
    m_document.forgetCommentsAndFile();
    emit fileForgotten();
}

void TablePage::beep()
{
    m_surroundings.beep.sound();
}

void TablePage::processPendingEvents()
{
    m_surroundings.events.processPending();
}

// The raw text: what the plain one makes of no-break spaces and separators would be lost.
std::string TablePage::comments() const
{
    return platform::fromVisible(m_comments->document()->toRawText());
}

void TablePage::setComments(std::string_view text)
{
    m_comments->setPlainText(platform::toVisible(text));
}

void TablePage::showEmptyDecEntry()
{
    if (auto* editor = findChild<tables::ConfigurationEditor*>()) {
        editor->showEmptyDecEntry();
    }
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
