#pragma once

#include "tables/GridCursor.h"
#include "tables/ui/ParamGridModel.h"

#include <QBasicTimer>
#include <QTableView>

namespace tables {

// The grid that shows one parameter table. Speaks to the rest of the program in the table's own counting (GridCursor);
// nobody else touches Qt's model indexes. Only the user's own keys, clicks and changes of the size scroll by
// themselves, so that the program's cursor moves do not. The highlighted row is always the current one.
class ParamGrid final : public QTableView, public GridCursor
{
    Q_OBJECT

public:
    // The table outlives the grid.
    explicit ParamGrid(ParamTable& table, QWidget* parent = nullptr);

    [[nodiscard]] int row() const override;
    void setRow(int row) override;
    [[nodiscard]] int col() const override;
    void setCol(int col) override;
    [[nodiscard]] int rowSel() const override;
    void setRowSel(int row) override;
    void setColSel(int col) override;
    [[nodiscard]] int topRow() const override;
    void setTopRow(int row) override;
    [[nodiscard]] bool rowIsVisible(int row) const override;
    [[nodiscard]] bool rowIsWhole(int row) const override;

signals:
    void selectionMoved();    // current cell and, with it, the selection have moved; comes before rowCurrentChanged
    void rowCurrentChanged(); // the current cell has moved to another row
    // A data row was double-clicked, or Enter was pressed on it; it is current.
    void rowDoubleClicked();

protected:
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                                       const QEvent* event) const override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] int viewHeight() const;
    void keepHighlight();
    void makeCurrent(int row, int col);
    void highlightCurrentRow();

    ParamGridModel* m_model = nullptr;
    QBasicTimer m_afterClick;
};

} // namespace tables
