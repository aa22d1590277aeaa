#include "tables/ParamTables.h"
#include "tests/support/RunnableTest.h"
#include "tests/tables/LiveTableFixture.h"

#include <QTest>

using namespace tables;

namespace {

using Texts = std::vector<std::string>;

} // namespace

class LiveTableEntryTest final : public QObject
{
    Q_OBJECT

private slots:
    void puttingAValueWritesTheCellAndMovesTheCursorButMarksNothing()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        Texts expected = f.cells();
        expected[static_cast<std::size_t>(faIndex(f.table, 9, kValueColumn))] = "20";
        f.live.PutTableEntry("01A", "20", kValueColumn);
        QCOMPARE(f.cells(), expected);
        QCOMPARE(f.grid.row(), 9);
        QVERIFY(!f.table.TableChanged);
        QCOMPARE(f.host.tabCaption, "");
    }

    void puttingTheMarkSetsTheFlagAndStarsTheCaption()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        Texts expected = f.cells();
        expected[static_cast<std::size_t>(faIndex(f.table, 9, kChangedColumn))] = "XXX";
        f.live.PutTableEntry("01A", "XXX", kChangedColumn);
        QCOMPARE(f.cells(), expected);
        QCOMPARE(f.grid.row(), 9);
        QVERIFY(f.table.TableChanged);
        QCOMPARE(f.host.tabCaption, "Configuration *");
    }

    void everyMarkSetsFlagAndCaptionAgain()
    {
        LiveTableFixture f(keyboardLanguageKind());
        f.reset();
        f.live.PutTableEntry("084", "XXX", kChangedColumn);
        f.table.TableChanged = false;
        f.host.tabCaption.clear();
        f.live.PutTableEntry("084", "XXX", kChangedColumn);
        QVERIFY(f.table.TableChanged);
        QCOMPARE(f.host.tabCaption, "Keyboard Language *");
        f.host.tabCaption.clear();
        f.live.PutTableEntry("080", "XXX", kChangedColumn);
        QCOMPARE(f.host.tabCaption, "Keyboard Language *");
    }

    void onlyTheExactMarkCountsWhateverTheColumn()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        for (const char* text : {"xxx", "XX", "XXXX", "XXX ", " "}) {
            f.live.PutTableEntry("01A", text, kChangedColumn);
            QCOMPARE(f.table.cell(9, kChangedColumn), text);
            QVERIFY2(!f.table.TableChanged, text);
            QCOMPARE(f.host.tabCaption, "");
        }
        f.live.PutTableEntry("01A", "XXX", kNotesColumn);
        QVERIFY(f.table.TableChanged);
        QCOMPARE(f.host.tabCaption, "Configuration *");
    }

    void takingAMarkAwayLeavesFlagAndCaption()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.live.PutTableEntry("01A", "XXX", kChangedColumn);
        f.live.PutTableEntry("01A", " ", kChangedColumn);
        QCOMPARE(f.table.cell(9, kChangedColumn), " ");
        QVERIFY(f.table.TableChanged);
        QCOMPARE(f.host.tabCaption, "Configuration *");
    }

    void configurationPutsThatChangeNothing_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::newRow("address 02B") << QByteArray("02B");
        QTest::newRow("empty address") << QByteArray();
        QTest::newRow("lower case") << QByteArray("01a");
        QTest::newRow("part of an address") << QByteArray("01");
    }
    void configurationPutsThatChangeNothing()
    {
        QFETCH(QByteArray, address);
        LiveTableFixture f(configurationKind());
        f.reset();
        const Texts before = f.cells();
        f.live.PutTableEntry(address.toStdString(), "20", kValueColumn);
        f.live.PutTableEntry(address.toStdString(), "XXX", kChangedColumn);
        QCOMPARE(f.cells(), before);
        QVERIFY(f.log.empty());
        QVERIFY(!f.table.TableChanged);
    }

    void keyboardPutOfAnEmptyValueChangesNothing()
    {
        LiveTableFixture f(keyboardLanguageKind());
        f.reset();
        f.table.setCell(3, kChangedColumn, "XXX");
        const Texts before = f.cells();
        f.live.PutTableEntry("084", "", kValueColumn);
        f.live.PutTableEntry("084", "", kChangedColumn);
        f.live.PutTableEntry("", "20-04", kValueColumn);
        f.live.PutTableEntry("", "XXX", kChangedColumn);
        QCOMPARE(f.cells(), before);
        QVERIFY(f.log.empty());
        QVERIFY(!f.table.TableChanged);
    }

    void keyboardPutOfOneBlankBlanksTheCell()
    {
        LiveTableFixture f(keyboardLanguageKind());
        f.reset();
        f.live.PutTableEntry("084", " ", kValueColumn);
        QCOMPARE(f.table.cell(3, kValueColumn), " ");
    }

    void configurationPutOfAnEmptyValueEmptiesTheCell()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.live.PutTableEntry("01A", "", kValueColumn);
        QCOMPARE(f.table.cell(9, kValueColumn), "");
        QCOMPARE(f.grid.row(), 9);
    }

    void keyboardPutFindsThePairByEitherAddressOrBoth()
    {
        LiveTableFixture f(keyboardLanguageKind());
        f.reset();
        f.live.PutTableEntry("083", "11-11", kValueColumn);
        QCOMPARE(f.table.cell(3, kValueColumn), "11-11");
        f.live.PutTableEntry("084", "22-22", kValueColumn);
        QCOMPARE(f.table.cell(3, kValueColumn), "22-22");
        f.live.PutTableEntry("083-084", "33-33", kValueColumn);
        QCOMPARE(f.table.cell(3, kValueColumn), "33-33");
        f.live.PutTableEntry("081-082", "44-44", kValueColumn);
        QCOMPARE(f.table.cell(2, kValueColumn), "44-44");
    }

    void getReturnsTheWholeValueCell_data()
    {
        QTest::addColumn<bool>("keyboard");
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("01A") << false << QByteArray("01A") << QByteArray("12");
        QTest::newRow("001") << false << QByteArray("001") << QByteArray("00");
        QTest::newRow("02B has no row") << false << QByteArray("02B") << QByteArray();
        QTest::newRow("01a is not 01A") << false << QByteArray("01a") << QByteArray();
        QTest::newRow("empty address") << false << QByteArray() << QByteArray();
        QTest::newRow("083") << true << QByteArray("083") << QByteArray("20-03");
        QTest::newRow("084") << true << QByteArray("084") << QByteArray("20-03");
        QTest::newRow("081-082") << true << QByteArray("081-082") << QByteArray("00-00");
        QTest::newRow("080") << true << QByteArray("080") << QByteArray("00");
        QTest::newRow("115 has no row") << true << QByteArray("115") << QByteArray();
        QTest::newRow("empty keyboard address") << true << QByteArray() << QByteArray();
    }
    void getReturnsTheWholeValueCell()
    {
        QFETCH(bool, keyboard);
        QFETCH(QByteArray, address);
        QFETCH(QByteArray, value);
        LiveTableFixture f(keyboard ? keyboardLanguageKind() : configurationKind());
        f.reset();
        QCOMPARE(f.live.GetTableEntry(address.toStdString()), value.toStdString());
    }

    void getMovesNeitherCursorNorCells()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.grid.userMovesTo(5);
        const Texts before = f.cells();
        f.forget();
        QCOMPARE(f.live.GetTableEntry("01A"), "12");
        QCOMPARE(f.live.GetTableEntry("02D"), "00");
        QCOMPARE(f.grid.row(), 5);
        QCOMPARE(f.cells(), before);
        QVERIFY(f.log.empty());
    }

    // Ten rows in view. The row two below the index entry, that is one below the row that is used, has to be in view;
    // otherwise the grid goes down by one row, wherever that row is.
    void viewFollowsByOneRow_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<int>("topRowBefore");
        QTest::addColumn<int>("topRowAfter");
        QTest::newRow("row 1, row 2 in view") << QByteArray("001") << 1 << 1;
        QTest::newRow("row 9, row 10 the last in view") << QByteArray("01A") << 1 << 1;
        QTest::newRow("row 10 the last in view, row 11 below it") << QByteArray("01B") << 1 << 2;
        QTest::newRow("far below goes down by one row only") << QByteArray("02A") << 1 << 2;
        QTest::newRow("last row but one") << QByteArray("02C") << 1 << 2;
        QTest::newRow("last row has none below it") << QByteArray("02D") << 1 << 1;
        QTest::newRow("above the view goes down as well") << QByteArray("001") << 15 << 16;
        QTest::newRow("row just above the view, the next in view") << QByteArray("01F") << 15 << 15;
        QTest::newRow("two rows above the view") << QByteArray("01E") << 15 << 16;
        QTest::newRow("at the end of the scroll range") << QByteArray("001") << 18 << 18;
    }
    void viewFollowsByOneRow()
    {
        QFETCH(QByteArray, address);
        QFETCH(int, topRowBefore);
        QFETCH(int, topRowAfter);
        LiveTableFixture f(configurationKind());
        f.reset();
        f.grid.userScrollsTo(topRowBefore);
        QCOMPARE(f.grid.topRow(), topRowBefore);
        QCOMPARE(f.live.GetTableEntry(address.toStdString()).size(), std::size_t{2});
        QCOMPARE(f.grid.topRow(), topRowAfter);

        f.grid.userScrollsTo(topRowBefore);
        f.live.PutTableEntry(address.toStdString(), "55", kValueColumn);
        QCOMPARE(f.grid.topRow(), topRowAfter);
    }

    void viewFollowsBeforeTheCursorMoves()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.live.PutTableEntry("02A", "55", kValueColumn);
        QCOMPARE(f.log, (Texts{"setTopRow 2", "setRow 25", "setRowSel 25", "EditData", "setCol 1"}));
    }

    void editingTheLowestRowInViewScrollsByOneEachTime()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.live.PutTableEntry("01B", "XXX", kChangedColumn);
        QCOMPARE(f.grid.topRow(), 2);
        f.live.PutTableEntry("01B", "XXX", kChangedColumn);
        QCOMPARE(f.grid.topRow(), 2);
        f.live.PutTableEntry("01C", "XXX", kChangedColumn);
        QCOMPARE(f.grid.topRow(), 3);
    }

    // The walk ends one entry past the rows; a grid with more rows than parameters scrolls for that entry too.
    void getOfAnUnknownAddressScrollsAGridWithRowsToSpareAndPutDoesNot()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.table.setRowCount(41);
        f.live.PutTableEntry("02B", "55", kValueColumn);
        QCOMPARE(f.grid.topRow(), 1);
        QCOMPARE(f.live.GetTableEntry("02B"), "");
        QCOMPARE(f.grid.topRow(), 2);
        QCOMPARE(f.live.GetTableEntry(""), "");
        QCOMPARE(f.grid.topRow(), 2);
    }

    void putOpensTheEditorBeforeItWritesTheCell()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        Texts seen;
        f.host.onEditData = [&] { seen.push_back(f.table.cell(f.grid.row(), kValueColumn)); };
        f.live.PutTableEntry("01A", "20", kValueColumn);
        QCOMPARE(seen, Texts{"12"});
        QCOMPARE(f.table.cell(9, kValueColumn), "20");
        // The row is open already: nothing opens, although the editor shows the value from before.
        f.live.PutTableEntry("01A", "21", kValueColumn);
        QCOMPARE(seen, Texts{"12"});
        QCOMPARE(f.table.cell(9, kValueColumn), "21");
    }

    void putsOnRowAfterRowOpenEachInTurn()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        for (const char* address : {"001", "013", "014", "014", "001"}) {
            f.live.PutTableEntry(address, "55", kValueColumn);
        }
        QCOMPARE(f.openedRows, (std::vector<int>{1, 2, 3, 1}));
    }

    void putWhileAGridIsFilledMovesTheCursorWithoutOpeningTheEditor()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.session.EditState = EditSession::kFilling;
        f.live.PutTableEntry("01A", "20", kValueColumn);
        QCOMPARE(f.grid.row(), 9);
        QCOMPARE(f.table.cell(9, kValueColumn), "20");
        QVERIFY(f.openedRows.empty());
        QCOMPARE(int{f.session.EditState}, 1);
    }

    // The field editor names its row by the address it remembers; opening another row replaces that very text.
    void putIsNotConfusedWhenTheEditorReplacesTheAddressItWasGiven()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        f.session.CurrentAddress = "01A";
        f.host.onEditData = [&] { f.session.CurrentAddress = "overwritten"; };
        f.live.PutTableEntry(f.session.CurrentAddress, "20", kValueColumn);
        QCOMPARE(f.table.cell(9, kValueColumn), "20");
    }

    // After a table was written to the reader the index knows the pairs by their second address only.
    void pairsKnownByTheirSecondAddressAreNotFoundByTheFirstUntilAReset()
    {
        LiveTableFixture f(keyboardLanguageKind());
        f.reset();
        f.table.ParmAddr[2] = "084";
        QCOMPARE(f.live.GetTableEntry("083"), "");
        QCOMPARE(f.live.GetTableEntry("084"), "20-03");
        f.live.PutTableEntry("083-084", "XXX", kChangedColumn);
        QCOMPARE(f.table.cell(3, kChangedColumn), "");
        QVERIFY(!f.table.TableChanged);
        QCOMPARE(f.host.tabCaption, "Keyboard Language");
        f.live.InitGrid();
        QCOMPARE(f.live.GetTableEntry("083"), "20-03");
    }

    void rowsThatAShorterTableNoLongerHasAreNotWritten()
    {
        LiveTableFixture f(configurationKind());
        f.reset();
        // Five rows laid down over the defaults, the index left as it was.
        f.table.setRowCount(6);
        f.table.NumParms = 5;
        QCOMPARE(f.table.ParmAddr[5], "017");
        const Texts before = f.cells();
        f.forget();
        for (const char* address : {"017", "018", "019"}) {
            f.live.PutTableEntry(address, "XXX", kChangedColumn);
            QCOMPARE(f.live.GetTableEntry(address), "");
        }
        QCOMPARE(f.cells(), before);
        QVERIFY(f.log.empty());
        QVERIFY(!f.table.TableChanged);
    }

    void displayGridValueWritesTwoDigitsAndTheBinaryText_data()
    {
        QTest::addColumn<int>("byte");
        QTest::addColumn<QByteArray>("digits");
        QTest::addColumn<QByteArray>("status");
        QTest::newRow("5") << 5 << QByteArray("05") << QByteArray("value in binary is 0000 0101");
        QTest::newRow("149") << 149 << QByteArray("95") << QByteArray("value in binary is 1001 0101");
        QTest::newRow("0") << 0 << QByteArray("00") << QByteArray("value in binary is 0000 0000");
        QTest::newRow("255") << 255 << QByteArray("FF") << QByteArray("value in binary is 1111 1111");
        QTest::newRow("171") << 171 << QByteArray("AB") << QByteArray("value in binary is 1010 1011");
    }
    void displayGridValueWritesTwoDigitsAndTheBinaryText()
    {
        QFETCH(int, byte);
        QFETCH(QByteArray, digits);
        QFETCH(QByteArray, status);
        for (const TableKind* kind : {&configurationKind(), &keyboardLanguageKind()}) {
            LiveTableFixture f(*kind);
            f.reset();
            f.grid.userMovesTo(9);
            Texts expected = f.cells();
            expected[static_cast<std::size_t>(faIndex(f.table, 9, kValueColumn))] = digits.toStdString();
            f.forget();
            f.live.DisplayGridValue(static_cast<std::uint8_t>(byte));
            QCOMPARE(f.cells(), expected);
            QCOMPARE(f.grid.col(), int{kValueColumn});
            QCOMPARE(f.grid.row(), 9);
            QCOMPARE(f.host.statusText, status.toStdString());
            // No mark, no caption, no scrolling: that is up to the caller.
            QCOMPARE(f.log, (Texts{"setCol 2", "status: " + status.toStdString()}));
            QVERIFY(!f.table.TableChanged);
        }
    }

    void displayGridValueWithoutACurrentRowLeavesTheHeaderAlone()
    {
        LiveTableFixture f(configurationKind());
        QCOMPARE(f.grid.row(), 0);
        f.live.DisplayGridValue(5);
        QCOMPARE(f.table.cell(0, kValueColumn), "Hex");
    }

    void pairedNamesReachTheirOwnTable()
    {
        LiveTableFixture cfg(configurationKind());
        LiveTableFixture kb(keyboardLanguageKind());
        cfg.reset();
        kb.reset();
        ParamTables both{cfg.live, kb.live, cfg.session};
        both.PutTableEntry_CFG("01A", "20", kValueColumn);
        both.PutTableEntry_KB("083", "21-22", kValueColumn);
        QCOMPARE(cfg.table.cell(9, kValueColumn), "20");
        QCOMPARE(kb.table.cell(3, kValueColumn), "21-22");
        QCOMPARE(both.GetTableEntry_CFG("01A"), "20");
        QCOMPARE(both.GetTableEntry_KB("084"), "21-22");
        QCOMPARE(both.GetTableEntry_CFG("084"), "");
        QCOMPARE(both.GetTableEntry_KB("01A"), "");
        both.DisplayGridValue_CFG(1);
        both.DisplayGridValue_KB(2);
        QCOMPARE(cfg.table.cell(9, kValueColumn), "01");
        QCOMPARE(kb.table.cell(3, kValueColumn), "02");
        both.Clear_Changed_Flags_CFG();
        QCOMPARE(cfg.column(kChangedColumn), Texts(27, " "));
        QCOMPARE(kb.column(kChangedColumn), Texts(75, ""));
        both.Clear_Changed_Flags_KB();
        QCOMPARE(kb.column(kChangedColumn), Texts(75, " "));
    }
};

static const testsupport::RunnableTest<LiveTableEntryTest> kRunnable;
#include "LiveTableEntryTest.moc"
