#include "widgets/OutlinedStyle.h"

#include "widgets/SeenColor.h"

#include <QGroupBox>
#include <QPainter>
#include <QStyleOption>

namespace widgets {

namespace {

constexpr qreal kRounding = 2;
constexpr qreal kRing = 1.5; // nowhere between pixels only

enum class Shape { None, Box, Circle };

Shape shapeOf(QStyle::PrimitiveElement element)
{
    switch (element) {
    case QStyle::PE_IndicatorRadioButton:
        return Shape::Circle;
    case QStyle::PE_IndicatorCheckBox:
    case QStyle::PE_PanelLineEdit:
    case QStyle::PE_PanelButtonCommand:
    case QStyle::PE_Frame:
    case QStyle::PE_FrameGroupBox:
    case QStyle::PE_FrameMenu:
    case QStyle::PE_FrameTabWidget:
    case QStyle::PE_FrameWindow:
    case QStyle::PE_PanelMenu:
        return Shape::Box;
    default:
        return Shape::None;
    }
}

// A group's frame begins below its title.
QRect frameOf(const QStyleOption& option, const QWidget* widget)
{
    constexpr int kBelowTitle = 3;
    const auto* group = qobject_cast<const QGroupBox*>(widget);
    const bool hasTitle = group != nullptr && !group->title().isEmpty();
    return option.rect.adjusted(0, hasTitle ? option.fontMetrics.height() + kBelowTitle : 0, 0, 0);
}

QFrame::Shape frameShapeOf(const QStyleOption& option)
{
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
    return frame == nullptr ? QFrame::Box : frame->frameShape;
}

// What has the keyboard keeps the colour that says so.
QColor colorFor(const QStyleOption& option, QStyle::PrimitiveElement element)
{
    if (!option.state.testFlag(QStyle::State_Enabled)) {
        return option.palette.color(QPalette::Disabled, QPalette::WindowText);
    }
    const bool showsFocus = element == QStyle::PE_PanelLineEdit || element == QStyle::PE_IndicatorRadioButton ||
                            element == QStyle::PE_IndicatorCheckBox || element == QStyle::PE_PanelButtonCommand;
    const bool isByKeyboard =
        element == QStyle::PE_PanelLineEdit || option.state.testFlag(QStyle::State_KeyboardFocusChange);
    if (showsFocus && isByKeyboard && option.state.testFlag(QStyle::State_HasFocus)) {
        return seenOn(option.palette.color(QPalette::Window), option.palette.color(QPalette::Highlight),
                      option.palette.color(QPalette::WindowText));
    }
    return element == QStyle::PE_IndicatorRadioButton ? ringOf(option.palette) : outlineOf(option.palette);
}

void outline(QPainter& painter, const QColor& color, QRect rect, Shape shape)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, shape == Shape::Circle ? kRing : 1));
    const QRectF line = QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (shape == Shape::Circle) {
        painter.drawEllipse(line);
    } else {
        painter.drawRoundedRect(line, kRounding, kRounding);
    }
    painter.restore();
}

// A single line instead of the two of a groove, of which one is hardly seen.
void drawRule(QPainter& painter, const QStyleOption& option, QFrame::Shape shape)
{
    const QPoint middle = option.rect.center();
    const QRect line = shape == QFrame::HLine ? QRect(option.rect.left(), middle.y(), option.rect.width(), 1)
                                              : QRect(middle.x(), option.rect.top(), 1, option.rect.height());
    painter.fillRect(line, outlineOf(option.palette));
}

} // namespace

bool OutlinedStyle::needsOutline(const QPalette& palette) const
{
    return isNearlyBlack(palette.color(QPalette::Window)) || baseStyle()->name() == QLatin1String("fusion");
}

void OutlinedStyle::polish(QPalette& palette)
{
    QProxyStyle::polish(palette);
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(
            group, QPalette::Highlight,
            groundOf(palette.color(group, QPalette::HighlightedText), palette.color(group, QPalette::Highlight)));
    }
}

void OutlinedStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const Shape shape = shapeOf(element);
    if (shape != Shape::None && needsOutline(option->palette)) {
        const bool isGroup = element == PE_FrameGroupBox;
        outline(*painter, colorFor(*option, element), isGroup ? frameOf(*option, widget) : option->rect, shape);
    }
}

void OutlinedStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const
{
    const QFrame::Shape frame = element == CE_ShapedFrame ? frameShapeOf(*option) : QFrame::NoFrame;
    if ((frame == QFrame::HLine || frame == QFrame::VLine) && needsOutline(option->palette)) {
        drawRule(*painter, *option, frame);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
    const bool isOutlined = frame != QFrame::NoFrame || element == CE_TabBarTabShape || element == CE_ProgressBarGroove;
    if (isOutlined && needsOutline(option->palette)) {
        outline(*painter, colorFor(*option, PE_Frame), option->rect, Shape::Box);
    }
}

void OutlinedStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                       const QWidget* widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (!needsOutline(option->palette)) {
        return;
    }
    if (control == CC_ScrollBar) {
        outline(*painter, colorFor(*option, PE_Frame), option->rect, Shape::Box);
        outline(*painter, colorFor(*option, PE_Frame), subControlRect(control, option, SC_ScrollBarSlider, widget),
                Shape::Box);
    } else if (control == CC_ComboBox || control == CC_SpinBox) {
        outline(*painter, colorFor(*option, PE_PanelLineEdit), option->rect, Shape::Box);
    }
}

} // namespace widgets
