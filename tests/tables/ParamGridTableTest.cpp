#include "tables/LiveTable.h"
#include "tests/support/FakeTableSurroundings.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"
#include "tests/tables/ShownGrid.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <algorithm>

using namespace tables;

namespace {

// The grid on screen with the table's own handling of its events, wired as the program wires them.
struct LiveGrid : ShownGrid
{
    explicit LiveGrid(int rows, int rowsToSpare = 0)
        : ShownGrid(rows, rowsToSpare)
    {
        live.setEditor(host);
        session.EditState = EditSession::kEditing;
        QObject::connect(&grid, &ParamGrid::rowCurrentChanged, &grid, [this] { live.rowChanged(); });
        QObject::connect(&grid, &ParamGrid::selectionMoved, &grid, [this] { live.selectionChanged(); });
        host.onEditData = [this] {
            openedRows.push_back(grid.row());
            grid.setCol(kAddressColumn);
        };
    }

    [[nodiscard]] auto beeps() const { return std::count(log.begin(), log.end(), "beep"); }

    std::vector<std::string> log;
    std::vector<int> openedRows;
    EditSession session;
    testsupport::FakeTableSurroundings host{log};
    LiveTable live{table, {.grid = grid, .display = host, .status = host, .unsaved = host, .session = session}};
};

QString shownText(const ParamGrid& grid, int row, int column)
{
    return grid.model()->index(row - 1, column).data().toString();
}

} // namespace

// The grid over its table: it follows the table's rows and cells, and the table's operations move it.
class ParamGridTableTest final : public QObject
{
    Q_OBJECT

private slots:
    void showsTheTablesHeaderAndCells()
    {
        ShownGrid g(3);
        const QAbstractItemModel* model = g.grid.model();
        QCOMPARE(model->rowCount(), 3);
        QCOMPARE(model->columnCount(), 4);
        const QStringList header = {QStringLiteral("Changed"), QStringLiteral("Adr"), QStringLiteral("Hex"),
                                    QStringLiteral("Notes")};
        for (int column = 0; column < 4; ++column) {
            QCOMPARE(model->headerData(column, Qt::Horizontal).toString(), header.at(column));
        }
        QCOMPARE(shownText(g.grid, 1, kAddressColumn), QStringLiteral("001"));
        QCOMPARE(shownText(g.grid, 3, kAddressColumn), QStringLiteral("003"));
        QCOMPARE(shownText(g.grid, 3, kValueColumn), QStringLiteral("00"));
    }

    void showsTheProgramsByteTextAsItsCharacters()
    {
        ShownGrid g(3);
        g.table.setCell(2, kNotesColumn, "\x80 \x95 \xE9");
        const QString expected = QString(QChar(0x20AC)) + u' ' + QChar(0x2022) + u' ' + QChar(0xE9);
        QCOMPARE(shownText(g.grid, 2, kNotesColumn), expected);
    }

    void tableOutlivesItsGrid()
    {
        ParamTable table(configurationKind());
        {
            const ParamGrid grid(table);
        }
        table.setRowCount(5);
        table.setCell(4, kValueColumn, "5C");
        QCOMPARE(table.cell(4, kValueColumn), "5C");
    }

