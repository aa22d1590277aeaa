#pragma once

#include "tables/EditSession.h"
#include "tables/GridCursor.h"
#include "tables/ParamTable.h"
#include "tables/RowEditor.h"
#include "tables/StatusLine.h"
#include "tables/TableDisplay.h"
#include "tables/UnsavedChanges.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tables {

// A parameter table together with the grid that shows it: every operation that reads or writes a parameter by its
// address and, as the program does, moves the grid's cursor and view with it.
class LiveTable final
{
public:
    // What a table works with beside its rows. All of it outlives the table.
    struct Surroundings
    {
        GridCursor& grid;
        TableDisplay& display;
        StatusLine& status;
        UnsavedChanges& unsaved;
        EditSession& session;
    };

    // The rows outlive this object.
    LiveTable(ParamTable& table, const Surroundings& surroundings);

    LiveTable(const LiveTable&) = delete;
    LiveTable& operator=(const LiveTable&) = delete;

    [[nodiscard]] ParamTable& table() { return m_table; }
    [[nodiscard]] const ParamTable& table() const { return m_table; }
    [[nodiscard]] GridCursor& grid() { return m_grid; }

    // The editor of this table's rows, which joins the session's. To be set once, before anything else is asked of the
    // table; it outlives the table's work.
    void setEditor(RowEditor& editor);
    [[nodiscard]] RowEditor& editor() { return *m_editor; }

    // Resets the table to its factory defaults, after asking about unsaved changes. The changed flag stays as it is.
    void InitGrid();

    // Writes ParmVal into a column of the row that holds ParmNum and makes that row current. Column 2 sets a value,
    // column 0 the changed mark. An address that no row holds changes nothing.
    void PutTableEntry(std::string_view ParmNum, std::string_view ParmVal, int ColNumber);

    // The whole value cell of the row that holds ParmNum, or the empty text. Scrolls as PutTableEntry does, but leaves
    // the current row alone.
    [[nodiscard]] std::string GetTableEntry(std::string_view ParmNum);

    // Writes a byte as two digits into the current row's value cell and shows its binary form in the status bar. Does
    // not mark the row.
    void DisplayGridValue(std::uint8_t i);

    // Blanks every row's changed mark and returns to the first editable row.
    void Clear_Changed_Flags();

    // The grid's current cell has moved.
    void rowChanged();
    // The grid's selection has changed: keeps cursor and selection off rows beyond the last data row.
    void selectionChanged();

    // How many marks have been put so far: it has grown when a row was edited meanwhile.
    [[nodiscard]] unsigned marksMade() const { return m_marksMade; }

    // True while any row is marked changed.
    [[nodiscard]] bool hasMarkedRows() const;

    // The tab caption without the changed mark.
    void restoreTabCaption();
    // Opens the editor on the current row even if it was the one opened last.
    void reopenEditor();

private:
    void layDownDefaults();
    void keepInView(int index);
    void makeCurrent(int row);

    ParamTable& m_table;
    GridCursor& m_grid;
    TableDisplay& m_display;
    StatusLine& m_status;
    UnsavedChanges& m_unsaved;
    EditSession& m_session;
    RowEditor* m_editor = nullptr;
    unsigned m_marksMade = 0;
    bool m_guardingSelection = false;
};

} // namespace tables
