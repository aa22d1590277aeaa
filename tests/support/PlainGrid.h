#pragma once

#include "tables/GridCursor.h"
#include "tables/ParamTable.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace testsupport {

// A grid as plain numbers: a cursor, a selection and a view of so many whole rows. Keeps the rows that became current,
// in order.
class PlainGrid final : public tables::GridCursor
{
public:
    // The table outlives the grid.
    explicit PlainGrid(const tables::ParamTable& table)
        : m_table(table)
    {}

    int rowsInView = 12;
    // Raised inside setRow when another row becomes current.
    std::function<void()> rowChanged;
    // Every row that setRow was asked for.
    std::vector<int> rowsSet;

    [[nodiscard]] int row() const override { return m_row; }
    void setRow(int row) override
    {
        rowsSet.push_back(row);
        if (row < 1 || row >= m_table.rowCount() || row == m_row) {
            return;
        }
        m_row = m_rowSel = row;
        if (rowChanged) {
            rowChanged();
        }
    }
    [[nodiscard]] int col() const override { return m_col; }
    void setCol(int col) override { m_col = col; }
    [[nodiscard]] int rowSel() const override { return m_rowSel; }
    void setRowSel(int row) override { m_rowSel = row; }
    void setColSel(int) override {}
    [[nodiscard]] int topRow() const override { return m_topRow; }
    void setTopRow(int row) override { m_topRow = std::clamp(row, 1, std::max(1, m_table.rowCount() - rowsInView)); }
    // A view may end with a piece of the row below the whole ones.
    bool showsAPieceMore = false;
    [[nodiscard]] bool rowIsVisible(int row) const override
    {
        const int shown = rowsInView + (showsAPieceMore ? 1 : 0);
        return row >= m_topRow && row < m_topRow + shown && row < m_table.rowCount();
    }
    [[nodiscard]] bool rowIsWhole(int row) const override
    {
        return row >= m_topRow && row < m_topRow + rowsInView && row < m_table.rowCount();
    }

private:
    const tables::ParamTable& m_table;
    int m_row = 0;
    int m_col = 0;
    int m_rowSel = 0;
    int m_topRow = 1;
};

} // namespace testsupport
