#pragma once

#include "tables/ui/ParamGrid.h"
#include "text/HexText.h"

#include <QHeaderView>
#include <QTest>
#include <QWheelEvent>

#include <string>
#include <vector>

// A parameter grid in a window of its own, with a table of `rows` parameters at the addresses 001, 002, ... and as many
// empty rows behind them as asked for.
struct ShownGrid
{
    static constexpr int kWidth = 500;

    explicit ShownGrid(int rows, int rowsToSpare = 0)
    {
        fill(rows, rowsToSpare);
        grid.setCol(tables::kChangedColumn);
    }

    void fill(int rows, int rowsToSpare = 0)
    {
        table.setRowCount(rows + rowsToSpare + 1);
        for (int row = 1; row <= rows; ++row) {
            table.SetGridItem(row, text::hexThreeDigits(static_cast<std::uint32_t>(row)), "00", "notes");
        }
        table.NumParms = static_cast<std::uint8_t>(rows);
        table.forgetAddressesFrom(rows);
    }

    // Shows the grid so that its view is exactly as high as that many rows and, if given, some pixels more; true when
    // it stands on screen like this.
    [[nodiscard]] bool show(int wholeRows, int morePixels = 0)
    {
        grid.resize(kWidth, 300);
        grid.show();
        if (!QTest::qWaitForWindowExposed(&grid)) {
            return false;
        }
        const int wanted = wholeRows * grid.verticalHeader()->defaultSectionSize() + morePixels;
        grid.resize(kWidth, grid.height() - grid.viewport()->height() + wanted);
        return QTest::qWaitFor([&] { return grid.viewport()->height() == wanted; });
    }

    // A point inside the view, in the middle of a row.
    [[nodiscard]] QPoint pointIn(int row) const
    {
        return {20, grid.rowViewportPosition(row - 1) + grid.rowHeight(row - 1) / 2};
    }
    void click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, modifiers, pointIn(row));
    }
    void doubleClick(int row)
    {
        click(row);
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, pointIn(row));
    }

    [[nodiscard]] bool wholeRowIsInView(int row) const
    {
        const int top = grid.rowViewportPosition(row - 1);
        return top >= 0 && top + grid.rowHeight(row - 1) <= grid.viewport()->height();
    }

    [[nodiscard]] std::vector<int> highlightedRows() const
    {
        std::vector<int> rows;
        for (const QModelIndex& index : grid.selectionModel()->selectedRows()) {
            rows.push_back(index.row() + 1);
        }
        return rows;
    }

    tables::ParamTable table{tables::configurationKind()};
    tables::ParamGrid grid{table};
};
