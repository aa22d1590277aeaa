#include "tests/app/ReadTestDesk.h"
#include "tests/support/RunnableTest.h"

#include <QAction>
#include <QCloseEvent>
#include <QPointer>
#include <QSignalSpy>

using namespace testsupport;
using platform::BoxAnswer;
using tables::kConfigurationTab;
using tables::kKeyboardLanguageTab;
using tables::kReadTestTab;

namespace {

const QByteArrayList kIdentify = {"/ver", "/get dev_version", "/rawxact WCY", "/rawxact WPV081", "/rawxact WPV082"};
const QByteArrayList kSetUp = kIdentify + kIdentify;
const QByteArrayList kNormalMode = {"/rawsend \\xA8\\x40", "/rawsend \\xA2"};
constexpr int kIdentificationCommands = 5;

void markChanged(MainWindowFixture& f, int tab)
{
    if (tab == kConfigurationTab) {
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
    } else {
        f.window->paramTables().PutTableEntry_KB("080", "XXX", 0);
    }
}

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
        ReadTestDesk desk;
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

    void aWindowThatStaysOpenEntersTheReadTestAfresh()
    {
        ReadTestDesk desk;
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
        QCOMPARE(desk.f.window->handledTab(), int{kReadTestTab});
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
        bool wasOpen = !byExit;
        f.boxes.expect(BoxAnswer::No, [&] { wasOpen = f.reader.PortOpen(); });
        byExit ? f.find<QAction>("mnuExit")->trigger() : static_cast<void>(f.window->close());
        QCOMPARE(wasOpen, !byExit);
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
        ReadTestDesk desk;
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
        QVERIFY(!f.window->link().UserAbort && !f.window->operations().isClosing());
        QVERIFY(bool(f.reader.setPortOpen(true)));
        QVERIFY(f.window->close());
        QVERIFY(f.window->link().UserAbort);
        QVERIFY(f.window->operations().isClosing());
        QVERIFY(!f.reader.PortOpen());
        // A wait that is still under way ends at once, though no tick comes any more.
        f.window->Timer1_Timer();
        f.window->protocol().settle(1e9);
        f.window->protocol().WaitForResponse();
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

    void theEndOfTheSessionWaitsForATransfer()
    {
        MainWindowFixture f;
        f.start();
        bool mayEnd = true;
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 2) {
                mayEnd = f.window->closeForEndOfSession();
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
        f.boxes.expect(BoxAnswer::Cancel, [&] { QVERIFY(!f.window->closeForEndOfSession()); });
        QVERIFY(!f.window->closeForEndOfSession());
        QVERIFY(f.window->isVisible());
        QSignalSpy unloaded(f.window.get(), &app::frmMain::unloaded);
        f.boxes.expect(BoxAnswer::No);
        QVERIFY(f.window->closeForEndOfSession());
        QCOMPARE(unloaded.count(), 1);
        QVERIFY(std::filesystem::exists(f.settingsFile()));
    }

    void theEndOfTheSessionNeedsNoQuestionWhenAllIsSaved()
    {
        MainWindowFixture f;
        f.start();
        QVERIFY(f.window->closeForEndOfSession());
        QVERIFY(f.boxes.shown.empty());
    }
};

static const testsupport::RunnableTest<ClosingWindowTest> kRunnable;
#include "ClosingWindowTest.moc"
