#include "tables/ui/CheckFrame.h"

#include "platform/qt/AnsiText.h"
#include "platform/qt/Spoken.h"
#include "tables/ui/FrameColumn.h"

#include <QCheckBox>
#include <QLayout>

namespace tables {

CheckFrame::CheckFrame(const QString& name, const QString& caption, QWidget* parent)
    : QGroupBox(caption, parent)
{
    setObjectName(name);
    layOutInColumn(*this);
}

QCheckBox* CheckFrame::addCheck(const BitCheck& check)
{
    auto* box = new QCheckBox(platform::toQString(check.caption), this);
    box->setObjectName(platform::toQString(check.box));
    box->setToolTip(platform::toQString(check.toolTip));
    // Which of the frames it belongs to, and what its tool tip says.
    platform::setSpoken(*box, box->toolTip().isEmpty() ? title() : title() + QStringLiteral(": ") + box->toolTip());
    layout()->addWidget(box);
    m_checks.emplace_back(&check, box);
    return box;
}

void CheckFrame::load(std::uint8_t byte)
{
    for (const auto& [check, box] : m_checks) {
        box->setChecked(isSet(*check, byte));
    }
}

} // namespace tables
