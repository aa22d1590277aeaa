#include "tests/device/ReadTestBench.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace calls;
using namespace readtest;
using namespace testsupport;

namespace {

const QByteArrayList kIdentify = {"/ver", "/get dev_version", "/rawxact WCY", "/rawxact WPV081", "/rawxact WPV082"};
const QByteArrayList kNormalMode = {"/rawsend \\xA8\\x40", "/rawsend \\xA2"};

// What GetDriverSettings tells port and window, with a driver that answers everything.
const QByteArrayList kIdentifying = {
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
const QByteArrayList kOpeningPort = {"port: RThreshold = 1", "port: CommPort = 5", "port: open"};

// From the moment the link is known to be open, or not, to the first wait.
const QByteArrayList kPreparing = {
    "Hide_All",
    "EnableButtons false",
    "hide btnNotes",
    "Firmware: ",
    "Copyright: ",
    "Driver: ",
    "hide Firmware",
    "hide Copyright",
    "hide Driver",
    "P1: ",
    "box += (Setting the Teslin to normal mode.  Ignore these values)\\r\\n",
    "focus",
};
const QByteArrayList kEntering = {
    "title: Read test (Click &Cancel test button to exit)",
    "box = (spaces represented by \"\\x95\")\\r\\n===========================",
    "enable Exit",
};

} // namespace

// Entering and leaving the read test: what the reader, the port and the window are told, and when.
class StartReadTestTest final : public QObject
{
    Q_OBJECT

private slots:
    void entering()
    {
        Bench bench;
        bench.readTest.StartReadTest();
        QCOMPARE(
            bench.told(),
            (QByteArrayList{"box = Please wait...\\r\\n", "Copyright: ", "Driver: ", "EnableButtons false"} +
             kOpenBegins + kOpeningPort + kIdentifying + kOpenEnds + kIdentifying + kPreparing +
             QByteArrayList{"port: output /rawsend \\xA8\\x40\\n", "port: output /rawsend \\xA2\\n", "port: close"} +
             kEntering));
        QCOMPARE(bench.commands(), kIdentify + kIdentify + kNormalMode);
        QCOMPARE(bench.commands().size(), 12);
        QCOMPARE(bench.on.pump.ticks(), kEntered);
        QCOMPARE(bench.window.text, kHeading);
        QVERIFY(!bench.on.port.PortOpen());
        QVERIFY(!bench.on.window.buttonsEnabled);
        QVERIFY(!bench.on.window.pleaseWait);
    }

    // Any link that is open when the test is entered is closed first.
    void enteringWithThePortOpen()
    {
        Bench bench;
        bench.on.openPort();
        bench.readTest.StartReadTest();
        QCOMPARE(linesWith(bench.on.log, {"box =", "port: open", "port: close", "EnableButtons"}),
                 (QByteArrayList{"box = Please wait...\\r\\n", "port: close", "EnableButtons false", "port: open",
                                 "EnableButtons false", "port: close",
                                 "box = (spaces represented by \"\\x95\")\\r\\n==========================="}));
        QCOMPARE(bench.commands(), kIdentify + kIdentify + kNormalMode);
    }

    // The port's number is asked for when it is not known.
    void enteringForTheFirstTime()
    {
        Bench bench;
        bench.on.link.PortNumber = 0;
        bench.on.driver.answer = "/get port_name=COM7\r";
        bench.readTest.StartReadTest();
        QCOMPARE(linesWith(bench.on.log, {"driver: open", "port: CommPort"}),
                 (QByteArrayList{"driver: open \\\\.\\Teslin", "port: CommPort = 7"}));
        QCOMPARE(bench.commands().size(), 12);
    }

