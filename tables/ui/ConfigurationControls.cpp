#include "tables/ui/ConfigurationControls.h"

#include "platform/qt/AnsiText.h"
#include "tables/BitFields.h"
#include "tables/EditorTexts.h"
#include "tables/Parameters.h"
#include "tables/ui/CheckFrame.h"
#include "tables/ui/EditTitle.h"
#include "tables/ui/OptionFrame.h"
#include "widgets/EntryBox.h"
#include "widgets/PlainLabel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <set>

namespace tables {

namespace {

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
    addCheckFrames(column);
    addOptionFrames(column);
    addEntries(column);
    column->addStretch(1);
    m_minimumSize = largestArrangement();
    hideAll();
}

void ConfigurationControls::addCheckFrames(QBoxLayout* column)
{
    for (const BitChecks& checks : fields::checks_CFG()) {
        checkFrames.push_back(new CheckFrame(checks, m_column));
        column->addWidget(checkFrames.back());
    }
}

void ConfigurationControls::addOptionFrames(QBoxLayout* column)
{
    QBoxLayout* line = nullptr;
    for (const BitField* const field : fields::options_CFG()) {
        // The fields of the keyboard flags exist in the other editor, too.
        const std::string_view suffix = isParameter_CFG(field->address) ? "" : "_CFG";
        optionFrames.push_back(new OptionFrame(*field, suffix, m_column));
        if (line == nullptr || !field->besideTheLast) {
            line = new QHBoxLayout;
            column->addLayout(line);
        }
        line->addWidget(optionFrames.back(), 1);
    }
}

void ConfigurationControls::addEntries(QBoxLayout* column)
{
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    column->addLayout(grid);
    const auto addBox = [&](const QString& name, int digits, std::string_view prompt) {
        auto* box = new widgets::EntryBox(name, digits, m_column);
        box->setToolTip(platform::toQString(prompt));
        box->setAccessibleName(platform::toQString(prompt));
        grid->addWidget(box, grid->rowCount(), 0);
        return box;
    };
    const auto addLabel = [&](const QString& name, std::string_view text, widgets::EntryBox* box) {
        auto* label = new widgets::PlainLabel(name, text, m_column);
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
    for (CheckFrame* frame : checkFrames) {
        frame->hide();
    }
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
    for (CheckFrame* frame : checkFrames) {
        frame->setVisible(frame->address() == address);
    }
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

bool ConfigurationControls::isChecked(const BitCheck& check) const
{
    return std::ranges::any_of(checkFrames, [&](const CheckFrame* frame) { return frame->isChecked(check); });
}

QSize ConfigurationControls::largestArrangement()
{
    lblDecEntry->setAnsiText(delayText(kIllegalDelay)); // the longest text it ever shows
    QSize largest;
    QLayout* column = m_column->layout();
    const auto measure = [&](std::string_view address) {
        showFor(address);
        // Nothing is on screen yet, so nobody tells the layouts that the controls changed.
        for (int item = 0; item < column->count(); ++item) {
            column->itemAt(item)->invalidate();
        }
        column->invalidate();
        largest = largest.expandedTo(column->totalMinimumSize());
    };
    // Every arrangement there is: one for each kind of entry, one for each byte with fields of its own.
    std::set<ConfigurationRow> measured;
    for (const Parameter& parameter : parameters_CFG()) {
        if (parameter.row == ConfigurationRow::BitFields || measured.insert(parameter.row).second) {
            measure(parameter.address);
        }
    }
    for (const BitField* const field : fields::options_CFG()) {
        measure(field->address);
    }
    const int titleHeight = lblEditTitle_CFG->sizeHint().height() + column->spacing();
    return {largest.width(), largest.height() + titleHeight};
}

} // namespace tables
