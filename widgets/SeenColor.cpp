#include "widgets/SeenColor.h"

#include <algorithm>
#include <cmath>

namespace widgets {

namespace {

constexpr double kSeenShape = 4.3; // 3, and more because groups and grooves are tinted
constexpr double kSeenRing = 9.0;  // one that is painted between pixels
constexpr double kSeenText = 5.3;  // 4.5, and more because thin strokes are painted fainter
constexpr int kNearlyBlack = 24;   // lightness
constexpr float kStep = 0.02F;

double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor mixed(const QColor& from, const QColor& to, float share)
{
    const auto part = [share](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(part(from.redF(), to.redF()), part(from.greenF(), to.greenF()),
                            part(from.blueF(), to.blueF()));
}

// The colour with as little of the other as the contrast to the fixed one needs.
QColor withContrast(double wanted, const QColor& fixed, const QColor& color, const QColor& other)
{
    for (float share = 0; share < 1; share += kStep) {
        const QColor tried = mixed(color, other, share);
        if (contrast(fixed, tried) >= wanted) {
            return tried;
        }
    }
    return other;
}

} // namespace

double contrast(const QColor& one, const QColor& other)
{
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor seenOn(const QColor& ground, const QColor& color, const QColor& other)
{
    return withContrast(kSeenShape, ground, color, other);
}

QColor groundOf(const QColor& text, const QColor& ground)
{
    return withContrast(kSeenText, text, ground, luminance(text) > luminance(ground) ? Qt::black : Qt::white);
}

bool isNearlyBlack(const QColor& color)
{
    return color.lightness() < kNearlyBlack;
}

QColor outlineOf(const QPalette& palette)
{
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    return isNearlyBlack(window) ? text : seenOn(window, window, text);
}

QColor ringOf(const QPalette& palette)
{
    return withContrast(kSeenRing, palette.color(QPalette::Window), outlineOf(palette),
                        palette.color(QPalette::WindowText));
}

} // namespace widgets