    // The waits of the entry, tick by tick. Actions run right after a tick, before the program goes on.
    void pace_data()
    {
        QTest::addColumn<int>("tick");
        QTest::addColumn<int>("commands");
        QTest::addColumn<bool>("open");
        QTest::newRow("identification") << 1 << 1 << true;
        QTest::newRow("the last of its commands") << kIdentified << 10 << true;
        QTest::newRow("settling begins") << kIdentified + 1 << 10 << true;
        QTest::newRow("settling ends") << kSettled << 10 << true;
        QTest::newRow("the first mode command") << kSettled + 1 << 11 << true;
        QTest::newRow("its reply period ends") << kSettled + 3 << 11 << true;
        QTest::newRow("the second mode command") << kSettled + 4 << 12 << true;
        QTest::newRow("its reply period ends, too") << kModeSet << 12 << true;
        QTest::newRow("settling with the port closed") << kModeSet + 1 << 12 << false;
        QTest::newRow("the last tick") << kEntered << 12 << false;
    }
    void pace()
    {
        QFETCH(int, tick);
        Bench bench;
        qsizetype commands = -1;
        bool open = false;
        std::string text;
        bench.on.pump.atTick(tick, [&] {
            commands = bench.commands().size();
            open = bench.on.port.PortOpen();
            text = bench.window.text;
        });
        bench.readTest.StartReadTest();
        QTEST(int(commands), "commands");
        QTEST(open, "open");
        QCOMPARE(text, tick <= kIdentified ? "Please wait...\r\n"
                                           : "Please wait...\r\n"
                                             "(Setting the Teslin to normal mode.  Ignore these values)\r\n");
    }

    void aDeadLink_data()
    {
        QTest::addColumn<QByteArray>("failure");
        QTest::addColumn<QByteArrayList>("opening"); // its calls after the please-wait and the close
        QTest::newRow("no driver") << QByteArray("driver")
                                   << kDetectBegins + QByteArrayList{"Driver: Unable to get virtual com port number."} +
                                          kDetectFailed;
        QTest::newRow("no such port") << QByteArray("number")
                                      << QByteArrayList{"port: RThreshold = 1", "port: CommPort = 5",
                                                        "box: Could not open COM5, Bad number"} +
                                             kOpenEnds;
        QTest::newRow("port taken") << QByteArray("port")
                                    << kOpeningPort + QByteArrayList{"box: Could not open COM5, Busy"} + kOpenEnds;
        QTest::newRow("port stays closed") << QByteArray("silent")
                                           << kOpeningPort +
                                                  QByteArrayList{"Driver: Device driver did not open",
                                                                 "show Driver value alone", "EnableButtons true"} +
                                                  kOpenEnds;
    }
    // A test without a reader to set still is a test: another reader's keys can be watched.
    void aDeadLink()
    {
        QFETCH(QByteArray, failure);
        QFETCH(QByteArrayList, opening);
        Bench bench;
        fail(bench, failure);
        const bool saysSo = failure != "silent";
        if (saysSo) {
            bench.on.boxes.expect(platform::BoxAnswer::Ok);
        }
        bench.readTest.StartReadTest();
        QCOMPARE(bench.told(),
                 (QByteArrayList{"box = Please wait...\\r\\n", "Copyright: ", "Driver: ", "EnableButtons false"} +
                  kOpenBegins + withoutLamps(opening) + kPreparing + kEntering));
        QCOMPARE(bench.commands(), QByteArrayList{});
        QCOMPARE(bench.on.port.undelivered(), "");
        QCOMPARE(bench.on.pump.ticks(), 5 + 2);
        QVERIFY(!bench.on.window.buttonsEnabled);
        QCOMPARE(bench.window.text, kHeading);

        // There is nothing to take back, and the failure has been told.
        bench.on.log.clear();
        bench.readTest.leave();
        QCOMPARE(bench.told(), QByteArrayList{});
        QCOMPARE(bench.on.boxes.shown.size(), saysSo ? 1U : 0U);
    }

    void leaving()
    {
        Bench bench;
        bench.readTest.StartReadTest();
        bench.on.log.clear();
        bench.on.port.forgetWritten();
        bench.readTest.leave();
        QCOMPARE(bench.told(),
                 (kOpenBegins + kOpeningPort + kIdentifying + kOpenEnds +
                  QByteArrayList{"port: output /rawsend \\xA5\\n", "port: close", "Copyright: ", "Driver: "}));
        QCOMPARE(bench.commands(), kIdentify + QByteArrayList{"/rawsend \\xA5"});
        QVERIFY(!bench.on.port.PortOpen());
        QVERIFY(!bench.on.window.buttonsEnabled); // enabling them is for the tab that is entered

        // Once is enough.
        bench.on.log.clear();
        bench.readTest.leave();
        QCOMPARE(bench.told(), QByteArrayList{});
    }

