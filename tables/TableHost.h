#pragma once

#include <string_view>

namespace tables {

// What a table needs of the window around it. One instance serves one table.
class TableHost
{
public:
    virtual ~TableHost() = default;

    // Asks whether unsaved changes may be given up; true = go on.
    [[nodiscard]] virtual bool CheckForUnsavedData() = 0;
    // Hides the controls of both field editors.
    virtual void Hide_All() = 0;
    // Opens the table's field editor on the current row.
    virtual void EditData() = 0;
    // Empties the table's comment box, its remembered file name and the file name shown.
    virtual void forgetCommentsAndFile() = 0;

    virtual void setTabCaption(std::string_view caption) = 0;
    virtual void setEditTitle(std::string_view title) = 0;
    virtual void setStatusText(std::string_view text) = 0; // the first status panel
    virtual void beep() = 0;
    virtual void processPendingEvents() = 0;
};

} // namespace tables
