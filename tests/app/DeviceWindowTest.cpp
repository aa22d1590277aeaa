#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SourceFile.h"

#include <QProgressBar>
#include <QSignalSpy>

using namespace testsupport;
using app::kConfigurationTab;
using app::kKeyboardLanguageTab;
using app::kReadTestTab;
using platform::BoxAnswer;

namespace {

constexpr int kIdentificationCommands = 5;

} // namespace

// The window and the device: whole transfers, and what the user does meanwhile.
class DeviceWindowTest final : public QObject
{
    Q_OBJECT

private slots:
    void retrieveFillsTheTableAndTakesTheMarksOff()
    {
        MainWindowFixture f;
        f.start();
        QVERIFY(f.model.memory().store("01A", "20"));
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
        f.boxes.expect(BoxAnswer::No);
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.table_CFG().cell(9, 2), "20");
        QCOMPARE(f.table_CFG().cell(9, 0), " ");
        QVERIFY(!f.table_CFG().TableChanged); // every edit has been replaced by what the reader holds
        QCOMPARE(f.find<QTabWidget>("SSTab1")->tabText(0), "Configuration");
        QCOMPARE(f.reader.commands.size(), 32);
        QCOMPARE(f.reader.commands.first(), "/ver");
        QCOMPARE(f.reader.commands.last(), "/rawxact WPV02D");
        QVERIFY(!f.reader.PortOpen());
        QCOMPARE(f.find<tables::ParamGrid>("grdCFG")->row(), 1);
        QCOMPARE(f.textOf("StatusBar1_2"), "KSD Port: COM5");
    }

    void windowFollowsATransferFromStartToEnd()
    {
        MainWindowFixture f;
        f.start();
        const auto* progress = f.find<QProgressBar>("pgbTransfer");
        QVERIFY(!progress->isVisible());
        QStringList seen;
        f.reader.onOutput = [&](int count) {
            if (count == 1 || count == kIdentificationCommands + 11) {
                seen << QStringLiteral("%1 %2 %3 %4 %5")
                            .arg(f.find<QToolButton>("KEY_EXIT")->text())
                            .arg(f.find<QToolButton>("KEY_RETRIEVE")->isEnabled())
                            .arg(f.find<QWidget>("frmPleaseWait")->isVisible())
                            .arg(progress->isVisible())
                            .arg(progress->value());
            }
        };
        f.press("KEY_RETRIEVE");
        QCOMPARE(seen, QStringList({"Exit 1 1 0 -1", "Abort 0 0 1 10"}));
        QCOMPARE(f.find<QToolButton>("KEY_EXIT")->text(), "Exit");
        QVERIFY(f.find<QToolButton>("KEY_RETRIEVE")->isEnabled());
        QVERIFY(progress->isVisible());
        QCOMPARE(progress->text(), "27 of 27 rows");
        QVERIFY(!f.find<QWidget>("frmPleaseWait")->isVisible());
    }

    void updateSendsEveryRowButTheReadOnlyOne()
    {
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("02D", "7F", 2);
        f.press("KEY_UPDATE");
        QCOMPARE(f.reader.commands.size(), 31);
        QCOMPARE(f.reader.commands.at(5), "/rawsend WPW013=95");
        QCOMPARE(f.reader.commands.last(), "/rawsend WPW02D=7F");
        QCOMPARE(f.model.memory().value("02D"), std::optional<std::string>("7F"));
    }

    void identificationIsShown()
    {
        MainWindowFixture f;
        QVERIFY(QFile::copy(testsupport::sourceFile(QStringLiteral("files/Languages.txt")),
                            f.folder.filePath(QStringLiteral("Languages.txt"))));
        f.start();
        QString driver;
        QString device;
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 1) {
                driver = f.textOf("lblDriverName");
                device = f.textOf("lblCopyRightValue");
            }
        };
        f.press("KEY_RETRIEVE");
        QCOMPARE(driver.trimmed(), "Teslin KSD 2.10");
        QCOMPARE(device, " Teslin 60044718 ");
        QCOMPARE(f.textOf("lblFirmwareValue"), " 3.07 ");
        QCOMPARE(f.textOf("lblLanguage"), "English (Code: 0409)");
        // A close takes driver and device off, the rest stays.
        QCOMPARE(f.textOf("lblDriverName"), "");
        QCOMPARE(f.textOf("lblCopyRightValue"), "");
        QVERIFY(f.find<QLabel>("lblFirmwareValue")->isVisible());
    }

    void abortEndsARetrieveWithItsRowRestored()
    {
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("016", "77", 2);
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 5) { // row 5, address 016, has been asked for
                f.press("KEY_EXIT");
            }
        };
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.reader.commands.size(), kIdentificationCommands + 5);
        QCOMPARE(f.table_CFG().cell(5, 2), "77");
        QCOMPARE(f.find<QToolButton>("KEY_EXIT")->text(), "Exit");
        QVERIFY(!f.reader.PortOpen());
        QVERIFY(f.window->isVisible());
    }

    void anAbortedRetrieveKeepsTheChangedFlag()
    {
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("02D", "XXX", 0);
        f.boxes.expect(BoxAnswer::No);
        f.reader.answers = [&f](const std::string& command) {
            return command == "/rawxact WPV018" ? std::nullopt : f.model.answerTo(command);
        };
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.reader.commands.last(), "/rawxact WPV018"); // the silent one ends the run
        QCOMPARE(f.table_CFG().cell(7, 2), "23");
        QVERIFY(f.table_CFG().TableChanged);
        QCOMPARE(f.table_CFG().cell(27, 0), "XXX");
    }

    // kb-late-question
    void retrieveAsksAboutUnsavedChangesWithThePortOpen()
    {
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
        bool wasOpen = false;
        QString exitCaption;
        f.boxes.expect(BoxAnswer::Cancel, [&] {
            wasOpen = f.reader.PortOpen();
            exitCaption = f.find<QToolButton>("KEY_EXIT")->text();
        });
        f.press("KEY_RETRIEVE");
        QVERIFY(wasOpen);
        QCOMPARE(exitCaption, "Abort");
        QCOMPARE(f.reader.commands.size(), kIdentificationCommands);
        QVERIFY(!f.reader.PortOpen());
        QVERIFY(f.table_CFG().TableChanged);
    }

    // While a transfer runs nothing else may start, and a press that is ignored must not end a wish to abort.
    void otherStartsAreIgnoredMeanwhile()
    {
        MainWindowFixture f;
        f.start();
        bool done = false;
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 3 && !done) {
                done = true;
                f.window->Toolbar1_ButtonClick(app::ToolbarKey::Update);
                f.window->Toolbar1_ButtonClick(app::ToolbarKey::Default);
                f.find<QAction>("mnuOpen_KB")->trigger();
                f.find<QAction>("mnuSaveAs_CFG")->trigger();
                f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
                QVERIFY(!f.find<QToolButton>("KEY_RETRIEVE")->isEnabled());
            }
        };
        f.press("KEY_RETRIEVE");
        QVERIFY(done);
        QCOMPARE(f.reader.commands.size(), 32);
        QCOMPARE(f.reader.commands.count("/rawsend WPW013=95"), 0);
        QVERIFY(f.dialogs.shown.empty());
        // The tab click was kept and carried out at the end.
        QCOMPARE(f.find<QTabWidget>("SSTab1")->currentIndex(), int{kKeyboardLanguageTab});
        QCOMPARE(f.textOf("lblEditTitle_KB"), "<080> Keyboard flags");
    }

    void anIgnoredPressKeepsTheAbort()
    {
        MainWindowFixture f;
        f.start();
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 3) {
                f.press("KEY_EXIT");
                f.window->Toolbar1_ButtonClick(app::ToolbarKey::Retrieve);
            }
        };
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.reader.commands.size(), kIdentificationCommands + 3);
    }

    void aTabClickDuringIdentificationDoesNotMoveTheTransfer()
    {
        MainWindowFixture f;
        f.start();
        f.reader.onOutput = [&](int count) {
            if (count == 2) {
                f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
            }
        };
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.reader.commands.size(), 32);
        QCOMPARE(f.reader.commands.last(), "/rawxact WPV02D");
    }

    void closingDuringARetrieveUnwindsFirst()
    {
        MainWindowFixture f;
        f.start();
        QSignalSpy unloaded(f.window.get(), &app::frmMain::unloaded);
        f.window->paramTables().PutTableEntry_CFG("016", "77", 2);
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 5) {
                QVERIFY(!f.window->close());
                QVERIFY(f.window->isVisible());
            }
        };
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.reader.commands.size(), kIdentificationCommands + 5);
        QCOMPARE(f.table_CFG().cell(5, 2), "77");
        QVERIFY(!f.reader.PortOpen());
        QCOMPARE(unloaded.count(), 1);
        QVERIFY(!f.window->isVisible());
    }

    void closingDuringARetrieveAsksItsQuestionsAndCanBeCancelled()
    {
        MainWindowFixture f;
        f.start();
        QSignalSpy unloaded(f.window.get(), &app::frmMain::unloaded);
        f.window->paramTables().PutTableEntry_KB("080", "XXX", 0);
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 2) {
                f.window->close();
            }
        };
        f.boxes.expect(BoxAnswer::Cancel, [&] { QVERIFY(!f.reader.PortOpen()); });
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.boxes.shown[0].title, "Keyboard Language");
        QCOMPARE(unloaded.count(), 0);
        QVERIFY(f.window->isVisible());
        // The wish to close is gone: the next transfer runs to its end.
        f.reader.onOutput = {};
        f.reader.commands.clear();
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.reader.commands.size(), 32);
        f.table_KB().TableChanged = false;
    }

    // A tab clicked before the window was closed in vain is in effect afterwards.
    void aCancelledCloseKeepsTheTabClick()
    {
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_KB("080", "XXX", 0);
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 2) {
                f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
                f.window->close();
            }
        };
        f.boxes.expect(BoxAnswer::Cancel);
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.tabInEffect(), int{kKeyboardLanguageTab});
        QVERIFY(f.find<QWidget>("frmE_KB")->isVisible());
        f.table_KB().TableChanged = false;
    }

    void helpBoxesWaitUntilTheTransferIsOver()
    {
        MainWindowFixture f;
        f.start();
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 2) {
                f.find<QAction>("mnuRead")->trigger();
                f.find<QAction>("mnuAbout")->trigger();
                f.window->btnNotes_Click();
            }
        };
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.reader.commands.size(), 32);
        QVERIFY(f.boxes.shown.empty());
    }

    // kb-edit-during-retrieve
    void anEditMadeDuringARetrieveIsStillUnsaved()
    {
        MainWindowFixture f;
        f.start();
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 10) {
                f.window->paramTables().CFG.table().TableChanged = true;
                f.window->paramTables().CFG.table().setCell(2, 0, "XXX");
            }
        };
        f.press("KEY_RETRIEVE");
        QVERIFY(f.table_CFG().TableChanged);
        f.table_CFG().TableChanged = false;
    }

    void aLostKeyboardSendIsNotCalledSent()
    {
        MainWindowFixture f;
        f.start();
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
        f.find<tables::ParamGrid>("grdKB")->setRow(3);
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 1) {
                f.reader.hangUp();
            }
        };
        f.boxes.expect(BoxAnswer::Yes); // the question, and no notice after it
        f.editor_KB().grdKB_DblClick();
        QCOMPARE(f.boxes.shown.size(), std::size_t{1});
        QCOMPARE(f.textOf("StatusBar1_1"), "Lost the connection to COM5");
    }

    void closingDuringIdentificationReadsNoRow()
    {
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
        f.reader.onOutput = [&](int count) {
            if (count == 2) {
                f.find<QAction>("mnuExit")->trigger();
            }
        };
        f.boxes.expect(BoxAnswer::No); // asked once, by the shut-down
        f.press("KEY_RETRIEVE");
        QVERIFY(!f.reader.commands.contains("/rawxact WPV001"));
        QVERIFY(!f.window->isVisible());
    }

    void aLostConnectionIsSaidAfterTheRun()
    {
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("016", "77", 2);
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 5) {
                f.reader.hangUp();
            }
        };
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.textOf("StatusBar1_1"), "Lost the connection to COM5");
        QCOMPARE(f.table_CFG().cell(5, 2), "77");
        QVERIFY(!f.reader.PortOpen());
        // Usable at once.
        f.reader.onOutput = {};
        f.reader.commands.clear();
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.reader.commands.size(), 32);
        QCOMPARE(f.table_CFG().cell(5, 2), "21");
    }

    void withoutADeviceObjectTheUserIsTold()
    {
        MainWindowFixture f;
        f.start();
        f.driver.opens = false;
        f.boxes.expect(BoxAnswer::Ok, [&] {
            QCOMPARE(f.textOf("lblDriverName"), "Unable to get virtual com port number.");
            QVERIFY(f.find<QWidget>("frmPleaseWait")->isVisible()); // it belongs to the box while it is up
        });
        f.press("KEY_UPDATE");
        QCOMPARE(f.boxes.lastText(), "Was unable to open the Teslin Device Driver.  Check to see if the driver is "
                                     "installed and the Teslin is attached");
        QCOMPARE(f.boxes.shown[0].icon, platform::BoxIcon::Critical);
        QVERIFY(f.find<QToolButton>("KEY_UPDATE")->isEnabled());
        QVERIFY(!f.find<QWidget>("frmPleaseWait")->isVisible());
        QCOMPARE(f.textOf("StatusBar1_1"), "");
        QVERIFY(f.reader.commands.isEmpty());
    }

    void secondKeyboardUpdateIsShiftedByOne()
    {
        MainWindowFixture f;
        f.start();
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
        f.press("KEY_UPDATE");
        QCOMPARE(f.reader.commands.size(), 154);
        QCOMPARE(f.reader.commands.at(6), "/rawsend WPW081=00");
        QCOMPARE(f.reader.commands.last(), "/rawsend WPW114=2C");
        QCOMPARE(f.table_KB().cell(75, 1), "113-114"); // the column shows nothing of it
        f.reader.commands.clear();
        f.press("KEY_UPDATE");
        QCOMPARE(f.reader.commands.at(6), "/rawsend WPW082=00");
        QCOMPARE(f.reader.commands.last(), "/rawsend WPW115=2C");
        // An edit is no longer marked: its address is in no index entry.
        f.find<tables::ParamGrid>("grdKB")->setRow(3);
        QTest::mouseClick(f.find<QAbstractButton>("radShiftA1_KB_1"), Qt::LeftButton);
        QCOMPARE(f.table_KB().cell(3, 2), "30-03");
        QVERIFY(!f.table_KB().TableChanged);
        // Set Default repairs the list.
        f.press("KEY_DEFAULT");
        f.reader.commands.clear();
        f.press("KEY_UPDATE");
        QCOMPARE(f.reader.commands.at(6), "/rawsend WPW081=00");
    }

    void doubleClickOffersToSendOneRow()
    {
        MainWindowFixture f;
        f.start();
        auto* grid = f.find<tables::ParamGrid>("grdCFG");
        const QRect row2 = grid->visualRect(grid->model()->index(1, 2));
        f.boxes.expect(BoxAnswer::Yes);
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, row2.center());
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, row2.center());
        QCOMPARE(f.boxes.lastText(), "Do you want to send this parameter? ( 013=95)");
        QCOMPARE(f.reader.commands.size(), kIdentificationCommands + 1);
        QCOMPARE(f.reader.commands.last(), "/rawsend WPW013=95");
        QVERIFY(!f.reader.PortOpen());
    }

    // A time-out stays in force for everything that the toolbar did not start.
    // kb-no-waiting
    void anAbortPersistsUntilTheNextToolbarPress()
    {
        MainWindowFixture f;
        f.start();
        f.reader.answers = [](const std::string&) { return std::nullopt; };
        f.press("KEY_RETRIEVE"); // nothing answers: the first row times out
        QVERIFY(f.window->link().state().UserAbort);
        f.reader.answers = [&f](const std::string& command) { return f.model.answerTo(command); };
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kReadTestTab);
        QVERIFY(f.window->link().state().UserAbort);
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kConfigurationTab);
        f.press("KEY_UPDATE");
        QVERIFY(!f.window->link().state().UserAbort);
    }
};

static const testsupport::RunnableTest<DeviceWindowTest> kRunnable;
#include "DeviceWindowTest.moc"
