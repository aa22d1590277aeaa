#pragma once

#include <QByteArray>
#include <QDir>
#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <csignal>

// The real ksd-simulator, on a folder of DOS names of its own. What is waited for has a limit of kLimit milliseconds.
class SimulatorProcess final
{
public:
    static constexpr int kLimit = 20'000;

    struct LogLine
    {
        double milliseconds = 0.0; // since the start
        QByteArray door;
        QByteArray event;
        QByteArray detail; // without its quotation marks, escapes as they stand
    };

    struct Outcome
    {
        int exitCode = -1; // -1: did not end, or crashed
        QByteArray output;
        QByteArray errors;
    };

    // Uses, and does not make, root/dos as the folder and root/wire.log as the log.
    explicit SimulatorProcess(const QString& root);
    // The same with another folder.
    SimulatorProcess(const QString& root, const QString& folder);
    ~SimulatorProcess(); // kills what still runs

    // Starts it with further arguments and waits for its ready line; false when that does not come.
    [[nodiscard]] bool start(const QStringList& arguments = {});
    // Sends the signal, waits for the end.
    [[nodiscard]] Outcome stop(int signal = SIGTERM);
    void kill();

    // Runs it with exactly these arguments until it ends by itself.
    [[nodiscard]] static Outcome run(const QStringList& arguments);

    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    [[nodiscard]] QByteArray readyLine() const { return m_readyLine; }
    [[nodiscard]] QString folder() const { return m_folder; }
    [[nodiscard]] QString entry(const QString& name) const { return folder() + QLatin1Char('/') + name; }
    [[nodiscard]] QString logFile() const { return m_root + QStringLiteral("/wire.log"); }

    // The lines of the log so far. A line that is not of the form of the log has an empty door.
    [[nodiscard]] QList<LogLine> log() const;
    // "port recv /ver\n|port sent ...|" of those lines that are of this door and one of these events.
    [[nodiscard]] QByteArray logOf(const QByteArray& door, const QList<QByteArray>& events) const;

private:
    QString m_root;
    QString m_folder;
    QProcess m_process;
    QByteArray m_readyLine;
};
