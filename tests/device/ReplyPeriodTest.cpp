#include "device/ReplyPeriod.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using device::ReplyPeriod;

class ReplyPeriodTest final : public QObject
{
    Q_OBJECT

private slots:
    void startsIdle()
    {
        ReplyPeriod period;
        QCOMPARE(period.CommBusy, 0);
        QCOMPARE(period.ResponseCountdown, 0.0);
        QCOMPARE(period.SendLedTicks, 0);
        QVERIFY(!period.countLamp());
        QVERIFY(period.countDown());
    }

    void aTickIsFiftyMilliseconds() { QCOMPARE(ReplyPeriod::kTickMilliseconds, 50); }

    void aSendEndsOnTheThirdTick()
    {
        ReplyPeriod period;
        period.openForSend();
        QCOMPARE(period.CommBusy, 1);
        QCOMPARE(period.ResponseCountdown, 2.0);
        QVERIFY(!period.countDown());
        QCOMPARE(period.ResponseCountdown, 1.0);
        QCOMPARE(period.CommBusy, 1);
        QVERIFY(!period.countDown());
        QCOMPARE(period.ResponseCountdown, 0.0);
        QCOMPARE(period.CommBusy, 1);
        QVERIFY(period.countDown());
        QCOMPARE(period.ResponseCountdown, 0.0);
        QCOMPARE(period.CommBusy, 0);
    }

    void theLampIsLitForTwoTicks()
    {
        ReplyPeriod period;
        period.openForSend();
        QCOMPARE(period.SendLedTicks, 2);
        QVERIFY(period.countLamp());
        QVERIFY(period.countLamp());
        QVERIFY(!period.countLamp());
        QVERIFY(!period.countLamp());
        QCOMPARE(period.SendLedTicks, 0);
    }

    void aMissingReplyGetsFiveTicks() { QCOMPARE(ReplyPeriod::kResponseTicks, 5.0); }

    void theLampDoesNotEndAPeriodAndThePeriodNotTheLamp()
    {
        ReplyPeriod period;
        period.openForSend();
        QVERIFY(period.countLamp());
        QCOMPARE(period.ResponseCountdown, 2.0);
        QVERIFY(!period.countDown());
        QCOMPARE(period.SendLedTicks, 1);
    }

    // The count is not limited to whole numbers above zero.
    void oddCounts_data()
    {
        QTest::addColumn<double>("count");
        QTest::addColumn<bool>("isOver");
        QTest::addColumn<double>("after");
        QTest::newRow("below zero") << -1.0 << true << -1.0;
        QTest::newRow("a half") << 0.5 << false << -0.5;
        QTest::newRow("eight") << 8.0 << false << 7.0;
    }
    void oddCounts()
    {
        QFETCH(double, count);
        QFETCH(bool, isOver);
        QFETCH(double, after);
        ReplyPeriod period;
        period.CommBusy = 1;
        period.ResponseCountdown = count;
        QCOMPARE(period.countDown(), isOver);
        QCOMPARE(period.ResponseCountdown, after);
        QCOMPARE(period.CommBusy, isOver ? 0 : 1);
    }
};

static const testsupport::RunnableTest<ReplyPeriodTest> kRunnable;
#include "ReplyPeriodTest.moc"
