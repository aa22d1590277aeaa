#include "tests/device/OpeningCalls.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

#include <cerrno>

using namespace calls;
using namespace testsupport;
using device::Identification;
using platform::BoxAnswer;
using platform::BoxIcon;
using platform::SystemError;

class OpenTheDeviceDriverTest final : public QObject
{
    Q_OBJECT

private slots:
    void opensAndIdentifies()
    {
        DeviceLink on;
        on.driver.answer = "/get port_name=COM5\r";
        on.port.setScript(goodReplies());
        QVERIFY(on.connection.OpenTheDeviceDriver());
        QVERIFY(on.port.PortOpen());
        QVERIFY(!on.window.pleaseWait);
        QCOMPARE(on.pump.ticks(), 15);

        const QByteArrayList opened = kOpenBegins + kDetectBegins + kExchange +
                                      QByteArrayList{
                                          "port box: COM5",
                                          "port scroll: 5",
                                          "P2: KSD Port: COM5",
                                          "port: RThreshold = 1",
                                          "port: CommPort = 5",
                                          "port: open",
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
                                      } +
                                      kOpenEnds;
        // The lamps of the ticks are another matter.
        QByteArrayList calls = lines(on.log);
        for (int i = int(calls.indexOf("port: open")); i < calls.size();) {
            if (calls.at(i).startsWith("send") || calls.at(i).startsWith("recv")) {
                calls.removeAt(i);
            } else {
                ++i;
            }
        }
        QCOMPARE(calls, opened);
    }

    void aKnownPortIsNotDetectedAgain()
    {
        DeviceLink on;
        on.link.PortNumber = 12;
        QVERIFY(on.connection.OpenTheDeviceDriver());
        QCOMPARE(linesWith(on.log, {"driver"}), QByteArrayList{});
        QCOMPARE(linesWith(on.log, {"port: CommPort"}), (QByteArrayList{"port: CommPort = 12"}));
        QVERIFY(on.connection.OpenTheDeviceDriver());
        QCOMPARE(linesWith(on.log, {"driver"}), QByteArrayList{});
        QCOMPARE(int{on.link.PortNumber}, 12);
    }

