// The windows that the main window opens: from its menus, at start-up, and their end with it.

#include "app/dialogs/frmAbout.h"
#include "app/dialogs/frmOptions.h"
#include "platform/qt/QtMessageBoxes.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QAction>
#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>
#include <QWindow>

using namespace testsupport;
using app::kConfigurationTab;
using app::kKeyboardLanguageTab;
using app::kReadTestTab;
using platform::BoxAnswer;

namespace {

// A window of the program by its name, wherever it belongs; null when there is none.
QWidget* windowNamed(const char* name)
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QLatin1String(name)) {
            return window;
        }
    }
    return nullptr;
}

// The windows in the order in which they were shown.
class ShownNames final : public QObject
{
public:
    ShownNames() { QCoreApplication::instance()->installEventFilter(this); }
    QStringList names;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show && watched->isWidgetType() && static_cast<QWidget*>(watched)->isWindow()) {
            names << watched->objectName();
        }
        return false;
    }
};

bool isShown(const char* name)
{
    const QWidget* window = windowNamed(name);
    return window != nullptr && window->isVisible();
}

struct Program : MainWindowFixture
{
    Program() { start(); }

    void choose(const char* menuEntry) { find<QAction>(menuEntry)->trigger(); }
    void showTab(int tab) { find<QTabWidget>("SSTab1")->setCurrentIndex(tab); }
    void click(const char* button) { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); }
    void setText(const char* box, const char* text) { find<QLineEdit>(box)->setText(QLatin1String(text)); }
    // A single setting, as a user writes one.
    void updateSingle(const char* address, const char* value)
    {
        choose("mnuEditSingle");
        setText("txtSingleAddress", address);
        setText("txtSingleValue", value);
        boxes.expect(BoxAnswer::Ok);
        click("btnUpdateSingleField");
    }
    [[nodiscard]] std::string setting(const char* section, const char* key)
    {
        return platform::ProfileStrings(settingsFile()).get(section, key);
    }
    [[nodiscard]] const std::string& currentAddress() { return window->paramTables().session.CurrentAddress; }
    // The tables hold edits, and nobody is to ask about them.
    void forgetEdits() { table_CFG().TableChanged = table_KB().TableChanged = false; }
    void hangUpDriver() { driver.opens = reader.opens = false; }
};

} // namespace

class DialogsTest final : public QObject
{
    Q_OBJECT

private slots:
    // --- Start-up ---

    void theSplashComesBeforeTheFirstStepAndStaysAboveTheMainWindow()
    {
        MainWindowFixture f;
        QVERIFY(QFile::remove(f.driverFile()));
        bool splash = false;
        bool mainWindow = true;
        f.boxes.expect(BoxAnswer::Ok, [&] { // in the first step
            splash = isShown("frmSplash");
            mainWindow = isShown("frmMain");
        });
        const ShownNames shown;
        f.start();
        QVERIFY(splash);
        QVERIFY(!mainWindow);
        QVERIFY(isShown("frmSplash"));
        QVERIFY(isShown("frmMain"));
        QCOMPARE(shown.names, QStringList({"frmSplash", "frmMain", "frmSplash"})); // what is shown last is above
        QCOMPARE(windowNamed("frmSplash")->windowHandle()->transientParent(), f.window->windowHandle());
        QVERIFY(windowNamed("frmAbout") == nullptr); // the check is its own, but shows no box
    }

    void theSplashGoesWhenABoxOpens()
    {
        MainWindowFixture f;
        f.start();
        QVERIFY(isShown("frmSplash"));
        platform::QtMessageBoxes boxes(QStringLiteral("Teslin Configure"));
        bool wasGone = false;
        QTimer::singleShot(0, f.window.get(), [&] {
            wasGone = !isShown("frmSplash");
            QApplication::activeModalWidget()->close();
        });
        boxes.show({.text = "no driver"});
        QVERIFY(wasGone);
    }

    void theSplashIsGoneBeforeAStartInTheReadTest()
    {
        MainWindowFixture f;
        bool opened = false;
        bool wasGone = false;
        f.driver.onOpen = [&] {
            opened = true;
            wasGone = !isShown("frmSplash");
        };
        f.start("R");
        QVERIFY(opened && wasGone);
    }

    void theSplashGoesWithTheMainWindow()
    {
        MainWindowFixture f;
        f.start();
        QVERIFY(isShown("frmSplash"));
        QVERIFY(f.window->close());
        QVERIFY(!isShown("frmSplash"));
    }

