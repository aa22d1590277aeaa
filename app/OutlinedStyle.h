#pragma once

#include <QProxyStyle>

namespace app {

// The system's style, with every control outlined where the style itself draws its outlines darker than the window:
// on a black window, as in palettes of high contrast, they could not be seen.
class OutlinedStyle final : public QProxyStyle
{
    Q_OBJECT

public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

} // namespace app
