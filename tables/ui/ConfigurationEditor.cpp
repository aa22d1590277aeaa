#include "tables/ui/ConfigurationEditor.h"

#include "platform/qt/AnsiText.h"
#include "tables/BitFields.h"
#include "tables/EditorTexts.h"
#include "tables/KeyFilters.h"
#include "tables/Parameters.h"
#include "tables/ui/CheckFrame.h"
#include "tables/ui/EditTitle.h"
#include "tables/ui/OptionFrame.h"
#include "tables/ui/SendQuestion.h"
#include "text/AnsiText.h"
#include "text/HexText.h"
#include "widgets/EntryBox.h"
#include "widgets/PlainLabel.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tables {

namespace {

constexpr int kIdentificationRow = 1;
constexpr std::uint8_t kLastControlCharacter = 31;
constexpr std::string_view kTerminatorAddress = "022";
constexpr std::uint8_t kPerTrackBit = 0x80; // of the terminator: sent after each track
constexpr std::string_view kCarriageReturn = "0D";
constexpr int kDontSend = 2; // the option for no terminator

} // namespace

ConfigurationEditor::ConfigurationEditor(LiveTable& table, EditSession& session, StatusLine& status,
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
    connectOptions();
    connectChecks();
    connectEntries();
}

void ConfigurationEditor::connectOptions()
{
    struct Handler
    {
        const BitField* field;
        void (ConfigurationEditor::*run)(int);
    };
    static constexpr auto kHandlers = std::to_array<Handler>({
        {&fields::radTk1, &ConfigurationEditor::radTk1_Click},
        {&fields::radTk2, &ConfigurationEditor::radTk2_Click},
        {&fields::radTk3, &ConfigurationEditor::radTk3_Click},
        {&fields::radID, &ConfigurationEditor::radID_Click},
        {&fields::radSendEr, &ConfigurationEditor::radSendEr_Click},
        {&fields::radSendTermAfter, &ConfigurationEditor::radSendTermAfter_Click},
        {&fields::radTrkMap, &ConfigurationEditor::radTrkMap_Click},
        {&fields::radP080A1, &ConfigurationEditor::radP080A1_CFG_Click},
        {&fields::radP080A23, &ConfigurationEditor::radP080A23_CFG_Click},
        {&fields::radP080E, &ConfigurationEditor::radP080E_CFG_Click},
        {&fields::radP080S, &ConfigurationEditor::radP080S_CFG_Click},
    });
    for (OptionFrame* const frame : m_controls.optionFrames) {
        const auto* const named = std::ranges::find(kHandlers, &frame->field(), &Handler::field);
        if (named != kHandlers.end()) {
            connect(frame, &OptionFrame::optionClicked, this, named->run);
        } else {
            connect(frame, &OptionFrame::optionClicked, this,
                    [this, frame](int Index) { writeOption(frame->field(), Index); });
        }
    }
}

void ConfigurationEditor::connectChecks()
{
    struct Handler
    {
        const BitCheck* check;
        void (ConfigurationEditor::*run)();
    };
    static constexpr auto kHandlers = std::to_array<Handler>({
        {&fields::chkSendSS, &ConfigurationEditor::chkSendSS_Click},
        {&fields::chkSendEs, &ConfigurationEditor::chkSendEs_Click},
        {&fields::chkSendLRC, &ConfigurationEditor::chkSendLRC_Click},
        {&fields::chkSendLC, &ConfigurationEditor::chkSendLC_Click},
        {&fields::chkSendNBR, &ConfigurationEditor::chkSendNBR_Click},
    });
    for (CheckFrame* const frame : m_controls.checkFrames) {
        connect(frame, &CheckFrame::checkClicked, this, [this](const BitCheck* check) {
            const auto* const named = std::ranges::find(kHandlers, check, &Handler::check);
            if (named != kHandlers.end()) {
                (this->*named->run)();
            } else {
                writeCheck(*check);
            }
        });
    }
}

void ConfigurationEditor::connectEntries()
{
    m_controls.txtHexEntry->setKeyFilter([this](int& KeyAscii) { txtHexEntry_KeyPress(KeyAscii); });
    m_controls.txtDecEntry->setKeyFilter([this](int& KeyAscii) { txtDecEntry_KeyPress(KeyAscii); });
    connect(m_controls.txtHexEntry, &QLineEdit::textChanged, this, &ConfigurationEditor::txtHexEntry_Change);
    connect(m_controls.txtDecEntry, &QLineEdit::textChanged, this, &ConfigurationEditor::txtDecEntry_Change);
    connect(m_controls.txtCharEntry, &QLineEdit::textChanged, this, &ConfigurationEditor::txtCharEntry_Change);
}

