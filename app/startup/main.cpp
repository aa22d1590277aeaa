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
#include <span>

// Composes the program: the system's services, the main window, the event loop.

namespace {

// What the user wrote behind the program's name, less what the toolkit took for itself.
std::string commandLine()
{
    return platform::toAnsi(QApplication::arguments().mid(1).join(QLatin1Char(' ')).trimmed());
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
    // The program ends when the main window says so, after its questions and with its settings written.
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new widgets::OutlinedStyle);
    QApplication::setWindowIcon(app::productPicture());
    // Desktops that do not take a window's own icon find it by the installed desktop entry.
    QApplication::setDesktopFileName(QStringLiteral("teslin-configure"));

    const platform::DosNames dosNames;
    platform::SystemSerialControl MSComm1(dosNames);
    const std::unique_ptr<platform::DeviceObject> driver = platform::makeDeviceObject(dosNames);
    platform::QtMessageBoxes boxes(platform::toQString(app::kProgramTitle));
    platform::QtFileDialogs fileDialogs;
    platform::QtPrinter printer;
    const platform::QtClock clock;
    platform::QtBeep beep;
    platform::QtEventPump events;
    const std::unique_ptr<platform::Registry> registry = platform::makeRegistry();
    const std::unique_ptr<platform::StartProgram> programs = platform::makeStartProgram();
    platform::QtWindowOrder windowOrder;
    const std::filesystem::path program = platform::toPath(QApplication::applicationFilePath());
    const std::filesystem::path configFolder =
        platform::toPath(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
    platform::ProfileStrings settings(app::GetIniFileName(program, configFolder), platform::settingsFileBeside(program),
                                      app::settingsRefuge(program, configFolder));

    app::frmMain frmMain({.MSComm1 = MSComm1,
                          .driver = *driver,
                          .boxes = boxes,
                          .fileDialogs = fileDialogs,
                          .printer = printer,
                          .clock = clock,
                          .beep = beep,
                          .events = events,
                          .settings = settings,
                          .dosNames = dosNames,
                          .registry = *registry,
                          .programs = *programs,
                          .windowOrder = windowOrder,
                          .programFolder = program.parent_path(),
                          .commandLine = commandLine(),
                          .tickMilliseconds = device::ReplyPeriod::kTickMilliseconds});
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
    QTimer::singleShot(0, &frmMain, &app::frmMain::Form_Load);
    return QApplication::exec();
}
