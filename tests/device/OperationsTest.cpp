#include "device/Operations.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using device::Operations;

class OperationsTest final : public QObject
{
    Q_OBJECT

private slots:
    void runsWork()
    {
        Operations operations;
        int runs = 0;
        bool wasRunning = false;
        QVERIFY(!operations.isRunning());
        QVERIFY(operations.run([&] {
            ++runs;
            wasRunning = operations.isRunning();
        }));
        QCOMPARE(runs, 1);
        QVERIFY(wasRunning);
        QVERIFY(!operations.isRunning());
    }

    void aStartInsideARunIsIgnored()
    {
        Operations operations;
        int afterwards = 0;
        operations.setAfterwards([&] { ++afterwards; });
        bool innerRan = false;
        bool innerResult = true;
        bool stillRunning = false;
        QVERIFY(operations.run([&] {
            innerResult = operations.run([&] { innerRan = true; });
            stillRunning = operations.isRunning();
        }));
        QVERIFY(!innerResult);
        QVERIFY(!innerRan);
        QVERIFY(stillRunning);
        QCOMPARE(afterwards, 1); // ignored, not kept for later
        QVERIFY(!innerRan);
    }

    void theNextOneMayStart()
    {
        Operations operations;
        QVERIFY(operations.run([] {}));
        bool ran = false;
        QVERIFY(operations.run([&] { ran = true; }));
        QVERIFY(ran);
    }

    void afterwardsComesWhenTheNextMayStart()
    {
        Operations operations;
        QByteArrayList order;
        operations.setAfterwards([&] {
            order << (operations.isRunning() ? "afterwards, running" : "afterwards");
            if (order.size() < 3) {
                operations.run([&] { order << "second"; });
            }
        });
        operations.run([&] { order << "first"; });
        QCOMPARE(order, (QByteArrayList{"first", "afterwards", "second", "afterwards"}));
    }

    void closingIsAWishThatLasts()
    {
        Operations operations;
        QVERIFY(!operations.isClosing());
        bool closingAfterwards = false;
        operations.setAfterwards([&] { closingAfterwards = operations.isClosing(); });
        operations.run([&] { operations.setClosing(true); });
        QVERIFY(closingAfterwards);
        QVERIFY(operations.isClosing());
        operations.setClosing(false);
        QVERIFY(!operations.isClosing());
    }
};

static const testsupport::RunnableTest<OperationsTest> kRunnable;
#include "OperationsTest.moc"
