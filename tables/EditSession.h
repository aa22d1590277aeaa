#pragma once

#include "tables/RowEditor.h"
#include "tables/TableId.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tables {

// What both tables and both field editors share about the row being edited. There is one row editor at a time, so there
// is one of these, owned by the main window.
struct EditSession
{
    // Values of EditState. Edit handlers act only while it is kEditing.
    static constexpr std::uint8_t kFilling = 1;           // a grid is being filled or cleared
    static constexpr std::uint8_t kLayingOutKeyboard = 2; // the keyboard editor lays out its controls
    static constexpr std::uint8_t kEditing = 3;

    std::uint8_t EditState = kFilling;
    std::string CurrentAddress; // the address text of the row being edited

    // The table whose tab is in effect, the one that everything works on; none in the read test. While the device is in
    // use, a click on another tab waits.
    std::optional<TableId> tableInEffect = TableId::Configuration;

    // Every editor of the window; they outlive their tables' work.
    std::vector<RowEditor*> editors;

    [[nodiscard]] bool isEditing() const { return EditState == kEditing; }

    // Hides the controls of all field editors, not their titles.
    void Hide_All() const
    {
        for (RowEditor* const editor : editors) {
            editor->hideControls();
        }
    }
};

} // namespace tables