    void nothingElseIsOpenAtFirst()
    {
        Program p;
        for (const char* name : {"frmOptions", "dlgSingleField", "frmAbout", "frmPleaseWait", "frmSummary"}) {
            QVERIFY2(!isShown(name), name);
        }
        QVERIFY(p.windowOrder.calls.isEmpty());
    }

    // --- Please wait ---

    void pleaseWaitIsOnTopWhileTheDeviceIsOpened()
    {
        Program p;
        QStringList states;
        p.reader.onOutput = [&](int count) {
            if (count == 1 || count == 7) { // identification, and the second parameter
                states << QLatin1String(isShown("frmPleaseWait") ? "shown" : "hidden");
            }
        };
        p.press("KEY_RETRIEVE");
        QCOMPARE(states, QStringList({"shown", "hidden"}));
        QCOMPARE(p.windowOrder.calls, QStringList({"frmPleaseWait -1 3 hidden", "frmPleaseWait 0 3 visible"}));
        QCOMPARE(windowNamed("frmPleaseWait")->findChild<QLabel*>("Label1")->text(), "Please Wait...");
        QVERIFY(!windowNamed("frmPleaseWait")->isModal());
    }

    void pleaseWaitStandsUnderTheMessageOfAFailure()
    {
        Program p;
        p.driver.opens = false;
        bool shown = false;
        p.boxes.expect(BoxAnswer::Ok, [&] { shown = isShown("frmPleaseWait"); });
        p.press("KEY_RETRIEVE");
        QVERIFY(shown);
        QVERIFY(!isShown("frmPleaseWait"));
        QCOMPARE(p.windowOrder.calls, QStringList({"frmPleaseWait -1 3 hidden", "frmPleaseWait 0 3 visible"}));
    }

    // --- Single setting ---

    void aSingleSettingIsReadFromTheReader()
    {
        Program p;
        p.choose("mnuEditSingle");
        QVERIFY(isShown("dlgSingleField"));
        QCOMPARE(p.windowOrder.calls, QStringList({"dlgSingleField -1 3 hidden"}));
        QCOMPARE(p.find<QTabWidget>("SSTab1")->currentIndex(), kConfigurationTab);
        QVERIFY(p.model.memory().store("01A", "5C"));
        p.setText("txtSingleAddress", "01A");
        p.click("btnGetCurrentSingle");
        QCOMPARE(p.find<QLineEdit>("txtSingleValue")->text(), "5C");
        QVERIFY(!p.reader.PortOpen());
        // No table follows a read.
        QVERIFY(!p.table_CFG().TableChanged);
    }

    void aSingleSettingIsWrittenToReaderAndTable()
    {
        Program p;
        p.updateSingle("084", "A1");
        QCOMPARE(p.model.memory().value("084"), std::string("A1"));
        QCOMPARE(p.table_KB().cell(3, 2), "20-A1");
        QCOMPARE(p.table_KB().cell(3, 0), "XXX");
        QCOMPARE(p.find<QTabWidget>("SSTab1")->tabText(1), "Keyboard Language *");
        QCOMPARE(p.find<QTabWidget>("SSTab1")->tabText(0), "Configuration");
        QCOMPARE(p.find<QTabWidget>("SSTab1")->currentIndex(), kConfigurationTab);
        QCOMPARE(p.boxes.lastText(), "Updated Keyboard Language table with 084=A1");
        p.forgetEdits();
    }

    void theEditorShowsTheNewValue()
    {
        Program p;
        p.updateSingle("01A", "2F");
        QCOMPARE(p.find<tables::ParamGrid>("grdCFG")->row(), 9);
        QCOMPARE(p.currentAddress(), "01A");
        QCOMPARE(p.find<QLineEdit>("txtDecEntry")->text(), "47");
        p.updateSingle("01A", "10"); // the same row again
        QCOMPARE(p.find<QLineEdit>("txtDecEntry")->text(), "16");
        p.forgetEdits();
    }

