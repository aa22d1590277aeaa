#include "tables/ui/EditTitle.h"

#include <QPainter>
#include <QStyle>

namespace tables {

namespace {

constexpr double kLarger = 1.2; // than the text below it, where the title has room for that

// More than any title shows: the notes of a file may be megabytes, which must not be measured at each painting.
constexpr qsizetype kMeasuredCharacters = 1000;

QFont larger(QFont font)
{
    font.setPointSizeF(font.pointSizeF() * kLarger);
    return font;
}

} // namespace

EditTitle::EditTitle(const QString& name, QWidget* parent)
    : widgets::PlainLabel(name, {}, parent)
{
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

// One line high, with or without text: places are measured from the title's height.
QSize EditTitle::sizeHint() const
{
    return {0, QFontMetrics(larger(font())).height() + 2};
}

void EditTitle::paintEvent([[maybe_unused]] QPaintEvent* event)
{
    QPainter painter(this);
    const QString start = text().left(kMeasuredCharacters);
    if (const QFont large = larger(font()); QFontMetrics(large).horizontalAdvance(start) <= width()) {
        painter.setFont(large);
    }
    const QString shown = painter.fontMetrics().elidedText(start, Qt::ElideRight, width());
    style()->drawItemText(&painter, rect(), int{Qt::AlignLeft | Qt::AlignVCenter}, palette(), isEnabled(), shown,
                          foregroundRole());
}

} // namespace tables
