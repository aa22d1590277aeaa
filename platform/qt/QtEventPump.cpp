#include "platform/qt/QtEventPump.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace platform {

namespace {

// One turn of an event loop need not come to everything that is pending: it may handle timers and leave the window
// system's events for the next. More turns follow as long as there was something, but not for ever.
constexpr int kLongestLook = 10; // milliseconds

} // namespace

void QtEventPump::processPending()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents, kLongestLook);
}

void QtEventPump::processWithoutInput()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, kLongestLook);
}

void QtEventPump::waitForEvents()
{
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace platform
