#include "app/LinkLamp.h"

#include <QPainter>
#include <QRadialGradient>

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
    const QRectF circle = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    QRadialGradient glass(circle.center() - QPointF(circle.width() * 0.15, circle.height() * 0.2),
                          circle.width() * 0.6);
    glass.setColorAt(0.0, fillColor().lighter(m_isLit ? 150 : 130));
    glass.setColorAt(1.0, fillColor());
    painter.setPen(QPen(palette().color(QPalette::Mid), 1.0));
    painter.setBrush(glass);
    painter.drawEllipse(circle);
}

} // namespace app
