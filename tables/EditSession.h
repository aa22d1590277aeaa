#pragma once

#include <cstdint>
#include <string>

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

    [[nodiscard]] bool isEditing() const { return EditState == kEditing; }
};

} // namespace tables
