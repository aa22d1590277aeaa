#include "SimulatorProcess.h"

#include <QFile>
#include <QRegularExpression>

#include <sys/resource.h>

namespace {

constexpr int kAtOnce = -10; // of the priorities from -20, the first, to 19

SimulatorProcess::Outcome outcomeOf(QProcess& process)
{
    const bool ended = process.waitForFinished(SimulatorProcess::kLimit);
    const bool clean = ended && process.exitStatus() == QProcess::NormalExit;
    return {clean ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
}

} // namespace

SimulatorProcess::SimulatorProcess(const QString& root)
    : SimulatorProcess(root, root + QStringLiteral("/dos"))
{}

SimulatorProcess::SimulatorProcess(const QString& root, const QString& folder)
    : m_root(root)
    , m_folder(folder)
{}

SimulatorProcess::~SimulatorProcess()
{
    kill();
}

bool SimulatorProcess::start(const QStringList& arguments)
{
    const QStringList own = {QStringLiteral("--dosdevices"), folder(), QStringLiteral("--log"), logFile()};
    // A reader answers at once, whatever else the machine does. Only root may ask for it; others do without.
    m_process.setChildProcessModifier([] { ::setpriority(PRIO_PROCESS, 0, kAtOnce); });
    m_process.start(QStringLiteral(KSD_SIMULATOR), own + arguments);
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(kLimit)) {
            return false;
        }
    }
    m_readyLine = m_process.readLine();
    return m_readyLine.startsWith("ready: ");
}

SimulatorProcess::Outcome SimulatorProcess::stop(int signal)
{
    ::kill(static_cast<pid_t>(m_process.processId()), signal);
    return outcomeOf(m_process);
}

void SimulatorProcess::kill()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(kLimit);
    }
}

SimulatorProcess::Outcome SimulatorProcess::run(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(KSD_SIMULATOR), arguments);
    return outcomeOf(process);
}

QList<SimulatorProcess::LogLine> SimulatorProcess::log() const
{
    static const QRegularExpression form(QStringLiteral(
        R"re(^(\d+\.\d{3}) \d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z (port|device|-) ([a-z-]+)(?: "([ -~]*)")?$)re"));
    QFile file(logFile());
    QList<LogLine> lines;
    if (!file.open(QIODevice::ReadOnly)) {
        return lines;
    }
    for (QByteArray line = file.readLine(); line.endsWith('\n'); line = file.readLine()) {
        const QRegularExpressionMatch match = form.match(QString::fromLatin1(line.chopped(1)));
        lines.append({match.captured(1).toDouble(), match.captured(2).toLatin1(), match.captured(3).toLatin1(),
                      match.captured(4).toLatin1()});
    }
    return lines;
}

QByteArray SimulatorProcess::logOf(const QByteArray& door, const QList<QByteArray>& events) const
{
    QByteArray text;
    for (const LogLine& line : log()) {
        if (line.door == door && events.contains(line.event)) {
            text += line.event + (line.detail.isEmpty() ? QByteArray() : ' ' + line.detail) + '|';
        }
    }
    return text;
}
