#include "tests/support/RunnableTest.h"
#include "tests/tables/LiveTableFixture.h"

#include <QTest>

using namespace tables;

namespace {

using Texts = std::vector<std::string>;

// A Configuration table of 27 parameters in a grid of 40 data rows, as the guard meets it.
struct RowsToSpare : LiveTableFixture
{
    explicit RowsToSpare(int rowsInView = kRowsInView)
        : LiveTableFixture(configurationKind(), rowsInView)
    {
        reset();
        table.setRowCount(41);
    }
};

} // namespace

class LiveTableCursorTest final : public QObject
{
    Q_OBJECT

private slots:
    void rowChangeAtEachEditState_data()
    {
        QTest::addColumn<int>("editState");
        QTest::addColumn<bool>("opens");
        QTest::newRow("1, a grid is filled") << 1 << false;
        QTest::newRow("2, the keyboard editor lays out") << 2 << false;
        QTest::newRow("3, editing") << 3 << true;
    }
    void rowChangeAtEachEditState()
    {
        QFETCH(int, editState);
        QFETCH(bool, opens);
        for (const TableKind* kind : {&configurationKind(), &keyboardLanguageKind()}) {
            LiveTableFixture f(*kind);
            f.reset();
            const int lastRow = f.table.LastRow;
            f.session.EditState = static_cast<std::uint8_t>(editState);
            f.grid.userMovesTo(12);
            QCOMPARE(f.log, opens ? (Texts{"setRowSel 12", "EditData", "setCol 1"}) : Texts{});
            QCOMPARE(int{f.table.LastRow}, opens ? 12 : lastRow);
            QCOMPARE(f.grid.row(), 12);
        }
    }

