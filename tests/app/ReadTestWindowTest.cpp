#include "tests/app/ReadTestFixture.h"
#include "tests/support/RunnableTest.h"

#include <QAction>

using namespace testsupport;
using app::kConfigurationTab;
using app::kKeyboardLanguageTab;
using app::kReadTestTab;
using platform::BoxAnswer;

namespace {

const QByteArrayList kIdentify = {"/ver", "/get dev_version", "/rawxact WCY", "/rawxact WPV081", "/rawxact WPV082"};
const QByteArrayList kEntering = kIdentify + kIdentify + QByteArrayList{"/rawsend \\xA8\\x40", "/rawsend \\xA2"};
const QByteArrayList kLeaving = kIdentify + QByteArrayList{"/rawsend \\xA5"};

constexpr std::array<const char*, 6> kDeviceKeys = {"KEY_RETRIEVE", "KEY_UPDATE",  "KEY_LOAD",
                                                    "KEY_SAVE",     "KEY_DEFAULT", "KEY_SUMMARY"};

} // namespace

// Entering the read test and leaving it: what the window shows and what the reader is told.
class ReadTestWindowTest final : public QObject
{
    Q_OBJECT

private:
    static void verifyInTest(const ReadTestFixture& desk)
    {
        QCOMPARE(desk.f.find<QTabWidget>("SSTab1")->currentIndex(), int{kReadTestTab});
        QTRY_VERIFY(desk.isClear());
        QVERIFY(desk.box().textCursor().atEnd());
        QVERIFY(desk.hasFocus());
        QVERIFY(!desk.f.reader.PortOpen());
        for (const char* const key : kDeviceKeys) {
            QVERIFY2(!desk.f.find<QToolButton>(key)->isEnabled(), key);
        }
        QVERIFY(desk.f.find<QToolButton>("KEY_EXIT")->isEnabled());
        QCOMPARE(desk.f.find<QToolButton>("KEY_EXIT")->text(), "Exit");
        QVERIFY(!desk.f.find<QPushButton>("btnNotes")->isVisible());
        for (const char* const label : {"lblDriverName", "lblFirmwareValue", "lblCopyRightValue", "lblDriverLabel",
                                        "lblFirmware", "lblCopyright"}) {
            QVERIFY2(!desk.f.find<QLabel>(label)->isVisible(), label);
        }
        QVERIFY(!desk.f.find<QWidget>("frmPleaseWait")->isVisible());
    }

