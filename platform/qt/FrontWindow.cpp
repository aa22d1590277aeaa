#include "platform/qt/FrontWindow.h"

#include "platform/qt/QtWindowOrder.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>

namespace platform {

namespace {

// Whatever a box can belong to, as against menus, tool tips and the splash.
bool isOrdinaryWindow(const QWidget& window)
{
    const Qt::WindowType type = window.windowType();
    return type == Qt::Window || type == Qt::Dialog;
}

QWidget* firstVisible(bool (*suits)(const QWidget&))
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [suits](const QWidget* window) { return window->isVisible() && suits(*window); });
    return found == windows.end() ? nullptr : *found;
}

// The visible window that was put on top last.
QWidget* lastTopmost()
{
    QWidget* last = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        const bool suits = window->isVisible() && isTopmost(*window) && window->windowType() != Qt::ToolTip;
        if (suits && (last == nullptr || topmostNumber(*window) > topmostNumber(*last))) {
            last = window;
        }
    }
    return last;
}

} // namespace

QWidget* frontWindow()
{
    QWidget* const modal = QApplication::activeModalWidget();
    QWidget* const active = QApplication::activeWindow();
    if (QWidget* const topmost = lastTopmost()) {
        for (QWidget* const window : {modal, active}) {
            if (window != nullptr && isTopmost(*window)) {
                return window;
            }
        }
        return topmost;
    }
    if (modal != nullptr) {
        return modal;
    }
    if (active != nullptr && active->windowType() != Qt::SplashScreen) {
        return active;
    }
    return firstVisible(isOrdinaryWindow); // the user is in another program
}

void comeUpAboveParent(QWidget& box)
{
    if (box.parentWidget() != nullptr && isTopmost(*box.parentWidget()->window())) {
        box.setWindowFlag(Qt::WindowStaysOnTopHint);
    }
}

void showInFront(QWidget& window, WindowOrder& order)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const bool isCovered = std::any_of(windows.begin(), windows.end(), [&window](const QWidget* other) {
        return other != &window && other->isVisible() && isTopmost(*other);
    });
    if (isCovered) {
        order.SetWindowPos(window, kTopmost, kKeepSizeAndPlace);
    } else if (isTopmost(window) && !window.isVisible()) {
        order.SetWindowPos(window, kNotTopmost, kKeepSizeAndPlace);
    }
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace platform
