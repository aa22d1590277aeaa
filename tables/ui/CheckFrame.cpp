#include "tables/ui/CheckFrame.h"

#include "platform/qt/AnsiText.h"
#include "platform/qt/Spoken.h"
#include "tables/ui/FrameColumn.h"

#include <QCheckBox>
#include <QLayout>

#include <algorithm>

namespace tables {

CheckFrame::CheckFrame(const BitChecks& checks, QWidget* parent)
    : QGroupBox(platform::toQString(checks.frameCaption), parent)
    , m_address(checks.address)
{
    setObjectName(platform::toQString(checks.frame));
    layOutInColumn(*this);
    for (const BitCheck* const check : checks.checks) {
        addCheck(*check);
    }
}

void CheckFrame::addCheck(const BitCheck& check)
{
    auto* box = new QCheckBox(platform::toQString(check.caption), this);
    box->setObjectName(platform::toQString(check.box));
    box->setToolTip(platform::toQString(check.toolTip));
    // Which of the frames it belongs to, and what its tool tip says.
    platform::setSpoken(*box, box->toolTip().isEmpty() ? title() : title() + QStringLiteral(": ") + box->toolTip());
    layout()->addWidget(box);
    m_checks.emplace_back(&check, box);
    connect(box, &QCheckBox::clicked, this, [this, &check] { emit checkClicked(&check); });
}

bool CheckFrame::isChecked(const BitCheck& check) const
{
    const auto found = std::ranges::find(m_checks, &check, &std::pair<const BitCheck*, QCheckBox*>::first);
    return found != m_checks.end() && found->second->isChecked();
}

void CheckFrame::load(std::uint8_t byte)
{
    for (const auto& [check, box] : m_checks) {
        box->setChecked(isSet(*check, byte));
    }
}

} // namespace tables