    static void verifyOnTable(const ReadTestFixture& desk, int tab)
    {
        QCOMPARE(desk.f.find<QTabWidget>("SSTab1")->currentIndex(), tab);
        QVERIFY(!desk.f.reader.PortOpen());
        for (const char* const key : kDeviceKeys) {
            QVERIFY2(desk.f.find<QToolButton>(key)->isEnabled(), key);
        }
        QVERIFY(desk.f.find<QPushButton>("btnNotes")->isVisible());
    }

private slots:
    void theTab()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        QCOMPARE(desk.f.textOf("lblReadTest"),
                 "When the Teslin's light turns green, please read your cards.  To exit this mode, click on either the "
                 "Configuration or the Keyboard Language tab above.");
        QVERIFY(desk.f.find<QLabel>("lblReadTest")->wordWrap());
        QVERIFY(!desk.f.find<QPushButton>("cmdClearReadDisplay")->isVisible());
        desk.clickTab(kReadTestTab);
        QVERIFY(desk.f.find<QPushButton>("cmdClearReadDisplay")->isVisible());
        QVERIFY(!desk.box().viewport()->acceptDrops());
    }

    void enteringByTab()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        desk.clickTab(kReadTestTab);
        verifyInTest(desk);
        QCOMPARE(desk.f.reader.commands, kEntering);
        QCOMPARE(desk.f.textOf("lblEditTitle_CFG"), "Read test (Click &Cancel test button to exit)");
        QCOMPARE(desk.f.textOf("lblLanguage"), "English (Code: 0409)");
    }

    void enteringByCommandLine_data()
    {
        QTest::addColumn<QByteArray>("commandLine");
        QTest::newRow("capital letter") << QByteArray("R");
        QTest::newRow("small letter") << QByteArray("r");
    }
    void enteringByCommandLine()
    {
        QFETCH(QByteArray, commandLine);
        ReadTestFixture desk;
        QVERIFY(desk.start(commandLine.constData()));
        verifyInTest(desk);
        QCOMPARE(desk.f.reader.commands, kEntering); // once
        // Start-up ends with the first row of the table, whichever tab is shown.
        QCOMPARE(desk.f.textOf("lblEditTitle_CFG"), "<001> Parameter ID and Mod Flag ");
        desk.type("a");
        desk.pause();
        QTRY_COMPARE(desk.typed(), "a\nRaw Data: a");
    }

    void enteringFromTheOtherTable()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        desk.clickTab(kKeyboardLanguageTab);
        QCOMPARE(desk.f.reader.commands, QByteArrayList{});
        desk.clickTab(kReadTestTab);
        verifyInTest(desk);
        QCOMPARE(desk.f.reader.commands, kEntering);
    }

    // What the window shows while the reader is being set.
    void onTheWay()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        QStringList seen;
        desk.f.reader.onOutput = [&](int count) {
            if (count == 2 || count == 11 || count == 12) {
                seen << desk.box().toPlainText() + (desk.hasFocus() ? " focus" : " no focus") +
                            (desk.f.find<QWidget>("frmPleaseWait")->isVisible() ? " please wait" : "") +
                            (desk.f.find<QToolButton>("KEY_UPDATE")->isEnabled() ? " buttons" : "");
            }
        };
        desk.clickTab(kReadTestTab);
        const QString settling = "Please wait...\n(Setting the Teslin to normal mode.  Ignore these values)\n focus";
        QCOMPARE(seen, (QStringList{"Please wait...\n focus please wait", settling, settling}));
    }

    // What is typed while the reader is being set goes with the text that says so.
    void keysWhileSettling()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        desk.f.reader.onOutput = [&](int count) {
            if (count == 11) {
                desk.type("%12\r");
            }
        };
        QStringList texts;
        connect(desk.f.find<QPlainTextEdit>("txtReadTest"), &QPlainTextEdit::textChanged, this,
                [&] { texts << desk.box().toPlainText(); });
        desk.clickTab(kReadTestTab);
        QCOMPARE(desk.f.reader.commands, kEntering);
        verifyInTest(desk);
        desk.pass(50);
        QCoreApplication::processEvents();
        QVERIFY(desk.isClear());
        QVERIFY(texts.contains("Please wait...\n(Setting the Teslin to normal mode.  Ignore these values)\n"
                               "\n\nTrack1: %12\n\nRaw Data: %12<CR>"));
        // The track is still open.
        desk.type(";?;");
        QTRY_COMPARE(desk.typed(), ";?\n\nTrack2: ;");
    }

    // Typed in the last ticks of it, a key is older than the clear display, but its pause is not over.
    void keysAtTheLastMoment()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        bool hasTyped = false;
        // After the last command the port is closed, and two ticks are left.
        QTimer reader;
        connect(&reader, &QTimer::timeout, this, [&] {
            if (desk.f.reader.commands.size() == 12 && !desk.f.reader.PortOpen() && !hasTyped) {
                hasTyped = true;
                desk.type("x");
            }
        });
        reader.start(0);
        desk.clickTab(kReadTestTab);
        QVERIFY(hasTyped);
        QTRY_VERIFY(desk.isClear());
        desk.pause();
        QTRY_COMPARE(desk.typed(), "\nRaw Data: x");
    }

    void leaving_data()
    {
        QTest::addColumn<int>("tab");
        QTest::newRow("Configuration") << int{kConfigurationTab};
        QTest::newRow("Keyboard Language") << int{kKeyboardLanguageTab};
    }
    void leaving()
    {
        QFETCH(int, tab);
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.clickTab(tab);
        QCOMPARE(desk.f.reader.commands, kLeaving);
        verifyOnTable(desk, tab);
        // From one table to the other nobody talks to the reader.
        desk.f.reader.commands.clear();
        desk.clickTab(1 - tab);
        QCOMPARE(desk.f.reader.commands, QByteArrayList{});
        // And in again.
        desk.clickTab(kReadTestTab);
        verifyInTest(desk);
        QCOMPARE(desk.f.reader.commands, kEntering);
    }

    void leavingByAFileMenuEntry_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<bool>("saves");
        QTest::addColumn<int>("tab");
        QTest::newRow("load configuration") << "mnuOpen_CFG" << false << int{kConfigurationTab};
        QTest::newRow("save configuration as") << "mnuSaveAs_CFG" << true << int{kConfigurationTab};
        QTest::newRow("load language") << "mnuOpen_KB" << false << int{kKeyboardLanguageTab};
        QTest::newRow("save language") << "mnuSave_KB" << true << int{kKeyboardLanguageTab};
    }
    void leavingByAFileMenuEntry()
    {
        QFETCH(QString, entry);
        QFETCH(bool, saves);
        QFETCH(int, tab);
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.f.dialogs.expect(saves ? TestFileDialogs::Kind::Save : TestFileDialogs::Kind::Open, {});
        desk.withTicks([&] { desk.f.window->findChild<QAction*>(entry)->trigger(); });
        QVERIFY(desk.f.dialogs.verifyAllUsed());
        QCOMPARE(desk.f.reader.commands, kLeaving);
        verifyOnTable(desk, tab);
    }

    void theTabThatIsShownIsNotEnteredAgain()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.type("a");
        desk.clickTab(kReadTestTab);
        QCOMPARE(desk.f.reader.commands, QByteArrayList{});
        QVERIFY(desk.hasFocus());
        QTRY_COMPARE(desk.typed(), "a");
    }

    // A click while the reader is being set is carried out afterwards.
    void leavingWhileSettling()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        desk.f.reader.onOutput = [&](int count) {
            if (count == 11) {
                desk.f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
            }
        };
        desk.clickTab(kReadTestTab);
        QCOMPARE(desk.f.reader.commands, kEntering + kLeaving);
        verifyOnTable(desk, kKeyboardLanguageTab);
    }

    void aWayOutAndBackWhileSettling()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        desk.f.reader.onOutput = [&](int count) {
            if (count == 11) {
                desk.f.find<QTabWidget>("SSTab1")->setCurrentIndex(kConfigurationTab);
                desk.f.find<QTabWidget>("SSTab1")->setCurrentIndex(kReadTestTab);
            }
        };
        desk.clickTab(kReadTestTab);
        QCOMPARE(desk.f.reader.commands, kEntering);
        verifyInTest(desk);
    }

    // The same the other way round.
    void aWayBackWhileLeaving()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.f.reader.onOutput = [&](int count) {
            if (count == 3) {
                desk.f.find<QTabWidget>("SSTab1")->setCurrentIndex(kReadTestTab);
            }
        };
        desk.clickTab(kConfigurationTab);
        QCOMPARE(desk.f.reader.commands, kLeaving + kEntering);
        verifyInTest(desk);
    }

    void aDeadLink_data()
    {
        QTest::addColumn<bool>("driver");
        QTest::addColumn<QString>("text");
        QTest::newRow("no driver") << false
                                   << "Was unable to open the Teslin Device Driver.  Check to see if the driver is "
                                      "installed and the Teslin is attached";
        QTest::newRow("no port") << true << "Could not open COM5, No such file or directory";
    }
    // A test all the same: the keys of a reader that is in normal mode already are shown.
    void aDeadLink()
    {
        QFETCH(bool, driver);
        QFETCH(QString, text);
        ReadTestFixture desk;
        desk.f.driver.opens = driver;
        desk.f.reader.opens = false;
        QVERIFY(desk.start());
        desk.f.boxes.expect(BoxAnswer::Ok);
        desk.clickTab(kReadTestTab);
        QCOMPARE(QString::fromStdString(desk.f.boxes.lastText()), text);
        verifyInTest(desk);
        desk.type("a");
        desk.pause();
        QTRY_COMPARE(desk.typed(), "a\nRaw Data: a");
        // Nothing was set, so nothing is taken back, and no box says again what the user knows.
        desk.clickTab(kConfigurationTab);
        verifyOnTable(desk, kConfigurationTab);
        QCOMPARE(desk.f.boxes.shown.size(), 1U);
        QCOMPARE(desk.f.reader.commands, QByteArrayList{});
    }

    void leavingWhenTheReaderHasGone()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.f.reader.opens = false;
        desk.f.boxes.expect(BoxAnswer::Ok);
        desk.clickTab(kConfigurationTab);
        QVERIFY(desk.f.boxes.verifyAllUsed());
        QCOMPARE(desk.f.reader.commands, QByteArrayList{});
        verifyOnTable(desk, kConfigurationTab);
    }

    // The end of the program is no way back to a table, unless its questions lead there.
    // kb-ends-in-read-test
    void closingInTheTest()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        bool isClosed = false;
        desk.withTicks([&] { isClosed = desk.f.window->close(); });
        QVERIFY(isClosed);
        QCOMPARE(desk.f.reader.commands, QByteArrayList{});
    }

    void closingWhileSettling()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        desk.f.reader.onOutput = [&](int count) {
            if (count == 10) {
                desk.f.window->close();
            }
        };
        desk.clickTab(kReadTestTab);
        QVERIFY(!desk.f.window->isVisible());
        QVERIFY(!desk.f.reader.PortOpen());
    }
};

static const testsupport::RunnableTest<ReadTestWindowTest> kRunnable;
#include "ReadTestWindowTest.moc"