    void leavingWhenTheReaderHasGone()
    {
        Bench bench;
        bench.readTest.StartReadTest();
        bench.on.port.forgetWritten();
        bench.on.port.openError = platform::SystemError{.number = 2, .description = "Gone"};
        bench.on.boxes.expect(platform::BoxAnswer::Ok);
        bench.readTest.leave();
        QCOMPARE(bench.on.boxes.lastText(), "Could not open COM5, Gone");
        QCOMPARE(bench.commands(), QByteArrayList{});
        // Not again at the next change of tabs.
        bench.readTest.leave();
        QCOMPARE(bench.on.boxes.shown.size(), 1U);
    }

    void leavingWithoutHavingEntered_data()
    {
        QTest::addColumn<bool>("open");
        QTest::addColumn<QByteArrayList>("commands");
        QTest::newRow("port closed") << false << QByteArrayList{};
        QTest::newRow("port open") << true << kIdentify + QByteArrayList{"/rawsend \\xA5"};
    }
    void leavingWithoutHavingEntered()
    {
        QFETCH(bool, open);
        Bench bench;
        if (open) {
            bench.on.openPort();
        }
        bench.readTest.leave();
        QTEST(bench.commands(), "commands");
        QVERIFY(!bench.on.port.PortOpen());
    }

    // A dead link after a good one: what the first test did has been taken back when it was left.
    void enteringAgain()
    {
        Bench bench;
        bench.readTest.StartReadTest();
        bench.readTest.leave();
        fail(bench, "port");
        bench.on.boxes.expect(platform::BoxAnswer::Ok);
        bench.readTest.StartReadTest();
        bench.on.port.openError.reset();
        bench.on.port.forgetWritten();
        bench.readTest.leave();
        QCOMPARE(bench.commands(), QByteArrayList{});
        bench.readTest.StartReadTest();
        QCOMPARE(bench.commands(), kIdentify + kIdentify + kNormalMode);
    }

    // An abort that nobody has cleared ends the waits for replies, but the reader gets its time to settle.
    void anOldAbortDoesNotHurryTheReader()
    {
        Bench bench;
        bench.on.link.UserAbort = true;
        bench.readTest.StartReadTest();
        // No reply was read, so nobody asked for the second byte of the keyboard ID.
        const QByteArrayList identify = kIdentify.first(4);
        QCOMPARE(bench.commands(), identify + identify + kNormalMode);
        QCOMPARE(bench.on.pump.ticks(), 5 + 2);
        QVERIFY(bench.on.link.UserAbort);
    }

    // The program ends: no wait holds it up.
    void closingMeanwhile_data()
    {
        QTest::addColumn<int>("tick");
        QTest::newRow("identification") << 4;
        QTest::newRow("settling") << kIdentified + 2;
        QTest::newRow("mode command") << kSettled + 1;
        QTest::newRow("settling with the port closed") << kModeSet + 1;
    }
    void closingMeanwhile()
    {
        QFETCH(int, tick);
        Bench bench;
        bench.on.pump.atTick(tick, [&] {
            bench.on.link.UserAbort = true;
            bench.on.operations.setClosing(true);
        });
        bench.readTest.StartReadTest();
        QCOMPARE(bench.on.pump.ticks(), tick);
        QVERIFY(!bench.on.port.PortOpen());
    }

private:
    static void fail(Bench& bench, const QByteArray& failure)
    {
        if (failure == "driver") {
            bench.on.link.PortNumber = 0;
            bench.on.driver.openError = platform::SystemError{.number = 2, .description = "No such file"};
        } else if (failure == "number") {
            bench.on.port.commPortError = platform::SystemError{.number = 22, .description = "Bad number"};
        } else if (failure == "port") {
            bench.on.port.openError = platform::SystemError{.number = 16, .description = "Busy"};
        } else {
            bench.on.port.opens = false;
        }
    }
};

static const testsupport::RunnableTest<StartReadTestTest> kRunnable;
#include "StartReadTestTest.moc"
