#include "app/OutlinedStyle.h"

#include <QGroupBox>
#include <QPainter>
#include <QStyleOption>

namespace app {

namespace {

constexpr int kNearlyBlack = 24; // lightness below which nothing darker is seen
constexpr qreal kRounding = 2;

bool needsOutline(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < kNearlyBlack;
}

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

// Labels are frames without a line.
bool hasLine(const QStyleOption& option)
{
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
    return frame == nullptr || frame->frameShape != QFrame::NoFrame;
}

void outline(QPainter& painter, const QStyleOption& option, QRect rect, Shape shape)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    painter.setPen(option.palette.color(isEnabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    const QRectF line = QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (shape == Shape::Circle) {
        painter.drawEllipse(line);
    } else {
        painter.drawRoundedRect(line, kRounding, kRounding);
    }
    painter.restore();
}

} // namespace

void OutlinedStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const Shape shape = shapeOf(element);
    if (shape != Shape::None && needsOutline(option->palette)) {
        const bool isGroup = element == PE_FrameGroupBox;
        outline(*painter, *option, isGroup ? frameOf(*option, widget) : option->rect, shape);
    }
}

void OutlinedStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    const bool isOutlined =
        element == CE_ShapedFrame ? hasLine(*option) : element == CE_TabBarTabShape || element == CE_ProgressBarGroove;
    if (isOutlined && needsOutline(option->palette)) {
        outline(*painter, *option, option->rect, Shape::Box);
    }
}

} // namespace app
