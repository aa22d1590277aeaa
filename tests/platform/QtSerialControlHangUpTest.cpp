#include "tests/platform/SerialLine.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include <ctime>

using test::SerialLine;

namespace {

using Texts = std::vector<std::string>;

// How busy the event loop was while a timer ticked: how often it woke up, and how much of the time the program worked.
struct Load
{
    int wakeUps = 0;
    double processorShare = 0;
};

Load loadOf(int ticks)
{
    Load load;
    QEventLoop loop;
    QTimer timer;
    int left = ticks;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        if (--left == 0) {
            loop.quit();
        }
    });
    const auto counting = QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake,
                                           &loop, [&] { ++load.wakeUps; });
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(10);
    QElapsedTimer clock;
    clock.start();
    const std::clock_t before = std::clock();
    loop.exec();
    load.processorShare = double(std::clock() - before) / CLOCKS_PER_SEC / (double(clock.nsecsElapsed()) / 1e9);
    QObject::disconnect(counting);
    return load;
}

constexpr int kTicks = 30;

} // namespace

// The driver goes away while its port is open.
class QtSerialControlHangUpTest final : public QObject
{
    Q_OBJECT

private slots:
    void theLossIsToldOnceAndThePortStaysOpen()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.terminal->hangUp();
        QTRY_COMPARE(on.losses, 1);
        QVERIFY(on.control.PortOpen());
        (void)loadOf(kTicks);
        QCOMPARE(on.losses, 1);
        QVERIFY(on.control.PortOpen());
        // Whatever the operation still does is harmless.
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
        on.control.Output("/ver\n");
        QCOMPARE(on.control.Input(), "");
        QCOMPARE(on.control.InBufferCount(), 0);
        on.control.setRThreshold(0);
        on.control.setRThreshold(1);
        QCOMPARE(on.losses, 1);
        QVERIFY(on.control.setPortOpen(false));
        QVERIFY(!on.control.PortOpen());
    }

    void aLostPortCostsNoTime()
    {
        SerialLine on;
        QVERIFY(on.open());
        const Load whole = loadOf(kTicks);
        QVERIFY2(whole.wakeUps >= kTicks, "the measurement sees no wake-ups");
        on.terminal->hangUp();
        QTRY_COMPARE(on.losses, 1);
        const Load lost = loadOf(kTicks);
        const QByteArray seen = QByteArray::number(whole.wakeUps) + " wake-ups before, " +
                                QByteArray::number(lost.wakeUps) + " after, " +
                                QByteArray::number(lost.processorShare * 100) + " % of the time";
        QVERIFY2(lost.wakeUps < 4 * kTicks, seen);
        QVERIFY2(lost.processorShare < 0.3, seen);
    }

    // Found out by writing, before the event loop has seen it.
    void theLossIsFoundByWriting()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.terminal->hangUp();
        on.control.Output("/ver\n");
        on.control.Output("/get dev_version\n");
        QTRY_COMPARE(on.losses, 1);
        (void)loadOf(kTicks);
        QCOMPARE(on.losses, 1);
        QVERIFY(on.control.PortOpen());
    }

    void linesThatCameBeforeAreStillAnnounced()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.control.setRThreshold(0);
        on.terminal->send("one\ntwo\n");
        QTRY_COMPARE(on.control.InBufferCount(), 8);
        on.terminal->hangUp();
        QTRY_COMPARE(on.losses, 1);
        on.control.setRThreshold(1);
        QTRY_COMPARE(on.lines, (Texts{"one\n", "two\n"}));
    }

    void thePortOpensAgainWhenTheDriverIsBack()
    {
        SerialLine on;
        QVERIFY(on.open());
        for (int losses = 1; losses <= 3; ++losses) {
            on.terminal->hangUp();
            QTRY_COMPARE(on.losses, losses);
            QVERIFY(on.control.setPortOpen(false));
            on.plugIn();
            QVERIFY(on.open());
            on.lines.clear();
            on.control.Output("/ver\n");
            QCOMPARE(on.terminal->receive(5), "/ver\n");
            on.terminal->send("one\n");
            QTRY_COMPARE(on.lines, Texts{"one\n"});
            QCOMPARE(on.losses, losses);
        }
    }

    // What the loss left to be done later must not hit the port that was opened since.
    void thePortOpensAgainAtOnce()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.terminal->hangUp();
        on.control.Output("/ver\n");
        QVERIFY2(on.losses == 1, "the write did not find the loss");
        QVERIFY(on.control.setPortOpen(false));
        on.plugIn();
        QVERIFY(on.open());
        (void)loadOf(3);
        on.control.Output("/ver\n");
        QCOMPARE(on.terminal->receive(5), "/ver\n");
        on.terminal->send("one\n");
        QTRY_COMPARE(on.lines, Texts{"one\n"});
        QCOMPARE(on.losses, 1);
    }

    void thePortDoesNotOpenWhileTheDriverIsAway()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.terminal->hangUp();
        QTRY_COMPARE(on.losses, 1);
        QVERIFY(on.control.setPortOpen(false));
        std::filesystem::remove(on.folder / "com5");
        const auto opened = on.control.setPortOpen(true);
        QVERIFY(!opened);
        QCOMPARE(opened.error().description, "No such file or directory");
        on.plugIn();
        QVERIFY(on.open());
        QCOMPARE(on.losses, 1);
    }

    // The operation that waits is woken by the loss, not by its time-out.
    void aWaitIsWokenByTheLoss()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.terminal->hangUp();
        QElapsedTimer clock;
        clock.start();
        while (on.losses == 0 && clock.elapsed() < test::PseudoTerminal::kLimit) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, test::PseudoTerminal::kLimit);
        }
        QCOMPARE(on.losses, 1);
    }

    void closingTellsNothing()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.terminal->hangUp();
        QVERIFY(on.control.setPortOpen(false)); // before the loss was seen
        (void)loadOf(3);
        QCOMPARE(on.losses, 0);
    }

    void withoutAHandlerNothingBreaks()
    {
        SerialLine on;
        on.control.setOnConnectionLost({});
        on.control.setOnComm({});
        QVERIFY(on.open());
        QVERIFY(on.terminal->deliver("one\n"));
        QTRY_COMPARE(on.control.InBufferCount(), 0);
        on.terminal->hangUp();
        (void)loadOf(3);
        on.control.Output("/ver\n");
        QVERIFY(on.control.PortOpen());
        QCOMPARE(on.losses, 0);
    }
};

static const testsupport::RunnableTest<QtSerialControlHangUpTest> kRunnable;
#include "QtSerialControlHangUpTest.moc"
