#include "app/startup/ProgramText.h"
#include "platform/qt/AnsiText.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SlowScreen.h"
#include "widgets/NormalPlacement.h"

#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QToolButton>

using namespace testsupport;
using app::kConfigurationTab;
using app::kKeyboardLanguageTab;
using app::kReadTestTab;
using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::toQString;

namespace {

constexpr std::array<const char*, 7> kKeys = {"KEY_RETRIEVE", "KEY_UPDATE",  "KEY_LOAD", "KEY_SAVE",
                                              "KEY_DEFAULT",  "KEY_SUMMARY", "KEY_EXIT"};

} // namespace

// The window as it stands: what it shows, how it starts and ends.
class MainWindowTest final : public QObject
{
    Q_OBJECT

private slots:
    void toolbarHasItsSevenButtons()
    {
        MainWindowFixture f;
        f.start();
        const QStringList captions = {"Retrieve", "Update", "Load File", "Save File", "Set Default", "Summary", "Exit"};
        const QStringList toolTips = {"Get the current values from the attached Teslin",
                                      "Send the below config to the attached Teslin",
                                      "Load the below table from a file",
                                      "Save the below table to a file",
                                      "Preset the table below to the factory defaults",
                                      "Create a summary of the settings below",
                                      "Exit the program"};
        const QList<QAction*> buttons = f.find<QToolBar>("Toolbar1")->actions();
        QCOMPARE(buttons.size(), 7);
        for (int i = 0; i < 7; ++i) {
            QCOMPARE(buttons.at(i)->text(), captions.at(i));
            QCOMPARE(buttons.at(i)->toolTip(), toolTips.at(i));
            QCOMPARE(buttons.at(i)->objectName(), QLatin1String(kKeys[static_cast<std::size_t>(i)]));
            QVERIFY(f.find<QToolButton>(kKeys[static_cast<std::size_t>(i)])->isVisible());
        }
    }

    void menuBarHasItsEntriesInOrder()
    {
        MainWindowFixture f;
        f.start();
        const auto entries = [&f](const char* menu) {
            QStringList list;
            for (const QAction* entry : f.find<QMenu>(menu)->actions()) {
                list << entry->objectName() + QLatin1Char('=') + entry->text();
            }
            return list;
        };
        QStringList menus;
        for (const QAction* menu : f.window->menuBar()->actions()) {
            menus << menu->text();
        }
        QCOMPARE(menus, QStringList({"&File", "&Tools", "&Help"}));
        QCOMPARE(entries("mnuFile"),
                 QStringList({"mnuOpen_CFG=&Load Teslin Config File", "mnuSave_CFG=&Save  Teslin Config File",
                              "mnuSaveAs_CFG=Save  Teslin Config File &As...", "mnuSep3=",
                              "mnuOpen_KB=Load &Keyboard Language File", "mnuSave_KB=Sa&ve  Keyboard Language File",
                              "mnuSaveAs_KB=Save  Ke&yboard Language File As...",
                              "mnuSep1=", "mnuOptions=Port Setup &Options", "mnuSep2=", "mnuExit=&Exit"}));
        QCOMPARE(entries("mnuTools"), QStringList({"mnuEditSingle=&Edit Single Field"}));
        QCOMPARE(entries("menuHelp"), QStringList({"mnuRead=&Brief help", "mnuAbout=&About Teslin Configure"}));
    }

    // kb-defaults-at-start
    void startsWithBothTablesAtTheirDefaults()
    {
        MainWindowFixture f;
        f.start();
        QCOMPARE(f.window->windowTitle(), "Teslin Configure");
        QCOMPARE(f.find<QTabWidget>("SSTab1")->currentIndex(), 0);
        QCOMPARE(f.find<QTabWidget>("SSTab1")->tabText(0), "Configuration");
        QCOMPARE(f.find<QTabWidget>("SSTab1")->tabText(1), "Keyboard Language");
        QCOMPARE(int{f.table_CFG().NumParms}, 27);
        QCOMPARE(int{f.table_KB().NumParms}, 75);
        QCOMPARE(f.table_CFG().cell(27, 1), "02D");
        QCOMPARE(f.table_KB().cell(75, 1), "113-114");
        QVERIFY(!f.table_CFG().TableChanged);
        QVERIFY(!f.table_KB().TableChanged);
        QVERIFY(f.reader.commands.isEmpty()); // the device is not opened at start-up
        QVERIFY(f.boxes.shown.empty());
    }

