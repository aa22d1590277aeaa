#include "tests/support/RunnableTest.h"
#include "tests/tables/ShownGrid.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QSignalSpy>

using namespace tables;

// The grid as the user drives it: keys, mouse and wheel, and what the grid reports of them.
class ParamGridInputTest final : public QObject
{
    Q_OBJECT

private slots:
    void arrowKeysMoveTheRowAndKeepItInView()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(4);
        QTest::keyClick(&g.grid, Qt::Key_Down);
        QCOMPARE(g.grid.row(), 5);
        QCOMPARE(g.grid.topRow(), 1);
        QTest::keyClick(&g.grid, Qt::Key_Down);
        QCOMPARE(g.grid.row(), 6);
        QCOMPARE(g.grid.topRow(), 2);
        QVERIFY(g.wholeRowIsInView(6));
        g.grid.setRow(2);
        QTest::keyClick(&g.grid, Qt::Key_Up);
        QCOMPARE(g.grid.row(), 1);
        QCOMPARE(g.grid.topRow(), 1);
    }

    void aRowHalfInViewIsBroughtInWholly()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5, 4));
        g.grid.setRow(5);
        QVERIFY(g.grid.rowIsVisible(6));
        QVERIFY(!g.wholeRowIsInView(6));
        QTest::keyClick(&g.grid, Qt::Key_Down);
        QCOMPARE(g.grid.row(), 6);
        QVERIFY(g.wholeRowIsInView(6));
    }

    void keysBringARowBackThatTheProgramMovedOutOfView()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(20);
        QCOMPARE(g.grid.topRow(), 1);
        QTest::keyClick(&g.grid, Qt::Key_Down);
        QCOMPARE(g.grid.row(), 21);
        QVERIFY(g.wholeRowIsInView(21));
    }

    void pageAndEndKeysKeepTheRowInView()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(1);
        QTest::keyClick(&g.grid, Qt::Key_PageDown);
        QVERIFY(g.grid.row() > 1);
        QVERIFY(g.wholeRowIsInView(g.grid.row()));
        QTest::keyClick(&g.grid, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(g.grid.row(), 27);
        QCOMPARE(g.grid.topRow(), 23);
        QTest::keyClick(&g.grid, Qt::Key_PageUp);
        QVERIFY(g.grid.row() < 27);
        QVERIFY(g.wholeRowIsInView(g.grid.row()));
        QTest::keyClick(&g.grid, Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(g.grid.row(), 1);
        QCOMPARE(g.grid.topRow(), 1);
    }

    void keysStayWithinTheDataRows()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(1);
        QTest::keyClick(&g.grid, Qt::Key_Up);
        QCOMPARE(g.grid.row(), 1);
        g.grid.setRow(27);
        QTest::keyClick(&g.grid, Qt::Key_Down);
        QCOMPARE(g.grid.row(), 27);
    }

    void clickMovesTheRowAndDoesNotScroll()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5, 6));
        g.click(3);
        QCOMPARE(g.grid.row(), 3);
        QVERIFY(!g.wholeRowIsInView(6));
        QTest::mouseClick(g.grid.viewport(), Qt::LeftButton, Qt::NoModifier, {20, g.grid.viewport()->height() - 2});
        QCOMPARE(g.grid.row(), 6);
        QCOMPARE(g.grid.topRow(), 1);
    }

    void wheelScrollsAndLeavesTheRow()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(2);
        QSignalSpy moved(&g.grid, &ParamGrid::rowCurrentChanged);
        turnWheel(g.grid, -120);
        QVERIFY(g.grid.topRow() > 1);
        QCOMPARE(g.grid.row(), 2);
        QCOMPARE(g.highlightedRows(), std::vector<int>{2});
        turnWheel(g.grid, 120);
        QCOMPARE(g.grid.topRow(), 1);
        QCOMPARE(g.grid.row(), 2);
        QCOMPARE(moved.size(), 0);
    }

    void theHighlightedRowIsAlwaysTheCurrentOne()
    {
        ShownGrid g(3);
        QVERIFY(g.show(5));
        g.click(2);
        QCOMPARE(g.highlightedRows(), std::vector<int>{2});
        g.click(2, Qt::ControlModifier);
        QCOMPARE(g.highlightedRows(), std::vector<int>{2});
        g.click(1, Qt::ControlModifier);
        QCOMPARE(g.highlightedRows(), std::vector<int>{1});
        g.click(3, Qt::ShiftModifier);
        QCOMPARE(g.highlightedRows(), std::vector<int>{3});
        QTest::keyClick(&g.grid, Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(g.highlightedRows(), std::vector<int>{3});
        QTest::keyClick(&g.grid, Qt::Key_Up, Qt::ControlModifier);
        QCOMPARE(g.highlightedRows(), std::vector<int>{g.grid.row()});
        QTest::keyClick(&g.grid, Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(g.highlightedRows(), std::vector<int>{g.grid.row()});
        QTest::keyClick(&g.grid, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(g.highlightedRows(), std::vector<int>{g.grid.row()});
        g.grid.setRow(2);
        QTest::mouseClick(g.grid.viewport(), Qt::LeftButton, Qt::NoModifier, pointBelowTheRows(g));
        QCOMPARE(g.grid.row(), 2);
        QCOMPARE(g.highlightedRows(), std::vector<int>{2});
    }

    void draggingOverRowsMovesTheOneHighlightedRow()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        QTest::mousePress(g.grid.viewport(), Qt::LeftButton, Qt::NoModifier, g.pointIn(1));
        // The test library's own mouse move carries no pressed button, so the view would not take it for a drag.
        const QPoint to = g.pointIn(4);
        QMouseEvent move(QEvent::MouseMove, to, g.grid.viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(g.grid.viewport(), &move);
        QTest::mouseRelease(g.grid.viewport(), Qt::LeftButton, Qt::NoModifier, to);
        QCOMPARE(g.grid.row(), 4);
        QCOMPARE(g.grid.rowSel(), 4);
        QCOMPARE(g.highlightedRows(), std::vector<int>{4});
    }

    void headerTakesNeitherClicksNorDoubleClicks()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(3);
        QSignalSpy moved(&g.grid, &ParamGrid::rowCurrentChanged);
        QSignalSpy doubleClicked(&g.grid, &ParamGrid::rowDoubleClicked);
        QWidget* header = g.grid.horizontalHeader()->viewport();
        const QPoint inHeader(header->width() / 2, header->height() / 2);
        QTest::mouseClick(header, Qt::LeftButton, Qt::NoModifier, inHeader);
        QTest::mouseDClick(header, Qt::LeftButton, Qt::NoModifier, inHeader);
        QCOMPARE(g.grid.row(), 3);
        QCOMPARE(g.highlightedRows(), std::vector<int>{3});
        QCOMPARE(moved.size(), 0);
        QCOMPARE(doubleClicked.size(), 0);
    }

    void doubleClickReportsTheRowThatIsCurrentThen()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(1);
        std::vector<int> reported;
        connect(&g.grid, &ParamGrid::rowDoubleClicked, &g.grid, [&] { reported.push_back(g.grid.row()); });
        g.doubleClick(4);
        QCOMPARE(reported, std::vector<int>{4});
        g.doubleClick(4);
        QCOMPARE(reported, (std::vector<int>{4, 4}));
    }

    void onlyTheLeftButtonAsks()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        QSignalSpy doubleClicked(&g.grid, &ParamGrid::rowDoubleClicked);
        const QPoint inRow2 = g.grid.visualRect(g.grid.model()->index(1, 1)).center();
        for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton, Qt::BackButton}) {
            QTest::mouseClick(g.grid.viewport(), button, Qt::NoModifier, inRow2);
            QTest::mouseDClick(g.grid.viewport(), button, Qt::NoModifier, inRow2);
        }
        QCOMPARE(doubleClicked.size(), 0);
        g.doubleClick(2);
        QCOMPARE(doubleClicked.size(), 1);
    }

    void enterAsksOnce()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        QSignalSpy asked(&g.grid, &ParamGrid::rowDoubleClicked);
        g.grid.setRow(2);
        QTest::keyClick(&g.grid, Qt::Key_Return);
        QCOMPARE(asked.size(), 1);
        QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
        QApplication::sendEvent(&g.grid, &repeated);
        QCOMPARE(asked.size(), 1);
    }

    void aKeyThatIsOnlyHeldScrollsNothing()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(2);
        g.grid.setTopRow(15);
        const int top = g.grid.topRow();
        QVERIFY(top > 5);
        for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_AltGr, Qt::Key_Meta,
                                  Qt::Key_CapsLock, Qt::Key_NumLock, Qt::Key_Super_L}) {
            QKeyEvent pressed(QEvent::KeyPress, key, Qt::NoModifier);
            QApplication::sendEvent(&g.grid, &pressed);
            QCOMPARE(g.grid.topRow(), top);
        }
        QTest::keyClick(&g.grid, Qt::Key_Left);
        QVERIFY(g.grid.rowIsVisible(2));
        QVERIFY(g.grid.topRow() <= 2);
    }

    void doubleClickBelowTheRowsReportsNothing()
    {
        ShownGrid g(3);
        QVERIFY(g.show(5));
        g.grid.setRow(2);
        QSignalSpy doubleClicked(&g.grid, &ParamGrid::rowDoubleClicked);
        const QPoint below = pointBelowTheRows(g);
        QTest::mouseClick(g.grid.viewport(), Qt::LeftButton, Qt::NoModifier, below);
        QTest::mouseDClick(g.grid.viewport(), Qt::LeftButton, Qt::NoModifier, below);
        QCOMPARE(doubleClicked.size(), 0);
        QCOMPARE(g.grid.row(), 2);
    }

    void noCellEditorEverOpens()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setCol(kValueColumn);
        g.doubleClick(2);
        QTest::keyClick(&g.grid, Qt::Key_F2);
        QTest::keyClick(&g.grid, Qt::Key_Return);
        QTest::keyClick(&g.grid, Qt::Key_Z);
        QVERIFY(g.grid.findChildren<QLineEdit*>().isEmpty());
        QCOMPARE(g.table.cell(2, kValueColumn), "00");
        QCOMPARE(g.grid.editTriggers(), QAbstractItemView::NoEditTriggers);
    }

    void tabKeyLeavesTheGrid()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        g.grid.setRow(2);
        g.grid.setCol(kAddressColumn);
        QTest::keyClick(&g.grid, Qt::Key_Tab);
        QCOMPARE(g.grid.row(), 2);
        QCOMPARE(g.grid.col(), int{kAddressColumn});
    }

    void rowChangesAreReportedInsideTheCallThatMakesThem()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        std::vector<int> rows;
        std::vector<int> selections;
        connect(&g.grid, &ParamGrid::rowCurrentChanged, &g.grid, [&] { rows.push_back(g.grid.row()); });
        connect(&g.grid, &ParamGrid::selectionMoved, &g.grid, [&] { selections.push_back(g.grid.rowSel()); });
        g.grid.setRow(3);
        QCOMPARE(rows, std::vector<int>{3});
        QVERIFY(!selections.empty());
        QCOMPARE(selections.back(), 3);
        g.grid.setRow(3);
        g.grid.setCol(kValueColumn);
        QCOMPARE(rows, std::vector<int>{3});
        selections.clear();
        QTest::keyClick(&g.grid, Qt::Key_Down);
        QCOMPARE(rows, (std::vector<int>{3, 4}));
        QCOMPARE(selections.back(), 4);
        selections.clear();
        g.click(1);
        QCOMPARE(rows, (std::vector<int>{3, 4, 1}));
        QCOMPARE(selections.back(), 1);
    }

    void theRowIsHighlightedWhenItsChangeIsReported()
    {
        ShownGrid g(27);
        QVERIFY(g.show(5));
        std::vector<std::vector<int>> highlighted;
        connect(&g.grid, &ParamGrid::rowCurrentChanged, &g.grid, [&] { highlighted.push_back(g.highlightedRows()); });
        g.grid.setRow(3);
        QTest::keyClick(&g.grid, Qt::Key_Down);
        g.click(1);
        QCOMPARE(highlighted, (std::vector<std::vector<int>>{{3}, {4}, {1}}));
    }

private:
    static QPoint pointBelowTheRows(const ShownGrid& g)
    {
        const int bottom = g.grid.rowViewportPosition(g.table.rowCount() - 2) + g.grid.rowHeight(0);
        return {20, (bottom + g.grid.viewport()->height()) / 2};
    }

    static void turnWheel(ParamGrid& grid, int angle)
    {
        const QPointF middle = grid.viewport()->rect().center();
        QWheelEvent event(middle, grid.viewport()->mapToGlobal(middle), QPoint(), QPoint(0, angle), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(grid.viewport(), &event);
    }
};

static const testsupport::RunnableTest<ParamGridInputTest> kRunnable;
#include "ParamGridInputTest.moc"
