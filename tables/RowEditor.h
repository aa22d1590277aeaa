#pragma once

#include <string_view>

namespace tables {

// The controls that edit the current row of one table.
class RowEditor
{
public:
    virtual ~RowEditor() = default;

    // Opens the editor on the grid's current row. Editing is allowed afterwards, whatever it was before.
    virtual void open() = 0;
    // Hides every control but the title. Where one of them had the keyboard, the grid has it afterwards.
    virtual void hideControls() = 0;
    virtual void setEditTitle(std::string_view title) = 0;
};

} // namespace tables
