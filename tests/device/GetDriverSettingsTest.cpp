#include "tests/device/OpeningCalls.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

using namespace calls;
using namespace testsupport;
using device::Identification;

class GetDriverSettingsTest final : public QObject
{
    Q_OBJECT

private slots:
    void identifies()
    {
        DeviceLink on;
        on.port.setScript(goodReplies());
        on.openPort();
        on.connection.GetDriverSettings();
        QCOMPARE(on.port.written(), "/ver\n/get dev_version\n/rawxact WCY\n/rawxact WPV081\n/rawxact WPV082\n");
        QCOMPARE(on.pump.ticks(), 15);
        // The versions keep their line end.
        QCOMPARE(on.window.captions[Identification::Driver], " Teslin KSD 2.10\n ");
        QCOMPARE(on.window.captions[Identification::Firmware], " 3.07 ");
        QCOMPARE(on.window.captions[Identification::Copyright], " Teslin 60044718 ");
        QVERIFY(on.window.visible[Identification::Driver]);
        QVERIFY(on.window.visible[Identification::Firmware]);
        QVERIFY(on.window.visible[Identification::Copyright]);
        QCOMPARE(on.link.FirmwareVersion, "3.07");
        QCOMPARE(on.link.KeyboardLanguageId, "0409");
        // None of it came as an event.
        QCOMPARE(on.link.LastResponse, "");
        QCOMPARE(linesWith(on.log, {"recv lit"}), QByteArrayList{});
    }

    void theLanguageIsLookedUpWithBothBytesAndBeforeEventsComeAgain()
    {
        DeviceLink on;
        on.port.setScript(goodReplies());
        on.openPort();
        std::string id;
        on.window.onGetLanguageName = [&] { id = on.link.KeyboardLanguageId; };
        on.connection.GetDriverSettings();
        QCOMPARE(id, "0409");
        QCOMPARE(linesWith(on.log, {"port: RThreshold", "GetLanguageName", "port: output"}),
                 (QByteArrayList{"port: RThreshold = 0", "port: output /ver\\n", "port: output /get dev_version\\n",
                                 "port: output /rawxact WCY\\n", "port: output /rawxact WPV081\\n",
                                 "port: output /rawxact WPV082\\n", "GetLanguageName", "port: RThreshold = 1"}));
    }

    void aFirmwareVersionWithoutASlashIsShownWhole()
    {
        DeviceLink on;
        auto replies = goodReplies();
        replies["/get dev_version"] = {{"/get dev_version reply: 3.07\n"}};
        on.port.setScript(replies);
        on.openPort();
        on.connection.GetDriverSettings();
        QCOMPARE(on.window.captions[Identification::Firmware], " 3.07\n ");
        QCOMPARE(on.link.FirmwareVersion, "3.07\n");
    }

