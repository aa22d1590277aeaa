#include "TeslinProcess.h"
#include "tests/support/RunnableTest.h"

#include <QJsonArray>
#include <QTest>

class TeslinCompareTest final : public QObject
{
    Q_OBJECT

private slots:
    void verifyEqual()
    {
        CliDesk desk;
        QVERIFY(desk.write("f.tlc", golden("FactoryDefaults.tlc")));
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"verify", "f.tlc"});
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.output, QByteArray("f.tlc: 27 parameters, all as in the reader\n"));
        QCOMPARE(desk.endReader(), freshMemory());
    }

    // Each single parameter counts.
    void verifyDifferent_data()
    {
        QTest::addColumn<QString>("setting");
        for (const char* const setting :
             {"001=80", "013=94", "02D=01", "080=01", "082=01", "083=21", "084=02", "114=2B"}) {
            QTest::newRow(setting) << QString(setting);
        }
    }
    void verifyDifferent()
    {
        QFETCH(QString, setting);
        CliDesk desk;
        QVERIFY(desk.write("f.tlc", golden("FactoryDefaults.tlc")) &&
                desk.write("f.txt", golden("FactoryDefaults.txt")));
        const QStringList id = setting.startsWith("082") ? QStringList{"081=00"} : QStringList{"081=00", "082=00"};
        QVERIFY(desk.startReader({}, id + QStringList{setting}));
        const CliDesk::Outcome outcome = desk.run({"--json", "verify", "f.tlc", "f.txt"});
        QCOMPARE(outcome.exitCode, 1);
        QJsonArray differences = outcome.json()["files"].toArray()[0].toObject()["differences"].toArray();
        if (differences.isEmpty()) {
            differences = outcome.json()["files"].toArray()[1].toObject()["differences"].toArray();
        }
        QCOMPARE(differences.size(), 1);
        QCOMPARE(differences[0].toObject()["address"].toString(), setting.left(3));
        QCOMPARE(differences[0].toObject()["right"].toString(), setting.right(2));
        QCOMPARE(desk.run({"verify", "--writable", "f.tlc", "f.txt"}).exitCode, setting == "001=80" ? 0 : 1);
    }

    void verifyRefusesDoubtfulFiles()
    {
        CliDesk desk;
        QVERIFY(desk.write("f.tlc", "Comments,\r\n"));
        QVERIFY(desk.startReader());
        QCOMPARE(desk.run({"verify", "f.tlc"}).exitCode, 5);
        QCOMPARE(desk.run({"verify", "--lenient", "f.tlc"}).exitCode, 5);
        QCOMPARE(desk.commands(), 0);
    }

    void diffInWordsAndHex()
    {
        CliDesk desk;
        QVERIFY(desk.startReader({}, {"013=16", "084=2A", "081=00", "082=00", "01C=41"}));
        const CliDesk::Outcome outcome = desk.run({"diff", "defaults", "reader"});
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(outcome.output, QByteArray("013  95 | 16  Track enables / ID Flag\n"
                                            "       < Track Configuration: reads AAMVA/CADL/ISO/ABA cards\n"
                                            "       < Track 1: Enabled\n"
                                            "       > Track Configuration: reads ISO/ABA cards\n"
                                            "       > Track 1: Enabled/Required\n"
                                            "01C  00 | 41  Pre Card Data code (hex value sent)\n"
                                            "       < PreCard Data: Code: (n/u)\n"
                                            "       > PreCard Data: Code: 41h\n"
                                            "084  03 | 2A  00\n"
                                            "       < 20 / 03 uses: [AltGr]\n"
                                            "       > 20 / 2A uses: [AltGr]\n"));
        QVERIFY(desk.writes().isEmpty());
    }

    void diffNeedsNoReaderForFiles()
    {
        CliDesk desk;
        QVERIFY(desk.write("f.tlc", golden("FactoryDefaults.tlc")) &&
                desk.write("f.txt", golden("FactoryDefaults.txt")));
        QVERIFY(desk.write("one.tlc", "Comments,\r\n013,95 ;\r\n"));
        QCOMPARE(desk.run({"diff", "f.tlc", "defaults"}).exitCode, 0);
        QCOMPARE(desk.run({"diff", "f.txt", "defaults"}).exitCode, 0);
        QCOMPARE(desk.run({"diff", "f.tlc", "f.tlc"}).output, QByteArray());
        const CliDesk::Outcome missing = desk.run({"diff", "one.tlc", "f.tlc"});
        QCOMPARE(missing.exitCode, 1);
        QVERIFY(missing.output.startsWith("001  -- | 00  "));
        QCOMPARE(desk.run({"diff", "f.tlc", "f.txt"}).exitCode, 2);
        QCOMPARE(desk.run({"diff", "f.tlc", "reader"}).exitCode, 3);
        QCOMPARE(desk.run({"diff", "f.tlc"}).exitCode, 2);
    }

    void colorsWhereTheyAreWanted()
    {
        CliDesk desk;
        QVERIFY(desk.write("one.tlc", "Comments,\r\n013,94 ;\r\n"));
        const QStringList diff = {"diff", "one.tlc", "defaults"};
        QVERIFY(!desk.run(diff).output.contains('\033'));
        QVERIFY(
            desk.run(QStringList{"--color", "always"} + diff).output.contains("\033[31m94\033[0m | \033[32m95\033[0m"));
        QVERIFY(!desk.run(QStringList{"--color", "never"} + diff).output.contains('\033'));
    }
};

static const testsupport::RunnableTest<TeslinCompareTest> kRunnable;
#include "TeslinCompareTest.moc"
