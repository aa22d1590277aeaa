#pragma once

#include <QColor>
#include <QHash>
#include <QImage>
#include <QLineF>
#include <QPointF>
#include <QRect>
#include <QWidget>

#include <algorithm>
#include <cmath>

// How well something is seen, told by the pixels of a picture: the ratio of the luminances of two colours, 1 to 21, as
// the guidelines for accessible contents define it.
namespace testsupport {

inline constexpr double kSeenShape = 3.0;
inline constexpr double kSeenText = 4.5;

[[nodiscard]] inline double luminance(QColor color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

[[nodiscard]] inline double contrast(QColor one, QColor other)
{
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

// A window as it is painted, asked for in its own logical coordinates.
class Painted final
{
public:
    explicit Painted(QWidget& window)
        : m_window(window)
        , m_picture(window.grab().toImage().convertToFormat(QImage::Format_RGB32))
        , m_ratio(window.devicePixelRatioF())
    {}

    // A rectangle of a widget in the window, in pixels of the picture.
    [[nodiscard]] QRect pixelsOf(const QWidget& widget, QRect rect) const
    {
        const QPoint corner = widget.mapTo(&m_window, rect.topLeft());
        const QRectF scaled(QPointF(corner) * m_ratio, QSizeF(rect.size()) * m_ratio);
        return scaled.toRect().intersected(m_picture.rect());
    }
    [[nodiscard]] QRect pixelsOf(const QWidget& widget) const { return pixelsOf(widget, widget.rect()); }
    [[nodiscard]] const QImage& picture() const { return m_picture; }
    [[nodiscard]] QColor at(QPoint pixel) const
    {
        return m_picture.pixelColor(std::clamp(pixel.x(), 0, m_picture.width() - 1),
                                    std::clamp(pixel.y(), 0, m_picture.height() - 1));
    }

    // The best contrast of a line of pixels to its first one.
    [[nodiscard]] double contrastAlong(QPointF from, QPointF to) const
    {
        const QLineF way(from, to);
        const int steps = std::max(1, static_cast<int>(std::ceil(way.length() * 4)));
        const QColor ground =
            at(QPoint(static_cast<int>(std::floor(from.x())), static_cast<int>(std::floor(from.y()))));
        double best = 1;
        for (int step = 1; step <= steps; ++step) {
            const QPointF point = way.pointAt(static_cast<double>(step) / steps);
            best = std::max(best, contrast(ground, at(QPoint(static_cast<int>(std::floor(point.x())),
                                                             static_cast<int>(std::floor(point.y()))))));
        }
        return best;
    }

    // How well the outline of a box is seen from outside, on its worst side.
    [[nodiscard]] double contrastOfOutline(QRect pixels) const
    {
        const double out = std::ceil(1.5 * m_ratio);
        const double in = std::ceil(3.5 * m_ratio);
        const QRectF box(pixels);
        const QPointF middle = box.center();
        return std::min({contrastAlong({box.left() - out, middle.y()}, {box.left() + in, middle.y()}),
                         contrastAlong({box.right() + out - 0.5, middle.y()}, {box.right() - in, middle.y()}),
                         contrastAlong({middle.x(), box.top() - out}, {middle.x(), box.top() + in}),
                         contrastAlong({middle.x(), box.bottom() + out - 0.5}, {middle.x(), box.bottom() - in})});
    }

    // How well a circle is seen from outside, on its worst side.
    [[nodiscard]] double contrastOfCircle(QRect pixels) const
    {
        const QPointF middle = QRectF(pixels).center();
        double worst = 21;
        for (int degrees = 0; degrees < 360; degrees += 15) {
            const QLineF spoke = QLineF::fromPolar(pixels.width() / 2.0 + 1, degrees).translated(middle);
            worst = std::min(worst, contrastAlong(spoke.p2(), spoke.pointAt(0.6)));
        }
        return worst;
    }

    // How well something is seen on the colour that most of a rectangle has.
    [[nodiscard]] double contrastWithin(QRect pixels) const
    {
        QHash<QRgb, int> counts;
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            for (int x = pixels.left(); x <= pixels.right(); ++x) {
                ++counts[m_picture.pixel(x, y)];
            }
        }
        QRgb ground = 0;
        for (auto count = counts.cbegin(); count != counts.cend(); ++count) {
            if (counts.value(ground) < count.value()) {
                ground = count.key();
            }
        }
        double best = 1;
        for (auto count = counts.cbegin(); count != counts.cend(); ++count) {
            best = std::max(best, contrast(ground, count.key()));
        }
        return best;
    }

private:
    QWidget& m_window;
    QImage m_picture;
    double m_ratio;
};

} // namespace testsupport
