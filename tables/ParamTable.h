#pragma once

#include "tables/ParamRow.h"
#include "tables/TableKind.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tables {

// The columns of a parameter table.
enum Column : int { kChangedColumn = 0, kAddressColumn = 1, kValueColumn = 2, kNotesColumn = 3, kColumnCount = 4 };

// The text of the Changed column in a row that was edited; a row that was not holds one blank.
inline constexpr std::string_view kChangedMark = "XXX";
inline constexpr std::string_view kUnchangedMark = " ";

// Told of every change of the cells, so that a view can follow.
class TableListener
{
public:
    virtual ~TableListener() = default;
    virtual void cellChanged(int row, int column) = 0;
    virtual void rowCountAboutToChange(int newCount) = 0;
    virtual void rowCountChanged() = 0;
};

// One parameter table: its cells as text, row 0 the header and data rows from 1, and the address index that look-ups
// search. Knows nothing of a cursor or a window.
class ParamTable final
{
public:
    static constexpr int kIndexSize = 301;
    static constexpr std::int16_t kNoLastRow = 99;

    explicit ParamTable(const TableKind& kind);

    [[nodiscard]] const TableKind& kind() const { return m_kind; }
    void setListener(TableListener* listener) { m_listener = listener; }

    // Rows of the grid with its header, at least 1. New rows are empty.
    [[nodiscard]] int rowCount() const { return m_rowCount; }
    void setRowCount(int count);

    // The text of a cell; empty outside the table.
    [[nodiscard]] const std::string& cell(int row, int column) const;
    // Writes a cell; nothing happens outside the table.
    void setCell(int row, int column, std::string_view text);

    // Empties every cell and writes the header row.
    void clearToHeader();

    // Writes address, value and notes of row i and enters the address into the index at i - 1. Rows beyond the table
    // are ignored.
    void SetGridItem(int i, std::string_view sParm, std::string_view sValue, std::string_view sNotes);

    // Puts rows, unmarked, in the place of all that are there; at most 255.
    void replaceRows(std::span<const ParamRow> rows);
    // The data rows, without their marks.
    [[nodiscard]] std::vector<ParamRow> rows() const;

    // Forgets the addresses from an index on, so that rows of a longer table that is gone are not found.
    void forgetAddressesFrom(int index);

    struct Lookup
    {
        int index = 0;          // where the walk through the index ended; looked-up rows are index + 1
        std::optional<int> row; // the grid row, if one holds the address
    };
    // Walks the index to the first entry that matches the address, at most one entry past the row count.
    [[nodiscard]] Lookup find(std::string_view address) const;

    // The rows are what a file holds.
    void nowSaved() { TableChanged = false; }

    // Each table has its own: ParmAddr_CFG and ParmAddr_KB, NumParms_*, LastRow_* and TableChanged_*.
    std::array<std::string, kIndexSize> ParmAddr; // address of data row r at r - 1
    std::uint8_t NumParms = 0;                    // data rows
    std::int16_t LastRow = kNoLastRow;            // row that the field editor opened last
    bool TableChanged = false;                    // true since the first mark, until saved or loaded

private:
    [[nodiscard]] bool matches(std::string_view entry, std::string_view address) const;
    [[nodiscard]] bool holds(int row, int column) const;

    const TableKind& m_kind;
    TableListener* m_listener = nullptr;
    std::vector<std::string> m_cells;
    int m_rowCount = 0;
};

// The flat index of a cell: row times the table's column count plus the column.
[[nodiscard]] int faIndex(const ParamTable& myGrd, int row, int col);

} // namespace tables
