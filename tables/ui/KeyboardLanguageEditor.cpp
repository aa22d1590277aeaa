#include "tables/ui/KeyboardLanguageEditor.h"

#include "platform/qt/AnsiText.h"
#include "tables/BitFields.h"
#include "tables/EditorTexts.h"
#include "tables/KeyFilters.h"
#include "tables/ui/EditTitle.h"
#include "tables/ui/OptionFrame.h"
#include "tables/ui/SendQuestion.h"
#include "text/HexText.h"
#include "widgets/EntryBox.h"

#include <algorithm>
#include <array>
#include <vector>

namespace tables {

namespace {

constexpr std::size_t kIdDigits = 4; // two bytes

bool isBlank(std::string_view text)
{
    return text.find_first_not_of(' ') == std::string_view::npos;
}

} // namespace

KeyboardLanguageEditor::KeyboardLanguageEditor(LiveTable& table, EditSession& session, StatusLine& status,
                                               DeviceSender& device, platform::MessageBoxes& boxes, QWidget* parent)
    : QWidget(parent)
    , m_table(table)
    , m_session(session)
    , m_status(status)
    , m_device(device)
    , m_boxes(boxes)
    , m_row(table, session)
    , m_controls(*this)
{
    m_table.setEditor(*this);
    setMinimumSize(m_controls.minimumSize());
    connectControls();
}

void KeyboardLanguageEditor::connectControls()
{
    struct Handler
    {
        const BitField* field;
        void (KeyboardLanguageEditor::*run)(int);
    };
    static constexpr auto kHandlers = std::to_array<Handler>({
        {&fields::radP080E, &KeyboardLanguageEditor::radP080E_KB_Click},
        {&fields::radP080A1, &KeyboardLanguageEditor::radP080A1_KB_Click},
        {&fields::radP080A23, &KeyboardLanguageEditor::radP080A23_KB_Click},
        {&fields::radP080S, &KeyboardLanguageEditor::radP080S_KB_Click},
        {&fields::radShiftA1, &KeyboardLanguageEditor::radShiftA1_KB_Click},
        {&fields::radShiftA2, &KeyboardLanguageEditor::radShiftA2_KB_Click},
        {&fields::radShiftA3, &KeyboardLanguageEditor::radShiftA3_KB_Click},
        {&fields::radShiftA4, &KeyboardLanguageEditor::radShiftA4_KB_Click},
    });
    const auto connectFrames = [this](const std::vector<OptionFrame*>& frames, auto write) {
        for (OptionFrame* const frame : frames) {
            const auto* const named = std::ranges::find(kHandlers, &frame->field(), &Handler::field);
            if (named != kHandlers.end()) {
                connect(frame, &OptionFrame::optionClicked, this, named->run);
            } else {
                connect(frame, &OptionFrame::optionClicked, this,
                        [this, frame, write](int Index) { (this->*write)(frame->field(), Index); });
            }
        }
    };
    connectFrames(m_controls.flagFrames, &KeyboardLanguageEditor::writeFlags);
    connectFrames(m_controls.shiftFrames, &KeyboardLanguageEditor::writeShiftFlag);

    m_controls.txtHexEntry_KB->setKeyFilter([this](int& KeyAscii) { txtHexEntry_KB_KeyPress(KeyAscii); });
    m_controls.txtHexEntry2_KB->setKeyFilter([this](int& KeyAscii) { txtHexEntry2_KB_KeyPress(KeyAscii); });
    connect(m_controls.txtHexEntry_KB, &QLineEdit::textChanged, this, &KeyboardLanguageEditor::txtHexEntry_KB_Change);
    connect(m_controls.txtHexEntry2_KB, &QLineEdit::textChanged, this, &KeyboardLanguageEditor::txtHexEntry2_KB_Change);
}

void KeyboardLanguageEditor::EditData_KB()
{
    m_status.setStatusText({});
    m_session.Hide_All();
    const std::string address = m_row.text(kAddressColumn);
    m_controls.lblEditTitle_KB->hide();
    setEditTitle(editTitle_KB(address, m_row.text(kNotesColumn)));
    m_controls.lblEditTitle_KB->show();
    m_session.CurrentAddress = address;
    m_session.EditState = EditSession::kLayingOutKeyboard;

    m_kind = keyboardRow(address);
    const std::string value = m_row.text(kValueColumn);
    switch (m_kind) {
    case KeyboardRow::Flags:
        loadFlags(value);
        break;
    case KeyboardRow::IdBytes:
        loadIdBytes(value);
        break;
    case KeyboardRow::Pair:
        loadPair(value);
        break;
    case KeyboardRow::None:
        break;
    }
    m_controls.arrange(m_kind);
    m_controls.showFor(m_kind);
    if (isBlank(address)) {
        setEditTitle(kPastEndOfList);
    }
    m_table.grid().setCol(kAddressColumn);
    m_session.EditState = EditSession::kEditing;
}

void KeyboardLanguageEditor::loadFlags(const std::string& value)
{
    m_status.setStatusText(binaryText(text::hexByte(value)));
    for (OptionFrame* frame : m_controls.flagFrames) {
        frame->load(value);
    }
}

void KeyboardLanguageEditor::loadIdBytes(const std::string& value)
{
    const text::PairValue bytes = text::pairValue(value);
    m_controls.txtHexEntry2_KB->setText(
        platform::toQString(text::hexTwoDigits(bytes.first) + text::hexTwoDigits(bytes.second)));
    m_status.setStatusText(binaryText(bytes.first, bytes.second));
}

void KeyboardLanguageEditor::loadPair(const std::string& value)
{
    const text::PairValue pair = text::pairValue(value);
    m_status.setStatusText(binaryText(pair.first, pair.second));
    for (OptionFrame* frame : m_controls.shiftFrames) {
        frame->load(text::leftOf(value, 2));
    }
    m_controls.txtHexEntry_KB->setText(platform::toQString(text::rightOf(value, 2)));
    emit emptyDecEntryShown();
}

void KeyboardLanguageEditor::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_controls.arrange(m_kind);
}

