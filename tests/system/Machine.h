#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace systemtest {

// The machine that a program under test runs on: this one, or a Windows under Wine of the desk's own. It is the latter
// when the environment says so:
//
//     TESLIN_WINDOWS_PROGRAMS   the folder of a Windows build: the program with the window driver in it, and its tool
//     TESLIN_WINDOWS_LIKE       a Windows to copy for every desk (scripts/wine-prefix makes one)
class Machine final
{
public:
    // Uses, and does not make, the folder.
    explicit Machine(QString folder);
    ~Machine(); // ends what Wine has left running
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    [[nodiscard]] static bool isWindows();

    // Makes what has to be there before anything is started.
    [[nodiscard]] bool setUp();

    // Gives the Windows a virtual screen, on which programs started from then on show their windows.
    [[nodiscard]] bool startScreen();

    // The folder of DOS names.
    [[nodiscard]] QString names() const;
    // The file that tells the program that the reader's driver is installed.
    [[nodiscard]] QString driverFile() const;
    // Puts the program into a folder under its own name. Gives its path, empty when that fails.
    [[nodiscard]] QString install(const QString& folder) const;
    // The command that runs a program of this machine, and its environment but for the user's own folders.
    [[nodiscard]] static QStringList command(const QString& executable, const QStringList& arguments);
    [[nodiscard]] QProcessEnvironment environment() const;
    // How programs of this machine call a file.
    [[nodiscard]] static QString nameOf(const QString& file);
    // What this machine says of a file or device that is not there.
    [[nodiscard]] static QString noSuchFile();

    // What the tool of the Windows build prints; see tool/WindowsTool.cpp. "(failed)" when it fails.
    [[nodiscard]] QByteArray askTool(const QStringList& arguments) const;

private:
    [[nodiscard]] QString prefix() const { return m_folder + QStringLiteral("/wine"); }

    QString m_folder;
    QProcess m_screen;
    QString m_display; // empty: none
};

} // namespace systemtest
