#include "tests/support/RunnableTest.h"
#include "tests/tables/ShownGrid.h"

#include <QScrollBar>
#include <QTabWidget>

using namespace tables;

// The grid as the program sees it: its cursor, its top row and which rows are in view.
class ParamGridTest final : public QObject
{
    Q_OBJECT

private slots:
    void noRowIsCurrentAtFirst()
    {
        ShownGrid g(27);
        QCOMPARE(g.grid.row(), 0);
        QCOMPARE(g.grid.rowSel(), 0);
        QCOMPARE(g.grid.col(), 0);
        QCOMPARE(g.grid.topRow(), 1);
        QVERIFY(g.highlightedRows().empty());
    }

    void theCurrentRowIsSeenWithoutTheFocus()
    {
        ShownGrid g(27);
        const QPalette before = QApplication::palette();
        const auto isSeen = [&g] {
            const QPalette own = g.grid.palette();
            const QPalette system = QApplication::palette();
            return own.color(QPalette::Inactive, QPalette::Highlight) ==
                       system.color(QPalette::Active, QPalette::Highlight) &&
                   own.color(QPalette::Inactive, QPalette::HighlightedText) ==
                       system.color(QPalette::Active, QPalette::HighlightedText);
        };
        QVERIFY(isSeen());
        QPalette other = before;
        other.setColor(QPalette::Active, QPalette::Highlight, Qt::darkGreen);
        other.setColor(QPalette::Inactive, QPalette::Highlight, Qt::lightGray);
        QApplication::setPalette(other);
        QVERIFY(g.show(5));
        QVERIFY(isSeen());
        QApplication::setPalette(before);
    }

    // In more than colour: bold, and on a background of its own; plain again when the mark goes.
    void aMarkedRowStandsOut()
    {
        ShownGrid g(27);
        const auto look = [&g](int row, int role) { return g.grid.model()->index(row - 1, kValueColumn).data(role); };
        g.table.setCell(3, kChangedColumn, "XXX");
        QVERIFY(look(3, Qt::FontRole).value<QFont>().bold());
        QVERIFY(!look(4, Qt::FontRole).value<QFont>().bold());
        const QColor tint = look(3, Qt::BackgroundRole).value<QBrush>().color();
        const QPalette palette = g.grid.palette();
        QVERIFY(look(3, Qt::BackgroundRole).isValid());
        QVERIFY(tint != palette.color(QPalette::Base) && tint != palette.color(QPalette::Highlight));
        QVERIFY(!look(4, Qt::BackgroundRole).isValid());
        g.table.setCell(3, kChangedColumn, " ");
        QVERIFY(!look(3, Qt::FontRole).value<QFont>().bold());
        QVERIFY(!look(3, Qt::BackgroundRole).isValid());
    }

    void drawsNoMoreThanAThousandCharacters()
    {
        ShownGrid g(27);
        const std::string notes(1500, 'n');
        g.table.setCell(3, kNotesColumn, notes);
        const QModelIndex cell = g.grid.model()->index(2, kNotesColumn);
        QCOMPARE(cell.data(Qt::DisplayRole).toString(), QString(1000, u'n'));
        QCOMPARE(cell.data(Qt::EditRole).toString(), QString(1500, u'n'));
    }

