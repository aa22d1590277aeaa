#include "widgets/PlainLabel.h"

#include "platform/qt/AnsiText.h"

namespace widgets {

PlainLabel::PlainLabel(const QString& name, std::string_view text, QWidget* parent)
    : QLabel(parent)
{
    setObjectName(name);
    setTextFormat(Qt::PlainText);
    setAnsiText(text);
}

void PlainLabel::setAnsiText(std::string_view text)
{
    setText(platform::toQString(text));
}

} // namespace widgets
