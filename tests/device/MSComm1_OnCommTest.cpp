#include "tests/device/ParameterReply.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

using namespace testsupport;

class MSComm1_OnCommTest final : public QObject
{
    Q_OBJECT

private slots:
    void aReceivedLineLightsTheLampUntilTheNextTick()
    {
        DeviceLink on;
        on.openPort();
        on.port.sendUnasked("anything\n");
        on.pump.processPending();
        QCOMPARE(lines(on.log), (QByteArrayList{"recv lit"}));
        on.pump.pass();
        on.pump.pass();
        QCOMPARE(lines(on.log), (QByteArrayList{"recv lit", "recv dark", "send dark", "send dark"}));
    }

    void aReceivedLineDoesNotEndTheReplyPeriod()
    {
        DeviceLink on;
        on.openPort();
        on.link.period.openForSend();
        on.port.sendUnasked(parameterReply("013", "95"));
        on.pump.processPending();
        QCOMPARE(on.link.LastResponse, "95");
        QCOMPARE(on.link.period.CommBusy, 1);
        QCOMPARE(on.link.period.ResponseCountdown, 2.0);
    }

    void otherEventsAreIgnored()
    {
        DeviceLink on;
        on.openPort();
        on.link.ReadStatus = 7;
        for (const int event : {0, 1, 3, 1001}) {
            on.port.raiseEvent(event);
        }
        QVERIFY(on.log.empty());
        QCOMPARE(on.link.ReadStatus, 7);
    }

