#include "TeslinProcess.h"
#include "tests/support/RunnableTest.h"

#include <QJsonArray>
#include <QTest>

class TeslinRetrieveTest final : public QObject
{
    Q_OBJECT

private slots:
    void printsWithoutAFile()
    {
        CliDesk desk;
        QVERIFY(desk.startReader({}, {"01A=20", "081=00"}));
        const CliDesk::Outcome outcome = desk.run({"retrieve"});
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.output.count('\n'), 27 + 75);
        QVERIFY(outcome.output.startsWith("001  00  Parameter ID and Mod Flag (Read only)\n013  95  "));
        QVERIFY(outcome.output.contains("\n01A  20  Char Output Delay"));
        QVERIFY(outcome.output.contains("\n083-084  20-03  00\n"));
        QCOMPARE(desk.commands(), 176);
        QCOMPARE(desk.run({"--table", "kb", "retrieve"}).output.count('\n'), 75);
        QCOMPARE(desk.commands(), 176 + 149);
    }

    void everyParameterAtItsPlace()
    {
        QStringList memory;
        int value = 1;
        for (const QByteArray& address : freshMemory().keys()) {
            memory << QString::fromLatin1(address) +
                          QStringLiteral("=%1").arg(value++ % 256, 2, 16, QLatin1Char('0')).toUpper();
        }
        CliDesk desk;
        QVERIFY(desk.startReader({}, memory));
        QMap<QByteArray, QByteArray> held;
        for (const QString& setting : memory) {
            held[setting.left(3).toLatin1()] = setting.right(2).toLatin1();
        }
        QCOMPARE(desk.run({"retrieve", "-o", "a.tlc", "-o", "b.txt"}).exitCode, 0);
        QMap<QByteArray, QByteArray> read;
        for (const QByteArray& line : (desk.content("a.tlc") + desk.content("b.txt")).split('\n')) {
            const QList<QByteArray> fields = line.left(line.indexOf(" ;")).split(',');
            if (fields.size() > 1 && fields[0] != "Comments") {
                read[fields[0]] = fields[1];
            }
            if (fields.size() > 2) {
                const int next = fields[0].toInt(nullptr, 16) + 1;
                read[QByteArray::number(next, 16).toUpper().rightJustified(3, '0')] = fields[2];
            }
        }
        QCOMPARE(read, held);
        // The same files again say that nothing differs.
        QCOMPARE(desk.run({"verify", "a.tlc", "b.txt"}).exitCode, 0);
    }

    void filesAreThoseOfTheWindow()
    {
        CliDesk desk;
        QVERIFY(desk.startReader({}, {"081=00", "082=00"}));
        QCOMPARE(desk.run({"retrieve", "-o", "a.tlc"}).exitCode, 0);
        QCOMPARE(desk.run({"--table", "kb", "retrieve", "-o", "anything"}).exitCode, 0);
        QCOMPARE(desk.content("a.tlc"), golden("FactoryDefaults.tlc"));
        QCOMPARE(desk.content("anything"), golden("FactoryDefaults.txt"));
    }

    void aFileNeedsATable()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        QCOMPARE(desk.run({"retrieve", "-o", "held"}).exitCode, 2);
        QCOMPARE(desk.commands(), 0);
        QCOMPARE(desk.files("held*"), QStringList());
    }

    void aFileThatCannotBeWritten()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"--json", "retrieve", "-o", "no/such/folder.tlc"});
        QCOMPARE(outcome.exitCode, 5);
        QCOMPARE(outcome.json()["error"].toObject()["kind"].toString(), QString("file"));
    }

    void dryRunWritesNoFile()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        QCOMPARE(desk.run({"--dry-run", "retrieve", "-o", "a.tlc"}).exitCode, 0);
        QCOMPARE(desk.files("a*"), QStringList());
    }

    void anOldFileStaysWhenTheReaderFails()
    {
        CliDesk desk;
        QVERIFY(desk.write("a.tlc", "old"));
        QVERIFY(desk.startReader({"/rawxact WPV02D: silent"}));
        QCOMPARE(desk.run({"retrieve", "-o", "a.tlc"}).exitCode, 4);
        QCOMPARE(desk.content("a.tlc"), QByteArray("old"));
    }

    void json()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        const QJsonArray parameters = desk.run({"--json", "retrieve"}).json()["parameters"].toArray();
        QCOMPARE(parameters.size(), 176);
        QCOMPARE(parameters[1].toObject()["address"].toString(), QString("013"));
        QCOMPARE(parameters[1].toObject()["value"].toString(), QString("95"));
    }

    void interrupted()
    {
        CliDesk desk;
        QVERIFY(desk.startReader({"/rawxact WPV*: delay=20"}));
        QProcess process;
        desk.start(process, {"retrieve", "-o", "a.tlc"});
        QTRY_VERIFY_WITH_TIMEOUT(desk.commands() > 5, CliDesk::kLimit);
        ::kill(static_cast<pid_t>(process.processId()), SIGINT);
        QCOMPARE(CliDesk::end(process).exitCode, 130);
        QCOMPARE(desk.files("a*"), QStringList());
    }

    void progressOnlyOnATerminalOrWhenAskedFor()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        QVERIFY(!desk.run({"retrieve", "-o", "a.tlc"}).errors.contains('['));
        const QByteArray bar = desk.run({"--progress", "always", "retrieve", "-o", "a.tlc"}).errors;
        QVERIFY2(bar.contains("] 26/27"), bar.constData());
        QVERIFY(!desk.run({"--progress", "never", "retrieve", "-o", "a.tlc"}).errors.contains('['));
        QCOMPARE(desk.run({"--quiet", "retrieve", "-o", "a.tlc"}).errors, QByteArray());
    }
};

static const testsupport::RunnableTest<TeslinRetrieveTest> kRunnable;
#include "TeslinRetrieveTest.moc"