    void setRowHighlightsTheRowAndDoesNotScroll()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(20);
        QCOMPARE(g.grid.row(), 20);
        QCOMPARE(g.grid.rowSel(), 20);
        QCOMPARE(g.highlightedRows(), std::vector<int>{20});
        QCOMPARE(g.grid.topRow(), 1);
        g.grid.setTopRow(15);
        g.grid.setRow(1);
        QCOMPARE(g.grid.row(), 1);
        QCOMPARE(g.highlightedRows(), std::vector<int>{1});
        QCOMPARE(g.grid.topRow(), 15);
        // Nor afterwards, when the window's events have run.
        QCoreApplication::processEvents();
        QCOMPARE(g.grid.topRow(), 15);
    }

    void rowSetWhileHiddenDoesNotScrollWhenShown()
    {
        ShownGrid g(27);
        g.grid.setRow(20);
        QVERIFY(g.show(5));
        QCOMPARE(g.grid.topRow(), 1);
        g.grid.hide();
        g.grid.setRow(26);
        g.grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&g.grid));
        QCOMPARE(g.grid.topRow(), 1);
        QCOMPARE(g.grid.row(), 26);
    }

    void rowsThatDoNotExistNeverBecomeCurrent()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(3);
        for (const int row : {0, -1, 28, 1000}) {
            g.grid.setRow(row);
            QCOMPARE(g.grid.row(), 3);
            g.grid.setRowSel(row);
            QCOMPARE(g.grid.row(), 3);
        }
        g.grid.setRow(27);
        QCOMPARE(g.grid.row(), 27);
    }

    void columnAndRowMoveIndependently()
    {
        ShownGrid g(27);
        g.grid.setRow(3);
        g.grid.setCol(kValueColumn);
        QCOMPARE(g.grid.col(), int{kValueColumn});
        QCOMPARE(g.grid.row(), 3);
        g.grid.setRow(5);
        QCOMPARE(g.grid.col(), int{kValueColumn});
        g.grid.setColSel(kNotesColumn);
        QCOMPARE(g.grid.col(), int{kValueColumn});
        g.grid.setCol(4);
        QCOMPARE(g.grid.col(), int{kValueColumn});
        QCOMPARE(g.highlightedRows(), std::vector<int>{5});
        QCOMPARE(g.grid.selectionModel()->selectedIndexes().size(), qsizetype{kColumnCount});
    }

    void topRowIsClampedToTheScrollRange()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setTopRow(7);
        QCOMPARE(g.grid.topRow(), 7);
        g.grid.setTopRow(0);
        QCOMPARE(g.grid.topRow(), 1);
        g.grid.setTopRow(23);
        QCOMPARE(g.grid.topRow(), 23);
        g.grid.setTopRow(24);
        QCOMPARE(g.grid.topRow(), 23);
        g.grid.setTopRow(1000);
        QCOMPARE(g.grid.topRow(), 23);
        QVERIFY(g.wholeRowIsInView(27));
        g.grid.setTopRow(-5);
        QCOMPARE(g.grid.topRow(), 1);
    }

    void gridThatShowsEveryRowDoesNotScroll()
    {
        ShownGrid g(4);
        QVERIFY(g.show(5));
        g.grid.setTopRow(2);
        QCOMPARE(g.grid.topRow(), 1);
    }

    void topRowCanBeSetRightAfterRowsCame()
    {
        ShownGrid g(3);
        QVERIFY(g.show(5));
        g.fill(27);
        g.grid.setTopRow(20);
        QCOMPARE(g.grid.topRow(), 20);
        QVERIFY(g.grid.rowIsVisible(20));
        QVERIFY(!g.grid.rowIsVisible(19));
    }

    void topRowIsInRangeRightAfterRowsWent()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setTopRow(23);
        g.fill(8);
        QCOMPARE(g.grid.topRow(), 4);
        QVERIFY(g.grid.rowIsVisible(4));
        QVERIFY(g.grid.rowIsVisible(8));
        QVERIFY(!g.grid.rowIsVisible(3));
        g.fill(3);
        QCOMPARE(g.grid.topRow(), 1);
        QVERIFY(g.grid.rowIsVisible(1));
        QVERIFY(g.grid.rowIsVisible(3));
    }

    void rowIsVisibleToTheLastPixel_data()
    {
        QTest::addColumn<int>("morePixels");
        QTest::addColumn<int>("topRow");
        QTest::addColumn<int>("firstVisible");
        QTest::addColumn<int>("lastVisible");
        QTest::newRow("five whole rows") << 0 << 1 << 1 << 5;
        QTest::newRow("one pixel of the sixth") << 1 << 1 << 1 << 6;
        QTest::newRow("a pixel of the fifth is missing") << -1 << 1 << 1 << 5;
        QTest::newRow("scrolled, five whole rows") << 0 << 4 << 4 << 8;
        QTest::newRow("scrolled, one pixel of the sixth") << 1 << 4 << 4 << 9;
        QTest::newRow("at the end") << 0 << 23 << 23 << 27;
        // The last row stands at the lower edge there, so the pixels to spare are above the top row.
        QTest::newRow("at the end, one pixel of the row above") << 1 << 23 << 22 << 27;
    }
    void rowIsVisibleToTheLastPixel()
    {
        QFETCH(int, morePixels);
        QFETCH(int, topRow);
        QFETCH(int, firstVisible);
        QFETCH(int, lastVisible);
        ShownGrid g(27);
        QVERIFY(g.show(5, morePixels));
        g.grid.setTopRow(topRow);
        QCOMPARE(g.grid.topRow(), topRow);
        for (int row = -1; row <= 30; ++row) {
            QVERIFY2(g.grid.rowIsVisible(row) == (row >= firstVisible && row <= lastVisible),
                     qPrintable(QString::number(row)));
        }
    }

    void rowsBeyondTheTableAreNotVisibleEvenInTheEmptySpaceBelow()
    {
        ShownGrid g(3);
        QVERIFY(g.show(5));
        QVERIFY(g.grid.rowIsVisible(3));
        QVERIFY(!g.grid.rowIsVisible(4));
        QVERIFY(!g.grid.rowIsVisible(0));
    }

    void rowsBehindTheHorizontalScrollBarAreNotVisible()
    {
        ShownGrid g(27);
        g.grid.setColumnWidth(kNotesColumn, 2 * ShownGrid::kWidth);
        g.grid.setColumnWidth(kValueColumn, 2 * ShownGrid::kWidth);
        QVERIFY(g.show(5));
        QVERIFY(g.grid.horizontalScrollBar()->isVisible());
        QVERIFY(g.grid.rowIsVisible(5));
        QVERIFY(!g.grid.rowIsVisible(6));
    }

    void visibilityBeforeTheFirstShowGoesByTheSizeTheGridWasGiven()
    {
        ShownGrid g(27);
        g.grid.resize(ShownGrid::kWidth, 330);
        g.grid.setTopRow(1000);
        g.grid.setTopRow(1);
        g.grid.resize(ShownGrid::kWidth, 190);
        std::vector<bool> before;
        for (int row = 1; row <= 27; ++row) {
            before.push_back(g.grid.rowIsVisible(row));
        }
        g.grid.setTopRow(1000);
        const int lowestTopRow = g.grid.topRow();
        g.grid.setTopRow(1);
        g.grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&g.grid));
        QCOMPARE(g.grid.height(), 190);
        QVERIFY(!g.grid.rowIsVisible(27));
        for (int row = 1; row <= 27; ++row) {
            QVERIFY2(g.grid.rowIsVisible(row) == before[static_cast<std::size_t>(row - 1)],
                     qPrintable(QString::number(row)));
        }
        g.grid.setTopRow(1000);
        QCOMPARE(g.grid.topRow(), lowestTopRow);
    }

    // Both tables are written while only one of them is on screen.
    void gridOnAHiddenTabKeepsItsViewAndScrolls()
    {
        ParamTable table(keyboardLanguageKind());
        table.setRowCount(76);
        QTabWidget tabs;
        auto* shown = new QWidget;
        auto* grid = new ParamGrid(table);
        tabs.addTab(shown, QStringLiteral("shown"));
        tabs.addTab(grid, QStringLiteral("hidden"));
        tabs.resize(500, 250);
        tabs.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tabs));
        tabs.setCurrentWidget(grid);
        QVERIFY(QTest::qWaitFor([&] { return grid->isVisible(); }));
        std::vector<bool> whenShown;
        for (int row = 1; row <= 75; ++row) {
            whenShown.push_back(grid->rowIsVisible(row));
        }
        QVERIFY(whenShown.front());
        QVERIFY(!whenShown.back());

        tabs.setCurrentWidget(shown);
        QVERIFY(!grid->isVisible());
        for (int row = 1; row <= 75; ++row) {
            QVERIFY2(grid->rowIsVisible(row) == whenShown[static_cast<std::size_t>(row - 1)],
                     qPrintable(QString::number(row)));
        }
        grid->setTopRow(20);
        QCOMPARE(grid->topRow(), 20);
        QVERIFY(grid->rowIsVisible(20));
        QVERIFY(!grid->rowIsVisible(19));
        grid->setRow(70);
        QCOMPARE(grid->row(), 70);

        tabs.setCurrentWidget(grid);
        QCOMPARE(grid->topRow(), 20);
        QCOMPARE(grid->row(), 70);
    }
};

static const testsupport::RunnableTest<ParamGridTest> kRunnable;
#include "ParamGridTest.moc"