void KeyboardLanguageEditor::hideControls()
{
    emit aboutToHide();
    m_controls.hideAll();
}

void KeyboardLanguageEditor::setEditTitle(std::string_view title)
{
    m_controls.lblEditTitle_KB->setAnsiText(title);
}

// ---- the handlers ----

void KeyboardLanguageEditor::radP080E_KB_Click(int Index)
{
    writeFlags(fields::radP080E, Index);
}

void KeyboardLanguageEditor::radP080A1_KB_Click(int Index)
{
    writeFlags(fields::radP080A1, Index);
}

void KeyboardLanguageEditor::radP080A23_KB_Click(int Index)
{
    writeFlags(fields::radP080A23, Index);
}

void KeyboardLanguageEditor::radP080S_KB_Click(int Index)
{
    writeFlags(fields::radP080S, Index);
}

void KeyboardLanguageEditor::radShiftA1_KB_Click(int Index)
{
    writeShiftFlag(fields::radShiftA1, Index);
}

void KeyboardLanguageEditor::radShiftA2_KB_Click(int Index)
{
    writeShiftFlag(fields::radShiftA2, Index);
}

void KeyboardLanguageEditor::radShiftA3_KB_Click(int Index)
{
    writeShiftFlag(fields::radShiftA3, Index);
}

void KeyboardLanguageEditor::radShiftA4_KB_Click(int Index)
{
    writeShiftFlag(fields::radShiftA4, Index);
}

// Kept behaviour kb-emptied-box:
// An emptied box stands for the scan code 00.
void KeyboardLanguageEditor::txtHexEntry_KB_Change()
{
    if (m_row.mayEdit()) {
        text::PairValue pair = text::pairValue(m_row.takeValue());
        pair.second = text::hexByte(platform::toAnsi(m_controls.txtHexEntry_KB->text()));
        writePair(pair);
    }
}

void KeyboardLanguageEditor::txtHexEntry_KB_KeyPress(int& KeyAscii)
{
    KeyAscii = hexKey(KeyAscii);
}

void KeyboardLanguageEditor::txtHexEntry2_KB_Change()
{
    const std::string text = platform::toAnsi(m_controls.txtHexEntry2_KB->text());
    if (!m_row.mayEdit() || text.size() != kIdDigits) {
        return;
    }
    m_table.grid().setCol(kValueColumn);
    m_row.writeText(text::pairText(text::pairValue(text)));
    m_row.markChanged();
}

void KeyboardLanguageEditor::txtHexEntry2_KB_KeyPress(int& KeyAscii)
{
    KeyAscii = hexKey(KeyAscii);
}

// ---- writing back ----

void KeyboardLanguageEditor::writeFlags(const BitField& field, int index)
{
    if (m_row.mayEdit()) {
        m_row.writeByte(withOption(field, text::hexByte(m_row.takeValue()), index));
    }
}

void KeyboardLanguageEditor::writeShiftFlag(const BitField& field, int index)
{
    if (m_row.mayEdit()) {
        text::PairValue pair = text::pairValue(m_row.takeValue());
        pair.first = withOption(field, pair.first, index);
        writePair(pair);
    }
}

void KeyboardLanguageEditor::writePair(const text::PairValue& pair)
{
    m_row.writeText(text::pairText(pair));
    m_status.setStatusText(binaryText(pair.first, pair.second));
    m_row.markChanged();
}

// ---- sending one row ----

void KeyboardLanguageEditor::grdKB_DblClick()
{
    if (m_table.grid().row() < 1 || m_device.isBusy()) {
        return;
    }
    const std::vector<std::string> settings = settings_KB(m_row.text(kAddressColumn), m_row.text(kValueColumn));
    if (!confirmSend(m_boxes, sendQuestion_KB(settings))) {
        return;
    }
    // The notice and the fresh editor are part of the operation: what the user clicked meanwhile comes after them.
    m_device.sendSettings(settings, [this, &settings] {
        // Kept behaviour kb-sent-unconfirmed: no answer of the reader is looked at.
        m_boxes.show({.text = sentNotice_KB(settings)});
        EditData_KB();
    });
}

} // namespace tables
