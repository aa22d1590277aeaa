#include "platform/qt/FrontWindow.h"

#include <QApplication>
#include <QWidget>

namespace platform {

QWidget* frontWindow()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && (window->windowFlags() & Qt::WindowStaysOnTopHint) != 0) {
            return window;
        }
    }
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return modal;
    }
    return QApplication::activeWindow();
}

} // namespace platform
