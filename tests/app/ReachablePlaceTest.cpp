// Where a window may stand and where it is brought to, on desks of one screen and of several.

#include "tests/support/RunnableTest.h"
#include "widgets/WindowPlacement.h"

#include <QTest>

using widgets::reachablePlace;

namespace {

const QRect kLaptop(0, 0, 1280, 800);
const QRect kRight(1280, 0, 1920, 1080);
const QRect kLeft(-1920, 200, 1920, 1080);
const QRect kBelowPanel(0, 40, 1280, 760); // a panel at the top
const QMargins kFrame(4, 24, 4, 4);
const QSize kSmallest(300, 200);

} // namespace

class ReachablePlaceTest final : public QObject
{
    Q_OBJECT

private slots:
    void aPlaceThatCanBeReachedIsLeftAlone_data()
    {
        QTest::addColumn<QList<QRect>>("screens");
        QTest::addColumn<QRect>("place");
        const QList<QRect> one{kLaptop};
        QTest::newRow("inside") << one << QRect(100, 80, 900, 600);
        QTest::newRow("beyond the right edge") << one << QRect(1180, 80, 900, 600);
        QTest::newRow("beyond the left edge") << one << QRect(-808, 80, 900, 600); // its frame is 908 wide
        QTest::newRow("beyond the lower edge") << one << QRect(100, 776, 900, 600);
        QTest::newRow("a little above the upper edge") << one << QRect(100, -11, 900, 600);
        QTest::newRow("on the second screen") << QList<QRect>{kLaptop, kRight} << QRect(1500, 80, 900, 600);
        QTest::newRow("on the second screen, below the end of the main one")
            << QList<QRect>{kLaptop, kRight} << QRect(1500, 1000, 900, 600);
        QTest::newRow("beyond the right edge of the second screen")
            << QList<QRect>{kLaptop, kRight} << QRect(3000, 80, 900, 600);
        QTest::newRow("across both screens") << QList<QRect>{kLaptop, kRight} << QRect(900, 20, 2000, 700);
        QTest::newRow("left of the main screen") << QList<QRect>{kLaptop, kLeft} << QRect(-1900, 230, 900, 600);
        QTest::newRow("narrower than what is reached for") << one << QRect(1200, 80, 60, 600);
    }
    void aPlaceThatCanBeReachedIsLeftAlone()
    {
        QFETCH(QList<QRect>, screens);
        QFETCH(QRect, place);
        QCOMPARE(reachablePlace(place, kFrame, QSize(10, 10), screens), place);
    }

    void aPlaceThatCannotBeReachedIsBroughtOntoTheNearestScreen_data()
    {
        QTest::addColumn<QList<QRect>>("screens");
        QTest::addColumn<QRect>("place");
        QTest::addColumn<QRect>("expected");
        const QList<QRect> one{kLaptop};
        const QList<QRect> two{kLaptop, kRight};
        QTest::newRow("too far right") << one << QRect(1181, 80, 900, 600) << QRect(372, 80, 900, 600);
        QTest::newRow("too far left") << one << QRect(-809, 80, 900, 600) << QRect(0, 80, 900, 600);
        QTest::newRow("too far down") << one << QRect(100, 790, 900, 600) << QRect(100, 172, 900, 600);
        QTest::newRow("title above the screen") << one << QRect(100, -12, 900, 600) << QRect(100, 0, 900, 600);
        QTest::newRow("title under a panel")
            << QList<QRect>{kBelowPanel} << QRect(100, 20, 900, 600) << QRect(100, 40, 900, 600);
        QTest::newRow("on a screen that is gone") << one << QRect(1500, 80, 900, 600) << QRect(372, 80, 900, 600);
        QTest::newRow("right of the second screen") << two << QRect(9000, 300, 900, 600) << QRect(2292, 300, 900, 600);
        QTest::newRow("in the corner that no screen fills")
            << two << QRect(100, 1000, 900, 600) << QRect(100, 172, 900, 600);
        QTest::newRow("larger than all screens") << one << QRect(100, 80, 5000, 4000) << QRect(0, 0, 1272, 772);
        QTest::newRow("larger than both, on the second")
            << two << QRect(1600, 0, 4000, 3000) << QRect(1280, 0, 1912, 1052);
    }
    void aPlaceThatCannotBeReachedIsBroughtOntoTheNearestScreen()
    {
        QFETCH(QList<QRect>, screens);
        QFETCH(QRect, place);
        QFETCH(QRect, expected);
        QCOMPARE(reachablePlace(place, kFrame, kSmallest, screens), expected);
    }

    void nothingIsSmallerThanTheSmallest()
    {
        QCOMPARE(reachablePlace({100, 80, 20, 20}, kFrame, kSmallest, {kLaptop}), QRect(QPoint(100, 80), kSmallest));
        const QSize large(1400, 900);
        QCOMPARE(reachablePlace({100, 80, 20, 20}, kFrame, large, {kLaptop}), QRect(QPoint(100, 80), large));
        QCOMPARE(reachablePlace({100, -80, 20, 20}, kFrame, large, {kLaptop}), QRect(QPoint(0, 0), large));
    }

    void withoutAFrameTheTopOfTheWindowIsReachedFor()
    {
        QCOMPARE(reachablePlace({100, 700, 900, 600}, {}, kSmallest, {kLaptop}), QRect(100, 700, 900, 600));
        QCOMPARE(reachablePlace({100, 799, 900, 600}, {}, kSmallest, {kLaptop}), QRect(100, 200, 900, 600));
    }
};

static const testsupport::RunnableTest<ReachablePlaceTest> kRunnable;
#include "ReachablePlaceTest.moc"