void ConfigurationEditor::EditData_CFG()
{
    m_session.EditState = EditSession::kFilling;
    setEditTitle({});
    m_session.Hide_All();
    m_session.CurrentAddress = m_row.text(kAddressColumn);
    setEditTitle(editTitle_CFG(m_session.CurrentAddress, m_row.text(kNotesColumn)));
    const std::string value = m_row.text(kValueColumn);
    m_status.setStatusText(binaryText(text::hexByte(value)));
    loadControls(value);
    m_controls.showFor(m_session.CurrentAddress);
    m_table.grid().setCol(kAddressColumn);
    m_session.EditState = EditSession::kEditing;
}

void ConfigurationEditor::loadControls(const std::string& value)
{
    const std::uint8_t byte = text::hexByte(value);
    m_controls.lblDecEntry->setToolTip({});
    switch (configurationRow(m_session.CurrentAddress)) {
    case ConfigurationRow::Identification:
        showReadOnly(identificationText(byte));
        break;
    case ConfigurationRow::IdByte0:
        showReadOnly(idByteText(0, byte));
        break;
    case ConfigurationRow::IdByte1:
        showReadOnly(idByteText(1, byte));
        break;
    case ConfigurationRow::Character:
        loadCharacterBox(byte);
        break;
    case ConfigurationRow::Decimal:
        loadDecimalBox(byte);
        break;
    case ConfigurationRow::Hex:
    case ConfigurationRow::Terminator:
        m_controls.txtHexEntry->setText(platform::toQString(value));
        break;
    case ConfigurationRow::BitFields:
        break;
    case ConfigurationRow::None:
        setEditTitle(kPastEndOfList);
        break;
    }
    for (OptionFrame* frame : m_controls.optionFrames) {
        if (frame->field().address == m_session.CurrentAddress) {
            frame->load(value);
        }
    }
    for (CheckFrame* frame : m_controls.checkFrames) {
        frame->load(byte);
    }
}

// Kept behaviour kb-question-mark: a control character has no picture; one that the code page lacks is stored as ?.
void ConfigurationEditor::loadCharacterBox(std::uint8_t byte)
{
    m_controls.txtCharEntry->clear();
    if (byte > kLastControlCharacter) {
        m_controls.txtCharEntry->setText(QChar(text::ansiToUnicode(byte)));
    }
}

void ConfigurationEditor::loadDecimalBox(std::uint8_t byte)
{
    m_controls.lblDecEntry->setAnsiText(kDecPrompt);
    m_controls.txtDecEntry->setText(QString::number(byte));
    // The box raises no change when the row before held the same number.
    showDelay();
}

void ConfigurationEditor::showReadOnly(std::string_view text)
{
    m_controls.lblDecEntry->setAnsiText(text);
    m_controls.lblDecEntry->setToolTip(platform::toQString(kReadOnlyTip));
}

void ConfigurationEditor::hideControls()
{
    emit aboutToHide();
    m_controls.hideAll();
}

void ConfigurationEditor::setEditTitle(std::string_view title)
{
    m_controls.lblEditTitle_CFG->setAnsiText(title);
}

void ConfigurationEditor::showEmptyDecEntry()
{
    m_controls.lblDecEntry->setAnsiText({});
    m_controls.lblDecEntry->show();
}

// ---- the handlers ----

void ConfigurationEditor::radTk1_Click(int Index)
{
    writeOption(fields::radTk1, Index);
}

void ConfigurationEditor::radTk2_Click(int Index)
{
    writeOption(fields::radTk2, Index);
}

void ConfigurationEditor::radTk3_Click(int Index)
{
    writeOption(fields::radTk3, Index);
}

void ConfigurationEditor::radID_Click(int Index)
{
    writeOption(fields::radID, Index);
}

void ConfigurationEditor::chkSendSS_Click()
{
    writeCheck(fields::chkSendSS);
}

void ConfigurationEditor::chkSendEs_Click()
{
    writeCheck(fields::chkSendEs);
}

void ConfigurationEditor::chkSendLRC_Click()
{
    writeCheck(fields::chkSendLRC);
}

void ConfigurationEditor::chkSendLC_Click()
{
    writeCheck(fields::chkSendLC);
}

void ConfigurationEditor::chkSendNBR_Click()
{
    writeCheck(fields::chkSendNBR);
}

void ConfigurationEditor::radSendEr_Click(int Index)
{
    writeOption(fields::radSendEr, Index);
}

void ConfigurationEditor::radSendTermAfter_Click(int Index)
{
    if (!m_row.mayEdit()) {
        return;
    }
    m_controls.showHexEntry(Index != kDontSend);
    const bool isEmpty = takeByte() == 0;
    if (isEmpty && Index == kDontSend) {
        return;
    }
    if (isEmpty) {
        ensureTerminator();
    }
    writeOption(fields::radSendTermAfter, Index);
}

