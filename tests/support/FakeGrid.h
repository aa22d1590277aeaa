#pragma once

#include "tables/GridCursor.h"
#include "tables/ParamTable.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace testsupport {

// A grid without a window: shows a fixed number of whole rows, holds a cursor, a selection and a top row, and raises
// its change events inside the call that causes them, as the real grid does. Rows that do not exist never become
// current. Every setter the program calls is written to the log, whether or not it changes anything.
class FakeGrid final : public tables::GridCursor, private tables::TableListener
{
public:
    // Table and log outlive the grid.
    FakeGrid(tables::ParamTable& table, int rowsInView, std::vector<std::string>& log)
        : m_table(table)
        , m_rowsInView(rowsInView)
        , m_log(log)
    {
        m_table.setListener(this);
    }
    ~FakeGrid() override { m_table.setListener(nullptr); }
    FakeGrid(const FakeGrid&) = delete;
    FakeGrid& operator=(const FakeGrid&) = delete;

    // The events, first the selection's, then the row's.
    std::function<void()> selectionChanged;
    std::function<void()> rowChanged;

    // What a user does; not logged.
    void userMovesTo(int row) { moveTo(row); }
    void userSelectsTo(int lastRow)
    {
        m_rowSel = lastRow;
        raise(selectionChanged);
    }
    void userScrollsTo(int row) { scrollTo(row); }

    [[nodiscard]] int row() const override { return m_row; }
    void setRow(int row) override
    {
        log("setRow", row);
        moveTo(row);
    }
    [[nodiscard]] int col() const override { return m_col; }
    void setCol(int col) override
    {
        log("setCol", col);
        m_col = m_colSel = col;
    }
    [[nodiscard]] int rowSel() const override { return m_rowSel; }
    void setRowSel(int row) override
    {
        log("setRowSel", row);
        if (m_rowSel != row) {
            m_rowSel = row;
            raise(selectionChanged);
        }
    }
    [[nodiscard]] int colSel() const { return m_colSel; }
    void setColSel(int col) override
    {
        log("setColSel", col);
        m_colSel = col;
    }
    [[nodiscard]] int topRow() const override { return m_topRow; }
    void setTopRow(int row) override
    {
        log("setTopRow", row);
        scrollTo(row);
    }
    [[nodiscard]] bool rowIsVisible(int row) const override
    {
        return row >= m_topRow && row < m_topRow + m_rowsInView && row < m_table.rowCount();
    }
    [[nodiscard]] bool rowIsWhole(int row) const override { return rowIsVisible(row); }

private:
    void log(const char* call, int value) { m_log.push_back(std::string(call) + " " + std::to_string(value)); }
    static void raise(const std::function<void()>& event)
    {
        if (event) {
            event();
        }
    }

    void moveTo(int row)
    {
        if (row >= 1 && row < m_table.rowCount()) {
            placeCursor(row);
        }
    }

    void placeCursor(int row)
    {
        const bool moved = row != m_row;
        const bool selected = moved || m_rowSel != row;
        m_row = m_rowSel = row;
        if (selected) {
            raise(selectionChanged);
        }
        if (moved) {
            raise(rowChanged);
        }
    }

    void scrollTo(int row) { m_topRow = std::clamp(row, 1, std::max(m_table.rowCount() - m_rowsInView, 1)); }

    void cellChanged(int, int) override {}
    void rowCountAboutToChange(int newCount) override
    {
        // A current row that goes leaves the cursor on the last row that stays.
        if (m_row > newCount - 1) {
            placeCursor(newCount - 1);
        }
    }
    void rowCountChanged() override { scrollTo(m_topRow); }

    tables::ParamTable& m_table;
    const int m_rowsInView;
    std::vector<std::string>& m_log;
    int m_row = 0;
    int m_col = 0;
    int m_rowSel = 0;
    int m_colSel = 0;
    int m_topRow = 1;
};

} // namespace testsupport
