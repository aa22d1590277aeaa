#include "tests/system/Machine.h"

#include "tests/system/Limits.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <utility>

using namespace Qt::StringLiterals;

namespace systemtest {

namespace {

QString programs()
{
    return qEnvironmentVariable("TESLIN_WINDOWS_PROGRAMS");
}

QString wineTool(const QString& name)
{
    const QString found = QStandardPaths::findExecutable(name + u"64"_s);
    return found.isEmpty() ? u"/usr/lib/wine/"_s + name + u"64"_s : found;
}

bool run(const QString& tool, const QStringList& arguments, const QProcessEnvironment& environment = {})
{
    QProcess process;
    process.setProcessEnvironment(environment);
    // Neither input nor output, which servers that stay behind would hold on to.
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(tool, arguments);
    return process.waitForFinished(kStart) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

} // namespace

Machine::Machine(QString folder)
    : m_folder(std::move(folder))
{}

Machine::~Machine()
{
    if (isWindows() && QFile::exists(prefix())) {
        static_cast<void>(run(wineTool(u"wineserver"_s), {u"-k"_s}, environment()));
        static_cast<void>(run(wineTool(u"wineserver"_s), {u"-w"_s}, environment()));
    }
    m_screen.kill();
    m_screen.waitForFinished(kStart);
}

bool Machine::isWindows()
{
    return !programs().isEmpty();
}

bool Machine::setUp()
{
    if (!isWindows() || QFile::exists(prefix())) {
        return true;
    }
    return run(QStringLiteral(TESLIN_SCRIPTS "/wine-prefix"),
               {prefix(), u"like"_s, qEnvironmentVariable("TESLIN_WINDOWS_LIKE")},
               QProcessEnvironment::systemEnvironment());
}

bool Machine::startScreen()
{
    m_screen.setStandardErrorFile(QProcess::nullDevice());
    m_screen.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1280x1024x24"_s, u"-nolisten"_s,
                               u"tcp"_s, u"-noreset"_s});
    while (!m_screen.canReadLine()) {
        if (!m_screen.waitForReadyRead(kStart)) {
            return false;
        }
    }
    m_display = u':' + QString::fromLatin1(m_screen.readLine()).trimmed();
    return true;
}

QString Machine::names() const
{
    return isWindows() ? prefix() + u"/dosdevices"_s : m_folder + u"/dos"_s;
}

QString Machine::driverFile() const
{
    return names() + (isWindows() ? u"/c:/windows"_s : u"/c:/Windows"_s) + u"/system32/drivers/Teslin.sys"_s;
}

QString Machine::install(const QString& folder) const
{
    const QString name =
        isWindows() ? u"TeslinConfigure.exe"_s : QFileInfo(QStringLiteral(TESLIN_CONFIGURE)).fileName();
    const QString executable = folder + u'/' + name;
    if (QFile::exists(executable)) {
        return executable;
    }
    // The one for Windows is large and is made for tests; a link will do.
    const bool done = isWindows() ? QFile::link(programs() + u"/DrivenTeslinConfigure.exe"_s, executable)
                                  : QFile::copy(QStringLiteral(TESLIN_CONFIGURE), executable);
    return done ? executable : QString();
}

QStringList Machine::command(const QString& executable, const QStringList& arguments)
{
    const QStringList own = QStringList(executable) + arguments;
    return isWindows() ? QStringList(wineTool(u"wine"_s)) + own : own;
}

QProcessEnvironment Machine::environment() const
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    const auto set = [&variables](const char* name, const QString& value) {
        variables.insert(QString::fromLatin1(name), value);
    };
    if (isWindows()) {
        if (m_display.isEmpty()) {
            variables.remove(u"DISPLAY"_s);
        } else {
            set("DISPLAY", m_display);
        }
        set("WINEPREFIX", prefix());
        set("WINEDEBUG", u"-all"_s);
        set("WINEDLLOVERRIDES", u"mscoree,mshtml,winemenubuilder.exe="_s);
        // Wine keeps the variables of the native Qt from its programs; with its own name in front they pass.
        set("WINEQT_QPA_PLATFORM", m_display.isEmpty() ? u"offscreen"_s : u"windows"_s);
        set("WINEQT_QPA_GENERIC_PLUGINS", u"windowdriver"_s);
        set("WINEQT_QPA_FONTDIR", u"/usr/share/fonts/truetype/dejavu"_s);
    } else {
        set("TESLIN_DOSDEVICES", names());
        set("QT_QPA_PLATFORM", u"offscreen"_s);
        set("QT_QPA_GENERIC_PLUGINS", u"windowdriver"_s);
        set("QT_PLUGIN_PATH", QStringLiteral(TESLIN_PLUGINS));
    }
    return variables;
}

QString Machine::nameOf(const QString& file)
{
    return isWindows() ? u"Z:"_s + QString(file).replace(u'/', u'\\') : file;
}

QString Machine::noSuchFile()
{
    return isWindows() ? u"File not found"_s : u"No such file or directory"_s;
}

QByteArray Machine::askTool(const QStringList& arguments) const
{
    // Through a file: servers that stay behind would hold a pipe open.
    const QString output = m_folder + u"/tool-output"_s;
    QProcess process;
    process.setProcessEnvironment(environment());
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(output);
    process.setStandardErrorFile(QProcess::nullDevice());
    const QStringList line = command(programs() + u"/WindowsTool.exe"_s, arguments);
    process.start(line.front(), line.mid(1));
    QFile file(output);
    if (!process.waitForFinished(kStart) || process.exitCode() != 0 || !file.open(QIODevice::ReadOnly)) {
        return "(failed)";
    }
    return file.readAll();
}

} // namespace systemtest
