#include "platform/qt/ReceiveEvents.h"

#include "platform/SerialControl.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

#include <memory>

using platform::ReceiveEvents;

namespace {

using Texts = std::vector<std::string>;

// A pass of the event loop announces one line; no test has more lines than passes here.
void handleEvents()
{
    for (int pass = 0; pass < 10; ++pass) {
        QCoreApplication::processEvents();
    }
}

// Receive events are switched on and every line is taken where it is announced.
struct Taking
{
    Taking()
    {
        events.setOnComm([this] { taken.push_back(events.Input()); });
        events.setRThreshold(1);
    }

    ReceiveEvents events;
    Texts taken;
};

} // namespace

class ReceiveEventsTest final : public QObject
{
    Q_OBJECT

private slots:
    void eventsComeFromTheEventLoopOnly()
    {
        Taking on;
        on.events.append("one\n");
        on.events.append("two\n");
        QCOMPARE(on.taken, Texts{});
        QCOMPARE(on.events.InBufferCount(), 8);
        handleEvents();
        QCOMPARE(on.taken, (Texts{"one\n", "two\n"}));
        QCOMPARE(on.events.InBufferCount(), 0);
    }

    void oneEventForEachLine()
    {
        Taking on;
        on.events.append("one\ntwo\rthr");
        handleEvents();
        QCOMPARE(on.taken, (Texts{"one\n", "two\r"}));
        on.events.append("ee\r");
        handleEvents();
        on.events.append("\nfour\n");
        handleEvents();
        QCOMPARE(on.taken, (Texts{"one\n", "two\r", "three\r", "four\n"}));
    }

    void theEventSaysThatDataCame()
    {
        ReceiveEvents events;
        events.setRThreshold(1);
        QList<int> said;
        events.setOnComm([&] { said.append(events.CommEvent()); });
        events.append("one\n");
        handleEvents();
        QCOMPARE(said, (QList<int>{2}));
    }

    // Behind the line of the event stands everything else that has come.
    void aSecondInputGivesTheRest()
    {
        ReceiveEvents events;
        events.setRThreshold(1);
        Texts taken;
        int count = -1;
        events.setOnComm([&] {
            count = events.InBufferCount();
            taken = {events.Input(), events.Input(), events.Input()};
        });
        events.append("one\ntwo\nthr");
        handleEvents();
        QCOMPARE(count, 7);
        QCOMPARE(taken, (Texts{"one\n", "two\nthr", ""}));
    }

    void withoutEventsEverythingWaits()
    {
        Taking on;
        on.events.setRThreshold(0);
        on.events.append("one\ntw");
        handleEvents();
        QCOMPARE(on.taken, Texts{});
        QCOMPARE(on.events.InBufferCount(), 6);
        QCOMPARE(on.events.Input(), "one\ntw");
        QCOMPARE(on.events.InBufferCount(), 0);
    }

    void linesThatWaitedAreAnnouncedWhenEventsComeAgain()
    {
        Taking on;
        on.events.setRThreshold(0);
        on.events.append("one\ntwo\nthr");
        handleEvents();
        on.events.setRThreshold(1);
        QCOMPARE(on.taken, Texts{});
        handleEvents();
        QCOMPARE(on.taken, (Texts{"one\n", "two\n"}));
        QCOMPARE(on.events.Input(), "thr");
    }

    void eventsSwitchedOffBeforeTheyCome()
    {
        Taking on;
        on.events.append("one\n");
        on.events.setRThreshold(0);
        handleEvents();
        QCOMPARE(on.taken, Texts{});
        on.events.setRThreshold(1);
        handleEvents();
        QCOMPARE(on.taken, Texts{"one\n"});
    }

    void aHandlerSwitchesEventsOff()
    {
        ReceiveEvents events;
        events.setRThreshold(1);
        Texts taken;
        events.setOnComm([&] {
            taken.push_back(events.Input());
            events.setRThreshold(0);
        });
        events.append("one\ntwo\n");
        handleEvents();
        QCOMPARE(taken, Texts{"one\n"});
        QCOMPARE(events.Input(), "two\n");
    }

    void whatWasReadIsNotAnnounced()
    {
        Taking on;
        on.events.append("one\n");
        QCOMPARE(on.events.Input(), "one\n");
        handleEvents();
        QCOMPARE(on.taken, Texts{});
    }

    void clearingForgetsLinesAndEvents()
    {
        Taking on;
        on.events.append("one\ntw");
        on.events.clear();
        handleEvents();
        QCOMPARE(on.taken, Texts{});
        on.events.append("three\n");
        handleEvents();
        QCOMPARE(on.taken, Texts{"three\n"});
    }

