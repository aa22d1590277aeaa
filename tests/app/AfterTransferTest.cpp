#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QLabel>
#include <QProgressBar>

using namespace testsupport;
using app::kConfigurationTab;
using app::kKeyboardLanguageTab;
using app::kReadTestTab;
using platform::BoxAnswer;

namespace {

constexpr int kIdentificationCommands = 5;

// The window with what a transfer leaves behind.
struct Desk : MainWindowFixture
{
    explicit Desk(int tab = kConfigurationTab)
    {
        start();
        find<QTabWidget>("SSTab1")->setCurrentIndex(tab);
    }

    [[nodiscard]] QProgressBar& bar() const { return *find<QProgressBar>("pgbTransfer"); }
    // What the bar says; nothing while it is not on screen.
    [[nodiscard]] QString said() const { return bar().isVisible() ? bar().text() : QString(); }
    [[nodiscard]] tables::ParamGrid& grid() const
    {
        const bool onConfiguration = find<QTabWidget>("SSTab1")->currentIndex() == kConfigurationTab;
        return *find<tables::ParamGrid>(onConfiguration ? "grdCFG" : "grdKB");
    }
    void clickRow(int row) const
    {
        tables::ParamGrid& shown = grid();
        const QPoint cell = shown.visualRect(shown.model()->index(row - 1, tables::kValueColumn)).center();
        QTest::mouseClick(shown.viewport(), Qt::LeftButton, {}, cell);
    }
    void silence(const std::string& address)
    {
        reader.answers = [this, command = "/rawxact WPV" + address](const std::string& asked) {
            return asked == command ? std::nullopt : model.answerTo(asked);
        };
    }
    // Happens when so many parameters have been asked for or sent.
    void atCommand(int number, std::function<void()> action)
    {
        reader.onOutput = [number, action = std::move(action)](int count) {
            if (count == kIdentificationCommands + number) {
                action();
            }
        };
    }
};

} // namespace

// What a transfer leaves behind on the real window: how far it came, marks, captions, the editor and the view.
class AfterTransferTest final : public QObject
{
    Q_OBJECT

private slots:
    // --- the bar

    void theBarSaysHowFarItCame()
    {
        Desk desk;
        QCOMPARE(desk.said(), "");
        desk.press("KEY_RETRIEVE");
        QCOMPARE(desk.said(), "27 of 27 rows");
        desk.press("KEY_UPDATE");
        QCOMPARE(desk.said(), "27 of 27 rows");
        desk.silence("01B"); // row 10
        desk.press("KEY_RETRIEVE");
        QCOMPARE(desk.said(), "9 of 27 rows");
        QCOMPARE(desk.bar().value(), 9);
        QCOMPARE(desk.bar().maximum(), 27);
    }

    void aTransferBeginsAfresh()
    {
        Desk desk;
        desk.press("KEY_RETRIEVE");
        QStringList seen;
        desk.reader.commands.clear();
        desk.reader.onOutput = [&](int count) {
            if (count == 1 || count == kIdentificationCommands + 1 || count == kIdentificationCommands + 2) {
                seen << desk.said();
            }
        };
        desk.press("KEY_RETRIEVE");
        QCOMPARE(seen, QStringList({"", "0 of 27 rows", "1 of 27 rows"}));
    }

    void theNextActionTakesTheBarAway_data()
    {
        QTest::addColumn<QString>("action");
        for (const char* const action :
             {"Set Default", "Load File", "menu", "notes", "tab", "double click", "reader"}) {
            QTest::newRow(action) << action;
        }
    }
    void theNextActionTakesTheBarAway()
    {
        QFETCH(QString, action);
        Desk desk;
        desk.press("KEY_RETRIEVE");
        QVERIFY(desk.bar().isVisible());
        bool wasVisible = true;
        const auto look = [&] { wasVisible = desk.bar().isVisible(); };
        if (action == "Set Default") {
            desk.press("KEY_DEFAULT");
            look();
        } else if (action == "Load File") {
            desk.dialogs.expect(TestFileDialogs::Kind::Open, {});
            desk.press("KEY_LOAD");
            look();
        } else if (action == "menu") {
            desk.boxes.expect(BoxAnswer::Ok, look);
            desk.find<QAction>("mnuRead")->trigger();
        } else if (action == "notes") {
            desk.boxes.expect(BoxAnswer::Ok, look);
            QTest::mouseClick(desk.find<QPushButton>("btnNotes"), Qt::LeftButton);
        } else if (action == "tab") {
            desk.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
            look();
        } else if (action == "double click") {
            desk.grid().setRow(2);
            desk.boxes.expect(BoxAnswer::Yes);
            desk.editor_CFG().grdCFG_DblClick();
            look();
        } else {
            desk.reader.opens = false;
            desk.boxes.expect(BoxAnswer::Ok, look);
            desk.press("KEY_UPDATE");
        }
        QVERIFY(!wasVisible);
        QVERIFY(!desk.bar().isVisible());
    }

