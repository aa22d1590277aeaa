#include "tests/app/ReadTestFixture.h"
#include "tests/support/RunnableTest.h"

#include <QAction>
#include <QCloseEvent>
#include <QPointer>
#include <QSignalSpy>

#include <functional>
#include <optional>
#include <utility>

using namespace testsupport;
using app::kConfigurationTab;
using app::kKeyboardLanguageTab;
using app::kReadTestTab;
using platform::BoxAnswer;

namespace {

const QByteArrayList kIdentify = {"/ver", "/get dev_version", "/rawxact WCY", "/rawxact WPV081", "/rawxact WPV082"};
const QByteArrayList kSetUp = kIdentify + kIdentify;
const QByteArrayList kNormalMode = {"/rawsend \\xA8\\x40", "/rawsend \\xA2"};
const QByteArray kLeave = "/rawsend \\xA5";
constexpr int kIdentificationCommands = 5;

void markChanged(MainWindowFixture& f, int tab)
{
    if (tab == kConfigurationTab) {
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
    } else {
        f.window->paramTables().PutTableEntry_KB("080", "XXX", 0);
    }
}

// Turns of the event loop that are counted; something happens in the first one, and in one that comes far too late.
class PatientPump final : public platform::EventPump
{
public:
    std::function<void()> onWait;
    std::function<void()> onLastTurn;
    int waits = 0;

    void processPending() override { m_real.processPending(); }
    void processWithoutInput() override { m_real.processWithoutInput(); }
    void waitForEvents() override
    {
        ++waits;
        if (const auto act = std::exchange(onWait, {})) {
            act();
        }
        if (waits == kFarTooMany) {
            onLastTurn();
        }
        m_real.processPending();
    }

private:
    static constexpr int kFarTooMany = 20;
    platform::QtEventPump m_real;
};

} // namespace

// How the window goes: by its title bar, by Exit, at the end of the session; in the middle of something; and not at
// all.
class ClosingWindowTest final : public QObject
{
    Q_OBJECT

private slots:
    // A reader in normal mode would stay there: nobody takes it out again.
    void closingWhileTheReadTestIsEnteredSendsNoModeCommand_data()
    {
        QTest::addColumn<int>("after");
        QTest::newRow("at the first command") << 1;
        QTest::newRow("at the last of the set-up") << 10;
        QTest::newRow("at the first mode command") << 11;
    }
    void closingWhileTheReadTestIsEnteredSendsNoModeCommand()
    {
        QFETCH(int, after);
        ReadTestFixture desk;
        QVERIFY(desk.start());
        qsizetype commandsAtClose = 0;
        desk.f.reader.onOutput = [&](int count) {
            if (count == after) {
                commandsAtClose = desk.f.reader.commands.size();
                desk.f.window->close();
            }
        };
        desk.clickTab(kReadTestTab);
        QVERIFY(!desk.f.window->isVisible());
        QVERIFY(!desk.f.reader.PortOpen());
        for (const QByteArray& command : desk.f.reader.commands.mid(commandsAtClose)) {
            QVERIFY2(!kNormalMode.contains(command), command.constData());
        }
    }

    // A click on another tab has begun to leave: the command that takes the reader out of its mode still goes out.
    void closingWhileTheReadTestIsLeftStillTakesTheReaderOut_data()
    {
        QTest::addColumn<int>("after");
        QTest::newRow("at the first command") << 1;
        QTest::newRow("at the last of the identification") << kIdentificationCommands;
        QTest::newRow("at the command itself") << kIdentificationCommands + 1;
    }
    void closingWhileTheReadTestIsLeftStillTakesTheReaderOut()
    {
        QFETCH(int, after);
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.f.reader.onOutput = [&](int count) {
            if (count == after) {
                desk.f.window->close();
            }
        };
        desk.clickTab(kConfigurationTab);
        QVERIFY(!desk.f.window->isVisible());
        QVERIFY(!desk.f.reader.PortOpen());
        // Nothing is waited for any more, so the identification may be shorter.
        QByteArrayList commands = desk.f.reader.commands;
        QCOMPARE(commands.takeLast(), kLeave);
        QCOMPARE(commands, kIdentify.first(commands.size()));
    }

    // kb-ends-in-read-test
    void aProgramThatEndsInTheReadTestSendsNothing_data()
    {
        QTest::addColumn<bool>("byExit");
        QTest::newRow("title bar") << false;
        QTest::newRow("Exit") << true;
    }
    void aProgramThatEndsInTheReadTestSendsNothing()
    {
        QFETCH(bool, byExit);
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.withTicks([&] { byExit ? desk.f.press("KEY_EXIT") : static_cast<void>(desk.f.window->close()); });
        QVERIFY(!desk.f.window->isVisible());
        desk.pass(20);
        QCoreApplication::processEvents();
        QCOMPARE(desk.f.reader.commands, QByteArrayList());
    }

