#include "tables/ParamTable.h"

#include <algorithm>
#include <cstddef>

namespace tables {

namespace {

constexpr std::array<std::string_view, kColumnCount> kHeader = {"Changed", "Adr", "Hex", "Notes"};

} // namespace

int faIndex([[maybe_unused]] const ParamTable& myGrd, int row, int col)
{
    return row * kColumnCount + col;
}

ParamTable::ParamTable(const TableKind& kind)
    : m_kind(kind)
{
    // A header and one empty row, as an unfilled grid shows.
    setRowCount(2);
    clearToHeader();
}

void ParamTable::setRowCount(int count)
{
    count = std::max(count, 1);
    if (count == m_rowCount) {
        return;
    }
    if (m_listener != nullptr) {
        m_listener->rowCountAboutToChange(count);
    }
    m_rowCount = count;
    m_cells.resize(static_cast<std::size_t>(faIndex(*this, count, 0)));
    if (m_listener != nullptr) {
        m_listener->rowCountChanged();
    }
}

const std::string& ParamTable::cell(int row, int column) const
{
    static const std::string outside;
    return holds(row, column) ? m_cells[static_cast<std::size_t>(faIndex(*this, row, column))] : outside;
}

void ParamTable::setCell(int row, int column, std::string_view text)
{
    if (!holds(row, column)) {
        return;
    }
    m_cells[static_cast<std::size_t>(faIndex(*this, row, column))] = text;
    if (m_listener != nullptr) {
        m_listener->cellChanged(row, column);
    }
}

void ParamTable::clearToHeader()
{
    for (int row = 0; row < m_rowCount; ++row) {
        for (int column = 0; column < kColumnCount; ++column) {
            setCell(row, column, row == 0 ? kHeader[static_cast<std::size_t>(column)] : std::string_view{});
        }
    }
}

void ParamTable::SetGridItem(int i, std::string_view sParm, std::string_view sValue, std::string_view sNotes)
{
    if (i < 1 || i > kIndexSize || i >= m_rowCount) {
        return;
    }
    setCell(i, kAddressColumn, sParm);
    setCell(i, kValueColumn, sValue);
    setCell(i, kNotesColumn, sNotes);
    ParmAddr[static_cast<std::size_t>(i - 1)] = sParm;
}

void ParamTable::replaceRows(std::span<const ParamRow> rows)
{
    const int count = static_cast<int>(rows.size());
    NumParms = static_cast<std::uint8_t>(count);
    setRowCount(count + 1);
    for (int row = 1; row <= count; ++row) {
        const ParamRow& entry = rows[static_cast<std::size_t>(row - 1)];
        setCell(row, kChangedColumn, {});
        SetGridItem(row, entry.address, entry.value, entry.notes);
    }
    forgetAddressesFrom(count);
}

std::vector<ParamRow> ParamTable::rows() const
{
    std::vector<ParamRow> rows;
    for (int row = 1; row <= NumParms; ++row) {
        rows.push_back({.changed = {},
                        .address = cell(row, kAddressColumn),
                        .value = cell(row, kValueColumn),
                        .notes = cell(row, kNotesColumn)});
    }
    return rows;
}

void ParamTable::forgetAddressesFrom(int index)
{
    for (auto i = static_cast<std::size_t>(std::max(index, 0)); i < ParmAddr.size(); ++i) {
        ParmAddr[i].clear();
    }
}

// Kept behaviour kb-address-twice: of two equal addresses the first counts.
ParamTable::Lookup ParamTable::find(std::string_view address) const
{
    const int last = std::min<int>(NumParms + 1, kIndexSize - 1);
    int k = 0;
    while (k < last && !matches(ParmAddr[static_cast<std::size_t>(k)], address)) {
        ++k;
    }
    Lookup lookup{.index = k, .row = std::nullopt};
    // The index may still hold addresses of rows that a shorter table no longer has.
    if (matches(ParmAddr[static_cast<std::size_t>(k)], address) && k + 1 < m_rowCount) {
        lookup.row = k + 1;
    }
    return lookup;
}

bool ParamTable::matches(std::string_view entry, std::string_view address) const
{
    switch (m_kind.match) {
    case AddressMatch::Exact:
        return entry == address;
    case AddressMatch::Containment:
        return entry.find(address) != std::string_view::npos;
    }
    return false;
}

bool ParamTable::holds(int row, int column) const
{
    return row >= 0 && row < m_rowCount && column >= 0 && column < kColumnCount;
}

} // namespace tables
