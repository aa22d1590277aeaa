#include "tests/system/SystemFixture.h"

#include "tests/system/Limits.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace systemtest {

namespace {

bool writeFile(const QString& name, const QByteArray& content)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

// The folder of a simulated reader or of a program, made.
QString madeFolder(const QTemporaryDir& parent, const char* name)
{
    const QString path = parent.filePath(QString::fromLatin1(name));
    if (!QDir().mkpath(path)) {
        qFatal("cannot make %s", qUtf8Printable(path));
    }
    return path;
}

} // namespace

SystemFixture::SystemFixture()
    : m_machine(m_folder.path())
    , m_reader(madeFolder(m_folder, "reader"), m_machine.names())
    , m_program(madeFolder(m_folder, "program"), m_machine)
{}

QString SystemFixture::path(const char* name) const
{
    return m_folder.filePath(QString::fromLatin1(name));
}

bool SystemFixture::start(const QByteArray& memory, const QStringList& faults, const ProgramProcess::Setup& setup)
{
    return startReader(memory, faults) && startProgram(setup) && waitForWindow();
}

bool SystemFixture::startReader(const QByteArray& memory, const QStringList& faults)
{
    if (!m_machine.setUp()) {
        return false;
    }
    QStringList options = {u"--save-memory"_s, path("memory-at-end")};
    if (!memory.isEmpty()) {
        if (!writeFile(path("memory"), memory)) {
            return false;
        }
        options << u"--memory"_s << path("memory");
    }
    for (const QString& rule : faults) {
        options << u"--fault"_s << rule;
    }
    return m_reader.start(options);
}

void SystemFixture::unplugReader()
{
    m_reader.kill();
    QFile::remove(m_reader.entry(u"com5"_s));
    QFile::remove(m_reader.entry(u"teslin"_s));
}

bool SystemFixture::waitForWindow()
{
    return QTest::qWaitFor([this] { return m_program.is(u"frmMain"_s, u"visible"_s); }, kStart);
}

bool SystemFixture::openToEverybody()
{
    using Permissions = QFileDevice::Permissions;
    constexpr Permissions everything(0x7777);
    return QFile::setPermissions(m_folder.path(), everything) && QFile::setPermissions(path("reader"), everything) &&
           QFile::setPermissions(path("program"), everything);
}

QList<SimulatorProcess::LogLine> SystemFixture::logOfPort() const
{
    QList<SimulatorProcess::LogLine> lines;
    for (const SimulatorProcess::LogLine& line : m_reader.log()) {
        if (line.event == "start") {
            lines.clear(); // of an earlier reader
        } else if (line.door == "port") {
            lines.append(line);
        }
    }
    return lines;
}

QByteArrayList SystemFixture::commands() const
{
    static const QByteArrayList kHarmless = {"sent", "open", "close", "fault"};
    QByteArrayList commands;
    for (const SimulatorProcess::LogLine& line : logOfPort()) {
        if (line.event == "recv") {
            commands.append(line.detail);
        } else if (!kHarmless.contains(line.event)) {
            commands.append('(' + line.event + ' ' + line.detail + ')');
        }
    }
    return commands;
}

bool SystemFixture::isPortOpen() const
{
    int clients = 0;
    for (const SimulatorProcess::LogLine& line : logOfPort()) {
        clients += line.event == "open" ? 1 : line.event == "close" ? -1 : 0;
        clients = line.event == "hang-up" ? 0 : clients; // their line is gone, and nobody hears of its end
    }
    return clients > 0;
}

QByteArray SystemFixture::memoryAtEnd()
{
    if (m_reader.stop().exitCode != 0) {
        return "(the reader did not end cleanly)";
    }
    QFile file(path("memory-at-end"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no memory was saved)");
}

} // namespace systemtest