    void aWindowThatStaysOpenEntersTheReadTestAfresh()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        markChanged(desk.f, kKeyboardLanguageTab);
        desk.f.reader.onOutput = [&](int count) {
            if (count == 10) {
                desk.f.window->close();
            }
        };
        desk.f.boxes.expect(BoxAnswer::Cancel);
        desk.clickTab(kReadTestTab);
        QVERIFY(desk.f.window->isVisible());
        QCOMPARE(desk.f.tabInEffect(), int{kReadTestTab});
        // The wish to abort stands until the next press of the toolbar, so the identification was not waited for.
        QCOMPARE(desk.f.reader.commands.mid(10).first(), kIdentify.first());
        QCOMPARE(desk.f.reader.commands.last(2), kNormalMode);
        QCOMPARE(desk.f.reader.commands.count(kNormalMode.first()), 1);
        QTRY_VERIFY(desk.isClear());
        desk.f.table_KB().TableChanged = false;
    }

    void exitClosesThePortBeforeTheQuestionsAndTheTitleBarAfterThem_data()
    {
        QTest::addColumn<bool>("byExit");
        QTest::newRow("title bar") << false;
        QTest::newRow("Exit") << true;
    }
    void exitClosesThePortBeforeTheQuestionsAndTheTitleBarAfterThem()
    {
        QFETCH(bool, byExit);
        MainWindowFixture f;
        f.start();
        markChanged(f, kConfigurationTab);
        QVERIFY(bool(f.reader.setPortOpen(true))); // as a test in the options leaves it
        std::optional<bool> wasOpen;
        f.boxes.expect(BoxAnswer::No, [&] { wasOpen = f.reader.PortOpen(); });
        byExit ? f.find<QAction>("mnuExit")->trigger() : static_cast<void>(f.window->close());
        QVERIFY(wasOpen.has_value()); // the question came
        QCOMPARE(*wasOpen, !byExit);
        QVERIFY(!f.reader.PortOpen());
        QVERIFY(!f.window->isVisible());
    }

    void exitLeavesThePortOfARunningOperationAlone()
    {
        MainWindowFixture f;
        f.start();
        bool staysOpen = false;
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 2) {
                f.find<QAction>("mnuExit")->trigger();
                staysOpen = f.reader.PortOpen();
            }
        };
        f.press("KEY_UPDATE");
        QVERIFY(staysOpen);
        QVERIFY(!f.reader.PortOpen());
        QVERIFY(!f.window->isVisible());
    }

    void settingsAreWrittenOnlyWhenTheWindowReallyCloses()
    {
        MainWindowFixture f;
        f.start();
        markChanged(f, kConfigurationTab);
        f.boxes.expect(BoxAnswer::Cancel);
        QVERIFY(!f.window->close());
        QVERIFY(!std::filesystem::exists(f.settingsFile()));
        f.boxes.expect(BoxAnswer::No);
        QVERIFY(f.window->close());
        QVERIFY(std::filesystem::exists(f.settingsFile()));
    }

    void aSecondCloseOverTheQuestionAsksNothing()
    {
        MainWindowFixture f;
        f.start();
        markChanged(f, kConfigurationTab);
        QSignalSpy unloaded(f.window.get(), &app::frmMain::unloaded);
        f.boxes.expect(BoxAnswer::Cancel, [&] {
            QCloseEvent again;
            QApplication::sendEvent(f.window.get(), &again); // as the window system sends it
            QVERIFY(!again.isAccepted());
            f.find<QAction>("mnuExit")->trigger();
        });
        QVERIFY(!f.window->close());
        QCOMPARE(unloaded.count(), 0);
        QCOMPARE(f.boxes.shown.size(), std::size_t{1});
        QVERIFY(f.window->isVisible());
        f.table_CFG().TableChanged = false;
    }

    // Leaving the read test takes a while.
    void aFileEntryEndsWithTheWindow()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.f.reader.onOutput = [&](int count) {
            if (count == 2) {
                desk.f.window->close();
            }
        };
        desk.withTicks([&] { desk.f.find<QAction>("mnuOpen_CFG")->trigger(); });
        QVERIFY(!desk.f.window->isVisible());
        QVERIFY(desk.f.dialogs.shown.empty());
    }

    void unloadingEndsEveryWait()
    {
        MainWindowFixture f;
        f.start();
        QVERIFY(!f.window->link().state().UserAbort && !f.window->link().operations().isClosing());
        QVERIFY(bool(f.reader.setPortOpen(true)));
        QVERIFY(f.window->close());
        QVERIFY(f.window->link().state().UserAbort);
        QVERIFY(f.window->link().operations().isClosing());
        QVERIFY(!f.reader.PortOpen());
    }

    // Of those that wait for something else than an operation's end, such as one that a box has held up.
    void aWaitThatIsStillUnderWayEndsWithTheWindow_data()
    {
        QTest::addColumn<int>("wait");
        QTest::newRow("for time to pass") << 0;
        QTest::newRow("for a response") << 1;
        QTest::newRow("for the reply period") << 2;
    }
    void aWaitThatIsStillUnderWayEndsWithTheWindow()
    {
        QFETCH(int, wait);
        PatientPump pump;
        MainWindowFixture f;
        f.tickMilliseconds = 0; // no tick comes any more
        f.pump = &pump;
        f.start();
        QVERIFY(bool(f.reader.setPortOpen(true)));
        device::CommandProtocol& protocol = f.window->link().protocol();
        pump.onWait = [&] { f.window->close(); };
        pump.onLastTurn = [&] { // or it would never end
            f.window->link().state().LastResponse = "00";
            f.window->link().state().period.CommBusy = 0;
            f.window->link().state().period.ResponseCountdown = 0;
        };
        wait == 0 ? protocol.settle(1e9) : wait == 1 ? protocol.WaitForResponse() : protocol.Send_Cmd("/ver");
        QVERIFY(!f.window->isVisible());
        QCOMPARE(pump.waits, 1);
    }

    void nothingOfADestroyedWindowIsStillAtWork()
    {
        MainWindowFixture f;
        f.start();
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
        f.window->paramTables().KB.grid().setRow(3);
        f.find<QWidget>("txtHexEntry_KB")->setFocus();
        const QPointer<QWidget> page = f.find<QTabWidget>("SSTab1")->currentWidget();
        QWidget* const window = f.window.get();
        bool wasHidden = false;
        bool wasWhole = false;
        connect(page, &QObject::destroyed, window, [&] {
            wasHidden = !window->isVisible();
            wasWhole = qobject_cast<app::frmMain*>(window) != nullptr; // with the tables that the page shows
        });
        f.window.reset();
        QVERIFY(page.isNull());
        QVERIFY(wasHidden && wasWhole);
    }

    // --- The user logs off ---

    void theEndOfTheSessionWaitsForATransfer_data()
    {
        QTest::addColumn<bool>("mayAsk");
        QTest::newRow("the user may be asked") << true;
        QTest::newRow("nobody may be asked") << false;
    }
    void theEndOfTheSessionWaitsForATransfer()
    {
        QFETCH(bool, mayAsk);
        MainWindowFixture f;
        f.start();
        bool mayEnd = true;
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 2) {
                mayEnd = f.window->closeForEndOfSession(mayAsk);
            }
        };
        f.press("KEY_UPDATE");
        QVERIFY(!mayEnd);
        QCOMPARE(f.reader.commands.last(), "/rawsend WPW02D=00"); // to its end
        QVERIFY(f.window->isVisible());
    }

    void theEndOfTheSessionAsksItsQuestions()
    {
        MainWindowFixture f;
        f.start();
        markChanged(f, kKeyboardLanguageTab);
        f.boxes.expect(BoxAnswer::Cancel, [&] { QVERIFY(!f.window->closeForEndOfSession(true)); });
        QVERIFY(!f.window->closeForEndOfSession(true));
        QVERIFY(f.window->isVisible());
        QSignalSpy unloaded(f.window.get(), &app::frmMain::unloaded);
        f.boxes.expect(BoxAnswer::No);
        QVERIFY(f.window->closeForEndOfSession(true));
        QCOMPARE(unloaded.count(), 1);
        QVERIFY(std::filesystem::exists(f.settingsFile()));
    }

    void theEndOfTheSessionNeedsNoQuestionWhenAllIsSaved()
    {
        for (const bool mayAsk : {true, false}) {
            MainWindowFixture f;
            f.start();
            QVERIFY(f.window->closeForEndOfSession(mayAsk));
            QVERIFY(!f.window->isVisible());
            QVERIFY(f.boxes.shown.empty());
        }
    }

    void unsavedTablesAreNotGivenUpWithoutAQuestion()
    {
        for (const int tab : {int{kConfigurationTab}, int{kKeyboardLanguageTab}}) {
            MainWindowFixture f;
            f.start();
            markChanged(f, tab);
            QVERIFY(!f.window->closeForEndOfSession(false));
            QVERIFY(f.window->isVisible());
            QVERIFY(f.boxes.shown.empty());
            f.boxes.expect(BoxAnswer::No);
            QVERIFY(f.window->closeForEndOfSession(true));
        }
    }
};

static const testsupport::RunnableTest<ClosingWindowTest> kRunnable;
#include "ClosingWindowTest.moc"
