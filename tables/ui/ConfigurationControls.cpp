#include "tables/ui/ConfigurationControls.h"

#include "platform/qt/AnsiText.h"
#include "tables/EditorTexts.h"
#include "tables/RowKinds.h"
#include "tables/ui/CheckFrame.h"
#include "tables/ui/EditTitle.h"
#include "tables/ui/EntryBox.h"
#include "tables/ui/OptionFrame.h"
#include "tables/ui/PlainLabel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <array>

namespace tables {

namespace {

// One address of each arrangement of controls.
constexpr std::array kArrangements =
    std::to_array<std::string_view>({"001", "013", "014", "015", "01A", "01C", "022", "02A", "080"});

// In average characters; frames wider than this look lost in a large window.
constexpr int kWidestColumn = 75;

constexpr double kIllegalDelay = -1.0;

} // namespace

ConfigurationControls::ConfigurationControls(QWidget& area)
    : m_column(new QWidget(&area))
{
    auto* outer = new QVBoxLayout(&area);
    outer->setContentsMargins(0, 0, 0, 0);
    lblEditTitle_CFG = new EditTitle(QStringLiteral("lblEditTitle_CFG"), &area);
    outer->addWidget(lblEditTitle_CFG);
    auto* row = new QHBoxLayout;
    outer->addLayout(row, 1);
    row->addWidget(m_column, 1);
    row->addStretch(0);

    m_column->setMaximumWidth(kWidestColumn * area.fontMetrics().averageCharWidth());
    auto* column = new QVBoxLayout(m_column);
    column->setContentsMargins(0, 0, 0, 0);
    addTrackFrames(column);
    addSendFlags(column);
    frmSendTerm = addFrame(fields::radSendTermAfter, {}, column);
    frmTrkMap = addFrame(fields::radTrkMap, {}, column);
    frmA1_CFG = addFrame(fields::radP080A1, "_CFG", column);
    frmA23_CFG = addFrame(fields::radP080A23, "_CFG", column);
    frmE_CFG = addFrame(fields::radP080E, "_CFG", column);
    frmS_CFG = addFrame(fields::radP080S, "_CFG", column);
    addEntries(column);
    column->addStretch(1);
    m_minimumSize = largestArrangement();
    hideAll();
}

OptionFrame* ConfigurationControls::addFrame(const BitField& field, std::string_view suffix, QBoxLayout* into)
{
    auto* frame = new OptionFrame(field, suffix, m_column);
    optionFrames.push_back(frame);
    into->addWidget(frame);
    return frame;
}

void ConfigurationControls::addTrackFrames(QBoxLayout* column)
{
    auto* tracks = new QHBoxLayout;
    column->addLayout(tracks);
    frmTk1 = addFrame(fields::radTk1, {}, tracks);
    frmTk2 = addFrame(fields::radTk2, {}, tracks);
    frmTk3 = addFrame(fields::radTk3, {}, tracks);
    for (int track = 0; track < tracks->count(); ++track) {
        tracks->setStretch(track, 1);
    }
    frmReadTypes = addFrame(fields::radID, {}, column);
}

void ConfigurationControls::addSendFlags(QBoxLayout* column)
{
    frmSendFlags = new CheckFrame(platform::toQString(fields::kSendFlagsFrame),
                                  platform::toQString(fields::kSendFlagsCaption), m_column);
    column->addWidget(frmSendFlags);
    chkSendSS = frmSendFlags->addCheck(fields::chkSendSS);
    chkSendEs = frmSendFlags->addCheck(fields::chkSendEs);
    chkSendLRC = frmSendFlags->addCheck(fields::chkSendLRC);
    chkSendLC = frmSendFlags->addCheck(fields::chkSendLC);
    chkSendNBR = frmSendFlags->addCheck(fields::chkSendNBR);
    frmSendError = addFrame(fields::radSendEr, {}, column);
}

void ConfigurationControls::addEntries(QBoxLayout* column)
{
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    column->addLayout(grid);
    const auto addBox = [&](const QString& name, int digits, std::string_view prompt) {
        auto* box = new EntryBox(name, digits, m_column);
        box->setToolTip(platform::toQString(prompt));
        box->setAccessibleName(platform::toQString(prompt));
        grid->addWidget(box, grid->rowCount(), 0);
        return box;
    };
    const auto addLabel = [&](const QString& name, std::string_view text, EntryBox* box) {
        auto* label = new PlainLabel(name, text, m_column);
        label->setBuddy(box);
        grid->addWidget(label, grid->rowCount() - 1, 1);
        return label;
    };
    txtHexEntry = addBox(QStringLiteral("txtHexEntry"), 2, kHexPrompt);
    lblHexEntry = addLabel(QStringLiteral("lblHexEntry"), kHexPrompt, txtHexEntry);
    txtDecEntry = addBox(QStringLiteral("txtDecEntry"), 3, kDecPrompt);
    lblDecEntry = addLabel(QStringLiteral("lblDecEntry"), kDecPrompt, txtDecEntry);
    txtCharEntry = addBox(QStringLiteral("txtCharEntry"), 1, kCharPrompt);
    lblCharEntry = addLabel(QStringLiteral("lblCharEntry"), kCharPrompt, txtCharEntry);
}

void ConfigurationControls::hideAll()
{
    for (OptionFrame* frame : optionFrames) {
        frame->hide();
    }
    frmSendFlags->hide();
    for (QWidget* entry :
         std::to_array<QWidget*>({txtHexEntry, lblHexEntry, txtDecEntry, lblDecEntry, txtCharEntry, lblCharEntry})) {
        entry->hide();
    }
}

void ConfigurationControls::showFor(std::string_view address)
{
    hideAll();
    for (OptionFrame* frame : optionFrames) {
        frame->setVisible(frame->field().address == address);
    }
    frmSendFlags->setVisible(address == fields::kSendFlagsAddress);
    switch (configurationRow(address)) {
    case ConfigurationRow::Identification:
    case ConfigurationRow::IdByte0:
    case ConfigurationRow::IdByte1:
        lblDecEntry->show();
        break;
    case ConfigurationRow::Character:
        txtCharEntry->show();
        lblCharEntry->show();
        break;
    case ConfigurationRow::Decimal:
        txtDecEntry->show();
        lblDecEntry->show();
        break;
    case ConfigurationRow::Hex:
    case ConfigurationRow::Terminator:
        showHexEntry(true);
        break;
    case ConfigurationRow::BitFields:
    case ConfigurationRow::None:
        break;
    }
}

void ConfigurationControls::showHexEntry(bool visible)
{
    txtHexEntry->setVisible(visible);
    lblHexEntry->setVisible(visible);
}

QSize ConfigurationControls::largestArrangement()
{
    lblDecEntry->setAnsiText(delayText(kIllegalDelay)); // the longest text it ever shows
    QSize largest;
    QLayout* column = m_column->layout();
    for (const std::string_view address : kArrangements) {
        showFor(address);
        // Nothing is on screen yet, so nobody tells the layouts that the controls changed.
        for (int item = 0; item < column->count(); ++item) {
            column->itemAt(item)->invalidate();
        }
        column->invalidate();
        largest = largest.expandedTo(column->totalMinimumSize());
    }
    const int titleHeight = lblEditTitle_CFG->sizeHint().height() + column->spacing();
    return {largest.width(), largest.height() + titleHeight};
}

} // namespace tables
