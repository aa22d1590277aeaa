#include "tables/ParamTables.h"
#include "tests/support/RunnableTest.h"
#include "tests/tables/LiveTableFixture.h"

#include <QTest>

using namespace tables;

namespace {

using Texts = std::vector<std::string>;

// The header and the default rows of a kind, the Changed column empty.
Texts defaultCells(const TableKind& kind)
{
    Texts texts{"Changed", "Adr", "Hex", "Notes"};
    for (const Parameter& row : kind.defaults) {
        texts.emplace_back();
        texts.emplace_back(row.address);
        texts.emplace_back(row.value);
        texts.emplace_back(row.notes);
    }
    return texts;
}

} // namespace

class LiveTableResetTest final : public QObject
{
    Q_OBJECT

private slots:
    void configurationResetDoesEverythingInOrder()
    {
        LiveTableFixture f(configurationKind());
        f.live.InitGrid();
        QCOMPARE(f.log, (Texts{"CheckForUnsavedData", "forgetCommentsAndFile", "setCol 0", "setTopRow 1", "setRow 2",
                               "title: (values will be edited here)", "setRowSel 2", "EditData", "setCol 1"}));
        QCOMPARE(f.cells(), defaultCells(configurationKind()));
        QCOMPARE(f.table.rowCount(), 28);
        QCOMPARE(int{f.table.NumParms}, 27);
        QCOMPARE(int{f.session.EditState}, 3);
        QCOMPARE(f.grid.row(), 2);
        QCOMPARE(f.grid.rowSel(), 2);
        QCOMPARE(f.grid.topRow(), 1);
        QCOMPARE(f.openedRows, std::vector<int>{2});
        // The editor has been opened on row 2, so 2 it is and no longer 99.
        QCOMPARE(int{f.table.LastRow}, 2);
    }

    void keyboardResetAlsoRestoresTheCaptionRightAfterTheCheck()
    {
        LiveTableFixture f(keyboardLanguageKind());
        f.live.InitGrid();
        QCOMPARE(f.log, (Texts{"CheckForUnsavedData", "tab: Keyboard Language", "forgetCommentsAndFile", "setCol 0",
                               "setTopRow 1", "setRow 1", "title: (values will be edited here)", "setRowSel 1",
                               "EditData", "setCol 1"}));
        QCOMPARE(f.cells(), defaultCells(keyboardLanguageKind()));
        QCOMPARE(f.table.rowCount(), 76);
        QCOMPARE(int{f.table.NumParms}, 75);
        QCOMPARE(int{f.session.EditState}, 3);
        QCOMPARE(f.grid.row(), 1);
        QCOMPARE(f.grid.topRow(), 1);
        QCOMPARE(f.openedRows, std::vector<int>{1});
        QCOMPARE(int{f.table.LastRow}, 1);
    }

    void everyParameterIsFoundByItsAddress_data()
    {
        QTest::addColumn<bool>("keyboard");
        QTest::newRow("Configuration") << false;
        QTest::newRow("Keyboard Language") << true;
    }
    void everyParameterIsFoundByItsAddress()
    {
        QFETCH(bool, keyboard);
        const TableKind& kind = keyboard ? keyboardLanguageKind() : configurationKind();
        LiveTableFixture f(kind);
        f.live.InitGrid();
        std::size_t index = 0;
        for (const Parameter& row : kind.defaults) {
            QCOMPARE(f.table.ParmAddr[index], std::string(row.address));
            QCOMPARE(f.live.GetTableEntry(row.address), std::string(row.value));
            ++index;
        }
        for (; index < f.table.ParmAddr.size(); ++index) {
            QCOMPARE(f.table.ParmAddr[index], "");
        }
    }