    // --- bursts while the events are held back

    void aBurstIsReadWholeWhileEventsAreOff()
    {
        Taking on;
        on.events.append("zero\r");
        handleEvents();
        on.events.setRThreshold(0);
        on.events.append("one\r");
        on.events.append("\ntwo\n\nthr");
        handleEvents();
        QCOMPARE(on.events.InBufferCount(), 13);
        QCOMPARE(on.events.Input(), "one\r\ntwo\n\nthr");
        on.events.append("\nfour\n");
        on.events.setRThreshold(1);
        handleEvents();
        QCOMPARE(on.taken, (Texts{"zero\r", "\n", "four\n"}));
    }

    // The port is closed inside a handler that has not taken its line yet: the line goes with the rest.
    void clearingTakesTheLineOfThePresentEvent()
    {
        ReceiveEvents events;
        events.setRThreshold(1);
        Texts taken;
        events.setOnComm([&] {
            events.clear();
            taken.push_back(events.Input());
        });
        events.append("one\ntwo\n");
        handleEvents();
        QCOMPARE(taken, Texts{""});
        QCOMPARE(events.InBufferCount(), 0);
    }

    void clearingForgetsWhatWasHeldBack()
    {
        Taking on;
        on.events.setRThreshold(0);
        on.events.append("one\ntwo\r");
        on.events.clear();
        on.events.append("\nthree\n");
        on.events.setRThreshold(1);
        handleEvents();
        QCOMPARE(on.taken, (Texts{"\n", "three\n"}));
    }

    // --- handlers that wait

    // What comes while a handler waits is handled while it waits, in order.
    void aHandlerWaitsForTheNextLine()
    {
        ReceiveEvents events;
        events.setRThreshold(1);
        Texts order;
        bool isOuter = true;
        events.setOnComm([&] {
            const std::string line = events.Input();
            order.push_back("begin " + line);
            if (std::exchange(isOuter, false)) {
                events.append("three\nfo");
                handleEvents();
                events.append("ur\n");
                handleEvents();
            }
            order.push_back("end " + line);
        });
        events.append("one\ntwo\n");
        handleEvents();
        QCOMPARE(order, (Texts{"begin one\n", "begin two\n", "end two\n", "begin three\n", "end three\n",
                               "begin four\n", "end four\n", "end one\n"}));
        QCOMPARE(events.InBufferCount(), 0);
    }

    void everyHandlerWaits()
    {
        ReceiveEvents events;
        events.setRThreshold(1);
        Texts order;
        events.setOnComm([&] {
            const std::string line = events.Input();
            order.push_back("begin " + line);
            handleEvents();
            order.push_back("end " + line);
        });
        events.append("one\ntwo\nthree\n");
        handleEvents();
        QCOMPARE(order,
                 (Texts{"begin one\n", "begin two\n", "begin three\n", "end three\n", "end two\n", "end one\n"}));
    }

    // A handler finds its own line, also when others were handled before it looked.
    void aHandlerWaitsBeforeItTakesItsLine()
    {
        ReceiveEvents events;
        events.setRThreshold(1);
        Texts taken;
        events.setOnComm([&] {
            handleEvents();
            taken.push_back(events.Input());
        });
        events.append("one\ntwo\nthree\n");
        handleEvents();
        QCOMPARE(taken, (Texts{"three\n", "two\n", "one\n"}));
    }

    void aHandlerThatTookItsLineFindsNoneAfterOthers()
    {
        ReceiveEvents events;
        events.setRThreshold(1);
        Texts taken;
        events.setOnComm([&] {
            taken.push_back(events.Input());
            handleEvents();
            taken.push_back(events.Input());
        });
        events.append("one\ntwo\n");
        handleEvents();
        QCOMPARE(taken, (Texts{"one\n", "two\n", "", ""}));
    }

    // --- endings

    void noHandlerNoHarm()
    {
        ReceiveEvents events;
        events.setRThreshold(1);
        events.append("one\n");
        handleEvents();
        QCOMPARE(events.InBufferCount(), 0);
    }

    void goneBeforeTheEventComes()
    {
        auto events = std::make_unique<ReceiveEvents>();
        bool came = false;
        events->setRThreshold(1);
        events->setOnComm([&] { came = true; });
        events->append("one\n");
        events.reset();
        handleEvents();
        QVERIFY(!came);
    }
};

static const testsupport::RunnableTest<ReceiveEventsTest> kRunnable;
#include "ReceiveEventsTest.moc"
