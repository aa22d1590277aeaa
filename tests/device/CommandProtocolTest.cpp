#include "tests/device/ParameterReply.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

using namespace testsupport;

class CommandProtocolTest final : public QObject
{
    Q_OBJECT

private slots:
    // --- sending

    void aCommandGoesOutWithOneLineFeed()
    {
        DeviceLink on;
        on.openPort();
        on.protocol.Send_Cmd("/ver");
        QCOMPARE(on.port.written(), "/ver\n");
    }

    void rawBytesStaySpelledOut()
    {
        DeviceLink on;
        on.openPort();
        on.protocol.Send_Cmd(R"(/rawsend \xA5)");
        QCOMPARE(on.port.written(), "/rawsend \\xA5\n");
        QCOMPARE(on.port.written().size(), std::size_t{14});
    }

    void aSendTakesThreeTicksAnsweredOrNot_data()
    {
        QTest::addColumn<bool>("isAnswered");
        QTest::newRow("answered") << true;
        QTest::newRow("silent") << false;
    }
    void aSendTakesThreeTicksAnsweredOrNot()
    {
        QFETCH(bool, isAnswered);
        DeviceLink on;
        if (isAnswered) {
            on.port.setScript({{"/ver", {{"/ver reply: Teslin KSD 2.10\n"}}}});
        }
        on.openPort();
        on.protocol.Send_Cmd("/ver");
        QCOMPARE(on.pump.ticks(), 3);
        QCOMPARE(on.link.period.CommBusy, 0);
        QVERIFY(!on.link.UserAbort);
    }

    void aSendIsBusyUntilItsPeriodIsOver()
    {
        DeviceLink on;
        on.openPort();
        QList<int> busy;
        for (int tick = 1; tick <= 3; ++tick) {
            on.pump.atTick(tick, [&] { busy.append(on.link.period.CommBusy); });
        }
        on.protocol.Send_Cmd("/ver");
        QCOMPARE(busy, (QList<int>{1, 1, 0}));
    }

    void theLampsOfASend()
    {
        DeviceLink on;
        on.port.setScript({{"/ver", {{"/ver reply: Teslin KSD 2.10\n", 1}}}});
        on.openPort();
        on.protocol.Send_Cmd("/ver");
        on.pump.pass();
        QCOMPARE(lines(on.log), (QByteArrayList{
                                    "port: output /ver\\n",
                                    "send lit", // first tick
                                    "recv lit",
                                    "recv dark", // second tick: first the receive lamp
                                    "send lit",
                                    "send dark", // third tick, end of the send
                                    "send dark", // and on
                                }));
    }

    void backToBackSendsLightTheLampForTwoTicksOfThree()
    {
        DeviceLink on;
        on.openPort();
        on.protocol.Send_Cmd("a");
        on.protocol.Send_Cmd("b");
        QCOMPARE(linesWith(on.log, {"send"}),
                 (QByteArrayList{"send lit", "send lit", "send dark", "send lit", "send lit", "send dark"}));
    }

    // --- asking for a parameter

    void anAnsweredParameterTakesThreeTicks()
    {
        DeviceLink on;
        on.port.setScript({{"/rawxact WPV013", {{parameterReply("013", "95")}}}});
        on.openPort();
        on.protocol.Ask_For_Parameter("013");
        on.protocol.WaitForResponse();
        QCOMPARE(on.port.written(), "/rawxact WPV013\n");
        QCOMPARE(on.link.LastResponse, "95");
        QCOMPARE(on.link.RequestedAddress, "013");
        QCOMPARE(on.pump.ticks(), 3);
        QVERIFY(!on.link.UserAbort);
        QCOMPARE(on.link.period.ResponseCountdown, 5.0);
    }

    void aSilentParameterTakesEightTicks()
    {
        DeviceLink on;
        on.openPort();
        on.protocol.Ask_For_Parameter("013");
        QVERIFY(!on.link.UserAbort);
        on.protocol.WaitForResponse();
        QCOMPARE(on.pump.ticks(), 8);
        QVERIFY(on.link.UserAbort);
        QCOMPARE(on.link.LastResponse, "");
    }