    // A reply that is missing or no good leaves everything that belongs to it as it was; the others are read.
    void oneReplyIsNoGood_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QByteArrayList>("missing");
        QTest::addColumn<QByteArray>("languageId");
        const auto row = [](const char* what, const char* command, const char* reply, const QByteArrayList& missing,
                            const char* languageId = "0409") {
            QTest::newRow(what) << QByteArray(command) << QByteArray(reply) << missing << QByteArray(languageId);
        };
        const QByteArrayList driver = {"Driver:  Teslin KSD 2.10\\n ", "show Driver"};
        const QByteArrayList firmware = {"Firmware:  3.07 ", "show Firmware"};
        const QByteArrayList copyright = {"Copyright:  Teslin 60044718 ", "show Copyright"};
        const QByteArrayList second = {"port: output /rawxact WPV082\\n"};
        row("driver silent", "/ver", "", driver);
        row("driver says something else", "/ver", "VERSION 2.10 of KSD\n", driver);
        row("firmware silent", "/get dev_version", "", firmware);
        row("firmware short", "/get dev_version", "/get dev_version reply:\n", firmware);
        row("firmware says something else", "/get dev_version", "/get dev version reply: 3.07\n", firmware);
        row("device silent", "/rawxact WCY", "", copyright);
        row("device short", "/rawxact WCY", "/rawxact WCY reply 00 o\n", copyright);
        row("device says something else", "/rawxact WCY", "/rawxact WXY reply 00 ok: Teslin\n", copyright);
        row("081 silent", "/rawxact WPV081", "", second, "old");
        row("081 short", "/rawxact WPV081", "/rawxact WPV081 reply 0\n", second, "old");
        row("081 says something else", "/rawxact WPV081", "/rawxact WXV081 reply 00: 04\n", second, "old");
        row("082 silent", "/rawxact WPV082", "", {}, "04");
        row("082 short", "/rawxact WPV082", "/rawxact WPV082 reply 0\n", {}, "04");
        // Long enough to be replies, too short to hold a value.
        row("081 without a value", "/rawxact WPV081", "/rawxact WPV081 reply 00\n", {}, "09");
        row("082 without a value", "/rawxact WPV082", "/rawxact WPV082 reply 00:\n", {}, "04");
    }
    void oneReplyIsNoGood()
    {
        QFETCH(QByteArray, command);
        QFETCH(QByteArray, reply);
        QFETCH(QByteArrayList, missing);
        QByteArrayList expected = {
            "port: RThreshold = 0",
            "port: output /ver\\n",
            "Driver:  Teslin KSD 2.10\\n ",
            "show Driver",
            "port: output /get dev_version\\n",
            "Firmware:  3.07 ",
            "show Firmware",
            "port: output /rawxact WCY\\n",
            "Copyright:  Teslin 60044718 ",
            "show Copyright",
            "port: output /rawxact WPV081\\n",
            "port: output /rawxact WPV082\\n",
            "GetLanguageName",
            "port: RThreshold = 1",
        };
        for (const QByteArray& line : missing) {
            QCOMPARE(expected.removeAll(line), 1);
        }
        DeviceLink on;
        auto replies = goodReplies();
        replies[command.toStdString()] = {{reply.toStdString()}};
        on.port.setScript(replies);
        on.openPort();
        on.link.KeyboardLanguageId = "old";
        on.link.FirmwareVersion = "old";
        on.connection.GetDriverSettings();
        QCOMPARE(linesWithout(on.log, {"send", "recv"}), expected);
        QTEST(QByteArray::fromStdString(on.link.KeyboardLanguageId), "languageId");
        QCOMPARE(on.link.FirmwareVersion, missing.contains("show Firmware") ? "old" : "3.07");
        QVERIFY(!on.link.UserAbort); // silence is no failure here
    }

    void identificationNeedsAnOpenPort()
    {
        DeviceLink on;
        on.connection.GetDriverSettings();
        QVERIFY(on.log.empty());
        QCOMPARE(on.pump.ticks(), 0);
    }

    // After an abort everything is sent and nothing is waited for, so nothing is read.
    void identificationIsUnreadAfterAnAbort()
    {
        DeviceLink on;
        on.port.setScript(goodReplies());
        on.openPort();
        on.link.UserAbort = true;
        on.link.KeyboardLanguageId = "old";
        on.connection.GetDriverSettings();
        QCOMPARE(on.pump.ticks(), 0);
        QCOMPARE(on.port.written(), "/ver\n/get dev_version\n/rawxact WCY\n/rawxact WPV081\n");
        QCOMPARE(on.link.KeyboardLanguageId, "old");
        QCOMPARE(linesWith(on.log, {"Driver", "Firmware", "Copyright", "show"}), QByteArrayList{});
    }

    // A reply that comes after its period waits in the input and is read with the next one, whose columns it shifts.
    void aLateReplyIsReadWithTheNext()
    {
        DeviceLink on;
        auto replies = goodReplies();
        replies["/ver"] = {{"/ver reply: Teslin KSD 2.10\n", 4}};
        replies["/get dev_version"] = {{"/get dev_version reply: 3.07/Teslin\n", 2}};
        on.port.setScript(replies);
        on.openPort();
        on.connection.GetDriverSettings();
        QCOMPARE(linesWith(on.log, {"show"}), (QByteArrayList{"show Firmware", "show Copyright"}));
        QCOMPARE(on.link.FirmwareVersion, ".10\n");
    }

    // A line that is complete when events come again is delivered as one.
    void aReplyAfterTheLastPeriodComesAsAnEvent()
    {
        DeviceLink on;
        auto replies = goodReplies();
        replies["/rawxact WPV082"] = {{"/rawxact WPV082 reply 00: 09\n", 4}};
        on.port.setScript(replies);
        on.openPort();
        on.connection.GetDriverSettings();
        QCOMPARE(on.link.KeyboardLanguageId, "04");
        QCOMPARE(on.link.LastResponse, "");
        on.pump.pass(2);
        QCOMPARE(on.link.LastResponse, "09");
    }

    void aLostConnectionEndsTheIdentification()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(goodReplies());
        on.pump.atTick(4, [&] { on.port.loseConnection(); });
        QVERIFY(on.operations.run([&] { QVERIFY(on.connection.OpenTheDeviceDriver()); }));
        QCOMPARE(on.pump.ticks(), 4);
        QCOMPARE(on.port.written(), "/ver\n/get dev_version\n");
        QVERIFY(on.link.connectionLost);
        QVERIFY(on.port.PortOpen()); // until the operation closes it
        QVERIFY(!on.window.pleaseWait);
        on.connection.CloseTheDeviceDriver();
        QVERIFY(!on.port.PortOpen());
    }
};

static const testsupport::RunnableTest<GetDriverSettingsTest> kRunnable;
#include "GetDriverSettingsTest.moc"
