#pragma once

#include "tables/LiveTable.h"

#include <string>
#include <string_view>

namespace tables {

// Both tables of the reader under the names that the rest of the program uses. Thin: everything is done by LiveTable.
struct ParamTables
{
    LiveTable& CFG;
    LiveTable& KB;
    EditSession& session;

    [[nodiscard]] LiveTable& of(TableId table) { return table == TableId::Configuration ? CFG : KB; }

    // Resets the table in effect to its defaults. In the read test the tables stay as they are, but editing is off
    // until the next reset or clear.
    void InitGrids()
    {
        if (session.tableInEffect) {
            of(*session.tableInEffect).InitGrid();
        } else {
            session.EditState = EditSession::kFilling;
        }
    }

    void SetGridItem_CFG(int i, std::string_view sParm, std::string_view sValue, std::string_view sNotes)
    {
        CFG.table().SetGridItem(i, sParm, sValue, sNotes);
    }
    void SetGridItem_KB(int i, std::string_view sParm, std::string_view sValue, std::string_view sNotes)
    {
        KB.table().SetGridItem(i, sParm, sValue, sNotes);
    }

    [[nodiscard]] std::string GetTableEntry_CFG(std::string_view ParmNum) { return CFG.GetTableEntry(ParmNum); }
    [[nodiscard]] std::string GetTableEntry_KB(std::string_view ParmNum) { return KB.GetTableEntry(ParmNum); }

    void PutTableEntry_CFG(std::string_view ParmNum, std::string_view ParmVal, int ColNumber)
    {
        CFG.PutTableEntry(ParmNum, ParmVal, ColNumber);
    }
    void PutTableEntry_KB(std::string_view ParmNum, std::string_view ParmVal, int ColNumber)
    {
        KB.PutTableEntry(ParmNum, ParmVal, ColNumber);
    }

    void DisplayGridValue_CFG(std::uint8_t i) { CFG.DisplayGridValue(i); }
    void DisplayGridValue_KB(std::uint8_t i) { KB.DisplayGridValue(i); }

    void Clear_Changed_Flags_CFG() { CFG.Clear_Changed_Flags(); }
    void Clear_Changed_Flags_KB() { KB.Clear_Changed_Flags(); }
};

} // namespace tables