    // A reply ends the wait as soon as it is there; only the fixed period of the command itself is waited out.
    void aLateParameterEndsTheWait_data()
    {
        QTest::addColumn<int>("afterTicks");
        QTest::addColumn<int>("ticks");
        QTest::addColumn<bool>("arrives");
        QTest::newRow("at once") << 0 << 3 << true;
        QTest::newRow("in the period") << 2 << 3 << true;
        QTest::newRow("as the period ends") << 3 << 3 << true;
        QTest::newRow("a tick late") << 4 << 4 << true;
        QTest::newRow("four ticks late") << 7 << 7 << true;
        QTest::newRow("with the time-out") << 8 << 8 << true;
        QTest::newRow("after the time-out") << 9 << 8 << false;
    }
    void aLateParameterEndsTheWait()
    {
        QFETCH(int, afterTicks);
        DeviceLink on;
        on.port.setScript({{"/rawxact WPV013", {{parameterReply("013", "95"), afterTicks}}}});
        on.openPort();
        on.protocol.Ask_For_Parameter("013");
        on.protocol.WaitForResponse();
        QTEST(on.pump.ticks(), "ticks");
        QFETCH(bool, arrives);
        QCOMPARE(on.link.LastResponse, arrives ? "95" : "");
        // The eighth tick is the time-out, whatever comes with it.
        QCOMPARE(on.link.UserAbort, afterTicks >= 8);
        on.pump.pass(2);
        QCOMPARE(on.link.LastResponse, "95");
    }

    void askingShowsTheCommandBeforeItGoesOut()
    {
        DeviceLink on;
        on.openPort();
        on.link.LastResponse = "old";
        on.protocol.Ask_For_Parameter("083");
        QCOMPARE(linesWithout(on.log, {"send", "recv"}),
                 (QByteArrayList{"P1: Sent command: /rawxact WPV083", "port: output /rawxact WPV083\\n"}));
        QCOMPARE(on.link.LastResponse, "");
    }

    // --- writing a parameter

    void aConfigurationRowIsWritten()
    {
        DeviceLink on;
        on.tables.CFG.setValue(2, "7F");
        on.openPort();
        on.protocol.Send_Parameter_CFG("013");
        QCOMPARE(on.port.written(), "/rawsend WPW013=7F\n");
        QCOMPARE(on.pump.ticks(), 3);
    }

    void writingShowsTheCommandAfterTheWait()
    {
        DeviceLink on;
        on.openPort();
        std::string whileWaiting = "?";
        on.pump.atTick(2, [&] { whileWaiting = on.window.statusText; });
        on.protocol.Send_Parameter_CFG("013");
        QCOMPARE(whileWaiting, "");
        QCOMPARE(on.window.statusText, "Sent command: /rawsend WPW013=95");
        QCOMPARE(linesWithout(on.log, {"send", "recv"}),
                 (QByteArrayList{"port: output /rawsend WPW013=95\\n", "P1: Sent command: /rawsend WPW013=95"}));
    }

    void anAddressThatNoRowHoldsIsWrittenWithoutAValue()
    {
        DeviceLink on;
        on.openPort();
        on.protocol.Send_Parameter_CFG("02B");
        QCOMPARE(on.port.written(), "/rawsend WPW02B=\n");
    }

    void aSingleKeyboardByteIsOneCommand()
    {
        DeviceLink on;
        on.tables.KB.setValue(1, "11");
        on.openPort();
        std::string address = "080";
        on.protocol.Send_Parameter_KB(address);
        QCOMPARE(on.port.written(), "/rawsend WPW080=11\n");
        QCOMPARE(address, "080");
        QCOMPARE(on.pump.ticks(), 3);
    }