    void editingIsOffWhileTheQuestionIsAskedAndWhileTheGridIsFilled()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        int stateAtCheck = 0;
        f.host.onCheckForUnsavedData = [&] {
            stateAtCheck = f.session.EditState;
            f.session.EditState = 3; // answering "yes" saves the table, which ends in editing mode
        };
        std::vector<int> statesAtMoves;
        f.grid.rowChanged = [&] {
            statesAtMoves.push_back(f.session.EditState);
            f.live.rowChanged();
        };
        f.grid.userMovesTo(20);
        f.forget();
        statesAtMoves.clear();
        f.live.InitGrid();
        QCOMPARE(stateAtCheck, 1);
        QCOMPARE(statesAtMoves, std::vector<int>{1});
        QCOMPARE(f.openedRows, std::vector<int>{2});
    }

    void editorOpensWhenEverythingElseIsDone()
    {
        LiveTableFixture f(configurationKind());
        f.load(5);
        f.host.onEditData = [&] {
            QCOMPARE(int{f.session.EditState}, 3);
            QCOMPARE(f.grid.row(), 2);
            QCOMPARE(f.cells(), defaultCells(configurationKind()));
            QCOMPARE(int{f.table.NumParms}, 27);
            QCOMPARE(int{f.table.LastRow}, 2);
            QCOMPARE(f.host.editTitle, "(values will be edited here)");
        };
        f.live.InitGrid();
        QCOMPARE(f.times("EditData"), 1);
    }

    void editorOpensAgainOnTheRowThatIsOpenAlready()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        QCOMPARE(f.grid.row(), 2);
        QCOMPARE(int{f.table.LastRow}, 2);
        f.live.InitGrid();
        QCOMPARE(f.openedRows, std::vector<int>{2});
    }

    void declinedResetChangesNothing()
    {
        for (const TableKind* kind : {&configurationKind(), &keyboardLanguageKind()}) {
            LiveTableFixture f(*kind);
            f.load(40);
            f.grid.userMovesTo(33);
            f.grid.userScrollsTo(25);
            f.table.TableChanged = true;
            const Texts before = f.cells();
            const auto index = f.table.ParmAddr;
            f.forget();
            f.host.mayDiscard = false;
            f.live.InitGrid();
            QCOMPARE(f.log, Texts{"CheckForUnsavedData"});
            QCOMPARE(int{f.session.EditState}, 3);
            QCOMPARE(f.cells(), before);
            QVERIFY(f.table.ParmAddr == index);
            QCOMPARE(int{f.table.NumParms}, 40);
            QCOMPARE(int{f.table.LastRow}, 33);
            QCOMPARE(f.grid.row(), 33);
            QCOMPARE(f.grid.topRow(), 25);
            QVERIFY(f.table.TableChanged);
        }
    }

    // kb-default-star
    void configurationResetAfterAnEditLeavesTheStarredCaption()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.live.PutTableEntry("01A", "XXX", kChangedColumn);
        QCOMPARE(f.host.tabCaption, "Configuration *");
        f.forget();
        f.live.InitGrid();
        QCOMPARE(f.host.tabCaption, "Configuration *");
        QCOMPARE(f.times("tab: Configuration"), 0);
    }

    void keyboardResetAfterAnEditRestoresTheCaption()
    {
        LiveTableFixture f(keyboardLanguageKind());
        f.reset();
        f.live.PutTableEntry("084", "XXX", kChangedColumn);
        QCOMPARE(f.host.tabCaption, "Keyboard Language *");
        f.live.InitGrid();
        QCOMPARE(f.host.tabCaption, "Keyboard Language");
        // The flag has stayed, and the next mark stars the caption again.
        QVERIFY(f.table.TableChanged);
        f.live.PutTableEntry("084", "XXX", kChangedColumn);
        QCOMPARE(f.host.tabCaption, "Keyboard Language *");
    }

    void resetKeepsTheChangedFlagAndEmptiesTheChangedColumn()
    {
        for (const TableKind* kind : {&configurationKind(), &keyboardLanguageKind()}) {
            for (const bool changed : {false, true}) {
                LiveTableFixture f(*kind);
                f.reset();
                f.live.Clear_Changed_Flags();
                f.table.TableChanged = changed;
                f.table.setCell(5, kChangedColumn, "XXX");
                f.live.InitGrid();
                QCOMPARE(f.table.TableChanged, changed);
                QCOMPARE(f.column(kChangedColumn), Texts(kind->defaults.size(), ""));
            }
        }
    }

    void resetFromALongerTableShrinksTheGridAndForgetsItsAddresses()
    {
        LiveTableFixture f(configurationKind());
        f.load(101);
        f.grid.userMovesTo(90);
        f.grid.userScrollsTo(85);
        f.forget();
        f.live.InitGrid();
        QCOMPARE(f.cells(), defaultCells(configurationKind()));
        QCOMPARE(f.table.rowCount(), 28);
        QCOMPARE(int{f.table.NumParms}, 27);
        QCOMPARE(f.grid.row(), 2);
        QCOMPARE(f.grid.topRow(), 1);
        // Rows that went away under the cursor have opened nothing.
        QCOMPARE(f.openedRows, std::vector<int>{2});
        QCOMPARE(f.times("beep"), 0);
        for (const int row : {28, 29, 101}) {
            QCOMPARE(f.live.GetTableEntry(LiveTableFixture::loadedAddress(row)), "");
            QCOMPARE(f.table.ParmAddr[static_cast<std::size_t>(row - 1)], "");
        }
    }

    void resetFromAShorterTableGrowsTheGrid()
    {
        for (const int rows : {0, 1, 5}) {
            LiveTableFixture f(keyboardLanguageKind());
            f.load(rows);
            f.live.InitGrid();
            QCOMPARE(f.cells(), defaultCells(keyboardLanguageKind()));
            QCOMPARE(int{f.table.NumParms}, 75);
            QCOMPARE(f.live.GetTableEntry("114"), "00-2C");
            QCOMPARE(f.openedRows, std::vector<int>{1});
            QCOMPARE(f.times("beep"), 0);
        }
    }

    void eachTabResetsItsOwnTable()
    {
        LiveTableFixture cfg(configurationKind());
        LiveTableFixture kb(keyboardLanguageKind());
        ParamTables both{cfg.live, kb.live, cfg.session};
        cfg.session.tableInEffect = TableId::Configuration;
        both.InitGrids();
        QCOMPARE(int{cfg.table.NumParms}, 27);
        QVERIFY(kb.log.empty());
        cfg.forget();
        cfg.session.tableInEffect = TableId::KeyboardLanguage;
        both.InitGrids();
        QCOMPARE(int{kb.table.NumParms}, 75);
        QVERIFY(cfg.log.empty());
    }

    void onAThirdTabResetOnlySwitchesEditingOffUntilTheNextResetOrClear()
    {
        LiveTableFixture cfg(configurationKind());
        LiveTableFixture other(keyboardLanguageKind());
        ParamTables both{cfg.live, other.live, cfg.session};
        cfg.reset();
        cfg.live.PutTableEntry("01A", "20", kValueColumn);
        const Texts before = cfg.cells();
        cfg.forget();

        cfg.session.tableInEffect = std::nullopt;
        both.InitGrids();
        QCOMPARE(int{cfg.session.EditState}, 1);
        QVERIFY(cfg.log.empty());
        QVERIFY(other.log.empty());
        QCOMPARE(cfg.cells(), before);

        const std::int16_t lastRow = cfg.table.LastRow;
        cfg.grid.userMovesTo(12);
        QVERIFY(cfg.openedRows.empty());
        QCOMPARE(cfg.table.LastRow, lastRow);

        cfg.live.Clear_Changed_Flags();
        QCOMPARE(int{cfg.session.EditState}, 3);
        QCOMPARE(cfg.openedRows, std::vector<int>{2});
        cfg.grid.userMovesTo(12);
        QCOMPARE(cfg.openedRows, (std::vector<int>{2, 12}));

        cfg.session.tableInEffect = std::nullopt;
        both.InitGrids();
        cfg.session.tableInEffect = TableId::Configuration;
        both.InitGrids();
        QCOMPARE(int{cfg.session.EditState}, 3);
    }
};

static const testsupport::RunnableTest<LiveTableResetTest> kRunnable;
#include "LiveTableResetTest.moc"
