#pragma once

#include "tables/Parameters.h"

#include <QSize>

#include <string_view>
#include <vector>

class QWidget;

namespace widgets {
class EntryBox;
class PlainLabel;
} // namespace widgets

namespace tables {

class EditTitle;
class OptionFrame;

// The controls of the Keyboard Language editor under their names, and their places. Every place is measured from the
// title: its top, its height and its left edge.
struct KeyboardLanguageControls
{
    // Builds all controls, hidden but for the title, as children of the area, which owns them.
    explicit KeyboardLanguageControls(QWidget& area);

    // Hides every frame, box and label but the title.
    void hideAll();
    // Shows the controls that edit a kind of row.
    void showFor(KeyboardRow kind);
    // Puts every control into its place within the area's present size.
    void arrange(KeyboardRow kind);

    // Room for the largest arrangement.
    [[nodiscard]] QSize minimumSize() const;

    EditTitle* lblEditTitle_KB = nullptr;
    widgets::PlainLabel* lblScanCode_KB = nullptr;
    widgets::EntryBox* txtHexEntry_KB = nullptr;
    widgets::EntryBox* txtHexEntry2_KB = nullptr;
    widgets::PlainLabel* lblHexEntry_KB = nullptr;
    widgets::EntryBox* txtDecEntry_KB = nullptr; // no row shows it

    // Built from the bit fields' descriptions, which give them their names: frmA1_KB, frmShiftFlagA1_KB and so on.
    std::vector<OptionFrame*> flagFrames;  // of 080, from top to bottom
    std::vector<OptionFrame*> shiftFrames; // of a pair

private:
    widgets::EntryBox* addBox(const QString& name, int digits, std::string_view prompt);
    void stackFrames(const std::vector<OptionFrame*>& frames, double titleHeights);
    void arrangeIdBytes();
    void arrangeScanCode();
    [[nodiscard]] int stackHeight(const std::vector<OptionFrame*>& frames, double titleHeights) const;
    [[nodiscard]] int frameWidth() const;
    [[nodiscard]] int belowTitle(double titleHeights) const;
    [[nodiscard]] int entryLeft() const;

    QWidget& m_area;
};

} // namespace tables