    void aKeyboardPairIsTwoCommandsAndAdvancesTheAddress_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<QByteArray>("advanced");
        QTest::newRow("pair") << QByteArray("083-084") << QByteArray("/rawsend WPW083=A1\n/rawsend WPW084=B2\n")
                              << QByteArray("084");
        QTest::newRow("first half") << QByteArray("083") << QByteArray("/rawsend WPW083=A1\n/rawsend WPW084=B2\n")
                                    << QByteArray("084");
        QTest::newRow("second half") << QByteArray("084") << QByteArray("/rawsend WPW084=A1\n/rawsend WPW085=B2\n")
                                     << QByteArray("085");
        QTest::newRow("over a hundred") << QByteArray("0FF-100")
                                        << QByteArray("/rawsend WPW0FF=C3\n/rawsend WPW100=D4\n") << QByteArray("100");
        QTest::newRow("to a letter") << QByteArray("089-08A") << QByteArray("/rawsend WPW089=E5\n/rawsend WPW08A=F6\n")
                                     << QByteArray("08A");
    }
    void aKeyboardPairIsTwoCommandsAndAdvancesTheAddress()
    {
        QFETCH(QByteArray, address);
        DeviceLink on;
        on.tables.KB.setValue(3, "A1-B2");
        on.tables.KB.setValue(65, "C3-D4");
        on.tables.KB.setValue(6, "E5-F6");
        on.openPort();
        std::string variable = address.toStdString();
        on.protocol.Send_Parameter_KB(variable);
        QTEST(QByteArray::fromStdString(on.port.written()), "written");
        QTEST(QByteArray::fromStdString(variable), "advanced");
        QCOMPARE(on.pump.ticks(), 6);
    }

    void bothHalvesAreShownAfterTheirWaits()
    {
        DeviceLink on;
        on.openPort();
        std::string address = "0FF-100";
        on.protocol.Send_Parameter_KB(address);
        QCOMPARE(linesWithout(on.log, {"send", "recv"}),
                 (QByteArrayList{"port: output /rawsend WPW0FF=00\\n", "P1: Sent command: /rawsend WPW0FF=00",
                                 "port: output /rawsend WPW100=19\\n", "P1: Sent command: /rawsend WPW100=19"}));
    }

    // What a half-read row or a loaded file may hold.
    void oddKeyboardValues_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("written");
        QTest::newRow("blank") << QByteArray(" ") << QByteArray("/rawsend WPW083= \n");
        QTest::newRow("empty") << QByteArray("") << QByteArray("/rawsend WPW083=\n");
        QTest::newRow("one digit") << QByteArray("5") << QByteArray("/rawsend WPW083=5\n");
        QTest::newRow("three characters")
            << QByteArray("205") << QByteArray("/rawsend WPW083=20\n/rawsend WPW084=05\n");
    }
    void oddKeyboardValues()
    {
        QFETCH(QByteArray, value);
        DeviceLink on;
        on.tables.KB.setValue(3, value.toStdString());
        on.openPort();
        std::string address = "083-084";
        on.protocol.Send_Parameter_KB(address);
        QTEST(QByteArray::fromStdString(on.port.written()), "written");
    }

    // --- the port is closed

    void nothingIsSentThroughAClosedPort()
    {
        DeviceLink on;
        on.link.LastResponse = "95";
        on.link.RequestedAddress = "013";
        on.protocol.Send_Cmd("/ver");
        on.protocol.Ask_For_Parameter("014");
        QVERIFY(on.log.empty());
        QCOMPARE(on.pump.ticks(), 0);
        QCOMPARE(on.link.LastResponse, "95");
        QCOMPARE(on.link.RequestedAddress, "013");
        QCOMPARE(on.link.period.CommBusy, 0);
        QCOMPARE(on.link.period.SendLedTicks, 0);
        QCOMPARE(on.link.period.ResponseCountdown, 0.0);
    }

    void writingThroughAClosedPortOnlyShowsTheCommand()
    {
        DeviceLink on;
        on.protocol.Send_Parameter_CFG("013");
        std::string address = "083-084";
        on.protocol.Send_Parameter_KB(address);
        QCOMPARE(lines(on.log),
                 (QByteArrayList{"P1: Sent command: /rawsend WPW013=95", "P1: Sent command: /rawsend WPW083=20",
                                 "P1: Sent command: /rawsend WPW084=03"}));
        QCOMPARE(address, "084");
        QCOMPARE(on.pump.ticks(), 0);
    }

    // A port that closes in mid-run leaves the last value where the next row would find it.
    void aPortThatClosesLeavesTheLastResponse()
    {
        DeviceLink on;
        on.port.setScript({{"/rawxact WPV013", {{parameterReply("013", "95")}}}});
        on.openPort();
        on.protocol.Ask_For_Parameter("013");
        on.port.closeByItself();
        on.protocol.Ask_For_Parameter("014");
        QCOMPARE(on.link.LastResponse, "95");
        on.protocol.WaitForResponse();
        QCOMPARE(on.pump.ticks(), 3);
    }

    // --- abort and closing

    void anAbortEndsEveryWaitAtOnce()
    {
        DeviceLink on;
        on.openPort();
        on.pump.atTick(1, [&] { on.link.UserAbort = true; });
        on.protocol.Send_Cmd("/ver");
        QCOMPARE(on.pump.ticks(), 1);
        on.protocol.Ask_For_Parameter("013");
        on.protocol.WaitForResponse();
        QCOMPARE(on.pump.ticks(), 1);
        QVERIFY(on.link.UserAbort);
        // Nothing is waited for, but everything is sent.
        QCOMPARE(on.port.written(), "/ver\n/rawxact WPV013\n");
    }

    void anAbortInTheWaitForAReply()
    {
        DeviceLink on;
        on.openPort();
        on.pump.atTick(5, [&] { on.link.UserAbort = true; });
        on.protocol.Ask_For_Parameter("013");
        on.protocol.WaitForResponse();
        QCOMPARE(on.pump.ticks(), 5);
    }

    // The time-out of one parameter lasts: nothing but the toolbar takes it back.
    void aTimeOutLasts()
    {
        DeviceLink on;
        on.port.setScript({{"/rawxact WPV014", {{parameterReply("014", "63")}}}});
        on.openPort();
        on.protocol.Ask_For_Parameter("013");
        on.protocol.WaitForResponse();
        QCOMPARE(on.pump.ticks(), 8);
        on.protocol.Ask_For_Parameter("014");
        QCOMPARE(on.pump.ticks(), 8);
        QCOMPARE(on.link.LastResponse, "");
        on.protocol.Send_Cmd("/ver");
        on.protocol.Send_Parameter_CFG("013");
        QCOMPARE(on.pump.ticks(), 8);
        QVERIFY(on.link.UserAbort);

        on.link.UserAbort = false; // a toolbar press
        on.protocol.Ask_For_Parameter("014");
        on.protocol.WaitForResponse();
        QCOMPARE(on.pump.ticks(), 11);
        QCOMPARE(on.link.LastResponse, "63");
    }

    void closingEndsEveryWaitAtOnce()
    {
        DeviceLink on;
        on.openPort();
        on.pump.atTick(2, [&] { on.operations.setClosing(true); });
        on.protocol.Send_Cmd("/ver");
        QCOMPARE(on.pump.ticks(), 2);
        on.protocol.Ask_For_Parameter("013");
        on.protocol.WaitForResponse();
        on.protocol.settle(5);
        QCOMPARE(on.pump.ticks(), 2);
        QVERIFY(!on.link.UserAbort);
    }

    void settlingIsNotCutShortByAnAbort()
    {
        DeviceLink on;
        on.link.UserAbort = true;
        on.protocol.settle(5);
        QCOMPARE(on.pump.ticks(), 5);
        QCOMPARE(on.link.period.ResponseCountdown, 0.0);
        on.protocol.settle(2);
        QCOMPARE(on.pump.ticks(), 7);
    }

    void theCountdownOverIsToldInEveryTickAfterIt()
    {
        DeviceLink on;
        QList<int> told;
        on.protocol.setOnCountdownOver([&] { told.append(on.pump.ticks()); });
        on.link.period.ResponseCountdown = 8;
        on.link.period.CommBusy = 1;
        on.pump.pass(8);
        QVERIFY(told.isEmpty());
        QCOMPARE(on.link.period.CommBusy, 1);
        on.pump.pass(2);
        QCOMPARE(told, (QList<int>{9, 10}));
        QCOMPARE(on.link.period.CommBusy, 0);
    }

    // --- the connection is lost

    void aLostConnectionEndsTheOperation()
    {
        DeviceLink on;
        on.openPort();
        QVERIFY(on.operations.run([&] {
            on.pump.atTick(2, [&] { on.port.loseConnection(); });
            on.protocol.Send_Cmd("/ver");
            QCOMPARE(on.pump.ticks(), 2);
            QVERIFY(on.port.PortOpen());
            on.protocol.Send_Cmd("/get dev_version");
            on.protocol.Ask_For_Parameter("013");
            on.protocol.WaitForResponse();
        }));
        QCOMPARE(on.pump.ticks(), 2);
        QVERIFY(on.link.UserAbort);
        QVERIFY(on.link.connectionLost);
        QCOMPARE(on.port.written(), "/ver\n");
        QVERIFY(on.boxes.shown.empty());
    }

    void aConnectionLostWhileNothingRunsIsNobodysBusiness()
    {
        DeviceLink on;
        on.openPort();
        on.port.loseConnection();
        QVERIFY(!on.link.UserAbort);
        QVERIFY(!on.link.connectionLost);
        QVERIFY(on.log.empty());
    }

    void thePortIsLetGo()
    {
        CallLog log;
        ScriptedSerial port(log);
        PlainTables tables;
        device::LinkState link;
        device::Operations operations;
        FakeEventPump pump;
        RecordingWindow window(log);
        FakeDriver driver(log);
        RecordingReadTest readTest(log);
        TestMessageBoxes boxes;
        {
            const device::CommandProtocol protocol(
                link, operations, {.MSComm1 = port, .driver = driver, .events = pump, .boxes = boxes},
                {.display = window, .status = window, .buttons = window, .readTest = readTest, .unsaved = window},
                tables.tables);
            QVERIFY(port.hasHandlers());
        }
        QVERIFY(!port.hasHandlers());
    }
};

static const testsupport::RunnableTest<CommandProtocolTest> kRunnable;
#include "CommandProtocolTest.moc"