    // The refreshed editor takes the place of the one on the shown tab, which must come back.
    void theShownTabKeepsItsEditor_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<QByteArray>("shownControl");
        QTest::addColumn<QByteArray>("shownAddress");
        QTest::newRow("Keyboard Language")
            << int{kKeyboardLanguageTab} << QByteArray("01A") << QByteArray("frmE_KB") << QByteArray("080");
        QTest::newRow("Configuration") << int{kConfigurationTab} << QByteArray("084") << QByteArray("lblDecEntry")
                                       << QByteArray("001");
    }
    void theShownTabKeepsItsEditor()
    {
        QFETCH(int, tab);
        QFETCH(QByteArray, address);
        QFETCH(QByteArray, shownControl);
        QFETCH(QByteArray, shownAddress);
        Program p;
        p.showTab(tab);
        QVERIFY(p.find<QWidget>(shownControl)->isVisible());
        QCOMPARE(p.currentAddress(), shownAddress.toStdString());
        p.updateSingle(address, "2F");
        QVERIFY(p.find<QWidget>(shownControl)->isVisible());
        QCOMPARE(p.currentAddress(), shownAddress.toStdString());
        p.forgetEdits();
    }

    void aSingleSettingWorksOnTheReadTestTab()
    {
        Program p;
        p.showTab(kReadTestTab);
        p.updateSingle("01A", "2F");
        QCOMPARE(p.table_CFG().cell(9, 2), "2F");
        p.showTab(kConfigurationTab);
        QCOMPARE(p.currentAddress(), "01A");
        QCOMPARE(p.find<QLineEdit>("txtDecEntry")->text(), "47");
        p.forgetEdits();
    }

    void aSingleSettingIsIgnoredDuringARetrieve()
    {
        Program p;
        p.choose("mnuEditSingle");
        p.reader.onOutput = [&](int count) {
            if (count == 8) {
                p.click("btnGetCurrentSingle");
                p.click("btnUpdateSingleField");
            }
        };
        p.press("KEY_RETRIEVE");
        QCOMPARE(p.reader.commands.size(), 32);
        QVERIFY(!p.reader.commands.contains("/rawsend WPW000=00"));
        QCOMPARE(p.find<QLineEdit>("txtSingleValue")->text(), "00");
    }

    // --- Options ---

    void optionsAreModalToTheMainWindowAndReturnAtOnce()
    {
        Program p;
        p.choose("mnuOptions");
        QVERIFY(isShown("frmOptions"));
        QCOMPARE(windowNamed("frmOptions")->windowModality(), Qt::WindowModal);
        QCOMPARE(windowNamed("frmOptions")->parentWidget(), p.window.get());
    }

    void optionsAreCentredAtEveryOpening()
    {
        Program p;
        for (int opening = 0; opening < 3; ++opening) {
            p.choose("mnuOptions");
            const QWidget& dialog = *windowNamed("frmOptions");
            QVERIFY(dialog.frameGeometry() != dialog.geometry()); // or nothing is tested here
            const QPoint off = dialog.frameGeometry().center() - dialog.screen()->availableGeometry().center();
            QVERIFY2(off.manhattanLength() <= 2, qPrintable(QStringLiteral("%1, %2").arg(off.x()).arg(off.y())));
            p.click("cmdCancel");
        }
    }

    void testByNameOnALiveAndOnADeadLink()
    {
        Program p;
        p.choose("mnuOptions");
        p.boxes.expect(BoxAnswer::Ok);
        p.click("btnTestName");
        QCOMPARE(p.boxes.lastText(), "Teslin successfully opened (COM port 5 found)");
        QCOMPARE(p.driver.openedName, "\\\\.\\Teslin");
        p.hangUpDriver();
        p.boxes.expect(BoxAnswer::Ok);
        p.click("btnTestName");
        QCOMPARE(p.boxes.lastText(), "Unable to open Teslin");
        QCOMPARE(p.boxes.shown.size(), std::size_t{2});
    }

    void testByPortOnALiveAndOnADeadLink()
    {
        Program p;
        p.choose("mnuOptions");
        p.find<QScrollBar>("sclComPort")->setValue(7);
        p.boxes.expect(BoxAnswer::Ok);
        p.click("btnTestPort");
        QCOMPARE(p.boxes.lastText(), "Teslin successfully opened");
        QCOMPARE(p.reader.port, 7);
        QVERIFY(p.reader.PortOpen());
        QVERIFY(p.find<QLabel>("lblDriverName")->isVisible()); // the identification stays on screen
        p.hangUpDriver();
        p.boxes.expect(BoxAnswer::Ok);
        p.boxes.expect(BoxAnswer::Ok);
        p.click("btnTestPort");
        QCOMPARE(p.boxes.shown[1].text, "Could not open COM7, No such file or directory");
        QCOMPARE(p.boxes.lastText(), "Unable to open the Teslin");
        QVERIFY(!p.reader.PortOpen());
    }

    void theTestedPortIsUsedByTheNextOperation()
    {
        Program p;
        p.choose("mnuOptions");
        p.find<QScrollBar>("sclComPort")->setValue(7);
        p.boxes.expect(BoxAnswer::Ok);
        p.click("btnTestPort");
        p.click("cmdCancel");
        p.driver.openedName.clear();
        p.press("KEY_RETRIEVE");
        QCOMPARE(p.reader.port, 7);
        QCOMPARE(p.driver.openedName, ""); // nothing to detect
        QVERIFY(!p.reader.PortOpen());
    }

    void okWritesTheSettingsAtOnceAndCancelDoesNot()
    {
        Program p;
        p.window->resize(820, 700);
        p.choose("mnuOptions");
        p.setText("txtFriendlyName", "Teslin2");
        p.find<QScrollBar>("sclComPort")->setValue(12);
        p.click("cmdCancel");
        QCOMPARE(p.setting("Name", "Friendly Name"), "");
        p.choose("mnuOptions");
        QCOMPARE(p.find<QLineEdit>("txtFriendlyName")->text(), "Teslin2"); // in effect for this run
        QCOMPARE(p.find<QLineEdit>("txtComPort")->text(), "COM5");
        p.find<QScrollBar>("sclComPort")->setValue(12);
        p.click("cmdOK");
        QCOMPARE(p.setting("Name", "Friendly Name"), "Teslin2");
        QCOMPARE(p.setting("Port", "Virtual Port"), "COM12");
        const QString placement = QString::fromStdString(p.setting("Select_Window_frmMain", "Settings"));
        QVERIFY2(placement.endsWith(",820,700"), qPrintable(placement));
    }

    // What was cancelled is not written then, but the end of the program writes what is in effect.
    void theEndWritesWhatIsInEffect()
    {
        Program p;
        p.choose("mnuOptions");
        p.setText("txtFriendlyName", "Teslin2");
        p.click("cmdCancel");
        QVERIFY(p.window->close());
        QCOMPARE(p.setting("Name", "Friendly Name"), "Teslin2");
        QCOMPARE(p.setting("Port", "Virtual Port"), "COM5");
    }

    void theSavedPortSurvivesTheOptions()
    {
        Program p;
        QVERIFY(p.settings->set("Port", "Virtual Port", "COM12"));
        p.start();
        p.choose("mnuOptions");
        QCOMPARE(p.find<QLineEdit>("txtComPort")->text(), "COM12");
        QCOMPARE(p.find<QScrollBar>("sclComPort")->value(), 12);
        p.click("cmdOK");
        QVERIFY(p.window->close());
        QCOMPARE(p.setting("Port", "Virtual Port"), "COM12");
    }

    // kb-driver-name
    void theNameIsCutToWhatTheSettingsHold()
    {
        Program p;
        QVERIFY(p.settings->set("Name", "Friendly Name", std::string(50, 'x')));
        p.start();
        p.choose("mnuOptions");
        QCOMPARE(p.find<QLineEdit>("txtFriendlyName")->text(), QString(39, 'x'));
    }

    void anEmptiedNameComesBackAsTheUsualOne()
    {
        Program p;
        p.choose("mnuOptions");
        p.setText("txtFriendlyName", "");
        p.click("cmdOK");
        p.start();
        QCOMPARE(p.window->link().state().DriverFriendlyName, "Teslin");
    }

    void optionsStayClosedDuringARetrieve()
    {
        Program p;
        bool opened = true;
        p.reader.onOutput = [&](int count) {
            if (count == 8) {
                p.choose("mnuOptions");
                opened = isShown("frmOptions");
            }
        };
        p.press("KEY_RETRIEVE");
        QVERIFY(!opened);
        QVERIFY(!isShown("frmOptions"));
    }

    // --- About ---

    void aboutKeepsTheProgramUsableAndReturnsWhenItIsGone()
    {
        Program p;
        bool retrieved = false;
        QTimer::singleShot(0, p.window.get(), [&] {
            QVERIFY(isShown("frmAbout"));
            QVERIFY(!windowNamed("frmAbout")->isModal());
            p.choose("mnuAbout"); // the open one comes to the front
            p.press("KEY_RETRIEVE");
            retrieved = p.reader.commands.size() == 32;
            QVERIFY(isShown("frmAbout"));
            QTest::mouseClick(windowNamed("frmAbout")->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        });
        p.choose("mnuAbout");
        QVERIFY(retrieved);
        QVERIFY(windowNamed("frmAbout") == nullptr);
        QTimer::singleShot(0, p.window.get(), [] { QTest::keyClick(windowNamed("frmAbout"), Qt::Key_Escape); });
        p.choose("mnuAbout"); // a second time
        QVERIFY(windowNamed("frmAbout") == nullptr);
    }

    // The wait for the summary, opened later, lies over the wait for the box.
    void aboutBelowASummaryCanBeClosedAndOpenedAgain()
    {
        Program p;
        QStringList told;
        const auto pressDone = [] {
            QTest::mouseClick(windowNamed("frmSummary")->findChild<QPushButton*>("btnDone"), Qt::LeftButton);
        };
        QTimer::singleShot(0, p.window.get(), [&] {
            QTimer::singleShot(0, p.window.get(), [&] {
                windowNamed("frmAbout")->close();
                told << (isShown("frmAbout") ? "about" : "no about");
                p.choose("mnuAbout");
                told << (isShown("frmAbout") ? "about again" : "no about");
                pressDone();
            });
            p.press("KEY_SUMMARY");
            told << (isShown("frmSummary") ? "summary" : "no summary") << (isShown("frmAbout") ? "about" : "no about");
            QTimer::singleShot(0, p.window.get(), [&] {
                told << (isShown("frmAbout") ? "about still" : "no about");
                windowNamed("frmAbout")->close();
            });
        });
        p.choose("mnuAbout");
        QCOMPARE(told, QStringList({"no about", "about again", "no summary", "about", "about still"}));
        QVERIFY(windowNamed("frmAbout") == nullptr);
    }

    void aboutStartsTheSystemInformationTool()
    {
        Program p;
        p.registry.setText(R"(SOFTWARE\Microsoft\Shared Tools\MSINFO|PATH)", R"(C:\Tools\msinfo32.exe)");
        QTimer::singleShot(0, p.window.get(), [&] {
            p.click("cmdSysInfo");
            windowNamed("frmAbout")->close();
        });
        p.choose("mnuAbout");
        QCOMPARE(p.programs.started, std::vector<std::string>{R"(C:\Tools\msinfo32.exe)"});
    }

    // --- The end ---

    void theyAllCloseWithTheMainWindow()
    {
        Program p;
        QSignalSpy unloaded(p.window.get(), &app::frmMain::unloaded);
        QTimer::singleShot(0, p.window.get(), [&] {
            p.choose("mnuEditSingle");
            p.choose("mnuOptions");
            for (const char* name : {"frmAbout", "frmOptions", "dlgSingleField"}) {
                QVERIFY2(isShown(name), name);
            }
            QVERIFY(p.window->close());
        });
        p.choose("mnuAbout"); // returns, because closing the main window closes the box
        QCOMPARE(unloaded.count(), 1);
        for (const char* name : {"frmMain", "frmAbout", "frmOptions", "dlgSingleField", "frmPleaseWait"}) {
            QVERIFY2(!isShown(name), name);
        }
    }

    void theyStayWhenTheMainWindowStays()
    {
        Program p;
        p.choose("mnuEditSingle");
        p.table_CFG().TableChanged = true;
        p.boxes.expect(BoxAnswer::Cancel);
        QVERIFY(!p.window->close());
        QVERIFY(isShown("dlgSingleField"));
        p.forgetEdits();
    }

    void aTestIsUnwoundBeforeTheMainWindowCloses()
    {
        Program p;
        p.choose("mnuOptions");
        QSignalSpy unloaded(p.window.get(), &app::frmMain::unloaded);
        bool closedAtOnce = true;
        p.reader.onOutput = [&](int count) {
            if (count == 2) {
                closedAtOnce = p.window->close();
            }
        };
        p.click("btnTestPort");
        QVERIFY(!closedAtOnce);
        QCOMPARE(unloaded.count(), 1);
        QVERIFY(!isShown("frmOptions"));
        QVERIFY(!p.reader.PortOpen());
        QVERIFY(p.boxes.shown.empty()); // nobody waits for the outcome any more
    }

    void thePortThatATestLeftOpenIsClosedAtTheEnd()
    {
        Program p;
        p.choose("mnuOptions");
        p.boxes.expect(BoxAnswer::Ok);
        p.click("btnTestPort");
        p.click("cmdOK");
        QVERIFY(p.reader.PortOpen());
        p.choose("mnuExit");
        QVERIFY(!p.reader.PortOpen());
    }
};

static const testsupport::RunnableTest<DialogsTest> kRunnable;
#include "DialogsTest.moc"
