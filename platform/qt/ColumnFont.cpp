#include "platform/qt/ColumnFont.h"

#include "platform/qt/VisibleText.h"

#include <QFontDatabase>
#include <QRawFont>

#include <algorithm>
#include <cmath>
#include <string>

namespace platform {

namespace {

constexpr qreal kSameWidth = 0.01; // of a character: in a line of the report that adds up to less than one

QString everyCharacter()
{
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return toVisible(bytes);
}

QFont fixedFont(const QString& family)
{
    QFont font(family);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    return font;
}

// All of them, those first that say of themselves that they have columns.
QStringList familiesOfTheSystem()
{
    QStringList families = QFontDatabase::families(QFontDatabase::Latin);
    families.removeIf([](const QString& family) {
        return QFontDatabase::isPrivateFamily(family) || !QFontDatabase::isScalable(family);
    });
    std::stable_partition(families.begin(), families.end(),
                          [](const QString& family) { return QFontDatabase::isFixedPitch(family); });
    return families;
}

} // namespace

bool hasColumns(const QFont& font)
{
    const QString characters = everyCharacter();
    const QRawFont face = QRawFont::fromFont(font);
    const QList<quint32> glyphs = face.glyphIndexesForString(characters);
    if (!face.isValid() || glyphs.size() != characters.size()) {
        return false;
    }
    // As designed: on paper they are not rounded to the pixels of a screen.
    const QList<QPointF> widths =
        face.advancesForGlyphIndexes(glyphs, QRawFont::SeparateAdvances | QRawFont::UseDesignMetrics);
    const qreal width = widths.value(characters.indexOf(QLatin1Char('0'))).x();
    for (qsizetype i = 0; i < characters.size(); ++i) {
        const bool isMissing = glyphs[i] == 0;
        const bool isPlain = characters[i] > QLatin1Char(' ') && characters[i] <= QLatin1Char('~');
        if (isMissing ? isPlain : std::abs(widths[i].x() - width) > kSameWidth * width) {
            return false;
        }
    }
    return width > 0;
}

QFont columnFont(const QString& family)
{
    const QFont asked = fixedFont(family);
    if (hasColumns(asked)) {
        return asked;
    }
    for (const QString& other : familiesOfTheSystem()) {
        if (const QFont font = fixedFont(other); hasColumns(font)) {
            return font;
        }
    }
    return asked;
}

} // namespace platform
