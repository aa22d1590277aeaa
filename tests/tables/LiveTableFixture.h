#pragma once

#include "tables/LiveTable.h"
#include "tests/support/FakeGrid.h"
#include "tests/support/FakeTableSurroundings.h"
#include "tests/support/TextToString.h"
#include "text/HexText.h"

#include <algorithm>
#include <string>
#include <vector>

// A table with a grid and a window that are fakes, wired as the program wires them.
struct LiveTableFixture
{
    static constexpr int kRowsInView = 10;

    explicit LiveTableFixture(const tables::TableKind& kind, int rowsInView = kRowsInView)
        : table(kind)
        , grid(table, rowsInView, log)
    {
        live.setEditor(host);
        grid.rowChanged = [this] { live.rowChanged(); };
        grid.selectionChanged = [this] { live.selectionChanged(); };
        // A field editor leaves the cursor in the address column and the program in editing mode.
        host.onEditData = [this] {
            openedRows.push_back(grid.row());
            grid.setCol(tables::kAddressColumn);
            session.EditState = tables::EditSession::kEditing;
        };
    }

    // The table as a reset leaves it, with nothing in the log.
    void reset()
    {
        live.InitGrid();
        forget();
    }

    // The table as loading a file leaves it: `count` rows with addresses from 200 on, right after an editing session
    // that marked every one of them.
    void load(int count)
    {
        session.EditState = tables::EditSession::kLayingOutKeyboard;
        table.setRowCount(count + 1);
        for (int row = 1; row <= count; ++row) {
            table.SetGridItem(row, loadedAddress(row), "00", "loaded");
            table.setCell(row, tables::kChangedColumn, tables::kChangedMark);
        }
        table.NumParms = static_cast<std::uint8_t>(count);
        table.forgetAddressesFrom(count);
        session.EditState = tables::EditSession::kEditing;
        forget();
    }
    static std::string loadedAddress(int row) { return text::hexThreeDigits(0x200U + static_cast<unsigned>(row)); }

    void forget()
    {
        log.clear();
        openedRows.clear();
    }

    [[nodiscard]] auto times(const std::string& call) const { return std::count(log.begin(), log.end(), call); }

    // Every cell of the table, row after row.
    [[nodiscard]] std::vector<std::string> cells() const
    {
        std::vector<std::string> texts;
        for (int row = 0; row < table.rowCount(); ++row) {
            for (int column = 0; column < tables::kColumnCount; ++column) {
                texts.push_back(table.cell(row, column));
            }
        }
        return texts;
    }

    // The texts of one column in the data rows.
    [[nodiscard]] std::vector<std::string> column(int column) const
    {
        std::vector<std::string> texts;
        for (int row = 1; row < table.rowCount(); ++row) {
            texts.push_back(table.cell(row, column));
        }
        return texts;
    }

    std::vector<std::string> log;
    std::vector<int> openedRows; // rows that the field editor was opened on
    tables::EditSession session;
    tables::ParamTable table;
    testsupport::FakeGrid grid;
    testsupport::FakeTableSurroundings host{log};
    tables::LiveTable live{table, {.grid = grid, .display = host, .status = host, .unsaved = host, .session = session}};
};
