#include "TeslinProcess.h"

#include "tests/simulator/FolderTree.h"

#include "simulator/ParameterMemory.h"
#include "tests/support/SourceFile.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcessEnvironment>

namespace {

QMap<QByteArray, QByteArray> memoryFrom(const QByteArray& text)
{
    QMap<QByteArray, QByteArray> memory;
    for (const QByteArray& line : text.split('\n')) {
        const QList<QByteArray> halves = line.split('=');
        if (halves.size() == 2) {
            memory[halves[0]] = halves[1];
        }
    }
    return memory;
}

} // namespace

QJsonObject CliDesk::Outcome::json() const
{
    return QJsonDocument::fromJson(output).object();
}

CliDesk::CliDesk()
    : m_reader(m_root.path())
{}

bool CliDesk::startReader(const QStringList& faults, const QStringList& memory)
{
    QStringList arguments = {QStringLiteral("--save-memory"), path(QStringLiteral("saved.memory"))};
    for (const QString& fault : faults) {
        arguments << QStringLiteral("--fault") << fault;
    }
    if (!memory.isEmpty()) {
        if (!write(QStringLiteral("start.memory"), memory.join(QLatin1Char('\n')).toLatin1() + '\n')) {
            return false;
        }
        arguments << QStringLiteral("--memory") << path(QStringLiteral("start.memory"));
    }
    return m_reader.start(arguments);
}

QMap<QByteArray, QByteArray> CliDesk::endReader()
{
    return m_reader.stop().exitCode == 0 ? memoryFrom(content(QStringLiteral("saved.memory")))
                                         : QMap<QByteArray, QByteArray>();
}

void CliDesk::start(QProcess& process, const QStringList& arguments) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TESLIN_DOSDEVICES"), m_reader.folder());
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_root.path());
    process.start(QStringLiteral(TESLIN), arguments);
}

CliDesk::Outcome CliDesk::run(const QStringList& arguments, const QByteArray& input) const
{
    QProcess process;
    start(process, QStringList{QStringLiteral("--timeout"), QStringLiteral("200")} + arguments);
    process.write(input);
    process.closeWriteChannel();
    return end(process);
}

CliDesk::Outcome CliDesk::end(QProcess& process)
{
    const bool ended = process.waitForFinished(kLimit);
    const bool clean = ended && process.exitStatus() == QProcess::NormalExit;
    return {clean ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
}

bool CliDesk::write(const QString& name, const QByteArray& bytes) const
{
    return makeFile(path(name), bytes);
}

QByteArray CliDesk::content(const QString& name) const
{
    return contentOf(path(name));
}

QStringList CliDesk::files(const QString& pattern) const
{
    return QDir(m_root.path()).entryList({pattern}, QDir::Files | QDir::Hidden, QDir::Name);
}

QStringList CliDesk::writes() const
{
    QStringList settings;
    for (const SimulatorProcess::LogLine& line : m_reader.log()) {
        const qsizetype at = line.detail.indexOf("WPW");
        if (line.event == "recv" && at >= 0) {
            settings << QString::fromLatin1(line.detail.mid(at + 3, 6));
        }
    }
    return settings;
}

int CliDesk::commands() const
{
    int count = 0;
    for (const SimulatorProcess::LogLine& line : m_reader.log()) {
        count += line.door == "port" && line.event == "recv" ? 1 : 0;
    }
    return count;
}

QByteArray golden(const char* name)
{
    return contentOf(testsupport::sourceFile(QStringLiteral("tests/files/golden/") + QLatin1String(name)));
}

QMap<QByteArray, QByteArray> freshMemory()
{
    return memoryFrom(QByteArray::fromStdString(simulator::ParameterMemory().text()));
}
