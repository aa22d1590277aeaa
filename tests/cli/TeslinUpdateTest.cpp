#include "TeslinProcess.h"
#include "tests/support/RunnableTest.h"

#include <QJsonArray>
#include <QTest>

class TeslinUpdateTest final : public QObject
{
    Q_OBJECT

private slots:
    void writesWhatDiffersInOrderAndProvesIt()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.txt", kb()) && desk.write("w.tlc", cfg()));
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"update", "w.txt", "w.tlc"});
        QVERIFY2(outcome.exitCode == 0, outcome.errors.constData());
        QCOMPARE(outcome.output, QByteArray("6 parameters written and proven\n"));
        QCOMPARE(desk.writes(), QStringList({"013=96", "020=41", "081=00", "082=00", "0A0=77", "114=78"}));
        // A second run finds nothing to do, and proves that by reading.
        const CliDesk::Outcome again = desk.run({"update", "w.txt", "w.tlc"});
        QCOMPARE(again.exitCode, 0);
        QCOMPARE(again.output, QByteArray("The reader holds all of it already, nothing was written\n"));
        QCOMPARE(desk.writes().size(), 6);
        QCOMPARE(desk.files("teslin-backup-*").size(), 2);
        QCOMPARE(desk.endReader(), wanted());
    }

    void backupPutsBackWhatWasThere()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.txt", kb()) && desk.write("w.tlc", cfg()));
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"--json", "update", "w.tlc", "w.txt"});
        const QStringList words = outcome.json()["restore"].toString().split(' ');
        QCOMPARE(words.mid(0, 2), QStringList({"teslin", "update"}));
        QCOMPARE(words.size(), 4);
        QCOMPARE(desk.content(words[2]).count('\n'), 28);
        QCOMPARE(desk.run(words.mid(1)).exitCode, 0);
        QCOMPARE(desk.endReader(), freshMemory());
    }

    void allWritesEveryParameterButTheReadOnlyOne()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.txt", kb()) && desk.write("w.tlc", cfg()));
        QVERIFY(desk.startReader());
        QCOMPARE(desk.run({"update", "--all", "w.tlc", "w.txt"}).exitCode, 0);
        QStringList written = desk.writes();
        QCOMPARE(written.size(), 175);
        QVERIFY(!written.contains("001=00"));
        QStringList sorted = written;
        sorted.sort();
        QCOMPARE(written, sorted);
        QCOMPARE(desk.endReader(), wanted());
    }

    void dryRunWritesNeitherReaderNorFile()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.tlc", cfg()));
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"update", "--dry-run", "w.tlc"});
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(outcome.output, QByteArray("013: 95 would become 96\n020: 00 would become 41\n"
                                            "2 parameters would be written\n"));
        QCOMPARE(desk.files("teslin-backup-*"), QStringList());
        QCOMPARE(desk.endReader(), freshMemory());
    }

    void backups()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.tlc", cfg()));
        QVERIFY(desk.startReader());
        QCOMPARE(desk.run({"update", "--no-backup", "w.tlc"}).exitCode, 0);
        QCOMPARE(desk.files("teslin-backup-*"), QStringList());
        // Where none can be kept nothing is written.
        QCOMPARE(desk.run({"set", "013=95"}).exitCode, 0);
        const CliDesk::Outcome outcome = desk.run({"update", "--backup-dir", "no/such", "w.tlc"});
        QCOMPARE(outcome.exitCode, 5);
        QCOMPARE(desk.writes(), QStringList({"013=96", "020=41", "013=95"}));
    }

    void doubtfulFilesAreRefusedBeforeTheReaderIsAsked_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("cut short") << cfg().left(200);
        QTest::newRow("rubbish in a line") << cfg().replace("01A,12 ;", "01A;12 ;");
        QTest::newRow("one digit") << cfg().replace("01A,12 ;", "01A,1 ;");
        QTest::newRow("no such parameter") << cfg().replace("01A,12 ;", "02B,12 ;");
        QTest::newRow("twice") << cfg() + "013,95 ;\r\n";
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("a comment alone") << QByteArray("Comments,\r\n");
        QTest::newRow("binary") << QByteArray("\x7F"
                                              "ELF\x02\x01\x01\0\0\0",
                                              10);
    }
    void doubtfulFilesAreRefusedBeforeTheReaderIsAsked()
    {
        QFETCH(QByteArray, bytes);
        CliDesk desk;
        QVERIFY(desk.write("w.tlc", bytes));
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"update", "w.tlc"});
        QCOMPARE(outcome.exitCode, 5);
        QVERIFY(outcome.errors.contains("w.tlc"));
        QCOMPARE(desk.commands(), 0);
    }

    void missingFileAndContradictingFiles()
    {
        CliDesk desk;
        QVERIFY(desk.write("a.tlc", cfg()) && desk.write("b.tlc", golden("FactoryDefaults.tlc")));
        QVERIFY(desk.startReader());
        QCOMPARE(desk.run({"update", "nowhere.tlc"}).exitCode, 5);
        const CliDesk::Outcome outcome = desk.run({"update", "a.tlc", "b.tlc"});
        QCOMPARE(outcome.exitCode, 5);
        QVERIFY2(outcome.errors.contains("013 is 96 in a.tlc and 95 in b.tlc"), outcome.errors.constData());
        QCOMPARE(desk.commands(), 0);
    }

    void lenientTellsWhatItLeavesOut()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.tlc", "Comments,\r\n013,96 ;\r\nrubbish\r\n02B,11 ;\r\n020,4g ;\r\n01A,1f ;\r\n"));
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"update", "--lenient", "w.tlc"});
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.errors.count("Left out: w.tlc, line "), 3);
        QCOMPARE(outcome.errors.count("Read all the same: w.tlc, line 6"), 1);
        QCOMPARE(desk.writes(), QStringList({"013=96", "01A=1F"}));
    }

    // Whenever it is cut off, it can be run again and ends well.
    void interruptedAndRunAgain_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("SIGINT") << SIGINT << 130;
        QTest::newRow("SIGTERM") << SIGTERM << 130;
        QTest::newRow("SIGHUP") << SIGHUP << 130;
        QTest::newRow("SIGKILL") << SIGKILL << -1;
    }
    void interruptedAndRunAgain()
    {
        QFETCH(int, signal);
        QFETCH(int, exitCode);
        CliDesk desk;
        QVERIFY(desk.write("w.txt", kb()) && desk.write("w.tlc", cfg()));
        QVERIFY(desk.startReader({"/rawsend *: delay=40"}));
        QProcess process;
        desk.start(process, {"--json", "update", "--all", "w.tlc", "w.txt"});
        QTRY_VERIFY_WITH_TIMEOUT(desk.writes().size() > 3, CliDesk::kLimit);
        ::kill(static_cast<pid_t>(process.processId()), signal);
        const CliDesk::Outcome outcome = CliDesk::end(process);
        QCOMPARE(outcome.exitCode, exitCode);
        if (exitCode == 130) {
            const QJsonArray parameters = outcome.json()["parameters"].toArray();
            QCOMPARE(parameters.size(), 175);
            QCOMPARE(parameters[0].toObject()["state"].toString(), QString("proven"));
            QCOMPARE(parameters[174].toObject()["state"].toString(), QString("not-written"));
        }
        QCOMPARE(desk.run({"update", "w.tlc", "w.txt"}).exitCode, 0);
        QCOMPARE(desk.endReader(), wanted());
    }

    void failureListsAddressesAndTheWayBack()
    {
        CliDesk desk;
        QVERIFY(desk.write("w.txt", kb()) && desk.write("w.tlc", cfg()));
        QVERIFY(desk.startReader({"/rawxact WPV020: value=11 on=2-", "/rawxact WPV0A0: silent on=2-"}));
        const CliDesk::Outcome outcome = desk.run({"update", "w.tlc", "w.txt"});
        QCOMPARE(outcome.exitCode, 4);
        QVERIFY2(outcome.errors.contains("\n020: wanted 41, found 11\n"
                                         "0A0: wanted 77, found unknown (sent, not read back)\n"
                                         "114: wanted 78, not written, still 2C\n"
                                         "3 of 6 parameters written and proven\n"
                                         "This puts back what the reader held before:\n"
                                         "    teslin update teslin-backup-"),
                 outcome.errors.constData());
        QVERIFY(!outcome.output.contains("proven"));
    }

private:
    static QByteArray cfg()
    {
        return golden("FactoryDefaults.tlc").replace("013,95", "013,96").replace("020,00", "020,41");
    }
    static QByteArray kb()
    {
        return golden("FactoryDefaults.txt").replace("09F,80,09", "09F,80,77").replace("113,00,2C", "113,00,78");
    }
    static QMap<QByteArray, QByteArray> wanted()
    {
        auto memory = freshMemory();
        memory["013"] = "96";
        memory["020"] = "41";
        memory["081"] = "00";
        memory["082"] = "00";
        memory["0A0"] = "77";
        memory["114"] = "78";
        return memory;
    }
};

static const testsupport::RunnableTest<TeslinUpdateTest> kRunnable;
#include "TeslinUpdateTest.moc"
