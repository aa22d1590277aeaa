#include "tables/EditedRow.h"

namespace tables {

EditedRow::EditedRow(LiveTable& table, EditSession& session)
    : m_table(table)
    , m_session(session)
{}

bool EditedRow::mayEdit() const
{
    return m_session.isEditing() && m_table.grid().row() >= 1;
}

std::string EditedRow::text(Column column) const
{
    const int row = m_table.grid().row();
    return row >= 1 ? m_table.table().cell(row, column) : std::string();
}

std::string EditedRow::takeValue()
{
    m_table.grid().setCol(kValueColumn);
    return text(kValueColumn);
}

void EditedRow::writeByte(std::uint8_t value)
{
    m_table.DisplayGridValue(value);
    markChanged();
}

void EditedRow::writeText(std::string_view value)
{
    m_table.table().setCell(m_table.grid().row(), kValueColumn, value);
}

void EditedRow::markChanged()
{
    // A copy: putting the mark moves the cursor, and a row change opens another address.
    const std::string address = m_session.CurrentAddress;
    m_table.PutTableEntry(address, kChangedMark, kChangedColumn);
}

} // namespace tables
