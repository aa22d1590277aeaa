#include "TeslinProcess.h"
#include "tests/simulator/FolderTree.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SourceFile.h"

#include <QJsonArray>
#include <QTest>

namespace {

// Waits for words of a running program on one of its two channels.
bool waitFor(QProcess& process, const QByteArray& words, QByteArray& said)
{
    while (!said.contains(words)) {
        if (!process.waitForReadyRead(CliDesk::kLimit)) {
            return false;
        }
        said += process.readAll();
    }
    return true;
}

// The commands of a section of a document, as its reader would type them.
QList<QStringList> commandsOf(const char* document, const QByteArray& section)
{
    const QByteArray text = contentOf(testsupport::sourceFile(QLatin1String(document)));
    const qsizetype from = text.indexOf("\n## " + section + "\n");
    const QByteArray part = text.mid(from, text.indexOf("\n## ", from + 1) - from);
    QList<QStringList> commands;
    for (const QByteArray& line : part.split('\n')) {
        if (from >= 0 && line.startsWith("    teslin ")) {
            commands << QString::fromLatin1(line.split('#').front()).simplified().split(' ').mid(1);
        }
    }
    return commands;
}

} // namespace

class TeslinBatchTest final : public QObject
{
    Q_OBJECT

private slots:
    // Three readers one after the other, the second one sick.
    void threeReadersOneOfThemSick()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.tlc", cfg()));
        QVERIFY(desk.startReader());
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        desk.start(process, {"--timeout", "100", "batch", "--log", "batch.log", "w.tlc"});
        QByteArray said;
        QVERIFY2(waitFor(process, "press Enter", said), said.constData());
        QCOMPARE(desk.endReader(), wanted());
        QVERIFY(desk.startReader({"/rawxact WPV020: silent on=2-"}));
        process.write("\n");
        said.clear();
        QVERIFY2(waitFor(process, "press Enter", said), said.constData());
        auto half = wanted();
        QCOMPARE(desk.endReader(), half);
        QVERIFY(desk.startReader({}, {"013=96"}));
        process.write("\n");
        said.clear();
        QVERIFY2(waitFor(process, "press Enter", said), said.constData());
        process.write("q\n");
        const CliDesk::Outcome outcome = CliDesk::end(process);
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY(outcome.output.contains("2 of 3 readers proven"));
        QCOMPARE(desk.endReader(), wanted());

        const QList<QByteArray> log = desk.content("batch.log").split('\n');
        QCOMPARE(log.size(), 4); // and the end of the last line
        QVERIFY2(log[0].contains(" reader 1: proven, 2 written, 24 were right already, backup "), log[0].constData());
        QVERIFY2(log[1].contains(" reader 2: FAILED, 1 of 2 written and proven, No reply to /rawxact WPV020"),
                 log[1].constData());
        QVERIFY2(log[2].contains(" reader 3: proven, 1 written, 25 were right already, backup "), log[2].constData());
        QCOMPARE(desk.files("teslin-backup-*").size(), 3);
    }

    // The example of the document, with the readers of its log: the first one needs two parameters, the second one
    // falls silent.
    void theExampleOfTheDocument()
    {
        const QList<QStringList> commands = commandsOf("docs/command-line.md", "Setting up many readers");
        QCOMPARE(commands.size(), 2);
        QVERIFY(commands[0].contains("retrieve") && commands[1].contains("batch"));
        CliDesk desk;
        QVERIFY(desk.startReader({}, {"013=96", "020=41"}));
        QCOMPARE(desk.run(commands[0]).exitCode, 0);
        auto right = desk.endReader();
        QCOMPARE(right["020"], QByteArray("41"));

        QVERIFY(desk.startReader());
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        desk.start(process, commands[1]);
        QByteArray said;
        QVERIFY2(waitFor(process, "press Enter", said), said.constData());
        QCOMPARE(desk.endReader(), right);
        QVERIFY(desk.startReader({"/rawxact WPV020: silent on=2-"}));
        process.write("\n");
        said.clear();
        QVERIFY2(waitFor(process, "press Enter", said), said.constData());
        QCOMPARE(desk.endReader(), right); // written, but not proven
        QVERIFY(desk.startReader());
        process.write("\n");
        said.clear();
        QVERIFY2(waitFor(process, "press Enter", said), said.constData());
        process.write("q\n");
        QCOMPARE(CliDesk::end(process).exitCode, 1);
        QCOMPARE(desk.endReader(), right);

        // As the document shows it, but for date, time and number.
        const QByteArrayList log = desk.content("readers.log").split('\n');
        QCOMPARE(log.size(), 4);
        const QByteArray document = contentOf(testsupport::sourceFile("docs/command-line.md"));
        const QByteArray proven = ": proven, 2 written, 173 were right already, backup teslin-backup-";
        const QByteArray failed = ": FAILED, 1 of 2 written and proven, No reply to /rawxact WPV020, asked three times";
        QVERIFY(document.contains(" reader 1" + proven) && document.contains(" reader 2" + failed));
        QVERIFY2(log[0].contains(" reader 1" + proven), log[0].constData());
        QVERIFY2(log[1].contains(" reader 2" + failed), log[1].constData());
        QVERIFY2(log[2].contains(" reader 3" + proven), log[2].constData());
    }

    void waitsForTheFirstReader()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.tlc", cfg()));
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        desk.start(process, {"batch", "--count", "1", "w.tlc"});
        QByteArray said;
        QVERIFY2(waitFor(process, "Waiting for reader 1", said), said.constData());
        QVERIFY(desk.startReader());
        QCOMPARE(CliDesk::end(process).exitCode, 0);
        QCOMPARE(desk.endReader(), wanted());
    }

    void endOfInputEndsIt()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.tlc", cfg()));
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"--json", "batch", "w.tlc"}, "\n");
        QCOMPARE(outcome.exitCode, 0);
        const QJsonArray readers = outcome.json()["readers"].toArray();
        QCOMPARE(readers.size(), 2);
        QCOMPARE(readers[0].toObject()["parameters"].toArray().size(), 2);
        QCOMPARE(readers[1].toObject()["already_right"].toInt(), 26);
    }

    void interruptedWhileItWaits()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.tlc", cfg()));
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        desk.start(process, {"batch", "w.tlc"});
        QByteArray said;
        QVERIFY2(waitFor(process, "Waiting for reader 1", said), said.constData());
        process.terminate();
        QCOMPARE(CliDesk::end(process).exitCode, 130);
    }

    void doubtfulFilesAndLogsEndItAtOnce()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.tlc", cfg()) && desk.write("bad.tlc", "x"));
        QVERIFY(desk.startReader());
        QCOMPARE(desk.run({"batch", "bad.tlc"}).exitCode, 5);
        QCOMPARE(desk.run({"batch", "--log", "no/such/log", "w.tlc"}).exitCode, 5);
        QCOMPARE(desk.commands(), 0);
    }

    void dryRun()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.tlc", cfg()));
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"--dry-run", "batch", "--count", "1", "w.tlc"});
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(outcome.output, QByteArray("reader 1: 2 would be written\n"));
        QCOMPARE(desk.endReader(), freshMemory());
    }

private:
    static QByteArray cfg()
    {
        return golden("FactoryDefaults.tlc").replace("013,95", "013,96").replace("020,00", "020,41");
    }
    static QMap<QByteArray, QByteArray> wanted()
    {
        auto memory = freshMemory();
        memory["013"] = "96";
        memory["020"] = "41";
        return memory;
    }
};

static const testsupport::RunnableTest<TeslinBatchTest> kRunnable;
#include "TeslinBatchTest.moc"
