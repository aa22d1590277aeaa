#include "platform/qt/QtWindowOrder.h"

#include <QVariant>
#include <QWidget>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

namespace platform {

namespace {

// Not every system's way shows in the flags of the toolkit.
constexpr const char* kTopmostNumber = "platform_topmostNumber";

#ifdef Q_OS_WIN

void placeInOrder(QWidget& window, int insertAfter, unsigned flags)
{
    const auto handle = reinterpret_cast<HWND>(window.winId());
    const auto after = reinterpret_cast<HWND>(static_cast<LONG_PTR>(insertAfter));
    ::SetWindowPos(handle, after, 0, 0, 0, 0, flags);
}

#else

// Other systems know only windows that stay on top and windows that do not, and learn it when a window is shown.
void setStaysOnTop(QWidget& window, bool stays)
{
    if (window.windowFlags().testFlag(Qt::WindowStaysOnTopHint) == stays) {
        return;
    }
    const bool wasVisible = window.isVisible();
    const QRect place = window.geometry();
    window.setWindowFlag(Qt::WindowStaysOnTopHint, stays); // hides the window
    if (wasVisible) {
        window.setGeometry(place);
        window.show();
    }
}

void placeInOrder(QWidget& window, int insertAfter, [[maybe_unused]] unsigned flags)
{
    if (insertAfter == kTopOfOrdinaryWindows) {
        window.raise();
    } else {
        setStaysOnTop(window, insertAfter == kTopmost);
    }
}

#endif

} // namespace

void QtWindowOrder::SetWindowPos(QWidget& window, int insertAfter, unsigned flags)
{
    placeInOrder(window, insertAfter, flags);
    if (insertAfter != kTopOfOrdinaryWindows) {
        window.setProperty(kTopmostNumber, insertAfter == kTopmost ? ++m_last : 0);
    }
}

bool isTopmost(const QWidget& window)
{
    return window.windowFlags().testFlag(Qt::WindowStaysOnTopHint) || topmostNumber(window) > 0;
}

int topmostNumber(const QWidget& window)
{
    return window.property(kTopmostNumber).toInt();
}

} // namespace platform
