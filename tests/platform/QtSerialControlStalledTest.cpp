#include "tests/platform/SerialLine.h"
#include "tests/platform/posix/ChildProcess.h"
#include "tests/platform/posix/FailingCalls.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QElapsedTimer>
#include <QTest>

#include <cerrno>
#include <thread>

#include <sys/syscall.h>

using test::SerialLine;

namespace {

constexpr qint64 kLimit = 2000; // milliseconds that a command may take

// Reads the line empty from another thread, a while after it was started.
class LateReader final
{
public:
    LateReader(const test::PseudoTerminal& terminal, std::size_t size, int delay)
        : m_thread([this, &terminal, size, delay] {
            ::poll(nullptr, 0, delay);
            m_bytes = terminal.receive(size);
        })
    {}
    ~LateReader()
    {
        if (m_thread.joinable()) {
            m_thread.join();
        }
    }
    LateReader(const LateReader&) = delete;
    LateReader& operator=(const LateReader&) = delete;

    [[nodiscard]] std::string bytes()
    {
        m_thread.join();
        return m_bytes;
    }

private:
    std::string m_bytes;
    std::thread m_thread; // last: it uses the others
};

qint64 timeOf(SerialLine& on, std::string_view command)
{
    QElapsedTimer clock;
    clock.start();
    on.control.Output(command);
    return clock.elapsed();
}

} // namespace

// The driver has stopped reading while its port is open, or the system takes back the right to use it.
class QtSerialControlStalledTest final : public QObject
{
    Q_OBJECT

private slots:
    void aCommandThatIsNotTakenIsALostConnection()
    {
        SerialLine on;
        QVERIFY(on.open());
        QVERIFY(on.terminal->fill() > 1000);
        const qint64 took = timeOf(on, "/rawsend WPW014=6F\n");
        QVERIFY2(took >= kLimit && took < 2 * kLimit, qPrintable(QString::number(took)));
        QCOMPARE(on.losses, 1);
        QVERIFY(on.control.PortOpen());
        // Nothing more is tried, and nothing more is told.
        QVERIFY(timeOf(on, "/rawsend WPW015=00\n") < kLimit / 2);
        QCoreApplication::processEvents();
        QCOMPARE(on.losses, 1);
    }

    // Of a command of which the line takes the beginning the end must not follow later, and no other command either.
    void nothingFollowsACommandThatWasCut()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.control.Output("/ver\n");
        QCOMPARE(on.terminal->receive(5), "/ver\n");
        const std::string large = "(" + std::string(200'000, 'x') + ")\n"; // more than a line holds
        const qint64 took = timeOf(on, large);
        QVERIFY2(took >= kLimit, "the line took everything: the test proves nothing");
        QCOMPARE(on.losses, 1);
        on.control.Output("/rawsend WPW015=00\n");
        // The driver reads again, while the program goes on and then closes its port.
        std::string seen = on.terminal->received();
        QCoreApplication::processEvents();
        seen += on.terminal->received();
        QVERIFY(on.control.setPortOpen(false));
        QCoreApplication::processEvents();
        seen += on.terminal->received();
        QVERIFY2(seen.size() < large.size(), "nothing was cut");
        QCOMPARE(seen.substr(0, 2), "(x");
        QCOMPARE(seen.find_first_not_of('x', 1), std::string::npos);
        // Most of what was cut is purged; the rest is with the driver's own end already.
        QVERIFY2(seen.size() < 8192, qPrintable(QString::number(seen.size())));
    }

    void thePortIsOfUseAgainOnceTheDriverReads()
    {
        SerialLine on;
        QVERIFY(on.open());
        QVERIFY(on.terminal->fill() > 1000);
        on.control.Output("/rawsend WPW014=6F\n");
        QCOMPARE(on.losses, 1);
        QVERIFY(on.control.setPortOpen(false));
        while (!on.terminal->received().empty()) {
        }
        QVERIFY(on.open());
        on.control.Output("/ver\n");
        QCOMPARE(on.terminal->receive(5), "/ver\n");
        on.terminal->send("one\n");
        QTRY_COMPARE(on.lines, std::vector<std::string>{"one\n"});
        QCOMPARE(on.losses, 1);
    }

    // A driver that is busy for a moment is not lost, and the command goes to it whole. What it says meanwhile is kept,
    // and announced afterwards.
    void aDriverMayTakeAMoment()
    {
        SerialLine on;
        QVERIFY(on.open());
        const std::size_t before = on.terminal->fill();
        const std::string command = "/rawsend WPW014=6F\n";
        QVERIFY(on.terminal->deliver("one\n"));
        LateReader reader(*on.terminal, before + command.size(), 700);
        const qint64 took = timeOf(on, command);
        const std::string seen = reader.bytes();
        QVERIFY2(took >= 500 && took < kLimit, qPrintable(QString::number(took)));
        QCOMPARE(seen.substr(before), command);
        QCOMPARE(on.lines, std::vector<std::string>());
        QTRY_COMPARE(on.lines, std::vector<std::string>{"one\n"});
        QCOMPARE(on.losses, 0);
    }

    void theRightToTheOpenPortIsTakenBack_data()
    {
        QTest::addColumn<QList<long>>("calls");
        QTest::newRow("to write") << QList<long>{SYS_write, SYS_writev};
        QTest::newRow("to read") << QList<long>{SYS_read, SYS_readv};
    }
    void theRightToTheOpenPortIsTakenBack()
    {
        QFETCH(QList<long>, calls);
        const QByteArray report = test::inChild([&calls]() -> QByteArray {
            SerialLine on;
            if (!on.open()) {
                return "(not open)";
            }
            const int port = test::descriptorOf(on.terminal->path());
            if (!test::failCallsOn(port, {calls[0], calls[1]}, EACCES)) {
                return "(not arranged)";
            }
            on.terminal->send("one\n");
            on.control.Output("/ver\n");
            QElapsedTimer clock;
            for (clock.start(); on.losses == 0 && clock.elapsed() < test::PseudoTerminal::kLimit;) {
                QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
            }
            on.control.Output("/ver\n");
            return QByteArray::number(on.losses) + (on.control.PortOpen() ? " open" : " closed");
        });
        QCOMPARE(report, "1 open");
    }
};

static const testsupport::RunnableTest<QtSerialControlStalledTest> kRunnable;
#include "QtSerialControlStalledTest.moc"
