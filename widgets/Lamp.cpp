#include "widgets/Lamp.h"

#include "widgets/SeenColor.h"

#include <QPainter>

namespace widgets {

Lamp::Lamp(QColor lit, QColor dark, QWidget* parent)
    : QWidget(parent)
    , m_lit(lit)
    , m_dark(dark)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Lamp::setLit(bool lit)
{
    if (lit != m_isLit) {
        m_isLit = lit;
        repaint();
    }
}

QSize Lamp::sizeHint() const
{
    const int side = fontMetrics().height();
    return {side, side};
}

void Lamp::paintEvent([[maybe_unused]] QPaintEvent* event)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ringOf(palette()), 1.5)); // either colour is hardly seen on some window
    painter.setBrush(fillColor());
    painter.drawEllipse(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5));
}

} // namespace widgets
