#include "TeslinProcess.h"
#include "tests/simulator/FolderTree.h"
#include "tests/simulator/TerminalClient.h"
#include "tests/support/RunnableTest.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTest>

class TeslinDoctorTest final : public QObject
{
    Q_OBJECT

private slots:
    void allIsWell()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        const CliDesk::Outcome outcome = desk.run({"doctor"});
        QVERIFY2(outcome.exitCode == 0, outcome.output.constData());
        QCOMPARE(outcome.output.count("good  "), 4);
        QVERIFY2(outcome.output.contains("COM5: " + desk.reader().entry("com5").toUtf8() + ", which is " +
                                         targetOf(desk.reader().entry("com5")) + ", free\n"),
                 outcome.output.constData());
        // It opens nothing.
        QCOMPARE(desk.reader().logOf("port", {"open", "close", "recv"}), QByteArray());
        QCOMPARE(desk.reader().logOf("device", {"open", "close", "recv"}), QByteArray());
        QCOMPARE(desk.endReader(), freshMemory());
    }

    void tellsWhoHoldsThePort()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        const TerminalClient holder(desk.reader().entry("com5"));
        QVERIFY(holder.isOpen());
        // The test itself has the port open.
        const QByteArray self = QStringLiteral("(process %1)").arg(QCoreApplication::applicationPid()).toUtf8();
        const CliDesk::Outcome outcome = desk.run({"doctor"});
        QCOMPARE(outcome.exitCode, 3);
        QVERIFY2(outcome.output.contains(", in use by cli_system_test") && outcome.output.contains(self),
                 outcome.output.constData());
    }

    void whatIsWrong_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("broken"); // entry that is broken
        QTest::addColumn<QByteArray>("told");
        const QStringList none;
        QTest::newRow("no folder") << QStringList{"--dosdevices", "/nonexistent"} << ""
                                   << QByteArray("wrong  Folder of names: /nonexistent is not there");
        QTest::newRow("no such name") << QStringList{"--name", "Nobody"} << "" << QByteArray(R"(wrong  \\.\Nobody: )");
        QTest::newRow("no such port") << QStringList{"--port", "9"} << "" << QByteArray("wrong  COM9: ");
        QTest::newRow("a device that is gone") << none << "teslin" << QByteArray(R"(wrong  \\.\Teslin: )");
        QTest::newRow("a port that is gone") << none << "com5" << QByteArray("wrong  COM5: ");
    }
    void whatIsWrong()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, broken);
        QFETCH(QByteArray, told);
        CliDesk desk;
        QVERIFY(desk.startReader());
        if (!broken.isEmpty()) {
            QVERIFY(QFile::remove(desk.reader().entry(broken)));
            QVERIFY(makeLink("/nonexistent/device", desk.reader().entry(broken)));
        }
        const CliDesk::Outcome outcome = desk.run(arguments + QStringList{"doctor"});
        QCOMPARE(outcome.exitCode, 3);
        QVERIFY2(outcome.output.contains(told), outcome.output.constData());
        const QJsonObject json = desk.run(arguments + QStringList{"--json", "doctor"}).json();
        QCOMPARE(json["exit"].toInt(), 3);
        int wrong = 0;
        for (const QJsonValue& finding : json["findings"].toArray()) {
            const bool isWrong = finding.toObject()["state"].toString() == "wrong";
            wrong += isWrong ? 1 : 0;
            QVERIFY(!isWrong || !finding.toObject()["remedy"].toString().isEmpty());
        }
        QCOMPARE(wrong, 1);
    }

    void aPortThatIsAFile()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        QVERIFY(desk.write("dos/com8", "a file"));
        const CliDesk::Outcome outcome = desk.run({"--port", "8", "doctor"});
        QCOMPARE(outcome.exitCode, 3);
        QVERIFY(outcome.output.contains("no serial device"));
        QVERIFY(QFile::remove(desk.path("dos/com8")));
    }

    void noPortAtAll()
    {
        CliDesk desk;
        QVERIFY(QDir().mkpath(desk.path("dos")));
        const CliDesk::Outcome outcome = desk.run({"doctor"});
        QCOMPARE(outcome.exitCode, 3);
        QVERIFY(outcome.output.contains("wrong  Ports: no port is entered"));
        QVERIFY(outcome.output.contains("note  Driver file: "));
    }
};

static const testsupport::RunnableTest<TeslinDoctorTest> kRunnable;
#include "TeslinDoctorTest.moc"
