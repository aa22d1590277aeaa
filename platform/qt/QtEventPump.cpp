#include "platform/qt/QtEventPump.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace platform {

void QtEventPump::processPending()
{
    QCoreApplication::processEvents();
}

void QtEventPump::waitForEvents()
{
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace platform