    void rowThatIsOpenIsNotOpenedAgain()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.grid.userMovesTo(12);
        f.live.rowChanged();
        f.live.rowChanged();
        QCOMPARE(f.openedRows, std::vector<int>{12});
    }

    void rowChangeSelectsTheSingleRowBeforeTheEditorOpens()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.grid.userMovesTo(12);
        f.grid.userSelectsTo(15);
        f.table.LastRow = ParamTable::kNoLastRow;
        int rowSelAtOpening = 0;
        f.host.onEditData = [&] { rowSelAtOpening = f.grid.rowSel(); };
        f.live.rowChanged();
        QCOMPARE(rowSelAtOpening, 12);
    }

    void rowBeyondTheParametersIsNotOpened()
    {
        RowsToSpare f;
        f.grid.selectionChanged = {};
        f.grid.userMovesTo(27);
        f.grid.userMovesTo(28);
        QCOMPARE(f.openedRows, std::vector<int>{27});
        QCOMPARE(int{f.table.LastRow}, 27);
    }

    void withoutACurrentRowNothingOpens()
    {
        LiveTableFixture f(configurationKind());
        f.session.EditState = EditSession::kEditing;
        f.table.NumParms = 27;
        QCOMPARE(f.grid.row(), 0);
        f.live.rowChanged();
        QVERIFY(f.log.empty());
        QCOMPARE(int{f.table.LastRow}, 99);
    }

    void ninetyNineForcesTheNextRowChangeToOpenTheSameRow()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.grid.userMovesTo(12);
        f.table.LastRow = ParamTable::kNoLastRow;
        f.live.rowChanged();
        QCOMPARE(f.openedRows, (std::vector<int>{12, 12}));
    }

    void reopeningOpensTheRowThatIsOpenAlready()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.grid.userMovesTo(12);
        f.forget();
        f.live.reopenEditor();
        QCOMPARE(f.openedRows, std::vector<int>{12});
    }

    void reopeningDoesNothingWhileEditingIsOff()
    {
        for (const std::uint8_t state : {EditSession::kFilling, EditSession::kLayingOutKeyboard}) {
            LiveTableFixture f(configurationKind());
            f.reset();
            f.session.EditState = state;
            f.live.reopenEditor();
            QVERIFY(f.log.empty());
        }
    }

    // 99 means that no row is open, so row 99 of a long table looks as if it were open already.
    void row99DoesNotOpenWhileNoRowIsOpen()
    {
        LiveTableFixture f(configurationKind());
        f.load(120);
        QCOMPARE(int{f.table.LastRow}, 99);
        f.grid.userMovesTo(99);
        QVERIFY(f.openedRows.empty());
        f.grid.userMovesTo(98);
        f.grid.userMovesTo(99);
        QCOMPARE(f.openedRows, (std::vector<int>{98, 99}));
    }

    // A tab change reopens it like any other.
    void row99IsReopened()
    {
        LiveTableFixture f(configurationKind());
        f.load(120);
        f.grid.userMovesTo(98);
        f.grid.userMovesTo(99);
        f.live.reopenEditor();
        f.live.reopenEditor();
        QCOMPARE(f.openedRows, (std::vector<int>{98, 99, 99, 99}));
        QCOMPARE(int{f.table.LastRow}, 99);
    }

    void restoredCaptionHasNoStar()
    {
        LiveTableFixture cfg(configurationKind());
        cfg.live.restoreTabCaption();
        QCOMPARE(cfg.log, Texts{"tab: Configuration"});
        LiveTableFixture kb(keyboardLanguageKind());
        kb.live.restoreTabCaption();
        QCOMPARE(kb.log, Texts{"tab: Keyboard Language"});
    }

    void guardSelectsTheWholeLastRowAndBeepsOnce()
    {
        RowsToSpare f;
        f.grid.userScrollsTo(25);
        f.grid.userMovesTo(28);
        QCOMPARE(f.grid.row(), 27);
        QCOMPARE(f.grid.rowSel(), 27);
        // The editor that opens on the way leaves the cursor in column 1; the guard's columns are the last.
        QCOMPARE(f.openedRows, std::vector<int>{27});
        QCOMPARE(f.grid.col(), 0);
        QCOMPARE(f.grid.colSel(), 3);
        QCOMPARE(f.times("beep"), 1);
        QCOMPARE(f.grid.topRow(), 25);
        QCOMPARE(f.times("processPendingEvents"), 0);
    }

    void guardAlsoWatchesTheFarEndOfASelection()
    {
        RowsToSpare f;
        f.grid.userMovesTo(20);
        f.forget();
        f.grid.userSelectsTo(27);
        QVERIFY(f.log.empty());
        f.grid.userSelectsTo(28);
        QCOMPARE(f.grid.row(), 27);
        QCOMPARE(f.grid.rowSel(), 27);
        QCOMPARE(f.times("beep"), 1);
    }

    void guardWatchesTheCurrentRowToo()
    {
        RowsToSpare f;
        const auto guard = f.grid.selectionChanged;
        f.grid.selectionChanged = {};
        f.grid.userMovesTo(30);
        f.grid.selectionChanged = guard;
        f.grid.userSelectsTo(5);
        QCOMPARE(f.grid.row(), 27);
        QCOMPARE(f.grid.rowSel(), 27);
        QCOMPARE(f.times("beep"), 1);
    }

    void guardLeavesTheDataRowsAlone()
    {
        for (const TableKind* kind : {&configurationKind(), &keyboardLanguageKind()}) {
            LiveTableFixture f(*kind);
            f.reset();
            for (const int row : {1, static_cast<int>(kind->defaults.size())}) {
                f.grid.userMovesTo(row);
                QCOMPARE(f.grid.row(), row);
            }
            QCOMPARE(f.times("beep"), 0);
        }
    }

    void guardUsesTheRowCountOfItsOwnTable()
    {
        LiveTableFixture f(keyboardLanguageKind());
        f.reset();
        f.table.setRowCount(80);
        f.grid.userMovesTo(76);
        QCOMPARE(f.grid.row(), 75);
        QCOMPARE(f.times("beep"), 1);
    }

    void guardWorksWhileEditingIsOff()
    {
        RowsToSpare f;
        f.session.EditState = EditSession::kFilling;
        f.grid.userMovesTo(35);
        QCOMPARE(f.grid.row(), 27);
        QCOMPARE(f.times("beep"), 1);
        QVERIFY(f.openedRows.empty());
    }

    void guardScrollsUpRowByRowUntilTheLastRowIsInView()
    {
        RowsToSpare f;
        f.grid.userScrollsTo(31);
        QCOMPARE(f.grid.topRow(), 31);
        f.grid.userMovesTo(35);
        QCOMPARE(f.grid.topRow(), 27);
        QCOMPARE(f.log,
                 (Texts{"setRow 27", "setRowSel 27", "EditData", "setCol 1", "setRowSel 27", "setCol 0", "setColSel 3",
                        "beep", "setTopRow 30", "processPendingEvents", "setTopRow 29", "processPendingEvents",
                        "setTopRow 28", "processPendingEvents", "setTopRow 27", "processPendingEvents"}));
    }

    // The last row lies below the view: scrolling up will never show it.
    void guardStopsScrollingAtTheTop()
    {
        RowsToSpare f;
        f.grid.userScrollsTo(4);
        f.grid.userMovesTo(35);
        QCOMPARE(f.grid.topRow(), 1);
        QCOMPARE(f.times("processPendingEvents"), 3);
    }

    void guardEndsInAGridTooLowToShowARow()
    {
        RowsToSpare f(0);
        f.grid.userScrollsTo(6);
        f.grid.userMovesTo(35);
        QCOMPARE(f.grid.topRow(), 1);
        QCOMPARE(f.grid.row(), 27);
    }

    void guardDoesNothingBeforeTheTableHasRows()
    {
        LiveTableFixture f(configurationKind());
        f.session.EditState = EditSession::kEditing;
        QCOMPARE(int{f.table.NumParms}, 0);
        f.grid.userMovesTo(1);
        QCOMPARE(f.grid.row(), 1);
        QVERIFY(f.log.empty());
    }

    void guardBeepsAgainForTheNextUserAction()
    {
        RowsToSpare f;
        f.grid.userMovesTo(28);
        f.grid.userMovesTo(29);
        QCOMPARE(f.times("beep"), 2);
        QCOMPARE(f.grid.row(), 27);
    }

    void eventsThatTheGuardLetsRunDoNotStartItAgain()
    {
        RowsToSpare f;
        f.grid.userScrollsTo(29);
        f.host.onProcessPendingEvents = [&] { f.grid.userSelectsTo(30); };
        f.grid.userMovesTo(35);
        QCOMPARE(f.times("processPendingEvents"), 2);
        QCOMPARE(f.times("beep"), 1);
    }
};

static const testsupport::RunnableTest<LiveTableCursorTest> kRunnable;
#include "LiveTableCursorTest.moc"