    void anEmptyLineIsNoDataRead_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("line feed") << QByteArray("\n");
        QTest::newRow("carriage return") << QByteArray("\r");
    }
    void anEmptyLineIsNoDataRead()
    {
        QFETCH(QByteArray, bytes);
        DeviceLink on;
        on.openPort();
        on.link.ReadStatus = 7;
        on.link.LastResponse = "95";
        on.boxes.expect(platform::BoxAnswer::Ok);
        on.port.sendUnasked(bytes.toStdString());
        on.pump.processPending();
        QVERIFY(on.boxes.verifyAllUsed());
        const platform::MessageBox& box = on.boxes.shown.back();
        QCOMPARE(box.text, "No data read");
        QCOMPARE(box.title, "");
        QVERIFY(box.icon == platform::BoxIcon::None);
        QVERIFY(box.buttons == platform::BoxButtons::Ok);
        QCOMPARE(on.link.ReadStatus, 0);
        QCOMPARE(on.link.LastResponse, "95");
        QCOMPARE(lines(on.log), (QByteArrayList{"recv lit", "box: No data read"}));
    }

    // An event that brings nothing at all, as when the input was read by somebody else.
    void anEventWithoutInputIsNoDataRead()
    {
        DeviceLink on;
        on.openPort();
        on.boxes.expect(platform::BoxAnswer::Ok);
        on.port.raiseEvent(platform::SerialControl::kDataReceived);
        QCOMPARE(on.boxes.lastText(), "No data read");
    }

    // The box is modal inside the receive event and the countdown goes on behind it.
    // kb-no-data-read
    void aBlankLineEndsTheWaitOnceItsBoxWasOpenTooLong()
    {
        DeviceLink on;
        on.port.setScript({{"/rawxact WPV013", {{"\n", 4}, {parameterReply("013", "95"), 12}}}});
        on.openPort();
        on.boxes.expect(platform::BoxAnswer::Ok, [&] { on.pump.pass(6); });
        on.protocol.Ask_For_Parameter("013");
        on.protocol.WaitForResponse();
        QVERIFY(on.boxes.verifyAllUsed());
        QCOMPARE(on.pump.ticks(), 11); // 4, 6 behind the box, and the one that wakes the wait
        QVERIFY(on.link.UserAbort);
        QCOMPARE(on.link.LastResponse, "");
    }

    void parameterLines_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("response");
        QTest::newRow("27 characters") << QByteArray("/rawxact WPV013 reply 00: 9\n") << QByteArray("old");
        QTest::newRow("28 characters") << QByteArray("/rawxact WPV013 reply 00: 95\n") << QByteArray("95");
        QTest::newRow("carriage return") << QByteArray("/rawxact WPV013 reply 00: 95\r") << QByteArray("95");
        QTest::newRow("29 characters") << QByteArray("/rawxact WPV013 reply 00: 95A\n") << QByteArray("95A");
        QTest::newRow("echo of a write") << QByteArray("/rawsend WPW013=95 ok\n") << QByteArray("old");
        QTest::newRow("identification that holds a parameter")
            << QByteArray("/rawxact WCY WP reply 00: 95\n") << QByteArray("old");
        QTest::newRow("other") << QByteArray("/rawxact XYZ013 reply 00: 95\n") << QByteArray("old");
    }
    void parameterLines()
    {
        QFETCH(QByteArray, line);
        DeviceLink on;
        on.openPort();
        on.link.LastResponse = "old";
        on.port.sendUnasked(line.toStdString());
        on.pump.processPending();
        QTEST(QByteArray::fromStdString(on.link.LastResponse), "response");
        QVERIFY(on.boxes.shown.empty());
    }

    void identificationLines_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArrayList>("calls");
        QTest::newRow("24 characters") << QByteArray("/rawxact WCY reply 00 ok\n") << QByteArrayList{};
        QTest::newRow("25 characters") << QByteArray("/rawxact WCY reply 00 ok:\n")
                                       << QByteArrayList{"Copyright:   ", "show Copyright"};
        QTest::newRow("27 characters") << QByteArray("/rawxact WCY reply 00 ok: T\n")
                                       << QByteArrayList{"Copyright:  T ", "show Copyright"};
        QTest::newRow("usual") << QByteArray("/rawxact WCY reply 00 ok: Teslin 60044718\n")
                               << QByteArrayList{"Copyright:  Teslin 60044718 ", "show Copyright"};
        QTest::newRow("with a parameter")
            << QByteArray("/rawxact WCY reply WP ok: 9500\n") << QByteArrayList{"Copyright:  9500 ", "show Copyright"};
    }
    void identificationLines()
    {
        QFETCH(QByteArray, line);
        DeviceLink on;
        on.openPort();
        on.link.LastResponse = "old";
        on.port.sendUnasked(line.toStdString());
        on.pump.processPending();
        QTEST(linesWithout(on.log, {"recv"}), "calls");
        QCOMPARE(on.link.LastResponse, "old");
    }

    void everyLineSetsTheReadStatus()
    {
        DeviceLink on;
        on.openPort();
        const auto receive = [&](const std::string& line) {
            on.port.sendUnasked(line);
            on.pump.processPending();
            return on.link.ReadStatus;
        };
        QCOMPARE(receive("/read report status: 07\n"), 7);
        QCOMPARE(receive("/read report status: 7\n"), 99);
        QCOMPARE(receive("anything\n"), 0);
        QCOMPARE(receive("/read report status: 12\n"), 12);
        QCOMPARE(receive(parameterReply("013", "95")), 0);
        QCOMPARE(on.link.LastResponse, "95");
    }

    void oneEventIsOneLine()
    {
        DeviceLink on;
        on.openPort();
        on.port.sendUnasked(parameterReply("013", "95") + parameterReply("014", "63"));
        on.port.sendUnasked("/rawxact WPV015 reply");
        on.pump.processPending();
        QCOMPARE(on.link.LastResponse, "63");
        QCOMPARE(linesWith(on.log, {"recv lit"}).size(), 2);
        on.port.sendUnasked(" 00: 40\r");
        on.pump.processPending();
        QCOMPARE(on.link.LastResponse, "40");
        on.port.sendUnasked("\n"); // the other half of a line end
        on.pump.processPending();
        QVERIFY(on.boxes.shown.empty());
        QCOMPARE(linesWith(on.log, {"recv lit"}).size(), 3);
    }

    void nothingIsHandledWhileEventsAreOff()
    {
        DeviceLink on;
        on.openPort();
        on.port.setRThreshold(0);
        on.log.clear();
        on.port.sendUnasked(parameterReply("013", "95"));
        on.pump.processPending();
        QVERIFY(on.log.empty());
        QCOMPARE(on.link.LastResponse, "");
        on.port.setRThreshold(1);
        on.pump.processPending();
        QCOMPARE(on.link.LastResponse, "95");
    }
};

static const testsupport::RunnableTest<MSComm1_OnCommTest> kRunnable;
#include "MSComm1_OnCommTest.moc"
