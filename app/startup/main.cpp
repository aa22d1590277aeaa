#include "app/looks/ProductPicture.h"
#include "app/mainwindow/frmMain.h"
#include "app/settings/ProgramFolders.h"
#include "app/startup/CommandLineAnswer.h"
#include "app/startup/ProgramText.h"
#include "device/ReplyPeriod.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/PathText.h"
#include "platform/qt/QtBeep.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtEventPump.h"
#include "platform/qt/QtFileDialogs.h"
#include "platform/qt/QtMessageBoxes.h"
#include "platform/qt/QtPrinter.h"
#include "platform/qt/QtWindowOrder.h"
#include "platform/qt/SystemSerialControl.h"
#include "widgets/OutlinedStyle.h"

#include <QApplication>
#include <QSessionManager>
#include <QStandardPaths>
#include <QTimer>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <span>

// Composes the program: the system's services, the main window, the event loop.

namespace {

// What the user wrote behind the program's name, less what the toolkit took for itself.
std::string commandLine()
{
    return platform::toAnsi(QApplication::arguments().mid(1).join(QLatin1Char(' ')).trimmed());
}

// The services of the system, as the program uses them.
class SystemServices final
{
public:
    SystemServices()
        : m_serial(m_dosNames)
        , m_driver(platform::makeDeviceObject(m_dosNames))
        , m_registry(platform::makeRegistry())
        , m_programs(platform::makeStartProgram())
        , m_program(platform::toPath(QApplication::applicationFilePath()))
        , m_configFolder(platform::toPath(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation)))
        , m_settings(app::GetIniFileName(m_program, m_configFolder), platform::settingsFileBeside(m_program),
                     app::settingsRefuge(m_program, m_configFolder))
    {}

    [[nodiscard]] app::Services handedOut()
    {
        return {.MSComm1 = m_serial,
                .driver = *m_driver,
                .boxes = m_boxes,
                .fileDialogs = m_fileDialogs,
                .printer = m_printer,
                .clock = m_clock,
                .beep = m_beep,
                .events = m_events,
                .settings = m_settings,
                .dosNames = m_dosNames,
                .registry = *m_registry,
                .programs = *m_programs,
                .windowOrder = m_windowOrder,
                .programFolder = m_program.parent_path(),
                .commandLine = commandLine(),
                .tickMilliseconds = device::ReplyPeriod::kTickMilliseconds};
    }

private:
    const platform::DosNames m_dosNames;
    platform::SystemSerialControl m_serial;
    const std::unique_ptr<platform::DeviceObject> m_driver;
    platform::QtMessageBoxes m_boxes{platform::toQString(app::kProgramTitle)};
    platform::QtFileDialogs m_fileDialogs;
    platform::QtPrinter m_printer;
    const platform::QtClock m_clock;
    platform::QtBeep m_beep;
    platform::QtEventPump m_events;
    const std::unique_ptr<platform::Registry> m_registry;
    const std::unique_ptr<platform::StartProgram> m_programs;
    platform::QtWindowOrder m_windowOrder;
    const std::filesystem::path m_program;
    const std::filesystem::path m_configFolder;
    platform::ProfileStrings m_settings;
};

void dress()
{
    QApplication::setStyle(new widgets::OutlinedStyle);
    QApplication::setWindowIcon(app::productPicture());
    // Desktops that do not take a window's own icon find it by the installed desktop entry.
    QApplication::setDesktopFileName(QStringLiteral("teslin-configure"));
}

// The program ends when the main window says so, after its questions and with its settings written.
void endWith(app::frmMain& frmMain, QApplication& application)
{
    QApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(&frmMain, &app::frmMain::unloaded, &application, &QApplication::quit, Qt::QueuedConnection);
    // Later there would be no time for questions, and no way back for a running transfer.
    QObject::connect(
        &application, &QGuiApplication::commitDataRequest, &frmMain,
        [&frmMain](QSessionManager& session) {
            // Asked for in any case: where the user may not be asked, a session may still be kept from ending.
            const bool mayAsk = session.allowsInteraction();
            frmMain.closeForEndOfSession(mayAsk) ? session.release() : session.cancel();
        },
        Qt::DirectConnection);
}

} // namespace

int main(int argc, char* argv[])
{
    // Before anything that needs a display.
    const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
    if (const auto answer = app::answerToCommandLine(arguments.subspan(1))) {
        std::cout << *answer << std::flush;
        return std::cout ? EXIT_SUCCESS : EXIT_FAILURE;
    }

#ifndef Q_OS_WIN
    // What the user does while the driver's device object is waited for is held back until the wait is over. The loop
    // of the GLib library would then not look at it before something else comes from the screen, such as a box, which
    // swallows a wish to close.
    qputenv("QT_NO_GLIB", "1");
#endif
    QApplication application(argc, argv);
    dress();
    SystemServices system;
    app::frmMain frmMain(system.handedOut());
    endWith(frmMain, application);
    QTimer::singleShot(0, &frmMain, &app::frmMain::Form_Load);
    return QApplication::exec();
}
