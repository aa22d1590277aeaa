#pragma once

#include <QLabel>

#include <string_view>

namespace widgets {

// A label whose text is shown as it is: addresses and names from a file may look like markup.
class PlainLabel : public QLabel
{
    Q_OBJECT

public:
    PlainLabel(const QString& name, std::string_view text, QWidget* parent);

    void setAnsiText(std::string_view text);
};

} // namespace widgets