    // Looking at the rows that came is what it is there for.
    void lookingAndEditingLeaveTheBar()
    {
        Desk desk;
        desk.press("KEY_RETRIEVE");
        desk.clickRow(3);
        QTest::keyClick(&desk.grid(), Qt::Key_Up);
        QTest::mouseClick(desk.find<QAbstractButton>("radTk1_0"), Qt::LeftButton);
        QCOMPARE(desk.said(), "27 of 27 rows");
        desk.table_CFG().TableChanged = false;
    }

    // A menu entry that does nothing meanwhile takes nothing away.
    void anIgnoredActionLeavesTheBar()
    {
        Desk desk;
        QString meanwhile;
        desk.atCommand(10, [&] {
            desk.find<QAction>("mnuRead")->trigger();
            desk.window->Toolbar1_ButtonClick(app::ToolbarKey::Default);
            meanwhile = desk.said();
        });
        desk.press("KEY_RETRIEVE");
        QCOMPARE(meanwhile, "9 of 27 rows");
        QCOMPARE(desk.said(), "27 of 27 rows");
    }

    // --- unsaved changes

    // The marked row has been read and carries no mark any more, but the table is not as it was saved.
    void anAbortedRetrieveBehindTheMarkedRowKeepsTheChangedFlag()
    {
        Desk desk;
        desk.window->paramTables().PutTableEntry_CFG("013", "XXX", 0);
        desk.boxes.expect(BoxAnswer::No);
        desk.silence("018");
        desk.press("KEY_RETRIEVE");
        QCOMPARE(desk.table_CFG().cell(2, 0), " ");
        QVERIFY(!desk.window->paramTables().CFG.hasMarkedRows());
        QVERIFY(desk.table_CFG().TableChanged);
        desk.boxes.expect(BoxAnswer::Cancel); // so the end asks about it
        QVERIFY(!desk.window->close());
        desk.table_CFG().TableChanged = false;
    }

    void anEditMadeDuringARetrieveKeepsItsMarkAndTheStar()
    {
        Desk desk;
        desk.atCommand(10, [&] {
            desk.clickRow(2);
            QTest::mouseClick(desk.find<QAbstractButton>("radTk1_0"), Qt::LeftButton);
        });
        desk.press("KEY_RETRIEVE");
        QCOMPARE(desk.table_CFG().cell(2, 2), "94");
        QCOMPARE(desk.table_CFG().cell(2, 0), "XXX");
        QVERIFY(desk.table_CFG().TableChanged);
        QCOMPARE(desk.find<QTabWidget>("SSTab1")->tabText(kConfigurationTab), "Configuration *");
        desk.table_CFG().TableChanged = false;
    }

    void aHangUpDuringIdentificationAsksNothing()
    {
        Desk desk;
        desk.window->paramTables().PutTableEntry_CFG("001", "XXX", 0);
        desk.reader.onOutput = [&](int count) {
            if (count == 3) {
                desk.reader.hangUp();
            }
        };
        desk.press("KEY_RETRIEVE");
        QVERIFY(desk.boxes.shown.empty());
        QCOMPARE(desk.table_CFG().cell(1, 0), "XXX");
        QCOMPARE(desk.table_CFG().cell(1, 2), "00");
        QVERIFY(!desk.bar().isVisible());
        QCOMPARE(desk.textOf("StatusBar1_1"), "Lost the connection to COM5");
        QCOMPARE(desk.find<QTabWidget>("SSTab1")->tabText(kConfigurationTab), "Configuration *");
        desk.table_CFG().TableChanged = false;
    }

    // --- what the first panel says last

    void anUpdateThatWasCutShortByClosingSaysSo()
    {
        Desk desk;
        desk.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
        desk.atCommand(9, [&] { desk.window->close(); });
        desk.boxes.expect(BoxAnswer::Cancel);
        desk.press("KEY_UPDATE");
        QVERIFY(desk.window->isVisible());
        QCOMPARE(desk.textOf("StatusBar1_1"), "The update was not finished");
        QCOMPARE(desk.said(), "9 of 27 rows");
        // It is not said of the next transfer.
        desk.reader.onOutput = {};
        desk.press("KEY_UPDATE");
        QCOMPARE(desk.textOf("StatusBar1_1"), "");
        desk.atCommand(9 + int(desk.reader.commands.size()), [&] { desk.window->close(); });
        desk.boxes.expect(BoxAnswer::No);
        desk.boxes.expect(BoxAnswer::Cancel);
        desk.press("KEY_RETRIEVE");
        QCOMPARE(desk.textOf("StatusBar1_1"), "");
        desk.table_CFG().TableChanged = false;
    }

