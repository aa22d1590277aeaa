#pragma once

namespace tables {

// The cursor, selection and scrolling of the grid that shows a table, in the table's own counting: row 0 is the header,
// data rows run from 1, topRow 1 shows the first data row. Setting the row runs the grid's row-change handling at once
// when the row really changes; it never scrolls by itself.
class GridCursor
{
public:
    virtual ~GridCursor() = default;

    [[nodiscard]] virtual int row() const = 0; // 0 while no row is current
    virtual void setRow(int row) = 0;
    [[nodiscard]] virtual int col() const = 0;
    virtual void setCol(int col) = 0;

    // The far end of the selection; the near end is the current cell.
    [[nodiscard]] virtual int rowSel() const = 0;
    virtual void setRowSel(int row) = 0;
    virtual void setColSel(int col) = 0;

    [[nodiscard]] virtual int topRow() const = 0;
    virtual void setTopRow(int row) = 0; // clamped to what the grid can show
    // True when any part of the row is inside the grid's view, whether or not the grid itself is on screen.
    [[nodiscard]] virtual bool rowIsVisible(int row) const = 0;
    // True when no part of the row is outside.
    [[nodiscard]] virtual bool rowIsWhole(int row) const = 0;
};

// Scrolls up to a row that is above the view.
inline void scrollUpTo(GridCursor& grid, int row)
{
    if (row >= 1 && row < grid.topRow()) {
        grid.setTopRow(row);
    }
}

// Scrolls a row whose lower part is cut off into view.
inline void uncutRow(GridCursor& grid, int row)
{
    if (row > grid.topRow() && grid.rowIsVisible(row) && !grid.rowIsWhole(row)) {
        grid.setTopRow(grid.topRow() + 1);
    }
}

// Scrolls as little as it takes to show a whole row, wherever it is.
inline void bringIntoView(GridCursor& grid, int row)
{
    scrollUpTo(grid, row);
    int before = 0; // the end of the table stops the scrolling
    while (!grid.rowIsWhole(row) && grid.topRow() < row && grid.topRow() != before) {
        before = grid.topRow();
        grid.setTopRow(before + 1);
    }
}

} // namespace tables
