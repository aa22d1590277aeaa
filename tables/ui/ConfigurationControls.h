#pragma once

#include <QSize>

#include <string_view>
#include <vector>

class QBoxLayout;
class QCheckBox;
class QWidget;

namespace tables {

class CheckFrame;
class EditTitle;
class EntryBox;
class OptionFrame;
class PlainLabel;
struct BitField;

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

    // Room for the largest arrangement.
    [[nodiscard]] QSize minimumSize() const { return m_minimumSize; }

    EditTitle* lblEditTitle_CFG = nullptr;
    OptionFrame* frmTk1 = nullptr;
    OptionFrame* frmTk2 = nullptr;
    OptionFrame* frmTk3 = nullptr;
    OptionFrame* frmReadTypes = nullptr;
    CheckFrame* frmSendFlags = nullptr;
    QCheckBox* chkSendSS = nullptr;
    QCheckBox* chkSendEs = nullptr;
    QCheckBox* chkSendLRC = nullptr;
    QCheckBox* chkSendLC = nullptr;
    QCheckBox* chkSendNBR = nullptr;
    OptionFrame* frmSendError = nullptr;
    OptionFrame* frmSendTerm = nullptr;
    OptionFrame* frmTrkMap = nullptr;
    OptionFrame* frmA1_CFG = nullptr;
    OptionFrame* frmA23_CFG = nullptr;
    OptionFrame* frmE_CFG = nullptr;
    OptionFrame* frmS_CFG = nullptr;
    EntryBox* txtHexEntry = nullptr;
    PlainLabel* lblHexEntry = nullptr;
    EntryBox* txtDecEntry = nullptr;
    PlainLabel* lblDecEntry = nullptr;
    EntryBox* txtCharEntry = nullptr;
    PlainLabel* lblCharEntry = nullptr;

    std::vector<OptionFrame*> optionFrames; // all of the above

private:
    OptionFrame* addFrame(const BitField& field, std::string_view suffix, QBoxLayout* into);
    void addTrackFrames(QBoxLayout* column);
    void addSendFlags(QBoxLayout* column);
    void addEntries(QBoxLayout* column);
    [[nodiscard]] QSize largestArrangement();

    QWidget* m_column = nullptr;
    QSize m_minimumSize;
};

} // namespace tables