    // The last command went out before the wish to close: the update is whole.
    void aWholeUpdateIsFinished()
    {
        Desk desk;
        desk.press("KEY_UPDATE");
        QCOMPARE(desk.textOf("StatusBar1_1"), "");
    }

    void theLostConnectionIsSaidAfterATabClick()
    {
        Desk desk;
        desk.atCommand(4, [&] {
            desk.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
            desk.reader.hangUp();
        });
        desk.press("KEY_RETRIEVE");
        QCOMPARE(desk.textOf("lblEditTitle_KB"), "<080> Keyboard flags"); // the tab click was carried out
        QCOMPARE(desk.textOf("StatusBar1_1"), "Lost the connection to COM5");
    }

    // --- the editor

    void aClickOnTheRowWhereItStoppedBringsTheEditorBack_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("Retrieve") << "KEY_RETRIEVE";
        QTest::newRow("Update") << "KEY_UPDATE";
    }
    void aClickOnTheRowWhereItStoppedBringsTheEditorBack()
    {
        QFETCH(QString, key);
        Desk desk(kKeyboardLanguageTab);
        const auto* editor = desk.find<QWidget>("frmE_KB");
        QVERIFY(editor->isVisible());
        bool wasVisible = true;
        desk.atCommand(1, [&] {
            wasVisible = editor->isVisible();
            desk.press("KEY_EXIT");
        });
        desk.press(key.toLatin1().constData());
        QVERIFY(!wasVisible);
        QCOMPARE(desk.grid().row(), 1);
        QVERIFY(!editor->isVisible());
        desk.clickRow(1);
        QVERIFY(editor->isVisible());
    }

    // Row 1 becomes current first and opens its editor, and that one is hidden for the run as well.
    void theEditorIsHiddenWhileTheFirstRowIsAsked()
    {
        Desk desk(kKeyboardLanguageTab);
        desk.grid().setRow(5);
        const auto* editor = desk.find<QWidget>("frmE_KB");
        bool wasVisible = true;
        desk.atCommand(1, [&] { wasVisible = editor->isVisible(); });
        desk.press("KEY_RETRIEVE");
        QVERIFY(!wasVisible);
        QVERIFY(editor->isVisible());
    }

    // --- the port

    void thePortIsClosedBeforeSentIsSaid()
    {
        Desk desk(kKeyboardLanguageTab);
        desk.grid().setRow(3);
        bool wasOpen = true;
        desk.boxes.expect(BoxAnswer::Yes);
        desk.boxes.expect(BoxAnswer::Ok, [&] { wasOpen = desk.reader.PortOpen(); });
        desk.editor_KB().grdKB_DblClick();
        QVERIFY(desk.boxes.verifyAllUsed());
        QVERIFY(!wasOpen);
    }

    // --- the view

    void theCurrentRowIsInViewAndWhole_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("tab");
        QTest::newRow("Configuration read") << "KEY_RETRIEVE" << int{kConfigurationTab};
        QTest::newRow("Keyboard Language read") << "KEY_RETRIEVE" << int{kKeyboardLanguageTab};
        QTest::newRow("Configuration written") << "KEY_UPDATE" << int{kConfigurationTab};
        QTest::newRow("Keyboard Language written") << "KEY_UPDATE" << int{kKeyboardLanguageTab};
    }
    void theCurrentRowIsInViewAndWhole()
    {
        QFETCH(QString, key);
        QFETCH(int, tab);
        Desk desk(tab);
        // A view of some rows and a half.
        tables::ParamGrid& grid = desk.grid();
        const int frame = grid.height() - grid.viewport()->height();
        grid.setFixedHeight(frame + grid.rowHeight(0) * 8 + grid.rowHeight(0) / 2);
        QTRY_COMPARE(grid.viewport()->height(), grid.rowHeight(0) * 8 + grid.rowHeight(0) / 2);
        grid.setTopRow(15);
        QStringList cut;
        desk.reader.onOutput = [&](int count) {
            if (count <= kIdentificationCommands + 1) {
                return;
            }
            constexpr int kAway = kIdentificationCommands + 8;
            // A pair has a second command before the next row follows.
            if (count != kAway + 1 && !grid.rowIsWhole(grid.row())) {
                cut << QString::number(grid.row());
            }
            if (count == kAway) {
                grid.setTopRow(20); // the user looks elsewhere
            }
        };
        desk.press(key.toLatin1().constData());
        QCOMPARE(cut, QStringList());
        QVERIFY(grid.rowIsWhole(grid.row()));
        QCOMPARE(grid.topRow() == 1, key == "KEY_RETRIEVE");
    }
};

static const testsupport::RunnableTest<AfterTransferTest> kRunnable;
#include "AfterTransferTest.moc"
