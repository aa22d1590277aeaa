#include "TeslinProcess.h"
#include "tests/support/RunnableTest.h"

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
