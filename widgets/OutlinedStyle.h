#pragma once

#include <QProxyStyle>

namespace widgets {

// The system's style, with every control outlined where the style itself draws outlines that are hardly seen: Qt's own
// style takes a shade of the window for them, which no palette makes strong enough, and on a black window, as in
// palettes of high contrast, every style's are lost. Selected text is made legible, too, where the palette's own
// colours for it are too much alike.
class OutlinedStyle final : public QProxyStyle
{
    Q_OBJECT

public:
    using QProxyStyle::polish;
    void polish(QPalette& palette) override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;

private:
    [[nodiscard]] bool needsOutline(const QPalette& palette) const;
};

} // namespace widgets
