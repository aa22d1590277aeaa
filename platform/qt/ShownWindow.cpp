#include "platform/qt/ShownWindow.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

namespace platform {

namespace {

constexpr std::chrono::milliseconds kLongestWait{500};

} // namespace

void waitUntilShown(const QWidget& window)
{
    QTimer wait;
    wait.setSingleShot(true);
    wait.start(kLongestWait);
    while (!window.testAttribute(Qt::WA_Mapped) && wait.isActive()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
    }
}

} // namespace platform
