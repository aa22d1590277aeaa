#pragma once

#include <QSize>

#include <string_view>
#include <vector>

class QBoxLayout;
class QWidget;

namespace widgets {
class EntryBox;
class PlainLabel;
} // namespace widgets

namespace tables {

struct BitCheck;
class CheckFrame;
class EditTitle;
class OptionFrame;

// The controls of the Configuration editor under their names, and their places: one column of frames of equal width
// below the title, the entry boxes below the frames.
struct ConfigurationControls
{
    // Builds all controls, hidden but for the title, as children of the area, which owns them.
    explicit ConfigurationControls(QWidget& area);

    // Hides every frame, box and label but the title.
    void hideAll();
    // Shows the controls that edit a parameter, none for an address without editor.
    void showFor(std::string_view address);
    // The terminating character's box and label come and go with its option.
    void showHexEntry(bool visible);
    // True while the box of a check is checked.
    [[nodiscard]] bool isChecked(const BitCheck& check) const;

    // Room for the largest arrangement.
    [[nodiscard]] QSize minimumSize() const { return m_minimumSize; }

    EditTitle* lblEditTitle_CFG = nullptr;
    widgets::EntryBox* txtHexEntry = nullptr;
    widgets::PlainLabel* lblHexEntry = nullptr;
    widgets::EntryBox* txtDecEntry = nullptr;
    widgets::PlainLabel* lblDecEntry = nullptr;
    widgets::EntryBox* txtCharEntry = nullptr;
    widgets::PlainLabel* lblCharEntry = nullptr;

    // Built from the bit fields' descriptions, which give them their names: frmTk1, frmSendFlags and so on.
    std::vector<OptionFrame*> optionFrames;
    std::vector<CheckFrame*> checkFrames;

private:
    void addCheckFrames(QBoxLayout* column);
    void addOptionFrames(QBoxLayout* column);
    void addEntries(QBoxLayout* column);
    [[nodiscard]] QSize largestArrangement();

    QWidget* m_column = nullptr;
    QSize m_minimumSize;
};

} // namespace tables
