#include <QApplication>
#include <QGenericPlugin>
#include <QMainWindow>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

// Tells on standard output when a program's main window is on the screen for the first time, in microseconds since
// 1970:
//
//     QT_PLUGIN_PATH=FOLDER QT_QPA_GENERIC_PLUGINS=startclock PROGRAM
//
// where FOLDER holds generic/libstartclock.so. The program needs no change and knows nothing of it.

namespace {

class StartClock final : public QObject
{
    Q_OBJECT

public:
    StartClock() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Expose && isOfMainWindow(watched)) {
            QCoreApplication::instance()->removeEventFilter(this);
            const auto now = std::chrono::system_clock::now().time_since_epoch();
            timespec spent{};
            clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &spent);
            std::printf("%lld %lld\n",
                        static_cast<long long>(std::chrono::duration_cast<std::chrono::microseconds>(now).count()),
                        static_cast<long long>(spent.tv_sec) * 1'000'000 + spent.tv_nsec / 1000);
            std::fflush(stdout);
        }
        return false;
    }

private:
    // A splash is no main window.
    static bool isOfMainWindow(const QObject* watched)
    {
        const QWidgetList widgets = QApplication::topLevelWidgets();
        return std::any_of(widgets.begin(), widgets.end(), [watched](const QWidget* widget) {
            return qobject_cast<const QMainWindow*>(widget) != nullptr && widget->windowHandle() == watched &&
                   widget->windowHandle()->isExposed();
        });
    }
};

class StartClockPlugin final : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "startclock.json")

public:
    QObject* create(const QString& name, const QString&) override
    {
        return name == QLatin1String("startclock") ? new StartClock : nullptr;
    }
};

} // namespace

#include "StartClockPlugin.moc"
