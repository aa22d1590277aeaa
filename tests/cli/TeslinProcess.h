#pragma once

#include "tests/simulator/SimulatorProcess.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// The real teslin and a simulated reader, in a folder of their own in which teslin runs. What is waited for has a
// limit.
class CliDesk final
{
public:
    static constexpr int kLimit = 60'000; // milliseconds

    struct Outcome
    {
        int exitCode = -1; // -1: did not end, or crashed
        QByteArray output;
        QByteArray errors;

        [[nodiscard]] QJsonObject json() const; // empty when the output is no JSON object
    };

    CliDesk();

    // Starts the reader; faults are rules, memory is "013=95" and so on.
    [[nodiscard]] bool startReader(const QStringList& faults = {}, const QStringList& memory = {});
    // Ends the reader and gives what it then holds, by address; empty when it did not end well.
    [[nodiscard]] QMap<QByteArray, QByteArray> endReader();
    [[nodiscard]] SimulatorProcess& reader() { return m_reader; }

    // Runs teslin to its end. The time-out is short, so that silence costs little.
    [[nodiscard]] Outcome run(const QStringList& arguments, const QByteArray& input = {}) const;
    // Starts it; the caller waits.
    void start(QProcess& process, const QStringList& arguments) const;
    [[nodiscard]] static Outcome end(QProcess& process);

    [[nodiscard]] QString path(const QString& name) const { return m_root.filePath(name); }
    [[nodiscard]] bool write(const QString& name, const QByteArray& bytes) const;
    [[nodiscard]] QByteArray content(const QString& name) const;
    // The names of the files in the folder that fit.
    [[nodiscard]] QStringList files(const QString& pattern) const;

    // What the reader was told to store, "013=95", in order.
    [[nodiscard]] QStringList writes() const;
    // How many lines it received through its port.
    [[nodiscard]] int commands() const;

private:
    QTemporaryDir m_root;
    SimulatorProcess m_reader;
};

// A table file typed from its format: FactoryDefaults.tlc or .txt.
[[nodiscard]] QByteArray golden(const char* name);

// What a reader holds at first: the factory values, set to the US layout.
[[nodiscard]] QMap<QByteArray, QByteArray> freshMemory();
