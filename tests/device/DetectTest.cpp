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

class DetectTest final : public QObject
{
    Q_OBJECT

private slots:
    void detectsThePort()
    {
        DeviceLink on;
        on.driver.answer = "/get port_name=COM12\r" + std::string(1979, '\0');
        QVERIFY(on.connection.Detect());
        QCOMPARE(lines(on.log), kDetectBegins + kExchange +
                                    (QByteArrayList{"port box: COM12", "port scroll: 12", "P2: KSD Port: COM12"}));
        QCOMPARE(int{on.link.PortNumber}, 12);
        QCOMPARE(on.pump.ticks(), 0);
        QVERIFY(!on.driver.isOpen());
    }

    // Only the last control character goes; the number is read all the same, and the scroll bar does not rename the
    // port.
    void keepsAControlCharacterBeforeTheLast()
    {
        DeviceLink on;
        on.driver.answer = "COM12\r\n";
        QVERIFY(on.connection.Detect());
        QCOMPARE(on.settings.portText(), "COM12\r");
        QCOMPARE(on.window.portPanel, "KSD Port: COM12\r");
        QCOMPARE(int{on.link.PortNumber}, 12);
        QCOMPARE(on.settings.portScroll(), 12);
    }

    void asksTheDriverByItsFriendlyName()
    {
        DeviceLink on;
        on.link.DriverFriendlyName = "Other Reader";
        on.driver.answer = "COM5\r";
        QVERIFY(on.connection.Detect());
        QCOMPARE(linesWith(on.log, {"driver: open"}), (QByteArrayList{"driver: open \\\\.\\Other Reader"}));
    }

    void detectingClosesThePort()
    {
        DeviceLink on;
        on.openPort();
        on.driver.answer = "COM5\r";
        QVERIFY(on.connection.Detect());
        QVERIFY(!on.port.PortOpen());
    }

    // The port's name in the options stands in for it, as for an answer without a name.
    void anAnswerWhoseNumberIsNoPortNamesNone_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("0") << QByteArray("COM0\r");
        QTest::newRow("no number") << QByteArray("COM\r");
        QTest::newRow("too high") << QByteArray("COM257\r");
        QTest::newRow("much too high") << QByteArray("COM70000\r");
        QTest::newRow("huge") << "COM" + QByteArray(1900, '9') + "\r";
        QTest::newRow("negative") << QByteArray("COM-3\r");
    }
    void anAnswerWhoseNumberIsNoPortNamesNone()
    {
        QFETCH(QByteArray, answer);
        DeviceLink on;
        on.link.PortNumber = 7;
        on.typePort("COM9");
        on.driver.answer = answer.toStdString();
        QVERIFY(!on.connection.Detect());
        QCOMPARE(lines(on.log), kDetectBegins + kExchange + (QByteArrayList{"port scroll: 9", "P2: KSD Port: COM9"}));
        QCOMPARE(on.settings.portText(), "COM9");
        QCOMPARE(int{on.link.PortNumber}, 9);
        QVERIFY(on.boxes.shown.empty());
    }

    void theDeviceObjectCannotBeOpened()
    {
        DeviceLink on;
        on.driver.openError = SystemError{.number = ENOENT, .description = "No such file or directory"};
        on.link.PortNumber = 7;
        on.typePort("COM5");
        QVERIFY(!on.connection.Detect());
        QCOMPARE(lines(on.log), kDetectBegins + (QByteArrayList{"Driver: Unable to get virtual com port number."}));
        QCOMPARE(int{on.link.PortNumber}, 7);
        QCOMPARE(on.settings.portText(), "COM5");
        QVERIFY(on.boxes.shown.empty());
    }

    void theDeviceObjectCannotBeWrittenTo()
    {
        DeviceLink on;
        on.driver.writeError = SystemError{.number = EIO, .description = "Input/output error"};
        on.driver.answer = "COM5\r";
        on.link.PortNumber = 7;
        on.typePort("COM6");
        QVERIFY(!on.connection.Detect());
        QCOMPARE(lines(on.log),
                 kDetectBegins +
                     (QByteArrayList{"send lit", "recv lit", "driver: write /get port_name\\n", "driver: close",
                                     "send dark", "recv dark", "Driver: Unable to get virtual com port number.."}));
        QCOMPARE(int{on.link.PortNumber}, 7);
        QCOMPARE(on.settings.portText(), "COM6");
        QVERIFY(!on.driver.isOpen());
    }

    void theDeviceObjectDoesNotAnswer()
    {
        DeviceLink on;
        on.driver.readError = SystemError{.number = ETIMEDOUT, .description = "Connection timed out"};
        on.link.PortNumber = 7;
        on.typePort("nothing"); // no second look at the name, no box
        QVERIFY(!on.connection.Detect());
        QCOMPARE(lines(on.log),
                 kDetectBegins + kExchange + (QByteArrayList{"Driver: Unable to get virtual com port number.."}));
        QCOMPARE(int{on.link.PortNumber}, 7);
        QCOMPARE(on.settings.portText(), "nothing");
        QVERIFY(!on.driver.isOpen());
    }

    void noPortIsNamedAnywhere_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QByteArray>("portText");
        QTest::newRow("empty") << QByteArray() << QByteArray();
        QTest::newRow("2,000 NULs") << QByteArray(2000, '\0') << QByteArray("port");
        QTest::newRow("lower case") << QByteArray("com5\r") << QByteArray("com5");
        QTest::newRow("no port has the number") << QByteArray("COM0\r") << QByteArray("COM0");
        QTest::newRow("no port has the number typed") << QByteArray("\r") << QByteArray("COM70000");
    }
    void noPortIsNamedAnywhere()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QByteArray, portText);
        DeviceLink on;
        on.driver.answer = answer.toStdString();
        on.link.PortNumber = 7;
        on.typePort(portText.toStdString());
        on.boxes.expect(BoxAnswer::Ok);
        QVERIFY(!on.connection.Detect());
        QCOMPARE(lines(on.log), kDetectBegins + kExchange + (QByteArrayList{"box: Could not open Teslin port!"}));
        const platform::MessageBox& box = on.boxes.shown.back();
        QCOMPARE(box.title, "Error");
        QVERIFY(box.icon == BoxIcon::Exclamation);
        QVERIFY(box.buttons == platform::BoxButtons::Ok);
        QCOMPARE(int{on.link.PortNumber}, 7);
        QCOMPARE(QByteArray::fromStdString(on.settings.portText()), portText);
        QCOMPARE(on.window.captions[Identification::Driver], "");
    }

    // The name in the options is taken, though the driver named none: a failed detection that changes the number.
    void theOptionsNameThePortInstead()
    {
        DeviceLink on;
        on.driver.answer = "what?\r";
        on.typePort("COM5");
        QVERIFY(!on.connection.Detect());
        QCOMPARE(lines(on.log), kDetectBegins + kExchange + (QByteArrayList{"port scroll: 5", "P2: KSD Port: COM5"}));
        QCOMPARE(int{on.link.PortNumber}, 5);
        QVERIFY(on.boxes.shown.empty());
    }
};

static const testsupport::RunnableTest<DetectTest> kRunnable;
#include "DetectTest.moc"
