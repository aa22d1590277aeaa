#include "app/LinkLamp.h"

#include "app/SeenColor.h"

#include <QPainter>

namespace app {

LinkLamp::LinkLamp(QColor lit, QColor dark, QWidget* parent)
    : QWidget(parent)
    , m_lit(lit)
    , m_dark(dark)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LinkLamp::setLit(bool lit)
{
    if (lit != m_isLit) {
        m_isLit = lit;
        repaint();
    }
}

QSize LinkLamp::sizeHint() const
{
    const int side = fontMetrics().height();
    return {side, side};
}

void LinkLamp::paintEvent([[maybe_unused]] QPaintEvent* event)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ringOf(palette()), 1.5)); // either colour is hardly seen on some window
    painter.setBrush(fillColor());
    painter.drawEllipse(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5));
}

} // namespace app