    void startsOnTheValueOfTheFirstRowReadyToEdit()
    {
        MainWindowFixture f;
        f.start();
        const auto* grid = f.find<tables::ParamGrid>("grdCFG");
        QCOMPARE(grid->row(), 1);
        QCOMPARE(grid->col(), 2);
        QCOMPARE(f.textOf("lblEditTitle_CFG"), "<001> Parameter ID and Mod Flag ");
        QCOMPARE(f.window->focusWidget(), grid);
        QVERIFY(f.window->isActiveWindow());
        f.find<tables::ParamGrid>("grdCFG")->setRow(2);
        QCOMPARE(f.textOf("lblEditTitle_CFG"), "<013> Track enables / ID Flag");
    }

    void withoutADriverItBeepsTellsAndGoesOn()
    {
        MainWindowFixture f;
        QVERIFY(QFile::remove(f.driverFile()));
        bool windowWasHidden = false;
        f.boxes.expect(BoxAnswer::Ok, [&] { windowWasHidden = !f.window->isVisible(); });
        f.start();
        QVERIFY(windowWasHidden); // the check comes before the window is shown
        QCOMPARE(f.beep.count, 1);
        QCOMPARE(f.boxes.shown.size(), std::size_t{1});
        QCOMPARE(f.boxes.shown[0].icon, BoxIcon::Critical);
        QCOMPARE(f.boxes.shown[0].buttons, BoxButtons::Ok);
        QCOMPARE(f.boxes.lastText(),
                 "The Teslin KSD driver needs to be loaded before this program will work.  You may look at the program "
                 "but nothing will be functional until the driver is installed.\r\n"
                 "The KSD driver can be obtained at " +
                     std::string(app::kSupportAddress) +
                     ":\r\n"
                     "Part Number:\t60051410 for Windows 95/98 and ME\r\n"
                     "\t\t60051411 for Windows NT\r\n"
                     "\t\t60051412 for Windows 2K and XP");
        QCOMPARE(int{f.table_CFG().NumParms}, 27);
    }

    void notesAreThoseOfTheTab()
    {
        MainWindowFixture f;
        f.start();
        f.boxes.expect(BoxAnswer::Ok);
        QTest::mouseClick(f.find<QPushButton>("btnNotes"), Qt::LeftButton);
        QCOMPARE(f.boxes.shown[0].title, "Notes on the Configuration table");
        QCOMPARE(f.boxes.shown[0].icon, BoxIcon::Information);
        QCOMPARE(f.boxes.lastText(), "1. Select the \"Keyboard Language\" tab to review the keyboard\r\n"
                                     "     scan code entries.\r\n"
                                     "2. The Keyboard Language tab contains the addresses 080 to 114.\r\n"
                                     "3. Any other address not shown is reserved for future use.\r\n"
                                     "4. Parameter 01B: A special character is any character with an ASCII.\r\n"
                                     "     value less than 0x20.\r\n"
                                     "5. Parameter 027: The Command prefix must not be set to a character\r\n"
                                     "     that could appear in a command since a new command is started\r\n"
                                     "     whenever this character is detected.\r\n"
                                     "6  Double-clicking a value in the table allows you to send that one\r\n"
                                     "     value to the Teslin.");
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(1);
        f.boxes.expect(BoxAnswer::Ok);
        QTest::mouseClick(f.find<QPushButton>("btnNotes"), Qt::LeftButton);
        QCOMPARE(f.boxes.shown[1].title, "Notes on the Keyboard Language table");
        QCOMPARE(f.boxes.lastText(), "1. Select the \"Configuration\" tab to review the general\r\n"
                                     "     configuration entries.\r\n"
                                     "2. The Configuration tab contains the addresses 001 to 02D.\r\n"
                                     "3. Any other address not shown is reserved for future use.\r\n"
                                     "4. The parameters at address 081 and above are shown in pairs.\r\n"
                                     "     * The leftmost address corresponds to the leftmost parameter.\r\n"
                                     "     * The rightmost address corresponds to the rightmost parameter.\r\n"
                                     "5. Each of the parameter pairs from 083 to 113 have a bit field and\r\n"
                                     "     a scan code value.\r\n"
                                     "6. Double-clicking a value in the table allows you to send that one\r\n"
                                     "     value to the Teslin.");
    }

