#pragma once

#include "tests/system/Machine.h"

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace systemtest {

// One run of the real program, driven through its windows by the window driver (driver/DriverCommands.cpp lists its
// commands). Runs a copy in a folder of its own, because the settings file lies beside the program.
class ProgramProcess final
{
public:
    struct Setup
    {
        QStringList arguments = {};
        QByteArray settings = {};  // contents of the settings file; empty: none
        QStringList launcher = {}; // a command that runs the program, such as one that changes the user
    };

    // Uses, and does not make, the folder. The machine outlives the program.
    ProgramProcess(QString folder, const Machine& machine);
    ~ProgramProcess(); // kills what still runs

    // The program where it was built, for runs without a window.
    [[nodiscard]] static QString builtExecutable();

    // True when the program has started and the window driver answers; a window need not be there yet.
    [[nodiscard]] bool start(const Setup& setup);

    // The exit code; -1 when it crashed or did not end within the limit. Unless it is 0, a warning tells what the
    // program said.
    [[nodiscard]] int waitForEnd();
    [[nodiscard]] bool isRunning();

    // The answer to a command of the window driver; "(refused: ...)" when it was refused or nobody answered.
    [[nodiscard]] QString ask(const QString& command);
    // Carries a command out; false, and a warning, when it was refused.
    [[nodiscard]] bool act(const QString& command);
    // Presses keys or types, as soon as the window in front has the keyboard.
    [[nodiscard]] bool actOnKeyboard(const QString& command);

    [[nodiscard]] QString property(const QString& control, const QString& name);
    [[nodiscard]] QString text(const QString& control) { return property(control, QStringLiteral("text")); }
    [[nodiscard]] bool is(const QString& control, const QString& property);

    // The data rows of a grid, each its four texts. Empty when there is no such grid.
    [[nodiscard]] QList<QStringList> rows(const QString& grid);
    // One column of them, joined by blanks.
    [[nodiscard]] QString column(const QString& grid, int column);

    // The open message box as boxOf() writes it; empty when none is open.
    [[nodiscard]] QString box() { return ask(QStringLiteral("box")); }

    // True while nothing runs: the Exit button reads "Exit" and buttons 1 to 6 can be pressed.
    [[nodiscard]] bool isIdle();

    // Processor time used so far, in milliseconds; the system counts it in steps of about ten.
    [[nodiscard]] qint64 processorTime() const;

    [[nodiscard]] QString settingsFile() const;
    [[nodiscard]] QString folder() const { return m_folder; }

private:
    [[nodiscard]] bool answer(const QString& command, QString& text);

    QString m_folder;
    const Machine& m_machine;
    QProcess m_process;
};

// A message box: title, icon (none, information, question, exclamation, critical), buttons in alphabetical order with a
// star behind the default one, text.
[[nodiscard]] QString boxOf(const QString& title, const QString& icon, const QString& buttons, const QString& text);

} // namespace systemtest
