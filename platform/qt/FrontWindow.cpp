#include "platform/qt/FrontWindow.h"

#include "platform/qt/QtWindowOrder.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>

namespace platform {

namespace {

// Whatever a box can belong to, as against menus and tool tips.
bool isOrdinaryWindow(const QWidget& window)
{
    const Qt::WindowType type = window.windowType();
    return type == Qt::Window || type == Qt::Dialog || type == Qt::SplashScreen;
}

QWidget* firstVisible(bool (*suits)(const QWidget&))
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [suits](const QWidget* window) { return window->isVisible() && suits(*window); });
    return found == windows.end() ? nullptr : *found;
}

} // namespace

QWidget* frontWindow()
{
    if (QWidget* topmost = firstVisible(isTopmost)) {
        return topmost;
    }
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return modal;
    }
    if (QWidget* active = QApplication::activeWindow()) {
        return active;
    }
    // The user is in another program, or only the splash is there, which does not take the focus.
    return firstVisible(isOrdinaryWindow);
}

} // namespace platform