    void briefHelp()
    {
        MainWindowFixture f;
        f.start();
        f.boxes.expect(BoxAnswer::Ok);
        f.find<QAction>("mnuRead")->trigger();
        QCOMPARE(f.boxes.shown[0].title, "Teslin Configure help");
        QCOMPARE(toQString(f.boxes.lastText()),
                 QStringLiteral("Read the Teslin\u2122 Swipe Reader Technical Manual (P/N 60044718) for details.\r\n"
                                "Connect Teslin and click the Retrieve button to download current values.\r\n"
                                "Click the Update button to send edited values back to the Teslin."));
    }

    void switchingTabsOpensTheEditorOfTheCurrentRow()
    {
        MainWindowFixture f;
        f.start();
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(1);
        QCOMPARE(f.textOf("lblEditTitle_KB"), "<080> Keyboard flags");
        QVERIFY(f.find<QWidget>("frmE_KB")->isVisible());
        // An edit belongs to the row that is shown.
        QTest::mouseClick(f.find<QAbstractButton>("radP080E_KB_1"), Qt::LeftButton);
        QCOMPARE(f.table_KB().cell(1, 2), "01");
        QCOMPARE(f.table_KB().cell(1, 0), "XXX");
        QCOMPARE(f.find<QTabWidget>("SSTab1")->tabText(1), "Keyboard Language *");
        QVERIFY(!f.table_CFG().TableChanged);
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(0);
        QCOMPARE(f.textOf("lblEditTitle_CFG"), "<001> Parameter ID and Mod Flag ");
        QVERIFY(f.find<QWidget>("lblDecEntry")->isVisible());
        QVERIFY(!f.find<QWidget>("frmE_KB")->isVisible());
        f.table_KB().TableChanged = false;
    }

    void setDefaultResetsTheTableOfTheTab()
    {
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("01A", "20", 2);
        f.window->paramTables().PutTableEntry_KB("083", "11-22", 2);
        f.press("KEY_DEFAULT");
        QCOMPARE(f.table_CFG().cell(9, 2), "12");
        QCOMPARE(f.table_KB().cell(3, 2), "11-22");
        QCOMPARE(f.find<tables::ParamGrid>("grdCFG")->row(), 2);
        QCOMPARE(f.textOf("lblEditTitle_CFG"), "<013> Track enables / ID Flag");
    }

    void setDefaultAsksAboutUnsavedChanges()
    {
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("01A", "20", 2);
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
        f.boxes.expect(BoxAnswer::Cancel);
        f.press("KEY_DEFAULT");
        QCOMPARE(f.table_CFG().cell(9, 2), "20");
        QCOMPARE(f.boxes.shown[0].title, "Configuration");
        QCOMPARE(f.boxes.lastText(), "Configuration table changed but not saved!\r\nDo you wish to save now?");
        QCOMPARE(f.boxes.shown[0].icon, BoxIcon::Question);
        QCOMPARE(f.boxes.shown[0].buttons, BoxButtons::YesNoCancel);
        QCOMPARE(f.boxes.shown[0].defaultButton, BoxAnswer::Yes);
        f.boxes.expect(BoxAnswer::No);
        f.press("KEY_DEFAULT");
        QCOMPARE(f.table_CFG().cell(9, 2), "12");
        // Neither the reset nor the answer saved anything, so closing asks again.
        QVERIFY(f.table_CFG().TableChanged);
        QCOMPARE(f.find<QTabWidget>("SSTab1")->tabText(0), "Configuration *");
    }

