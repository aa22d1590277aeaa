#include "tables/ui/ConfigurationEditor.h"

#include "platform/AnsiText.h"
#include "platform/qt/AnsiText.h"
#include "tables/BitFields.h"
#include "tables/EditorTexts.h"
#include "tables/HexText.h"
#include "tables/KeyFilters.h"
#include "tables/RowKinds.h"
#include "tables/ui/CheckFrame.h"
#include "tables/ui/EditTitle.h"
#include "tables/ui/EntryBox.h"
#include "tables/ui/OptionFrame.h"
#include "tables/ui/PlainLabel.h"
#include "tables/ui/SendQuestion.h"

#include <QCheckBox>

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

ConfigurationEditor::ConfigurationEditor(LiveTable& table, EditSession& session, EditorHost& host, DeviceSender& device,
                                         platform::MessageBoxes& boxes, QWidget* parent)
    : QWidget(parent)
    , m_table(table)
    , m_session(session)
    , m_host(host)
    , m_device(device)
    , m_boxes(boxes)
    , m_row(table, session)
    , m_controls(*this)
{
    setMinimumSize(m_controls.minimumSize());
    connectOptions();
    connectEntries();
}

void ConfigurationEditor::connectOptions()
{
    const auto onOption = [this](OptionFrame* frame, void (ConfigurationEditor::*handler)(int)) {
        connect(frame, &OptionFrame::optionClicked, this, handler);
    };
    onOption(m_controls.frmTk1, &ConfigurationEditor::radTk1_Click);
    onOption(m_controls.frmTk2, &ConfigurationEditor::radTk2_Click);
    onOption(m_controls.frmTk3, &ConfigurationEditor::radTk3_Click);
    onOption(m_controls.frmReadTypes, &ConfigurationEditor::radID_Click);
    onOption(m_controls.frmSendError, &ConfigurationEditor::radSendEr_Click);
    onOption(m_controls.frmSendTerm, &ConfigurationEditor::radSendTermAfter_Click);
    onOption(m_controls.frmTrkMap, &ConfigurationEditor::radTrkMap_Click);
    onOption(m_controls.frmA1_CFG, &ConfigurationEditor::radP080A1_CFG_Click);
    onOption(m_controls.frmA23_CFG, &ConfigurationEditor::radP080A23_CFG_Click);
    onOption(m_controls.frmE_CFG, &ConfigurationEditor::radP080E_CFG_Click);
    onOption(m_controls.frmS_CFG, &ConfigurationEditor::radP080S_CFG_Click);
}

void ConfigurationEditor::connectEntries()
{
    const auto onCheck = [this](QCheckBox* box, void (ConfigurationEditor::*handler)()) {
        connect(box, &QCheckBox::clicked, this, handler);
    };
    onCheck(m_controls.chkSendSS, &ConfigurationEditor::chkSendSS_Click);
    onCheck(m_controls.chkSendEs, &ConfigurationEditor::chkSendEs_Click);
    onCheck(m_controls.chkSendLRC, &ConfigurationEditor::chkSendLRC_Click);
    onCheck(m_controls.chkSendLC, &ConfigurationEditor::chkSendLC_Click);
    onCheck(m_controls.chkSendNBR, &ConfigurationEditor::chkSendNBR_Click);

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
    m_host.Hide_All();
    m_session.CurrentAddress = m_row.text(kAddressColumn);
    setEditTitle(editTitle_CFG(m_session.CurrentAddress, m_row.text(kNotesColumn)));
    const std::string value = m_row.text(kValueColumn);
    m_host.setStatusText(binaryText(hexByte(value)));
    loadControls(value);
    m_controls.showFor(m_session.CurrentAddress);
    m_table.grid().setCol(kAddressColumn);
    m_session.EditState = EditSession::kEditing;
}

void ConfigurationEditor::loadControls(const std::string& value)
{
    const std::uint8_t byte = hexByte(value);
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
    m_controls.frmSendFlags->load(byte);
}

// Kept behaviour kb-question-mark: a control character has no picture; one that the code page lacks is stored as ?.
void ConfigurationEditor::loadCharacterBox(std::uint8_t byte)
{
    m_controls.txtCharEntry->clear();
    if (byte > kLastControlCharacter) {
        m_controls.txtCharEntry->setText(QChar(platform::ansiToUnicode(byte)));
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
    writeCheck(fields::chkSendSS, m_controls.chkSendSS);
}

void ConfigurationEditor::chkSendEs_Click()
{
    writeCheck(fields::chkSendEs, m_controls.chkSendEs);
}

void ConfigurationEditor::chkSendLRC_Click()
{
    writeCheck(fields::chkSendLRC, m_controls.chkSendLRC);
}

void ConfigurationEditor::chkSendLC_Click()
{
    writeCheck(fields::chkSendLC, m_controls.chkSendLC);
}

void ConfigurationEditor::chkSendNBR_Click()
{
    writeCheck(fields::chkSendNBR, m_controls.chkSendNBR);
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
    m_row.writeByte(static_cast<std::uint8_t>(kept | hexByte(text)));
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
    const double counts = decimalNumber(text);
    // Kept behaviour kb-too-large: what was legal before the last key stays in the table.
    if (!text.empty() && isLegalDelay(counts)) {
        m_row.writeByte(static_cast<std::uint8_t>(std::nearbyint(counts)));
    }
}

void ConfigurationEditor::showDelay()
{
    m_controls.lblDecEntry->setAnsiText(delayText(decimalNumber(platform::toAnsi(m_controls.txtDecEntry->text()))));
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
    m_host.setStatusText({});
}

// ---- writing back ----

std::uint8_t ConfigurationEditor::takeByte()
{
    return hexByte(m_row.takeValue());
}

// Kept behaviour kb-same-option: the row is marked also when the byte is the same.
void ConfigurationEditor::writeOption(const BitField& field, int index)
{
    if (m_row.mayEdit()) {
        m_row.writeByte(withOption(field, takeByte(), index));
    }
}

void ConfigurationEditor::writeCheck(const BitCheck& check, const QCheckBox* box)
{
    if (m_row.mayEdit()) {
        m_row.writeByte(withCheck(check, takeByte(), box->isChecked()));
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
    const bool sent = confirmSend(m_boxes, question) && sendRow(address);
    grid.setCol(sent ? kAddressColumn : kValueColumn);
}

bool ConfigurationEditor::sendRow(const std::string& address)
{
    bool sent = false;
    const auto work = [&] {
        if (m_device.OpenTheDeviceDriver()) {
            m_device.Send_Parameter_CFG(address);
            m_device.CloseTheDeviceDriver();
            sent = true;
        }
    };
    return m_device.run(work) && sent;
}

} // namespace tables
