#include "tables/ui/OptionFrame.h"

#include "platform/qt/AnsiText.h"
#include "platform/qt/Spoken.h"
#include "tables/ui/FrameColumn.h"

#include <QButtonGroup>
#include <QLayout>
#include <QRadioButton>

#include <string>

namespace tables {

OptionFrame::OptionFrame(const BitField& field, std::string_view suffix, QWidget* parent)
    : QGroupBox(platform::toQString(field.frameCaption), parent)
    , m_field(field)
    , m_array(new QButtonGroup(this))
{
    setObjectName(platform::toQString(std::string(field.frame).append(suffix)));
    const QString arrayName = platform::toQString(std::string(field.array).append(suffix));
    m_array->setObjectName(arrayName);
    layOutInColumn(*this);
    int index = 0;
    for (const BitOption& option : field.options) {
        addButton(option, index, arrayName + QLatin1Char('_') + QString::number(index));
        ++index;
    }
    connect(m_array, &QButtonGroup::idClicked, this, &OptionFrame::optionClicked);
}

void OptionFrame::addButton(const BitOption& option, int index, const QString& name)
{
    auto* button = new QRadioButton(platform::toQString(option.caption), this);
    button->setObjectName(name);
    button->setToolTip(platform::toQString(option.toolTip));
    // Which of the frames it belongs to, and what its tool tip says.
    platform::setSpoken(*button,
                        button->toolTip().isEmpty() ? title() : title() + QStringLiteral(": ") + button->toolTip());
    m_array->addButton(button, index);
    layout()->addWidget(button);
}

void OptionFrame::load(std::string_view value)
{
    const std::optional<int> selected = selectedOption(m_field, value);
    // An exclusive group refuses to be left without a selected button.
    m_array->setExclusive(false);
    const QList<QAbstractButton*> buttons = m_array->buttons();
    for (QAbstractButton* button : buttons) {
        const bool isSelected = m_array->id(button) == selected;
        button->setChecked(isSelected);
        // Tab goes to the selected button alone; its neighbours are reached with the arrow keys.
        button->setFocusPolicy(isSelected || !selected ? Qt::StrongFocus : Qt::ClickFocus);
    }
    m_array->setExclusive(true);
}

} // namespace tables