    // Both tables changed: two questions, Configuration first, whatever the first answer is.
    void closingAsksAboutBothTables_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");
        QTest::addColumn<bool>("closes");
        QTest::newRow("no, no") << int(BoxAnswer::No) << int(BoxAnswer::No) << true;
        QTest::newRow("cancel, no") << int(BoxAnswer::Cancel) << int(BoxAnswer::No) << false;
        QTest::newRow("no, cancel") << int(BoxAnswer::No) << int(BoxAnswer::Cancel) << false;
        QTest::newRow("cancel, cancel") << int(BoxAnswer::Cancel) << int(BoxAnswer::Cancel) << false;
    }
    void closingAsksAboutBothTables()
    {
        QFETCH(int, first);
        QFETCH(int, second);
        QFETCH(bool, closes);
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
        f.window->paramTables().PutTableEntry_KB("080", "XXX", 0);
        QSignalSpy unloaded(f.window.get(), &app::frmMain::unloaded);
        f.boxes.expect(BoxAnswer(first));
        f.boxes.expect(BoxAnswer(second));
        QCOMPARE(f.window->close(), closes);
        QVERIFY(f.boxes.verifyAllUsed());
        QCOMPARE(f.boxes.shown[0].title, "Configuration");
        QCOMPARE(f.boxes.shown[1].title, "Keyboard Language");
        QCOMPARE(f.boxes.shown[1].text, "Keyboard Language table changed but not saved!\r\nDo you wish to save now?");
        QCOMPARE(unloaded.count(), closes ? 1 : 0);
        QCOMPARE(f.window->isVisible(), !closes);
        if (!closes) {
            // The same questions come again: nothing was saved.
            f.boxes.expect(BoxAnswer::No);
            f.boxes.expect(BoxAnswer::No);
            QVERIFY(f.window->close());
        }
    }

    void exitButtonAndMenuCloseTheWindow()
    {
        for (const bool byMenu : {false, true}) {
            MainWindowFixture f;
            f.start();
            QSignalSpy unloaded(f.window.get(), &app::frmMain::unloaded);
            if (byMenu) {
                f.find<QAction>("mnuExit")->trigger();
            } else {
                f.press("KEY_EXIT");
            }
            QCOMPARE(unloaded.count(), 1);
        }
    }

    void placementIsKeptBetweenRuns()
    {
        MainWindowFixture f;
        f.start();
        f.window->resize(760, 710);
        f.window->move(20, 30);
        QVERIFY(f.window->close());
        platform::ProfileStrings settings(f.settingsFile());
        QCOMPARE(settings.get("Select_Window_frmMain", "Settings"), "20,30,760,710");
        QCOMPARE(settings.get("Select_Window_frmMain", "WindowState"), "0");
        QCOMPARE(settings.get("Name", "Friendly Name"), "Teslin");
        QCOMPARE(settings.get("Port", "Virtual Port"), "COM5");
        f.start();
        QCOMPARE(f.window->size(), QSize(760, 710));
        QCOMPARE(f.window->pos(), QPoint(20, 30));
    }

    // The frame counts: without it the window would be a little further up at every start.
    // kb-never-maximised
    void aMaximisedWindowKeepsItsNormalPlacement_data()
    {
        QTest::addColumn<QString>("state");
        QTest::newRow("maximised") << "2";
        QTest::newRow("minimised") << "1";
    }
    void aMaximisedWindowKeepsItsNormalPlacement()
    {
        QFETCH(QString, state);
        MainWindowFixture f;
        f.start();
        f.window->resize(760, 710);
        f.window->move(20, 30);
        const bool isMaximised = state == QLatin1String("2");
        for (int restart = 0; restart < 3; ++restart) {
            QVERIFY(!f.window->isMaximized() && !f.window->isMinimized());
            QTRY_COMPARE(widgets::NormalPlacement::of(*f.window).place(), QRect(20, 30, 760, 710));
            isMaximised ? f.window->showMaximized() : f.window->showMinimized();
            QTRY_VERIFY(isMaximised ? f.window->isMaximized() : f.window->isMinimized());
            QVERIFY(f.window->close());
            platform::ProfileStrings settings(f.settingsFile());
            QCOMPARE(settings.get("Select_Window_frmMain", "Settings"), "20,30,760,710");
            QCOMPARE(settings.get("Select_Window_frmMain", "WindowState"), state.toStdString());
            f.start();
            QCOMPARE(f.window->pos(), QPoint(20, 30));
            QCOMPARE(f.window->size(), QSize(760, 710));
        }
    }

    // Where the window system sends the new size first and the new state a moment later.
    void aSizeThatComesBeforeTheMaximisedStateIsNotTheNormalOne()
    {
        MainWindowFixture f;
        platform::ProfileStrings settings(f.settingsFile());
        QVERIFY(settings.set("Select_Window_frmMain", "Settings", "20,30,760,710"));
        f.start();
        f.window->setGeometry(f.window->screen()->availableGeometry());
        f.window->showMaximized();
        QTRY_VERIFY(f.window->isMaximized());
        QVERIFY(f.window->close());
        QCOMPARE(settings.get("Select_Window_frmMain", "Settings"), "20,30,760,710");
    }

    // Only then is the window's frame known, which its placement counts.
    void startUpWaitsForTheWindowToBeOnScreen()
    {
        MainWindowFixture f;
        f.tickMilliseconds = 0; // nothing else wakes the wait
        // The splash is shown a second time, above the window, when the wait is over.
        class SplashWatch final : public QObject
        {
        public:
            explicit SplashWatch(const MainWindowFixture& fixture)
                : m_fixture(fixture)
            {
                QCoreApplication::instance()->installEventFilter(this);
            }
            QList<bool> wasOnScreen;

        private:
            bool eventFilter(QObject* watched, QEvent* event) override
            {
                if (event->type() == QEvent::Show && watched->objectName() == QLatin1String("frmSplash")) {
                    wasOnScreen << m_fixture.window->testAttribute(Qt::WA_Mapped);
                }
                return false;
            }
            const MainWindowFixture& m_fixture;
        };
        const SplashWatch watch(f);
        const SlowScreen screen(SlowScreen::ShowsLater);
        f.start();
        QCOMPARE(watch.wasOnScreen, QList<bool>({false, true}));
    }

    void unusablePlacementLeavesTheDesignedSize_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::newRow("no comma") << "100";
        QTest::newRow("no numbers") << "a,b,c,d";
        QTest::newRow("two numbers") << "100,200";
        QTest::newRow("no area") << "10,10,0,-5";
    }
    void unusablePlacementLeavesTheDesignedSize()
    {
        QFETCH(QString, stored);
        MainWindowFixture f;
        f.start();
        const QSize designed = f.window->size();
        platform::ProfileStrings settings(f.settingsFile());
        QVERIFY(settings.set("Select_Window_frmMain", "Settings", platform::toAnsi(stored)));
        f.start();
        QCOMPARE(f.window->size(), designed);
    }

    void aPlacementOffEveryScreenComesBackVisible()
    {
        MainWindowFixture f;
        f.start();
        platform::ProfileStrings settings(f.settingsFile());
        QVERIFY(settings.set("Select_Window_frmMain", "Settings", "15000,-9000,30000,20000"));
        f.start();
        QVERIFY(f.window->screen()->availableGeometry().contains(f.window->frameGeometry()));
    }

    void settingsNameDriverAndPort()
    {
        MainWindowFixture f;
        platform::ProfileStrings settings(f.settingsFile());
        QVERIFY(settings.set("Name", "Friendly Name", "Teslin2"));
        QVERIFY(settings.set("Port", "Virtual Port", "COM12"));
        f.start();
        QCOMPARE(f.window->link().state().DriverFriendlyName, "Teslin2");
        QCOMPARE(f.window->link().virtualPort().portText(), "COM12");
        QCOMPARE(int{f.window->link().state().PortNumber}, 0); // the port is detected all the same
    }

    // kb-command-letter
    void commandLineR_data()
    {
        QTest::addColumn<QString>("commandLine");
        QTest::addColumn<int>("tab");
        QTest::newRow("none") << "" << 0;
        QTest::newRow("R") << "R" << 2;
        QTest::newRow("lower case") << "r" << 2;
        QTest::newRow("a longer word") << "report.tlc" << 2;
        QTest::newRow("another letter") << "x" << 0;
        QTest::newRow("an option") << "-r" << 0;
    }
    void commandLineR()
    {
        QFETCH(QString, commandLine);
        QFETCH(int, tab);
        MainWindowFixture f;
        f.start(commandLine.toStdString());
        QCOMPARE(f.find<QTabWidget>("SSTab1")->currentIndex(), tab);
        const auto entered = f.reader.commands.count("/rawsend \\xA2");
        QCOMPARE(entered, tab == 2 ? 1 : 0); // the test is entered once
    }

    void readTestTabIgnoresTheToolbar()
    {
        MainWindowFixture f;
        f.start();
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kReadTestTab);
        QVERIFY(!f.find<QToolButton>("KEY_RETRIEVE")->isEnabled());
        QVERIFY(!f.find<QToolButton>("KEY_UPDATE")->isEnabled());
        QVERIFY(f.find<QToolButton>("KEY_EXIT")->isEnabled());
        QVERIFY(!f.find<QPushButton>("btnNotes")->isVisible());
        f.reader.commands.clear();
        f.find<app::MainToolbar>("Toolbar1")->EnableButtons(true);
        for (const char* key : {"KEY_RETRIEVE", "KEY_UPDATE", "KEY_LOAD", "KEY_SAVE", "KEY_DEFAULT", "KEY_SUMMARY"}) {
            f.press(key);
        }
        QVERIFY(f.reader.commands.isEmpty());
        QVERIFY(f.dialogs.shown.empty());
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kConfigurationTab);
        QVERIFY(f.find<QToolButton>("KEY_RETRIEVE")->isEnabled());
        QVERIFY(f.find<QPushButton>("btnNotes")->isVisible());
        QVERIFY(f.reader.commands.contains("/rawsend \\xA5"));
    }

    void theWheelOverTheTabsChangesNothing()
    {
        MainWindowFixture f;
        f.start();
        auto* bar = f.find<QTabWidget>("SSTab1")->tabBar();
        QWheelEvent wheel(bar->rect().center(), bar->mapToGlobal(bar->rect().center()), {}, {0, -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(bar, &wheel);
        QCOMPARE(f.find<QTabWidget>("SSTab1")->currentIndex(), 0);
    }

    void fileNameIsShownForItsTable()
    {
        MainWindowFixture f;
        f.start();
        const auto* shown = f.find<QLabel>("lblFilename");
        QVERIFY(!shown->isVisible());
        f.rememberFile(kConfigurationTab, "/tables/shop.tlc");
        QVERIFY(shown->isVisible());
        QCOMPARE(shown->text(), "/tables/shop.tlc");
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
        QVERIFY(!shown->isVisible());
        f.rememberFile(kKeyboardLanguageTab, "/tables/shop.TLC"); // a name of the other kind
        QVERIFY(!shown->isVisible());
        f.rememberFile(kKeyboardLanguageTab, "*.txt"); // a pattern
        QVERIFY(!shown->isVisible());
        f.rememberFile(kKeyboardLanguageTab, "/tables/us.txt");
        QCOMPARE(shown->text(), "/tables/us.txt");
        QVERIFY(shown->isVisible());
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kConfigurationTab);
        QCOMPARE(shown->text(), "/tables/shop.tlc");
        f.press("KEY_DEFAULT"); // a reset forgets the file
        QVERIFY(!shown->isVisible());
    }

    // A deep folder, or a driver that says a lot, must not make the window wider than the screen.
    void longTextsDoNotWidenTheWindow()
    {
        MainWindowFixture f;
        f.start();
        const QSize size = f.window->size();
        const std::string deep = "/" + std::string(400, 'x') + "/shop.tlc";
        f.rememberFile(kConfigurationTab, deep);
        for (const device::Identification which :
             {device::Identification::Driver, device::Identification::Firmware, device::Identification::Copyright}) {
            f.linkPanel().setIdentification(which, std::string(2000, 'x'));
            f.linkPanel().showIdentification(which, device::Shown::WithTitle);
        }
        f.find<QLabel>("lblLanguage")->setText(QString(500, QLatin1Char('x')));
        QCOMPARE(f.textOf("lblFilename"), QString::fromStdString(deep));
        QVERIFY(f.find<QLabel>("lblFilename")->isVisible());
        QCoreApplication::processEvents();
        QCOMPARE(f.window->size(), size);
        QVERIFY2(f.window->minimumSizeHint().width() <= 1024,
                 qPrintable(QString::number(f.window->minimumSizeHint().width())));
        // What stands behind them is still there.
        const auto* lamp = f.find<QWidget>("shpRecv");
        QVERIFY(f.window->rect().contains(QRect(lamp->mapTo(f.window.get(), QPoint()), lamp->size())));
        const auto* notes = f.find<QWidget>("btnNotes");
        QVERIFY(f.window->rect().contains(QRect(notes->mapTo(f.window.get(), QPoint()), notes->size())));
    }

    void fitsASmallScreen()
    {
        MainWindowFixture f;
        f.start();
        QVERIFY2(f.window->minimumSizeHint().width() <= 1024 && f.window->minimumSizeHint().height() <= 700,
                 qPrintable(QStringLiteral("%1 x %2")
                                .arg(f.window->minimumSizeHint().width())
                                .arg(f.window->minimumSizeHint().height())));
    }
};

static const testsupport::RunnableTest<MainWindowTest> kRunnable;
#include "MainWindowTest.moc"