void ConfigurationEditor::radTrkMap_Click(int Index)
{
    writeOption(fields::radTrkMap, Index);
}

void ConfigurationEditor::radP080A1_CFG_Click(int Index)
{
    writeOption(fields::radP080A1, Index);
}

void ConfigurationEditor::radP080A23_CFG_Click(int Index)
{
    writeOption(fields::radP080A23, Index);
}

void ConfigurationEditor::radP080E_CFG_Click(int Index)
{
    writeOption(fields::radP080E, Index);
}

void ConfigurationEditor::radP080S_CFG_Click(int Index)
{
    writeOption(fields::radP080S, Index);
}

void ConfigurationEditor::txtHexEntry_Change()
{
    const std::string text = platform::toAnsi(m_controls.txtHexEntry->text());
    if (!m_row.mayEdit() || text.empty()) {
        return;
    }
    // Kept behaviour kb-terminator-box: the box shows the whole byte, and the options do not change it.
    // The entry is not masked: typing 80 or more as a terminator also asks for it after each track.
    const unsigned kept = m_session.CurrentAddress == kTerminatorAddress ? takeByte() & kPerTrackBit : 0U;
    m_row.writeByte(static_cast<std::uint8_t>(kept | text::hexByte(text)));
}

void ConfigurationEditor::txtHexEntry_KeyPress(int& KeyAscii)
{
    KeyAscii = hexKey(KeyAscii);
}

void ConfigurationEditor::txtDecEntry_Change()
{
    if (!m_row.mayEdit()) {
        return;
    }
    m_table.grid().setCol(kValueColumn);
    showDelay();
    const std::string text = platform::toAnsi(m_controls.txtDecEntry->text());
    const double counts = text::decimalNumber(text);
    // Kept behaviour kb-too-large: what was legal before the last key stays in the table.
    if (!text.empty() && isLegalDelay(counts)) {
        m_row.writeByte(static_cast<std::uint8_t>(std::nearbyint(counts)));
    }
}

void ConfigurationEditor::showDelay()
{
    m_controls.lblDecEntry->setAnsiText(
        delayText(text::decimalNumber(platform::toAnsi(m_controls.txtDecEntry->text()))));
}

void ConfigurationEditor::txtDecEntry_KeyPress(int& KeyAscii)
{
    KeyAscii = decimalKey(KeyAscii);
}

void ConfigurationEditor::txtCharEntry_Change()
{
    const std::string text = platform::toAnsi(m_controls.txtCharEntry->text());
    if (m_row.mayEdit() && !text.empty()) {
        m_row.writeByte(static_cast<std::uint8_t>(text.front()));
    }
}

// Kept behaviour kb-comment-not-marked: a comment is no row, so it marks nothing.
void ConfigurationEditor::txtComments_CFG_Change()
{
    m_status.setStatusText({});
}

// ---- writing back ----

std::uint8_t ConfigurationEditor::takeByte()
{
    return text::hexByte(m_row.takeValue());
}

// Kept behaviour kb-same-option: the row is marked also when the byte is the same.
void ConfigurationEditor::writeOption(const BitField& field, int index)
{
    if (m_row.mayEdit()) {
        m_row.writeByte(withOption(field, takeByte(), index));
    }
}

void ConfigurationEditor::writeCheck(const BitCheck& check)
{
    if (m_row.mayEdit()) {
        m_row.writeByte(withCheck(check, takeByte(), m_controls.isChecked(check)));
    }
}

// A byte of 00 means that nothing is sent; where the terminator goes makes sense only with one.
void ConfigurationEditor::ensureTerminator()
{
    const QString terminator = platform::toQString(kCarriageReturn);
    if (m_controls.txtHexEntry->text() == terminator) {
        txtHexEntry_Change(); // the box would not report the same text again
    } else {
        m_controls.txtHexEntry->setText(terminator);
    }
}

// ---- sending one row ----

void ConfigurationEditor::grdCFG_DblClick()
{
    GridCursor& grid = m_table.grid();
    // Kept behaviour kb-first-row: the row is left out by its place, whatever its address.
    if (grid.row() <= kIdentificationRow || m_device.isBusy()) {
        return;
    }
    const std::string address = m_row.text(kAddressColumn);
    const std::string question = sendQuestion_CFG(address, m_row.text(kValueColumn));
    const bool sent = confirmSend(m_boxes, question) && m_device.sendRow_CFG(address);
    grid.setCol(sent ? kAddressColumn : kValueColumn);
}

} // namespace tables
