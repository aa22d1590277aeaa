#include "tests/device/OpeningCalls.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

using namespace calls;
using namespace testsupport;
using device::Identification;

class CloseTheDeviceDriverTest final : public QObject
{
    Q_OBJECT

private slots:
    void closesThePort()
    {
        DeviceLink on;
        on.openPort();
        on.connection.CloseTheDeviceDriver();
        QCOMPARE(lines(on.log), (QByteArrayList{"port: close", "Copyright: ", "Driver: "}));
        QVERIFY(!on.port.PortOpen());
    }

    void closingAClosedPortOnlyEmptiesTheCaptions()
    {
        DeviceLink on;
        on.connection.CloseTheDeviceDriver();
        QCOMPARE(lines(on.log), (QByteArrayList{"Copyright: ", "Driver: "}));
    }

    void closingReadsWhatIsWaiting_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("shownText");
        QTest::newRow("one byte") << QByteArray("x") << QByteArray("x");
        QTest::newRow("a line") << QByteArray("late\n") << QByteArray("late\\n");
        QTest::newRow("more than a line") << QByteArray("one\ntwo\nthr") << QByteArray("one\\ntwo\\nthr");
    }
    void closingReadsWhatIsWaiting()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, shownText);
        DeviceLink on;
        on.openPort();
        on.port.setRThreshold(0);
        on.port.sendUnasked(bytes.toStdString());
        on.pump.processPending();
        on.log.clear();
        on.connection.CloseTheDeviceDriver();
        QCOMPARE(lines(on.log), (QByteArrayList{"P1: waiting for the driver to finish -> " + shownText, "port: close",
                                                "Copyright: ", "Driver: "}));
        QCOMPARE(on.port.InBufferCount(), 0);
    }

    // Emptying the driver's name wipes the panel, but only where there was a name.
    void theWaitingTextStaysOnlyWithoutADriverName_data()
    {
        QTest::addColumn<bool>("hasName");
        QTest::addColumn<QByteArray>("panel");
        QTest::newRow("name known") << true << QByteArray();
        QTest::newRow("name never answered") << false << QByteArray("waiting for the driver to finish -> late");
    }
    void theWaitingTextStaysOnlyWithoutADriverName()
    {
        QFETCH(bool, hasName);
        DeviceLink on;
        auto replies = goodReplies();
        if (!hasName) {
            replies.erase("/ver");
        }
        on.port.setScript(replies);
        on.openPort();
        on.connection.GetDriverSettings();
        on.port.sendUnasked("late");
        on.pump.processPending();
        on.connection.CloseTheDeviceDriver();
        QTEST(QByteArray::fromStdString(on.window.statusText), "panel");
    }

    // kb-emptied-labels
    void closingKeepsFirmwareAndWhatIsVisible()
    {
        DeviceLink on;
        on.port.setScript(goodReplies());
        on.openPort();
        on.connection.GetDriverSettings();
        on.connection.CloseTheDeviceDriver();
        QCOMPARE(on.window.captions[Identification::Firmware], " 3.07 ");
        QCOMPARE(on.window.captions[Identification::Driver], "");
        QCOMPARE(on.window.captions[Identification::Copyright], "");
        QVERIFY(on.window.visible[Identification::Driver]);
        QVERIFY(on.window.visible[Identification::Firmware]);
        QVERIFY(on.window.visible[Identification::Copyright]);
        QCOMPARE(on.link.FirmwareVersion, "3.07");
        QCOMPARE(on.link.KeyboardLanguageId, "0409");
    }

    void clearingHidesEverything()
    {
        DeviceLink on;
        on.port.setScript(goodReplies());
        on.openPort();
        on.connection.GetDriverSettings();
        on.log.clear();
        on.connection.ClearSettings();
        QCOMPARE(lines(on.log), (QByteArrayList{"Firmware: ", "Copyright: ", "Driver: ", "hide Firmware",
                                                "hide Copyright", "hide Driver", "P1: "}));
        QVERIFY(on.port.PortOpen());
    }
};

static const testsupport::RunnableTest<CloseTheDeviceDriverTest> kRunnable;
#include "CloseTheDeviceDriverTest.moc"
