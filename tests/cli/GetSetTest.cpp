#include "TeslinProcess.h"
#include "tests/support/RunnableTest.h"

#include <QJsonArray>
#include <QTest>

class GetSetTest final : public QObject
{
    Q_OBJECT

private slots:
    void get()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        QCOMPARE(desk.run({"get", "013"}).output, QByteArray("95\n"));
        QCOMPARE(desk.run({"get", "114", "01a", "001"}).output, QByteArray("114=2C\n01A=12\n001=00\n"));
        QCOMPARE(desk.endReader(), freshMemory());
    }

    void set()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"set", "01A=20", "013=96"});
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.output, QByteArray("013=96\n01A=20\n"));
        QCOMPARE(desk.writes(), QStringList({"013=96", "01A=20"}));
        auto expected = freshMemory();
        expected["013"] = "96";
        expected["01A"] = "20";
        QCOMPARE(desk.endReader(), expected);
    }

    void nothingIsWrittenWhenOneSettingIsWrong_data()
    {
        QTest::addColumn<QString>("setting");
        QTest::newRow("read only") << "001=80";
        QTest::newRow("read only, forced") << "--force 001=80";
        QTest::newRow("no parameter") << "02B=00";
        QTest::newRow("no value") << "014=1FF";
        QTest::newRow("no mapping") << "02A=06";
    }
    void nothingIsWrittenWhenOneSettingIsWrong()
    {
        QFETCH(QString, setting);
        CliDesk desk;
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run(QStringList{"set", "013=96"} + setting.split(' '));
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(desk.commands(), 0);
        QCOMPARE(desk.endReader(), freshMemory());
    }

    void dryRunWritesNothing()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"--dry-run", "set", "013=96", "014=63"});
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(outcome.output, QByteArray("013: 95 would become 96\n014: 63 as wanted\n"));
        QCOMPARE(desk.run({"--dry-run", "set", "014=63"}).exitCode, 0);
        QCOMPARE(desk.writes(), QStringList());
        QCOMPARE(desk.endReader(), freshMemory());
    }

    // A reader that takes something else than it was told.
    void wrongProofIsToldByAddress()
    {
        CliDesk desk;
        QVERIFY(desk.startReader({"/rawxact WPV013: value=11 on=2-"}));
        const CliDesk::Outcome outcome = desk.run({"set", "013=96", "014=62"});
        QCOMPARE(outcome.exitCode, 2); // 62 makes no sense
        const CliDesk::Outcome second = desk.run({"set", "013=96", "014=61"});
        QCOMPARE(second.exitCode, 1);
        QCOMPARE(second.output, QByteArray("014=61\n"));
        QVERIFY2(second.errors.contains("013: wanted 96, found 11"), second.errors.constData());
    }

    void silenceAfterAWriteIsUnknown()
    {
        CliDesk desk;
        QVERIFY(desk.startReader({"/rawxact WPV013: silent on=2-"}));
        const CliDesk::Outcome outcome = desk.run({"--json", "set", "013=96", "014=61"});
        QCOMPARE(outcome.exitCode, 4);
        const QJsonArray list = outcome.json()["parameters"].toArray();
        QCOMPARE(list.size(), 2);
        QCOMPARE(list[0].toObject()["state"].toString(), QString("unknown"));
        QVERIFY(list[0].toObject()["found"].isNull());
        QCOMPARE(list[1].toObject()["state"].toString(), QString("not-written"));
        QCOMPARE(outcome.json()["error"].toObject()["kind"].toString(), QString("no-reply"));
        QCOMPARE(desk.writes(), QStringList({"013=96"}));
    }

    // An echo that comes late, twice or never proves nothing and spoils nothing.
    void echoes_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::newRow("silent") << "/rawsend *: silent";
        QTest::newRow("late") << "/rawsend *: delay=300";
        QTest::newRow("twice") << "/rawsend *: twice";
        QTest::newRow("garbled") << "/rawsend *: garbled";
        QTest::newRow("cut") << "/rawsend *: cut=5";
        QTest::newRow("looks like a value") << R"(/rawsend *: reply="/rawxact WPV013 reply 00: 11")";
        QTest::newRow("a value behind it") << R"(/rawsend *: with="/rawxact WPV013 reply 00: 11")";
        QTest::newRow("a value before it") << R"(/rawsend *: before="/rawxact WPV013 reply 00: 11")";
        QTest::newRow("trickles") << "/rawsend *: split=every pause=3";
    }
    void echoes()
    {
        QFETCH(QString, fault);
        CliDesk desk;
        QVERIFY(desk.startReader({fault}));
        const CliDesk::Outcome outcome = desk.run({"set", "013=96", "014=61"});
        QVERIFY2(outcome.exitCode == 0, outcome.errors.constData());
        auto expected = freshMemory();
        expected["013"] = "96";
        expected["014"] = "61";
        QCOMPARE(desk.endReader(), expected);
    }
};

static const testsupport::RunnableTest<GetSetTest> kRunnable;
#include "GetSetTest.moc"
