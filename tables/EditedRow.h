#pragma once

#include "tables/LiveTable.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tables {

// The row that a field editor edits: the grid's current row, and the way a changed value gets back into it.
class EditedRow final
{
public:
    // Both outlive this object.
    EditedRow(LiveTable& table, EditSession& session);

    // True when edits may be written: a row is open and its controls are not just being filled.
    [[nodiscard]] bool mayEdit() const;

    // The text of a cell of the current row; empty while no row is current.
    [[nodiscard]] std::string text(Column column) const;

    // Makes the value cell current, as every edit does first, and reads it.
    [[nodiscard]] std::string takeValue();

    // Writes a byte into the value cell, shows it in binary and marks the row changed.
    void writeByte(std::uint8_t value);
    // Writes a text into the value cell, no more.
    void writeText(std::string_view value);
    // Marks the row being edited as changed.
    void markChanged();

private:
    LiveTable& m_table;
    EditSession& m_session;
};

} // namespace tables