    void repaintsWhatChanged()
    {
        ShownGrid g(3);
        QSignalSpy changed(g.grid.model(), &QAbstractItemModel::dataChanged);
        g.table.setCell(2, kValueColumn, "5C");
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.at(0).at(0).toModelIndex(), g.grid.model()->index(1, kValueColumn));
        QCOMPARE(changed.at(0).at(1).toModelIndex(), g.grid.model()->index(1, kValueColumn));
        QCOMPARE(shownText(g.grid, 2, kValueColumn), QStringLiteral("5C"));
        // The mark changes how the whole row looks.
        g.table.setCell(2, kChangedColumn, "XXX");
        QCOMPARE(changed.size(), 2);
        QCOMPARE(changed.at(1).at(0).toModelIndex(), g.grid.model()->index(1, kChangedColumn));
        QCOMPARE(changed.at(1).at(1).toModelIndex(), g.grid.model()->index(1, kNotesColumn));
        QSignalSpy headerChanged(g.grid.model(), &QAbstractItemModel::headerDataChanged);
        g.table.setCell(0, kValueColumn, "Hex");
        QCOMPARE(headerChanged.size(), 1);
        QCOMPARE(changed.size(), 2);
    }

    void modelKeepsItsPromisesWhileRowsComeAndGo()
    {
        ShownGrid g(3);
        const QAbstractItemModelTester tester(g.grid.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy inserted(g.grid.model(), &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(g.grid.model(), &QAbstractItemModel::rowsRemoved);
        g.fill(27);
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(g.grid.model()->rowCount(), 27);
        g.fill(5);
        QCOMPARE(removed.size(), 1);
        QCOMPARE(g.grid.model()->rowCount(), 5);
        g.table.setRowCount(1);
        QCOMPARE(g.grid.model()->rowCount(), 0);
        g.fill(255);
        QCOMPARE(g.grid.model()->rowCount(), 255);
        QCOMPARE(shownText(g.grid, 255, kAddressColumn), QStringLiteral("0FF"));
    }

    void currentRowStaysWhenRowsCome()
    {
        ShownGrid g(5);
        QVERIFY(g.show(5));
        g.grid.setRow(4);
        QSignalSpy moved(&g.grid, &ParamGrid::rowCurrentChanged);
        g.fill(27);
        QCOMPARE(g.grid.row(), 4);
        QCOMPARE(g.highlightedRows(), std::vector<int>{4});
        QCOMPARE(moved.size(), 0);
        g.grid.setRow(27);
        QCOMPARE(g.grid.row(), 27);
    }

    void currentRowStaysWhenOnlyRowsBelowItGo()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(4);
        QSignalSpy moved(&g.grid, &ParamGrid::rowCurrentChanged);
        g.fill(5);
        QCOMPARE(g.grid.row(), 4);
        QCOMPARE(g.highlightedRows(), std::vector<int>{4});
        QCOMPARE(moved.size(), 0);
    }

    void lastRowBecomesCurrentWhenTheCurrentOneGoes()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(20);
        g.fill(5);
        QCOMPARE(g.grid.row(), 5);
        QCOMPARE(g.highlightedRows(), std::vector<int>{5});
    }

    void noRowIsCurrentWhenAllRowsGo()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(20);
        g.table.setRowCount(1);
        QCOMPARE(g.grid.row(), 0);
        QVERIFY(g.highlightedRows().empty());
        QCOMPARE(g.grid.topRow(), 1);
        g.fill(3);
        QCOMPARE(g.grid.row(), 0);
        g.grid.setRow(2);
        QCOMPARE(g.grid.row(), 2);
        QCOMPARE(g.highlightedRows(), std::vector<int>{2});
    }

    void putOnAFarRowScrollsByOneRowOnly()
    {
        LiveGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(2);
        g.openedRows.clear();
        g.live.PutTableEntry("014", "55", kValueColumn);
        QCOMPARE(g.grid.row(), 20);
        QCOMPARE(g.grid.topRow(), 2);
        QCOMPARE(g.openedRows, std::vector<int>{20});
        QCOMPARE(shownText(g.grid, 20, kValueColumn), QStringLiteral("55"));
        g.live.PutTableEntry("001", "55", kValueColumn);
        QCOMPARE(g.grid.row(), 1);
        QCOMPARE(g.grid.topRow(), 2);
        g.live.PutTableEntry("01B", "55", kValueColumn);
        QCOMPARE(g.grid.row(), 27);
        QCOMPARE(g.grid.topRow(), 2);
    }

    // kb-grid-moves
    void getScrollsByOneRowAndLeavesTheRow()
    {
        LiveGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(2);
        QCOMPARE(g.live.GetTableEntry("004"), "00");
        QCOMPARE(g.grid.topRow(), 1);
        QCOMPARE(g.live.GetTableEntry("005"), "00");
        QCOMPARE(g.grid.topRow(), 2);
        QCOMPARE(g.grid.row(), 2);
    }

    void resetLaysDownTheDefaultsWhateverWasShown()
    {
        for (const int rows : {0, 1, 5, 100}) {
            LiveGrid g(rows);
            QVERIFY(g.show(5));
            g.grid.setTopRow(rows);
            g.grid.setRow(rows);
            g.log.clear();
            g.openedRows.clear();
            g.live.InitGrid();
            QCOMPARE(g.grid.model()->rowCount(), 27);
            QCOMPARE(g.grid.row(), 2);
            QCOMPARE(g.highlightedRows(), std::vector<int>{2});
            QCOMPARE(g.grid.topRow(), 1);
            QCOMPARE(g.openedRows, std::vector<int>{2});
            QCOMPARE(g.beeps(), 0);
            QCOMPARE(shownText(g.grid, 27, kAddressColumn), QStringLiteral("02D"));
        }
    }

    void clearedMarksEndOnTheFirstEditableRow()
    {
        LiveGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(20);
        g.openedRows.clear();
        g.live.Clear_Changed_Flags();
        QCOMPARE(g.grid.row(), 2);
        QCOMPARE(g.grid.col(), int{kAddressColumn});
        QCOMPARE(g.highlightedRows(), std::vector<int>{2});
        QCOMPARE(g.grid.topRow(), 1);
        QCOMPARE(g.openedRows, std::vector<int>{2});
        QCOMPARE(shownText(g.grid, 27, kChangedColumn), QStringLiteral(" "));
    }

    // However the cursor leaves the parameters, it is back on the last of them, with one beep.
    void guardBringsTheCursorBack_data()
    {
        QTest::addColumn<int>("means");
        QTest::newRow("the program") << 0;
        QTest::newRow("arrow key") << 1;
        QTest::newRow("end key") << 2;
        QTest::newRow("click") << 3;
        QTest::newRow("click with Ctrl") << 4;
    }
    void guardBringsTheCursorBack()
    {
        QFETCH(int, means);
        LiveGrid g(27, 13);
        QVERIFY(g.show(5));
        g.grid.setTopRow(25);
        g.grid.setRow(27);
        g.openedRows.clear();
        QCOMPARE(g.beeps(), 0);
        switch (means) {
        case 0:
            g.grid.setRow(29);
            break;
        case 1:
            QTest::keyClick(&g.grid, Qt::Key_Down);
            break;
        case 2:
            QTest::keyClick(&g.grid, Qt::Key_End, Qt::ControlModifier);
            break;
        case 3:
            g.click(29);
            break;
        default:
            g.click(29, Qt::ControlModifier);
        }
        QCOMPARE(g.grid.row(), 27);
        QCOMPARE(g.grid.rowSel(), 27);
        QCOMPARE(g.grid.col(), 0);
        QCOMPARE(g.highlightedRows(), std::vector<int>{27});
        QCOMPARE(g.beeps(), 1);
        QVERIFY(g.grid.rowIsVisible(27));
        QVERIFY(g.openedRows.empty());
    }

    void guardOpensTheLastRowWhenAnotherWasOpen()
    {
        LiveGrid g(27, 13);
        QVERIFY(g.show(5));
        g.grid.setRow(20);
        g.grid.setTopRow(31);
        g.openedRows.clear();
        g.click(33);
        QCOMPARE(g.grid.row(), 27);
        QCOMPARE(g.highlightedRows(), std::vector<int>{27});
        QCOMPARE(g.openedRows, std::vector<int>{27});
        QCOMPARE(g.beeps(), 1);
        QCOMPARE(g.grid.topRow(), 27);
    }

    void guardLetsTheCursorMoveAmongTheParameters()
    {
        LiveGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(26);
        g.openedRows.clear();
        QTest::keyClick(&g.grid, Qt::Key_Down);
        QTest::keyClick(&g.grid, Qt::Key_Down);
        QCOMPARE(g.grid.row(), 27);
        QCOMPARE(g.beeps(), 0);
        QCOMPARE(g.openedRows, std::vector<int>{27});
    }
};

static const testsupport::RunnableTest<ParamGridTableTest> kRunnable;
#include "ParamGridTableTest.moc"
