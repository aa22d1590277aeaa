#include "tests/support/RunnableTest.h"
#include "tests/tables/ShownGrid.h"

#include <QSignalSpy>

using namespace tables;

// The current row is whole on screen, whatever made it current and whatever the size of the grid.
class ParamGridWholeRowTest final : public QObject
{
    Q_OBJECT

private:
    // A point of a row that is cut at the lower edge.
    static QPoint lowerEdge(const ShownGrid& g) { return {20, g.grid.viewport()->height() - 2}; }

private slots:
    void wholeAndCutRows()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5, 6));
        QVERIFY(g.grid.rowIsWhole(1));
        QVERIFY(g.grid.rowIsWhole(5));
        QVERIFY(g.grid.rowIsVisible(6));
        QVERIFY(!g.grid.rowIsWhole(6));
        QVERIFY(!g.grid.rowIsWhole(7));
        QVERIFY(!g.grid.rowIsWhole(0));
        QVERIFY(!g.grid.rowIsWhole(28));
        g.grid.setTopRow(3);
        QVERIFY(!g.grid.rowIsWhole(2));
        QVERIFY(g.grid.rowIsWhole(3));
    }

    void aRowIsShownFromAnywhere()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5, 6));
        bringIntoView(g.grid, 6);
        QCOMPARE(g.grid.topRow(), 2); // no more than it takes
        bringIntoView(g.grid, 27);
        QVERIFY(g.wholeRowIsInView(27));
        bringIntoView(g.grid, 4);
        QCOMPARE(g.grid.topRow(), 4);
        bringIntoView(g.grid, 0);
        bringIntoView(g.grid, 99);
        QVERIFY(g.grid.topRow() >= 4);
    }

    // Not under the pointer: a double click is two clicks on one place.
    void aClickedRowThatIsCutIsShownAfterwards()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5, 6));
        g.grid.setRow(1);
        QSignalSpy doubleClicks(&g.grid, &ParamGrid::rowDoubleClicked);
        QTest::mouseClick(g.grid.viewport(), Qt::LeftButton, {}, lowerEdge(g));
        QCOMPARE(g.grid.row(), 6);
        QCOMPARE(g.grid.topRow(), 1);
        QTest::mouseDClick(g.grid.viewport(), Qt::LeftButton, {}, lowerEdge(g));
        QCOMPARE(doubleClicks.count(), 1);
        QCOMPARE(g.grid.row(), 6);
        QTRY_VERIFY(g.wholeRowIsInView(6));
        QCOMPARE(g.grid.topRow(), 2);
    }

    void aLowerGridKeepsItsRow()
    {
        ShownGrid g(27);
        QVERIFY(g.show(8));
        g.grid.setRow(8);
        g.grid.resize(g.grid.width(), g.grid.height() - g.grid.rowHeight(0) * 5 / 2);
        QTRY_VERIFY(g.wholeRowIsInView(8));
        QCOMPARE(g.grid.row(), 8);
    }

    // A row that the user has scrolled away does not come back by itself.
    void aRowOutOfViewStaysThere()
    {
        ShownGrid g(27);
        QVERIFY(g.show(8));
        g.grid.setRow(1);
        g.grid.setTopRow(10);
        g.grid.resize(g.grid.width(), g.grid.height() - g.grid.rowHeight(0) * 5 / 2);
        QCoreApplication::processEvents();
        QCOMPARE(g.grid.topRow(), 10);
        g.grid.setRow(27);
        g.grid.resize(g.grid.width(), g.grid.height() - g.grid.rowHeight(0));
        QCoreApplication::processEvents();
        QCOMPARE(g.grid.topRow(), 10);
    }
};

static const testsupport::RunnableTest<ParamGridWholeRowTest> kRunnable;
#include "ParamGridWholeRowTest.moc"
