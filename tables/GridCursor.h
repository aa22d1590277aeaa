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
};

} // namespace tables
