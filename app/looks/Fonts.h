#pragma once

#include "platform/qt/ColumnFont.h"

#include <QFont>

// The typefaces that the windows ask for by name. Where one is missing, the system's nearest takes its place.
namespace app {

// For hexadecimal text and names of devices, in the size of a font.
[[nodiscard]] inline QFont courierNew(const QFont& like)
{
    QFont font = platform::columnFont(QStringLiteral("Courier New"));
    font.setPointSizeF(like.pointSizeF());
    return font;
}

[[nodiscard]] inline QFont arial(qreal points, QFont::Weight weight = QFont::Normal)
{
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(points);
    font.setWeight(weight);
    font.setStyleHint(QFont::SansSerif);
    return font;
}

} // namespace app
