#include "tests/device/ReadTestBench.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace readtest;
using namespace testsupport;

// What becomes of the keys that the reader types: on screen at once, and once more after a pause.
class ReadTestKeysTest final : public QObject
{
    Q_OBJECT

private slots:
    void theRawBlockFollowsThePause()
    {
        Bench bench;
        bench.readTest.StartReadTest();
        bench.type("%A B?\r");
        const std::string typed = std::string(kHeading) + "\r\n\r\nTrack1: %A\x95"
                                                          "B?\r";
        QCOMPARE(bench.window.text, typed);
        bench.on.pump.pass(8);
        QCOMPARE(bench.window.text, typed);
        bench.on.pump.pass();
        QCOMPARE(bench.window.text, typed + "\r\nRaw Data: %A\x95"
                                            "B?<CR>");
        bench.on.pump.pass(50);
        QCOMPARE(bench.window.text, typed + "\r\nRaw Data: %A\x95"
                                            "B?<CR>");
    }

    void noRawBlockWithoutAKey()
    {
        Bench bench;
        bench.readTest.StartReadTest();
        bench.on.log.clear();
        bench.on.pump.pass(50);
        QCOMPARE(linesWith(bench.on.log, {"box"}), QByteArrayList{});
    }

    void everyKeyBeginsThePauseAnew()
    {
        Bench bench;
        bench.readTest.StartReadTest();
        for (const char key : std::string_view("abc")) {
            bench.type({&key, 1});
            bench.on.pump.pass(8);
        }
        QCOMPARE(bench.window.text, std::string(kHeading) + "abc");
        bench.on.pump.pass();
        QCOMPARE(bench.window.text, std::string(kHeading) + "abc\r\nRaw Data: abc");
    }

    void twoSwipes()
    {
        Bench bench;
        bench.readTest.StartReadTest();
        bench.type(";1?\r");
        bench.on.pump.pass(9);
        bench.type("%2?\r");
        bench.on.pump.pass(9);
        QCOMPARE(bench.window.text, std::string(kHeading) + "\r\n\r\nTrack2: ;1?\r\r\nRaw Data: ;1?<CR>"
                                                            "\r\n\r\nTrack1: %2?\r\r\nRaw Data: %2?<CR>");
    }

    void clearing()
    {
        Bench bench;
        bench.readTest.StartReadTest();
        bench.type(";1?");
        bench.on.pump.pass(9);
        bench.on.log.clear();
        bench.readTest.cmdClearReadDisplay_Click();
        QCOMPARE(lines(bench.on.log),
                 QByteArrayList{"box = (spaces represented by \"\\x95\")\\r\\n==========================="});
        QCOMPARE(bench.window.text, kHeading);
    }

    // Clearing the display forgets nothing of the card that is being read.
    void clearingInTheMiddleOfACard()
    {
        Bench bench;
        bench.readTest.StartReadTest();
        bench.type("%12");
        bench.readTest.cmdClearReadDisplay_Click();
        bench.type(";3?;4?");
        bench.on.pump.pass(9);
        QCOMPARE(bench.window.text, std::string(kHeading) + ";3?\r\n\r\nTrack2: ;4?\r\nRaw Data: %12;3?;4?");
    }

    // A track that is open stays open over leaving and entering; its characters do not.
    void enteringInTheMiddleOfATrack()
    {
        Bench bench;
        bench.readTest.StartReadTest();
        bench.type("%12");
        bench.readTest.leave();
        bench.readTest.StartReadTest();
        QCOMPARE(bench.window.text, kHeading);
        bench.type(";3?;4?");
        bench.on.pump.pass(9);
        QCOMPARE(bench.window.text, std::string(kHeading) + ";3?\r\n\r\nTrack2: ;4?\r\nRaw Data: ;3?;4?");
    }

    void enteringForgetsWhatWasTypedBefore()
    {
        Bench bench;
        bench.type("before");
        bench.readTest.StartReadTest();
        bench.type("after");
        bench.on.pump.pass(9);
        QCOMPARE(bench.window.text, std::string(kHeading) + "after\r\nRaw Data: after");
        for (const QByteArray& line : linesWith(bench.on.log, {"box"})) {
            QVERIFY2(!line.contains("before"), line.constData());
        }
    }

    // There is one countdown for waits and pauses: a key lengthens what is running.
    void aKeyWhileSettling_data()
    {
        QTest::addColumn<int>("tick");
        QTest::addColumn<int>("ticks");
        QTest::addColumn<bool>("cleared"); // the raw block came before the display was cleared
        QTest::newRow("settling begins") << kIdentified + 1 << kEntered + 4 << true;
        QTest::newRow("settling ends") << kSettled - 1 << kEntered + 7 << true;
        QTest::newRow("mode command") << kSettled + 1 << kEntered + 7 << true;
        QTest::newRow("second mode command") << kSettled + 4 << kEntered + 7 << true;
        QTest::newRow("port closed") << kModeSet + 1 << kEntered + 7 << false;
    }
    void aKeyWhileSettling()
    {
        QFETCH(int, tick);
        QFETCH(bool, cleared);
        Bench bench;
        bench.on.pump.atTick(tick, [&] { bench.type("x"); });
        bench.readTest.StartReadTest();
        QTEST(bench.on.pump.ticks(), "ticks");
        QCOMPARE(bench.commands().size(), 12);
        QCOMPARE(bench.window.text, kHeading);
        QCOMPARE(linesWith(bench.on.log, {"box += \\r\\nRaw"}).size(), cleared ? 1 : 0);
        bench.on.pump.pass();
        QCOMPARE(bench.window.text, std::string(kHeading) + (cleared ? "" : "\r\nRaw Data: x"));
        bench.on.pump.pass(50);
        QCOMPARE(linesWith(bench.on.log, {"box += \\r\\nRaw"}).size(), 1);
    }

    void theTickIsGivenBackAtTheEnd()
    {
        DeviceLink on;
        {
            device::ReadTest readTest(on.link, on.protocol, on.connection, on.services, on.surfaces, on.tables.tables);
            (void)readTest.txtReadTest_KeyPress('a', sentinels());
        }
        on.log.clear();
        on.pump.pass(20);
        QCOMPARE(linesWith(on.log, {"box"}), QByteArrayList{});
    }
};

static const testsupport::RunnableTest<ReadTestKeysTest> kRunnable;
#include "ReadTestKeysTest.moc"