    void anOpenPortIsClosedFirst()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.openPort();
        QVERIFY(on.connection.OpenTheDeviceDriver());
        QCOMPARE(linesWith(on.log, {"ShowPleaseWait", "port: open", "port: close", "port: CommPort"}),
                 (QByteArrayList{"ShowPleaseWait", "port: close", "port: CommPort = 5", "port: open"}));
    }

    void thePleaseWaitStaysUntilTheIdentificationIsRead()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        QList<bool> shown;
        for (int tick = 1; tick <= 12; ++tick) {
            on.pump.atTick(tick, [&] { shown.append(on.window.pleaseWait); });
        }
        QVERIFY(on.connection.OpenTheDeviceDriver());
        QCOMPARE(shown, QList<bool>(12, true));
        QVERIFY(!on.window.pleaseWait);
    }

    void detectionFailedDuringOpen_data()
    {
        QTest::addColumn<bool>("opens");
        QTest::addColumn<QByteArray>("caption");
        QTest::newRow("not opened") << false << QByteArray("Unable to get virtual com port number.");
        QTest::newRow("no answer") << true << QByteArray("Unable to get virtual com port number..");
    }
    void detectionFailedDuringOpen()
    {
        QFETCH(bool, opens);
        QFETCH(QByteArray, caption);
        DeviceLink on;
        if (opens) {
            on.driver.readError = SystemError{.number = EIO, .description = "Input/output error"};
        } else {
            on.driver.openError = SystemError{.number = ENOENT, .description = "No such file or directory"};
        }
        std::string behindTheBox;
        bool pleaseWaitBehindTheBox = false;
        on.boxes.expect(BoxAnswer::Ok, [&] {
            behindTheBox = on.window.statusText;
            pleaseWaitBehindTheBox = on.window.pleaseWait;
        });
        on.window.buttonsEnabled = false;
        QVERIFY(!on.connection.OpenTheDeviceDriver());
        const QByteArrayList expected = kOpenBegins + kDetectBegins + (opens ? kExchange : QByteArrayList{}) +
                                        QByteArrayList{"Driver: " + caption} + kDetectFailed;
        QCOMPARE(lines(on.log), expected);
        QCOMPARE(QByteArray::fromStdString(behindTheBox), caption);
        QVERIFY(pleaseWaitBehindTheBox);
        const platform::MessageBox& box = on.boxes.shown.back();
        QCOMPARE(box.title, "");
        QVERIFY(box.icon == BoxIcon::Critical);
        QVERIFY(box.buttons == platform::BoxButtons::Ok);
        QCOMPARE(on.window.statusText, "");
        QVERIFY(on.window.buttonsEnabled);
        QVERIFY(!on.window.pleaseWait);
        QVERIFY(!on.port.PortOpen());
        QCOMPARE(int{on.link.PortNumber}, 0);
    }

    void noPortIsNamedDuringOpen()
    {
        DeviceLink on;
        on.boxes.expect(BoxAnswer::Ok);
        on.boxes.expect(BoxAnswer::Ok);
        QVERIFY(!on.connection.OpenTheDeviceDriver());
        const QByteArrayList expected = kOpenBegins + kDetectBegins + kExchange +
                                        QByteArrayList{"box: Could not open Teslin port!"} + kDetectFailed;
        QCOMPARE(lines(on.log), expected);
    }

    // kb-portless-answer
    void thePortOfTheOptionsIsUsedByTheNextPress()
    {
        DeviceLink on;
        on.driver.answer = "what?";
        on.typePort("COM5");
        on.boxes.expect(BoxAnswer::Ok);
        QVERIFY(!on.connection.OpenTheDeviceDriver());
        QCOMPARE(on.boxes.lastText(), kUnableBox);
        QCOMPARE(int{on.link.PortNumber}, 5);
        QCOMPARE(on.window.portPanel, "KSD Port: COM5");
        QVERIFY(!on.port.PortOpen());
        on.log.clear();
        QVERIFY(on.connection.OpenTheDeviceDriver());
        QCOMPARE(linesWith(on.log, {"driver", "box", "port: CommPort"}), (QByteArrayList{"port: CommPort = 5"}));
    }

    void thePortCannotBeSet_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("too high") << 257 << QByteArray("Could not open COM257, Invalid argument");
        QTest::newRow("negative") << -1 << QByteArray("Could not open COM-1, Invalid argument");
    }
    void thePortCannotBeSet()
    {
        QFETCH(int, number);
        QFETCH(QByteArray, text);
        DeviceLink on;
        on.link.PortNumber = static_cast<std::int16_t>(number);
        on.boxes.expect(BoxAnswer::Ok);
        QVERIFY(!on.connection.OpenTheDeviceDriver());
        const QByteArrayList expected =
            kOpenBegins +
            QByteArrayList{"port: RThreshold = 1", "port: CommPort = " + QByteArray::number(number), "box: " + text} +
            kOpenEnds;
        QCOMPARE(lines(on.log), expected);
        QCOMPARE(on.boxes.shown.back().title, "");
        QVERIFY(on.boxes.shown.back().icon == BoxIcon::Critical);
        QVERIFY(on.boxes.shown.back().buttons == platform::BoxButtons::Ok);
        QVERIFY(!on.port.PortOpen());
        QCOMPARE(int{on.link.PortNumber}, number);
    }

    // An answer whose number no port can have names none, and the name in the options stands in for it.
    void anAnswerWithoutAPortIsNotOpened_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("no number") << QByteArray("COMx\r");
        QTest::newRow("0") << QByteArray("COM0\r");
        QTest::newRow("too high") << QByteArray("COM70000\r");
        QTest::newRow("negative") << QByteArray("COM-3\r");
    }
    void anAnswerWithoutAPortIsNotOpened()
    {
        QFETCH(QByteArray, answer);
        DeviceLink on;
        on.driver.answer = answer.toStdString();
        on.typePort("COM5");
        on.boxes.expect(BoxAnswer::Ok);
        QVERIFY(!on.connection.OpenTheDeviceDriver());
        QCOMPARE(on.boxes.lastText(), "Was unable to open the Teslin Device Driver.  Check to see if the driver is "
                                      "installed and the Teslin is attached");
        QCOMPARE(on.window.portPanel, "KSD Port: COM5");
        QCOMPARE(linesWith(on.log, {"port: CommPort", "port: open"}), QByteArrayList{});
    }

    void thePortCannotBeOpened()
    {
        DeviceLink on;
        on.link.PortNumber = 12;
        on.port.openError = SystemError{.number = EACCES, .description = "Permission denied"};
        on.boxes.expect(BoxAnswer::Ok);
        QVERIFY(!on.connection.OpenTheDeviceDriver());
        const QByteArrayList expected = kOpenBegins +
                                        QByteArrayList{"port: RThreshold = 1", "port: CommPort = 12", "port: open",
                                                       "box: Could not open COM12, Permission denied"} +
                                        kOpenEnds;
        QCOMPARE(lines(on.log), expected);
        QVERIFY(on.boxes.shown.back().icon == BoxIcon::Critical);
        QVERIFY(on.boxes.shown.back().buttons == platform::BoxButtons::Ok);
        QVERIFY(!on.port.PortOpen());
        QCOMPARE(int{on.link.PortNumber}, 12);
    }

    void thePortReportsClosedAfterOpening()
    {
        DeviceLink on;
        on.link.PortNumber = 12;
        on.port.opens = false;
        QVERIFY(!on.connection.OpenTheDeviceDriver());
        const QByteArrayList expected =
            kOpenBegins +
            QByteArrayList{
                "port: RThreshold = 1",    "port: CommPort = 12", "port: open", "Driver: Device driver did not open",
                "show Driver value alone", "EnableButtons true"} +
            kOpenEnds;
        QCOMPARE(lines(on.log), expected);
        QCOMPARE(on.window.captions[Identification::Driver], "Device driver did not open");
        QCOMPARE(on.window.statusText, "");
        QVERIFY(on.boxes.shown.empty());
    }
};

static const testsupport::RunnableTest<OpenTheDeviceDriverTest> kRunnable;
#include "OpenTheDeviceDriverTest.moc"
