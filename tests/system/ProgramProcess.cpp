#include "tests/system/ProgramProcess.h"

#include "tests/system/Limits.h"
#include "tests/system/driver/LineText.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace systemtest {

namespace {

constexpr int kColumns = 4;

QProcessEnvironment environment(const QString& folder, const QString& names)
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    const auto set = [&variables](const char* name, const QString& value) {
        variables.insert(QString::fromLatin1(name), value);
    };
    set("TESLIN_DOSDEVICES", names);
    set("QT_QPA_PLATFORM", u"offscreen"_s);
    set("QT_QPA_GENERIC_PLUGINS", u"windowdriver"_s);
    set("QT_PLUGIN_PATH", QStringLiteral(TESLIN_PLUGINS));
    // Nothing of the user's own comes in, and nothing of the test goes there.
    for (const char* const home : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        set(home, folder);
    }
    return variables;
}

} // namespace

ProgramProcess::ProgramProcess(QString folder, QString names)
    : m_folder(std::move(folder))
    , m_names(std::move(names))
{
    // A test that is itself killed leaves nothing behind.
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
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

QString ProgramProcess::executable() const
{
    return m_folder + u'/' + QFileInfo(builtExecutable()).fileName();
}

QString ProgramProcess::settingsFile() const
{
    return m_folder + u'/' + QFileInfo(executable()).completeBaseName() + u".INI"_s;
}

bool ProgramProcess::start(const Setup& setup)
{
    if (!QFile::exists(executable()) && !QFile::copy(builtExecutable(), executable())) {
        return false;
    }
    if (!setup.settings.isEmpty()) {
        QFile file(settingsFile());
        if (!file.open(QIODevice::WriteOnly) || file.write(setup.settings) != setup.settings.size()) {
            return false;
        }
    }
    const QStringList command = setup.launcher + QStringList(executable()) + setup.arguments;
    m_process.setProcessEnvironment(environment(m_folder, m_names));
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
