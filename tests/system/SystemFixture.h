#pragma once

#include "tests/simulator/SimulatorProcess.h"
#include "tests/system/Machine.h"
#include "tests/system/ProgramProcess.h"

#include <QByteArrayList>
#include <QTemporaryDir>

namespace systemtest {

// A technician's desk: a simulated reader and the real program, on a folder of DOS names that nobody else uses. Ends
// what it started, and nothing else.
class SystemFixture final
{
public:
    SystemFixture();

    // Starts both and waits for the main window. memory: parameter values of the reader, one "aaa=vv" a line.
    [[nodiscard]] bool start(const QByteArray& memory = {}, const QStringList& faults = {},
                             const ProgramProcess::Setup& setup = {});

    // The two halves, for surroundings that are bad from the beginning.
    [[nodiscard]] bool startReader(const QByteArray& memory = {}, const QStringList& faults = {});
    [[nodiscard]] bool startProgram(const ProgramProcess::Setup& setup = {})
    {
        return m_machine.setUp() && m_program.start(setup);
    }
    [[nodiscard]] bool waitForWindow();
    // See Machine.
    [[nodiscard]] bool startScreen() { return m_machine.startScreen(); }

    // The reader goes without a word. Its names go too: the system gives the number of a terminal that is gone to the
    // next one at once, and the name would lead to somebody else's.
    void unplugReader();

    // Lets every user of the machine into the folders of this desk.
    [[nodiscard]] bool openToEverybody();

    [[nodiscard]] Machine& machine() { return m_machine; }
    [[nodiscard]] SimulatorProcess& reader() { return m_reader; }
    [[nodiscard]] ProgramProcess& program() { return m_program; }

    // Presses a button of the toolbar.
    [[nodiscard]] bool press(const QString& key) { return m_program.act(QStringLiteral("click ") + key); }

    // What the reader that runs now has received at the port, one command each, as in ExpectedCommands.h. Whatever else
    // happened there that should not (an unfinished line, a lost one) stands among them in parentheses.
    [[nodiscard]] QByteArrayList commands() const;
    [[nodiscard]] bool isPortOpen() const;

    // The values that the reader holds when it has ended; ends it.
    [[nodiscard]] QByteArray memoryAtEnd();

private:
    [[nodiscard]] QList<SimulatorProcess::LogLine> logOfPort() const;
    [[nodiscard]] QString path(const char* name) const;

    QTemporaryDir m_folder;
    Machine m_machine;
    SimulatorProcess m_reader;
    ProgramProcess m_program;
};

} // namespace systemtest
