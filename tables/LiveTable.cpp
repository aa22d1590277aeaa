#include "tables/LiveTable.h"

#include "tables/EditorTexts.h"
#include "text/HexText.h"

#include <algorithm>
#include <cstddef>

namespace tables {

LiveTable::LiveTable(ParamTable& table, const Surroundings& surroundings)
    : m_table(table)
    , m_grid(surroundings.grid)
    , m_display(surroundings.display)
    , m_status(surroundings.status)
    , m_unsaved(surroundings.unsaved)
    , m_session(surroundings.session)
{}

void LiveTable::setEditor(RowEditor& editor)
{
    m_editor = &editor;
    m_session.editors.push_back(&editor);
}

void LiveTable::InitGrid()
{
    m_session.EditState = EditSession::kFilling;
    const bool mayDiscard = m_unsaved.CheckForUnsavedData(m_table.kind().id);
    if (!mayDiscard) {
        m_session.EditState = EditSession::kEditing;
        return;
    }
    // Answering the question may have saved the table, which ends in editing mode.
    m_session.EditState = EditSession::kFilling;
    // Kept behaviour kb-default-star: one table loses its star and the other does not; both still count as unsaved.
    if (m_table.kind().resetRestoresCaption) {
        restoreTabCaption();
    }
    // Kept behaviour kb-default-clears-comment: the question above was about rows; a new comment goes unasked.
    m_display.forgetCommentsAndFile();
    m_table.clearToHeader();
    m_grid.setCol(kChangedColumn);
    layDownDefaults();
    m_table.LastRow = ParamTable::kNoLastRow;
    m_grid.setTopRow(1);
    m_grid.setRow(m_table.kind().firstEditableRow);
    m_editor->setEditTitle("(values will be edited here)");
    m_session.EditState = EditSession::kEditing;
    rowChanged();
}

void LiveTable::layDownDefaults()
{
    const std::span<const Parameter> defaults = m_table.kind().defaults;
    int row = 0;
    for (const Parameter& entry : defaults) {
        ++row;
        if (row > 1 || m_table.rowCount() < 2) {
            m_table.setRowCount(row + 1);
        }
        m_table.SetGridItem(row, entry.address, entry.value, entry.notes);
    }
    m_table.NumParms = static_cast<std::uint8_t>(row);
    m_table.forgetAddressesFrom(row);
}

void LiveTable::PutTableEntry(std::string_view ParmNum, std::string_view ParmVal, int ColNumber)
{
    if (ParmNum.empty() || (ParmVal.empty() && m_table.kind().ignoresEmptyValues)) {
        return;
    }
    const ParamTable::Lookup found = m_table.find(ParmNum);
    if (!found.row) {
        return;
    }
    keepInView(found.index);
    m_grid.setRow(*found.row);
    m_table.setCell(*found.row, ColNumber, ParmVal);
    if (ParmVal == kChangedMark) {
        ++m_marksMade;
        m_table.TableChanged = true;
        m_display.setTabCaption(std::string(m_table.kind().caption) + " *");
    }
}

std::string LiveTable::GetTableEntry(std::string_view ParmNum)
{
    if (ParmNum.empty()) {
        return {};
    }
    const ParamTable::Lookup found = m_table.find(ParmNum);
    keepInView(found.index);
    return found.row ? m_table.cell(*found.row, kValueColumn) : std::string();
}

void LiveTable::DisplayGridValue(std::uint8_t i)
{
    m_grid.setCol(kValueColumn);
    // Without a current row there is no cell to write: row 0 is the header.
    if (m_grid.row() > 0) {
        m_table.setCell(m_grid.row(), kValueColumn, text::hexTwoDigits(i));
    }
    m_status.setStatusText(binaryText(i));
}

void LiveTable::Clear_Changed_Flags()
{
    m_session.Hide_All();
    const int last = std::min<int>(m_table.NumParms, ParamTable::kIndexSize - 1);
    for (int k = 0; k <= last; ++k) {
        m_session.EditState = EditSession::kFilling;
        // A copy: moving the row may run handlers that touch the index.
        const std::string address = m_table.ParmAddr[static_cast<std::size_t>(k)];
        PutTableEntry(address, kUnchangedMark, kChangedColumn);
    }
    m_session.EditState = EditSession::kEditing;
    m_table.LastRow = ParamTable::kNoLastRow;
    m_grid.setTopRow(1);
    makeCurrent(m_table.kind().firstEditableRow);
    m_grid.setCol(kAddressColumn);
}

void LiveTable::makeCurrent(int row)
{
    m_grid.setRow(std::min<int>(row, m_table.NumParms));
    // A row that was current already raises no event.
    rowChanged();
}

void LiveTable::rowChanged()
{
    if (m_session.EditState == EditSession::kFilling || m_session.EditState == EditSession::kLayingOutKeyboard) {
        return;
    }
    const int row = m_grid.row();
    if (row < 1 || row == m_table.LastRow || row > m_table.NumParms) {
        return;
    }
    m_table.LastRow = static_cast<std::int16_t>(row);
    m_grid.setRowSel(row);
    m_editor->open();
}

void LiveTable::selectionChanged()
{
    const int last = m_table.NumParms;
    if (m_guardingSelection || last == 0 || (m_grid.rowSel() <= last && m_grid.row() <= last)) {
        return;
    }
    m_guardingSelection = true;
    m_grid.setRow(last);
    m_grid.setRowSel(last);
    m_grid.setCol(kChangedColumn);
    m_grid.setColSel(kNotesColumn);
    m_display.beep();
    while (!m_grid.rowIsVisible(m_grid.row()) && m_grid.topRow() > 1) {
        m_grid.setTopRow(m_grid.topRow() - 1);
        m_display.processPendingEvents();
    }
    m_guardingSelection = false;
}

bool LiveTable::hasMarkedRows() const
{
    for (int row = 1; row <= m_table.NumParms; ++row) {
        if (m_table.cell(row, kChangedColumn) == kChangedMark) {
            return true;
        }
    }
    return false;
}

void LiveTable::restoreTabCaption()
{
    m_display.setTabCaption(m_table.kind().caption);
}

void LiveTable::reopenEditor()
{
    // A row of its own number would pass for the one that is open already.
    m_table.LastRow = m_grid.row() == ParamTable::kNoLastRow ? 0 : ParamTable::kNoLastRow;
    rowChanged();
}

// Kept behaviour kb-grid-moves: by one row, and for reading an entry, too.
void LiveTable::keepInView(int index)
{
    if (index < m_table.rowCount() - 2 && !m_grid.rowIsVisible(index + 2)) {
        m_grid.setTopRow(m_grid.topRow() + 1);
    }
}

} // namespace tables
