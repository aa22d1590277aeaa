#include "tables/ui/ParamGrid.h"

#include <QEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPalette>
#include <QScrollBar>
#include <QStyleHints>

#include <algorithm>

namespace tables {

namespace {

bool isEnter(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool moves(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return true;
    default:
        return false;
    }
}

} // namespace

ParamGrid::ParamGrid(ParamTable& table, QWidget* parent)
    : QTableView(parent)
{
    m_model = new ParamGridModel(table, this);
    setModel(m_model);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setAutoScroll(false);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setShowGrid(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setStretchLastSection(true);
    const QFontMetrics fixed(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    const auto widthOf = [&](const char* text) { return fixed.horizontalAdvance(QLatin1String(text)); };
    setColumnWidth(kChangedColumn,
                   std::max(widthOf("XXX__"), fontMetrics().horizontalAdvance(QStringLiteral("Changed")) + 20));
    setColumnWidth(kAddressColumn, widthOf("081-082__"));
    setColumnWidth(kValueColumn, widthOf("20-03__"));

    keepHighlight();

    // The scroll range follows rows that come and go only when the event loop runs next; the program asks before that.
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, &ParamGrid::updateGeometries);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &ParamGrid::highlightCurrentRow);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, &ParamGrid::rowCurrentChanged);
    connect(this, &QTableView::doubleClicked, this, &ParamGrid::rowDoubleClicked);
}

// The current row is the one that the controls beside the grid edit. Some systems show a selection without the focus in
// a grey that is hardly seen.
void ParamGrid::keepHighlight()
{
    const QPalette system = QGuiApplication::palette();
    QPalette own = palette();
    for (const auto role : {QPalette::Highlight, QPalette::HighlightedText}) {
        own.setBrush(QPalette::Inactive, role, system.brush(QPalette::Active, role));
    }
    if (own != palette()) {
        setPalette(own);
    }
}

void ParamGrid::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange) {
        keepHighlight();
    }
}

int ParamGrid::row() const
{
    return currentIndex().isValid() ? currentIndex().row() + 1 : 0;
}

void ParamGrid::setRow(int row)
{
    makeCurrent(row, col());
}

int ParamGrid::col() const
{
    return currentIndex().isValid() ? currentIndex().column() : 0;
}

void ParamGrid::setCol(int col)
{
    makeCurrent(row(), col);
}

// Only one row can be selected, so the selection always ends in the current row and spans its columns.
int ParamGrid::rowSel() const
{
    return row();
}

void ParamGrid::setRowSel(int row)
{
    setRow(row);
}

void ParamGrid::setColSel([[maybe_unused]] int col)
{
    setCol(this->col());
}

void ParamGrid::makeCurrent(int row, int col)
{
    const QModelIndex index = m_model->index(row - 1, col);
    if (index.isValid()) {
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    }
}

void ParamGrid::highlightCurrentRow()
{
    selectionModel()->select(currentIndex(), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    emit selectionMoved();
}

int ParamGrid::topRow() const
{
    return verticalScrollBar()->value() + 1;
}

void ParamGrid::setTopRow(int row)
{
    updateGeometries(); // the same for rows that came, and for a size the grid was given while it was hidden
    verticalScrollBar()->setValue(row - 1);
}

bool ParamGrid::rowIsVisible(int row) const
{
    if (row < 1 || row > m_model->rowCount()) {
        return false;
    }
    const int top = rowViewportPosition(row - 1);
    return top < viewHeight() && top + rowHeight(row - 1) > 0;
}

bool ParamGrid::rowIsWhole(int row) const
{
    if (row < 1 || row > m_model->rowCount()) {
        return false;
    }
    const int top = rowViewportPosition(row - 1);
    return top >= 0 && top + rowHeight(row - 1) <= viewHeight();
}

int ParamGrid::viewHeight() const
{
    // A size that the grid was given while it was hidden has not reached the viewport yet.
    const bool sizeIsNew = testAttribute(Qt::WA_PendingResizeEvent);
    return sizeIsNew ? maximumViewportSize().height() : viewport()->height();
}

QItemSelectionModel::SelectionFlags ParamGrid::selectionCommand([[maybe_unused]] const QModelIndex& index,
                                                                [[maybe_unused]] const QEvent* event) const
{
    // Neither selects nor deselects. NoUpdate would say the same, but some styles then refuse to move with the keys.
    return QItemSelectionModel::Rows;
}

// A row that is cut at the lower edge is shown whole, but not under the pointer: a second click would meet another row.
void ParamGrid::mouseReleaseEvent(QMouseEvent* event)
{
    QTableView::mouseReleaseEvent(event);
    m_afterClick.start(QGuiApplication::styleHints()->mouseDoubleClickInterval() + 100, this);
}

void ParamGrid::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_afterClick.timerId()) {
        QTableView::timerEvent(event);
    } else {
        m_afterClick.stop();
        uncutRow(*this, row());
    }
}

// The row that is edited stays on screen when the grid becomes lower.
void ParamGrid::resizeEvent(QResizeEvent* event)
{
    const int top = row() > 0 ? rowViewportPosition(row() - 1) : -1;
    QTableView::resizeEvent(event);
    if (top >= 0 && top < event->oldSize().height()) {
        bringIntoView(*this, row());
    }
}

void ParamGrid::keyPressEvent(QKeyEvent* event)
{
    const QModelIndex before = currentIndex();
    QTableView::keyPressEvent(event);
    const bool asks = isEnter(*event);
    // A key that is only held, for another one to follow, moves nothing.
    if (currentIndex().isValid() && (currentIndex() != before || moves(*event) || asks)) {
        scrollTo(currentIndex(), EnsureVisible);
    }
    // A key that is held down asks once: the next Enter would already answer.
    if (asks && currentIndex().isValid() && !event->isAutoRepeat()) {
        emit rowDoubleClicked();
    }
}

// Only the left button asks; the base class takes any.
void ParamGrid::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        QTableView::mouseDoubleClickEvent(event);
    }
}

} // namespace tables
