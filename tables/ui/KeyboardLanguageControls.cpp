#include "tables/ui/KeyboardLanguageControls.h"

#include "platform/qt/AnsiText.h"
#include "tables/BitFields.h"
#include "tables/EditorTexts.h"
#include "tables/ui/EditTitle.h"
#include "tables/ui/OptionFrame.h"
#include "widgets/EntryBox.h"
#include "widgets/PlainLabel.h"

#include <QWidget>

#include <algorithm>
#include <array>
#include <span>

namespace tables {

namespace {

constexpr std::string_view kSuffix = "_KB";

// Where the controls stand: tops in title heights below the title's top, steps and columns in frame sizes.
constexpr double kFlagFramesTop = 1.5;
constexpr double kShiftFramesTop = 2.5;
constexpr double kIdBytesTop = 2.5;
constexpr double kFrameStep = 1.01;
constexpr double kEntryColumn = 1.05;

// The narrowest column for the hint beside the frames, in average characters; the hint is wrapped into it.
constexpr int kHintColumn = 14;

} // namespace

KeyboardLanguageControls::KeyboardLanguageControls(QWidget& area)
    : m_area(area)
{
    lblEditTitle_KB = new EditTitle(QStringLiteral("lblEditTitle_KB"), &area);
    const auto addFrames = [&](std::span<const BitField* const> fields) {
        std::vector<OptionFrame*> frames;
        for (const BitField* const field : fields) {
            frames.push_back(new OptionFrame(*field, kSuffix, &area));
        }
        return frames;
    };
    flagFrames = addFrames(fields::keyboardFlags_KB());
    shiftFrames = addFrames(fields::shiftFlags_KB());
    lblScanCode_KB = new widgets::PlainLabel(QStringLiteral("lblScanCode_KB"), kScanCodeLabel, &area);
    txtHexEntry_KB = addBox(QStringLiteral("txtHexEntry_KB"), 2, kHexPrompt);
    txtHexEntry_KB->setAccessibleName(QStringLiteral("Scan code"));
    lblScanCode_KB->setBuddy(txtHexEntry_KB);
    txtHexEntry2_KB = addBox(QStringLiteral("txtHexEntry2_KB"), 4, {});
    txtHexEntry2_KB->setAccessibleName(QStringLiteral("Keyboard ID bytes"));
    txtHexEntry2_KB->setAccessibleDescription(QStringLiteral("Four hexadecimal digits"));
    txtHexEntry2_KB->setText(QStringLiteral("XXXX"));
    lblHexEntry_KB = new widgets::PlainLabel(QStringLiteral("lblHexEntry_KB"), kHexPrompt, &area);
    lblHexEntry_KB->setWordWrap(true);
    lblHexEntry_KB->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    txtDecEntry_KB = addBox(QStringLiteral("txtDecEntry_KB"), 3, kDecPrompt);
    txtDecEntry_KB->setAccessibleName(platform::toQString(kDecPrompt));
    hideAll();
}

widgets::EntryBox* KeyboardLanguageControls::addBox(const QString& name, int digits, std::string_view prompt)
{
    auto* box = new widgets::EntryBox(name, digits, &m_area);
    box->setToolTip(platform::toQString(prompt));
    return box;
}

void KeyboardLanguageControls::hideAll()
{
    for (const auto* frames : {&flagFrames, &shiftFrames}) {
        for (OptionFrame* frame : *frames) {
            frame->hide();
        }
    }
    for (QWidget* control :
         std::to_array<QWidget*>({lblScanCode_KB, txtHexEntry_KB, txtHexEntry2_KB, lblHexEntry_KB, txtDecEntry_KB})) {
        control->hide();
    }
}

void KeyboardLanguageControls::showFor(KeyboardRow kind)
{
    hideAll();
    for (OptionFrame* frame : flagFrames) {
        frame->setVisible(kind == KeyboardRow::Flags);
    }
    for (OptionFrame* frame : shiftFrames) {
        frame->setVisible(kind == KeyboardRow::Pair);
    }
    lblScanCode_KB->setVisible(kind == KeyboardRow::Pair);
    txtHexEntry_KB->setVisible(kind == KeyboardRow::Pair);
    txtHexEntry2_KB->setVisible(kind == KeyboardRow::IdBytes);
    lblHexEntry_KB->setVisible(kind == KeyboardRow::Pair || kind == KeyboardRow::IdBytes);
}

void KeyboardLanguageControls::arrange(KeyboardRow kind)
{
    lblEditTitle_KB->setGeometry(0, 0, m_area.width(), lblEditTitle_KB->sizeHint().height());
    stackFrames(flagFrames, kFlagFramesTop);
    stackFrames(shiftFrames, kShiftFramesTop);
    if (kind == KeyboardRow::IdBytes) {
        arrangeIdBytes();
    } else {
        arrangeScanCode();
    }
}

void KeyboardLanguageControls::stackFrames(const std::vector<OptionFrame*>& frames, double titleHeights)
{
    int top = belowTitle(titleHeights);
    for (OptionFrame* frame : frames) {
        const int height = frame->sizeHint().height();
        frame->setGeometry(lblEditTitle_KB->x(), top, frameWidth(), height);
        top += qRound(kFrameStep * height);
    }
}

void KeyboardLanguageControls::arrangeIdBytes()
{
    const QSize box = txtHexEntry2_KB->sizeHint();
    txtHexEntry2_KB->setGeometry({{lblEditTitle_KB->x(), belowTitle(kIdBytesTop)}, box});
    lblHexEntry_KB->setBuddy(txtHexEntry2_KB);
    const int gap = m_area.fontMetrics().averageCharWidth();
    const int left = txtHexEntry2_KB->geometry().right() + 1 + gap;
    lblHexEntry_KB->setGeometry(left, txtHexEntry2_KB->y(), std::max(m_area.width() - left, 0), box.height());
    lblHexEntry_KB->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

// The label above the box, the hint below it: beside the frames there is room for short lines only.
void KeyboardLanguageControls::arrangeScanCode()
{
    const int left = entryLeft();
    const int width = std::max(m_area.width() - left, 0);
    const int gap = m_area.fontMetrics().height() / 4;
    lblScanCode_KB->setGeometry(left, shiftFrames.front()->y(), width, lblScanCode_KB->sizeHint().height());
    const QSize box = txtHexEntry_KB->sizeHint();
    txtHexEntry_KB->setGeometry({{left, lblScanCode_KB->geometry().bottom() + 1 + gap}, box});
    lblHexEntry_KB->setBuddy(txtHexEntry_KB);
    lblHexEntry_KB->setGeometry(left, txtHexEntry_KB->geometry().bottom() + 1 + gap, width,
                                lblHexEntry_KB->heightForWidth(width));
    lblHexEntry_KB->setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

QSize KeyboardLanguageControls::minimumSize() const
{
    const int height = std::max(stackHeight(flagFrames, kFlagFramesTop), stackHeight(shiftFrames, kShiftFramesTop));
    return {entryLeft() + kHintColumn * m_area.fontMetrics().averageCharWidth(), height};
}

int KeyboardLanguageControls::stackHeight(const std::vector<OptionFrame*>& frames, double titleHeights) const
{
    int height = belowTitle(titleHeights);
    for (const OptionFrame* frame : frames) {
        height += qRound(kFrameStep * frame->sizeHint().height());
    }
    return height;
}

int KeyboardLanguageControls::frameWidth() const
{
    int width = 0;
    for (const auto* frames : {&flagFrames, &shiftFrames}) {
        for (const OptionFrame* frame : *frames) {
            width = std::max(width, frame->sizeHint().width());
        }
    }
    return width;
}

int KeyboardLanguageControls::belowTitle(double titleHeights) const
{
    return lblEditTitle_KB->y() + qRound(titleHeights * lblEditTitle_KB->sizeHint().height());
}

int KeyboardLanguageControls::entryLeft() const
{
    return lblEditTitle_KB->x() + qRound(kEntryColumn * frameWidth());
}

} // namespace tables
