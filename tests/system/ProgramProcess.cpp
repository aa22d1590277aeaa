#include "tests/system/ProgramProcess.h"

#include "tests/system/Limits.h"
#include "tests/system/driver/LineText.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QTest>

#include <csignal>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace systemtest {

namespace {

constexpr int kColumns = 4;
constexpr int kGivesWay = 10; // of the priorities from -20, the first, to 19

// Nothing of the user's own comes in, and nothing of the test goes there.
QProcessEnvironment withoutUser(QProcessEnvironment variables, const QString& folder)
{
    for (const char* const home : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        variables.insert(QString::fromLatin1(home), folder);
    }
    return variables;
}

} // namespace

ProgramProcess::ProgramProcess(QString folder, const Machine& machine)
    : m_folder(std::move(folder))
    , m_machine(machine)
{
    // A test that is itself killed leaves nothing behind. And the program gives way to the reader, which has 150 ms by
    // the program's ticks: where a machine has much to do, the ticks come late rather than the answers.
    m_process.setChildProcessModifier([] {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::setpriority(PRIO_PROCESS, 0, kGivesWay);
    });
}

ProgramProcess::~ProgramProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(kStart);
    }
}

QString ProgramProcess::builtExecutable()
{
    return QStringLiteral(TESLIN_CONFIGURE);
}

QString ProgramProcess::settingsFile() const
{
    return m_folder + u"/TeslinConfigure.INI"_s;
}

bool ProgramProcess::start(const Setup& setup)
{
    const QString executable = m_machine.install(m_folder);
    if (executable.isEmpty()) {
        return false;
    }
    if (!setup.settings.isEmpty()) {
        QFile file(settingsFile());
        if (!file.open(QIODevice::WriteOnly) || file.write(setup.settings) != setup.settings.size()) {
            return false;
        }
    }
    const QStringList command = setup.launcher + Machine::command(executable, setup.arguments);
    m_process.setProcessEnvironment(withoutUser(m_machine.environment(), m_folder));
    m_process.setWorkingDirectory(m_folder);
    m_process.start(command.front(), command.mid(1));
    return m_process.waitForStarted(kStart) && act(u"windows"_s);
}

int ProgramProcess::waitForEnd()
{
    const bool ended = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(kStart);
    const int code = ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    if (code != 0) {
        qWarning("the program said: %s", m_process.readAllStandardError().constData());
    }
    return code;
}

bool ProgramProcess::isRunning()
{
    return m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(0);
}

bool ProgramProcess::answer(const QString& command, QString& text)
{
    const QDeadlineTimer deadline(kStart);
    m_process.write(command.toUtf8() + '\n');
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) {
            text = u"nobody answers"_s;
            return false;
        }
    }
    const QString line = QString::fromUtf8(m_process.readLine()).chopped(1);
    const qsizetype blank = line.indexOf(u' ');
    text = blank < 0 ? QString() : windowdriver::fromOneLine(line.mid(blank + 1));
    return line.left(blank) == u"ok"_s;
}

QString ProgramProcess::ask(const QString& command)
{
    QString text;
    return answer(command, text) ? text : u"(refused: %1)"_s.arg(text);
}

bool ProgramProcess::act(const QString& command)
{
    QString text;
    if (answer(command, text)) {
        return true;
    }
    qWarning("%s: %s", qUtf8Printable(command), qUtf8Printable(text));
    return false;
}

bool ProgramProcess::actOnKeyboard(const QString& command)
{
    QString text;
    const bool done = QTest::qWaitFor([&] { return answer(command, text); }, kAtOnce);
    if (!done) {
        qWarning("%s: %s", qUtf8Printable(command), qUtf8Printable(text));
    }
    return done;
}

QString ProgramProcess::property(const QString& control, const QString& name)
{
    return ask(u"get %1 %2"_s.arg(control, name));
}

bool ProgramProcess::is(const QString& control, const QString& property)
{
    return this->property(control, property) == u"true"_s;
}

QList<QStringList> ProgramProcess::rows(const QString& grid)
{
    QList<QStringList> rows;
    for (const QString& line : ask(u"rows "_s + grid).split(u'\n')) {
        rows.append(line.split(u'\t'));
        if (rows.back().size() != kColumns) {
            qWarning("no row of a table: %s", qUtf8Printable(line));
            return {};
        }
    }
    return rows;
}

QString ProgramProcess::column(const QString& grid, int column)
{
    QStringList texts;
    for (const QStringList& row : rows(grid)) {
        texts.append(row[column]);
    }
    return texts.join(u' ');
}

bool ProgramProcess::isIdle()
{
    return text(u"KEY_EXIT"_s) == u"Exit"_s && is(u"KEY_RETRIEVE"_s, u"enabled"_s);
}

qint64 ProgramProcess::processorTime() const
{
    QFile file(u"/proc/%1/stat"_s.arg(m_process.processId()));
    if (!file.open(QIODevice::ReadOnly)) {
        return -1;
    }
    // The name of the program stands in parentheses and may hold blanks; user and system time are the twelfth and
    // thirteenth number behind it.
    const QByteArray line = file.readAll();
    const QByteArrayList numbers = line.mid(line.lastIndexOf(')') + 2).split(' ');
    return (numbers.value(11).toLongLong() + numbers.value(12).toLongLong()) * 1000 / ::sysconf(_SC_CLK_TCK);
}

QString boxOf(const QString& title, const QString& icon, const QString& buttons, const QString& text)
{
    return QStringList{title, icon, buttons, text}.join(u'\n');
}

} // namespace systemtest
