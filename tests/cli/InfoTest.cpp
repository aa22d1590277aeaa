#include "TeslinProcess.h"
#include "tests/support/RunnableTest.h"

#include <QElapsedTimer>
#include <QTest>

class InfoTest final : public QObject
{
    Q_OBJECT

private slots:
    void tellsTheReader()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"info"});
        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.output, QByteArray("Port:            COM5\n"
                                            "Driver:          Teslin KSD 2.10\n"
                                            "Firmware:        3.07\n"
                                            "Identification:  Teslin 60044718\n"
                                            "Keyboard layout: 0409 English\n"));
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(desk.commands(), 5);
        QCOMPARE(desk.endReader(), freshMemory());
    }

    void answersInJson()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        const QJsonObject json = desk.run({"--json", "info"}).json();
        QCOMPARE(json["schema"].toString(), QString("teslin/1"));
        QCOMPARE(json["command"].toString(), QString("info"));
        QCOMPARE(json["exit"].toInt(-1), 0);
        QCOMPARE(json["port"].toString(), QString("COM5"));
        QCOMPARE(json["firmware"].toString(), QString("3.07"));
        QCOMPARE(json["layout"].toObject()["id"].toString(), QString("0409"));
    }

    void whatIsNotAnsweredIsUnknown_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("driver") << "/ver: silent" << QByteArray("Driver:          unknown\n");
        QTest::newRow("firmware") << "/get dev_version: silent" << QByteArray("Firmware:        unknown\n");
        QTest::newRow("identification") << "/rawxact WCY: cut=24" << QByteArray("Identification:  unknown\n");
        QTest::newRow("layout") << "/rawxact WPV082: garbled" << QByteArray("Keyboard layout: unknown\n");
    }
    void whatIsNotAnsweredIsUnknown()
    {
        QFETCH(QString, fault);
        QFETCH(QByteArray, line);
        CliDesk desk;
        QVERIFY(desk.startReader({fault}));
        const CliDesk::Outcome outcome = desk.run({"info"});
        QCOMPARE(outcome.exitCode, 4);
        QVERIFY2(outcome.output.contains(line), outcome.output.constData());
        QCOMPARE(outcome.output.count("unknown"), 1);
    }

    // What stands in the way before anything can be asked.
    void noWayToTheReader_data()
    {
        QTest::addColumn<QStringList>("faults");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("kind");
        const QStringList none;
        QTest::newRow("another name") << none << QStringList{"--name", "Nobody"} << "no-driver";
        QTest::newRow("another folder") << none << QStringList{"--dosdevices", "/nonexistent"} << "no-driver";
        QTest::newRow("another port") << none << QStringList{"--port", "7"} << "no-port";
        QTest::newRow("silent driver") << QStringList{"/get port_name: silent"} << none << "no-driver";
        QTest::newRow("no port in the answer")
            << QStringList{"/get port_name: reply=\"no such thing\""} << none << "no-driver";
        QTest::newRow("port without number") << QStringList{"/get port_name: value=COM"} << none << "no-driver";
        QTest::newRow("a port that is not there") << QStringList{"/get port_name: value=COM9"} << none << "no-port";
        QTest::newRow("driver hangs up") << QStringList{"/get port_name: hang-up"} << none << "no-driver";
    }
    void noWayToTheReader()
    {
        QFETCH(QStringList, faults);
        QFETCH(QStringList, arguments);
        QFETCH(QString, kind);
        CliDesk desk;
        QVERIFY(desk.startReader(faults));
        const CliDesk::Outcome outcome = desk.run(arguments + QStringList{"--json", "info"});
        QCOMPARE(outcome.exitCode, 3);
        QCOMPARE(outcome.json()["exit"].toInt(), 3);
        QCOMPARE(outcome.json()["error"].toObject()["kind"].toString(), kind);
        QVERIFY(!outcome.json()["error"].toObject()["message"].toString().isEmpty());
        QCOMPARE(desk.commands(), 0);
    }

    void portThatIsNoTerminal()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        QVERIFY(desk.write("dos/com8", "not a terminal"));
        const CliDesk::Outcome outcome = desk.run({"--port", "8", "--json", "info"});
        QCOMPARE(outcome.exitCode, 3);
        QCOMPARE(outcome.json()["error"].toObject()["kind"].toString(), QString("no-port"));
        QCOMPARE(desk.content("dos/com8"), QByteArray("not a terminal"));
    }

    void oneReaderOneProgram()
    {
        CliDesk desk;
        QVERIFY(desk.startReader({"/ver: silent"}));
        QProcess first;
        desk.start(first, {"--timeout", "20000", "info"});
        QVERIFY(first.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(desk.commands() == 1, CliDesk::kLimit);
        const CliDesk::Outcome second = desk.run({"--json", "get", "013"});
        QCOMPARE(second.exitCode, 3);
        QCOMPARE(second.json()["error"].toObject()["kind"].toString(), QString("port-in-use"));
        const QString holder = QStringLiteral("teslin (process %1)").arg(first.processId());
        const QString message = second.json()["error"].toObject()["message"].toString();
        QVERIFY2(message.contains(holder), qPrintable(message));
        QCOMPARE(desk.commands(), 1);
        first.terminate();
        QCOMPARE(CliDesk::end(first).exitCode, 130);
        // And free again at once.
        QCOMPARE(desk.run({"get", "013"}).exitCode, 0);
    }

    void staleBytesAreThrownAway()
    {
        CliDesk desk;
        QVERIFY(desk.startReader({R"(/ver: after="/rawxact WPV013 reply 00: EE")"}));
        QCOMPARE(desk.run({"info"}).exitCode, 0);
        QCOMPARE(desk.run({"get", "013"}).output, QByteArray("95\n"));
    }

    void versionAndHelp()
    {
        const CliDesk desk;
        QCOMPARE(desk.run({"--version"}).output, QByteArray("teslin " TESLIN_VERSION "\n"));
        const CliDesk::Outcome help = desk.run({"--help"});
        QCOMPARE(help.exitCode, 0);
        QVERIFY(help.output.contains("info"));
    }

    void wrongUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("nothing") << QStringList{};
        QTest::newRow("no such command") << QStringList{"polish"};
        QTest::newRow("no such option") << QStringList{"info", "--polish"};
        QTest::newRow("port 0") << QStringList{"info", "--port", "0"};
        QTest::newRow("port 257") << QStringList{"info", "--port", "257"};
        QTest::newRow("no time") << QStringList{"info", "--timeout", "0"};
        QTest::newRow("no such table") << QStringList{"info", "--table", "tlc"};
        QTest::newRow("no such progress") << QStringList{"info", "--progress", "some"};
        QTest::newRow("get without address") << QStringList{"get"};
        QTest::newRow("set without setting") << QStringList{"set"};
        QTest::newRow("a word too many") << QStringList{"info", "reader"};
    }
    void wrongUsage()
    {
        QFETCH(QStringList, arguments);
        const CliDesk desk;
        const CliDesk::Outcome words = desk.run(arguments);
        QCOMPARE(words.exitCode, 2);
        QCOMPARE(words.output, QByteArray());
        QVERIFY(words.errors.startsWith("teslin: "));
        const CliDesk::Outcome json = desk.run(QStringList{"--json"} + arguments);
        QCOMPARE(json.exitCode, 2);
        QCOMPARE(json.json()["error"].toObject()["kind"].toString(), QString("usage"));
    }

    void anAnswerThatCannotBeWrittenIsNone()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        QProcess process;
        process.setStandardOutputFile("/dev/full");
        desk.start(process, {"get", "013"});
        QCOMPARE(CliDesk::end(process).exitCode, 5);
    }
};

static const testsupport::RunnableTest<InfoTest> kRunnable;
#include "InfoTest.moc"
