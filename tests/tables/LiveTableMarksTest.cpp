#include "tests/support/RunnableTest.h"
#include "tests/tables/LiveTableFixture.h"

#include <QTest>

using namespace tables;

namespace {

using Texts = std::vector<std::string>;

const TableKind& kindOf(bool keyboard)
{
    return keyboard ? keyboardLanguageKind() : configurationKind();
}

} // namespace

class LiveTableMarksTest final : public QObject
{
    Q_OBJECT

private slots:
    void afterConfigurationClearRow2IsCurrentAndOpen()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.grid.userMovesTo(20);
        f.grid.userScrollsTo(15);
        f.forget();
        f.live.Clear_Changed_Flags();
        QCOMPARE(f.column(kChangedColumn), Texts(27, " "));
        QCOMPARE(f.grid.row(), 2);
        QCOMPARE(f.table.cell(f.grid.row(), kAddressColumn), "013");
        QCOMPARE(f.grid.rowSel(), 2);
        QCOMPARE(f.grid.col(), 1);
        QCOMPARE(f.grid.topRow(), 1);
        QCOMPARE(f.openedRows, std::vector<int>{2});
        QCOMPARE(int{f.session.EditState}, 3);
        QCOMPARE(int{f.table.LastRow}, 2);
    }

    void afterKeyboardClearRow1IsCurrentAndOpen()
    {
        LiveTableFixture f(keyboardLanguageKind());
        f.reset();
        f.grid.userMovesTo(70);
        f.forget();
        f.live.Clear_Changed_Flags();
        QCOMPARE(f.column(kChangedColumn), Texts(75, " "));
        QCOMPARE(f.grid.row(), 1);
        QCOMPARE(f.table.cell(f.grid.row(), kAddressColumn), "080");
        QCOMPARE(f.grid.col(), 1);
        QCOMPARE(f.grid.topRow(), 1);
        QCOMPARE(f.openedRows, std::vector<int>{1});
        QCOMPARE(int{f.session.EditState}, 3);
        QCOMPARE(int{f.table.LastRow}, 1);
    }

    void editorOpensEvenOnTheRowThatWasOpen()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        QCOMPARE(int{f.table.LastRow}, 2);
        f.live.Clear_Changed_Flags();
        QCOMPARE(f.openedRows, std::vector<int>{2});
    }

    void editFramesAreHiddenFirstAndEveryRowIsVisitedWithEditingOff()
    {
        LiveTableFixture f(configurationKind());
        f.load(4);
        std::vector<int> rows;
        std::vector<int> states;
        f.grid.rowChanged = [&] {
            rows.push_back(f.grid.row());
            states.push_back(f.session.EditState);
            // A handler that ends in editing mode does not stop the next row from being visited with editing off.
            f.live.rowChanged();
            f.session.EditState = EditSession::kEditing;
        };
        f.live.Clear_Changed_Flags();
        QCOMPARE(f.log.front(), "Hide_All");
        QCOMPARE(f.times("Hide_All"), 1);
        QCOMPARE(rows, (std::vector<int>{1, 2, 3, 4, 2}));
        QCOMPARE(states, (std::vector<int>{1, 1, 1, 1, 3}));
        QCOMPARE(f.openedRows, std::vector<int>{2});
    }

    void closingStepsComeInOrder()
    {
        LiveTableFixture f(configurationKind());
        f.load(3);
        f.live.Clear_Changed_Flags();
        QCOMPARE(f.log, (Texts{"Hide_All", "setRow 1", "setRow 2", "setRow 3", "setTopRow 1", "setRow 2", "setRowSel 2",
                               "EditData", "setCol 1", "setCol 1"}));
    }

    void viewFollowsTheRowsAndReturnsToTheTop()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.live.Clear_Changed_Flags();
        // From row 10 on each row but the last moves the view on by one.
        int highest = 0;
        for (const std::string& call : f.log) {
            if (call.starts_with("setTopRow ")) {
                highest = std::max(highest, std::stoi(call.substr(10)));
            }
        }
        QCOMPARE(highest, 18);
        QCOMPARE(f.grid.topRow(), 1);
    }

    void columnIsTheAddressEvenIfTheEditorLeavesAnother()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.host.onEditData = [&] { f.grid.setCol(kValueColumn); };
        f.live.Clear_Changed_Flags();
        QCOMPARE(f.grid.col(), 1);
    }

    void clearTouchesOnlyTheMarks()
    {
        for (const bool keyboard : {false, true}) {
            LiveTableFixture f(kindOf(keyboard));
            f.reset();
            const Texts addresses = f.column(kAddressColumn);
            const Texts values = f.column(kValueColumn);
            const Texts notes = f.column(kNotesColumn);
            f.live.PutTableEntry(f.table.ParmAddr[4], "XXX", kChangedColumn);
            f.forget();
            f.live.Clear_Changed_Flags();
            QCOMPARE(f.column(kAddressColumn), addresses);
            QCOMPARE(f.column(kValueColumn), values);
            QCOMPARE(f.column(kNotesColumn), notes);
            QCOMPARE(f.table.cell(0, kChangedColumn), "Changed");
            // Caption and flag are for those who save or load.
            QVERIFY(f.table.TableChanged);
            QCOMPARE(f.host.tabCaption, std::string(kindOf(keyboard).caption) + " *");
        }
    }

    // Filling rows leaves their marks alone, so that a loaded table shows the old ones until they are cleared.
    void marksOfTheTableBeforeSurviveUntilTheyAreCleared()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.live.PutTableEntry("001", "XXX", kChangedColumn);
        f.table.SetGridItem(1, "001", "77", "loaded");
        QCOMPARE(f.table.cell(1, kChangedColumn), "XXX");
        f.live.Clear_Changed_Flags();
        QCOMPARE(f.table.cell(1, kChangedColumn), " ");
    }

    void rowWithoutAnAddressKeepsItsMark()
    {
        LiveTableFixture f(keyboardLanguageKind());
        f.load(3);
        f.table.SetGridItem(2, "", "", "past the end");
        f.live.Clear_Changed_Flags();
        QCOMPARE(f.column(kChangedColumn), (Texts{" ", "XXX", " "}));
    }

    // The walk takes one entry beyond the last row's; a grid with rows to spare may have a row for it.
    void theEntryBehindTheLastRowIsVisitedToo()
    {
        LiveTableFixture f(configurationKind());
        f.load(6);
        f.table.NumParms = 3;
        f.grid.selectionChanged = {};
        f.live.Clear_Changed_Flags();
        QCOMPARE(f.column(kChangedColumn), (Texts{" ", " ", " ", " ", "XXX", "XXX"}));
    }

    void inATableOfOneRowThatRowBecomesCurrentWhateverTheGridShows()
    {
        LiveTableFixture f(configurationKind());
        f.load(4);
        f.table.NumParms = 1;
        f.table.forgetAddressesFrom(1);
        f.live.Clear_Changed_Flags();
        QCOMPARE(f.grid.row(), 1);
        QCOMPARE(f.openedRows, std::vector<int>{1});
        QCOMPARE(f.times("beep"), 0);
    }

    void addressIndexMayChangeWhileRowsAreVisited()
    {
        LiveTableFixture f(configurationKind());
        f.load(3);
        f.grid.rowChanged = [&] { f.table.ParmAddr[static_cast<std::size_t>(f.grid.row() - 1)] = "a longer address"; };
        f.live.Clear_Changed_Flags();
        QCOMPARE(f.column(kChangedColumn), Texts(3, " "));
    }

    void tablesOfAnyLength_data()
    {
        QTest::addColumn<bool>("keyboard");
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("current"); // 0: no row, no editor
        for (const bool keyboard : {false, true}) {
            const char* name = keyboard ? "Keyboard Language" : "Configuration";
            QTest::addRow("%s, no row", name) << keyboard << 0 << 0;
            QTest::addRow("%s, 1 row", name) << keyboard << 1 << 1;
            QTest::addRow("%s, 2 rows", name) << keyboard << 2 << (keyboard ? 1 : 2);
            QTest::addRow("%s, 3 rows", name) << keyboard << 3 << (keyboard ? 1 : 2);
            QTest::addRow("%s, 255 rows", name) << keyboard << 255 << (keyboard ? 1 : 2);
        }
    }
    void tablesOfAnyLength()
    {
        QFETCH(bool, keyboard);
        QFETCH(int, rows);
        QFETCH(int, current);
        LiveTableFixture f(kindOf(keyboard));
        f.load(rows);
        f.live.Clear_Changed_Flags();
        QCOMPARE(f.column(kChangedColumn), Texts(static_cast<std::size_t>(rows), " "));
        QCOMPARE(f.table.cell(0, kChangedColumn), "Changed");
        QCOMPARE(f.grid.row(), current);
        QCOMPARE(f.grid.topRow(), 1);
        QCOMPARE(int{f.session.EditState}, 3);
        QCOMPARE(f.openedRows, current == 0 ? std::vector<int>{} : std::vector<int>{current});
        QCOMPARE(int{f.table.LastRow}, current == 0 ? 99 : current);
        QCOMPARE(f.times("beep"), 0);
    }
};

static const testsupport::RunnableTest<LiveTableMarksTest> kRunnable;
#include "LiveTableMarksTest.moc"
