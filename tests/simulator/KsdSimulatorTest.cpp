#include "SimulatorProcess.h"
#include "TerminalClient.h"
#include "tests/support/RunnableTest.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTest>

#include <sys/ioctl.h>
#include <termios.h>

#include <chrono>
#include <ctime>

namespace {

const QString kPort = QStringLiteral("com5");
const QString kDevice = QStringLiteral("teslin");
const QByteArray kVersion = "/ver reply: Teslin KSD 2.10\n";
const QByteArray kParameter = "/rawxact WPV013 reply 00: 95\n";

bool isRaw(int terminal)
{
    termios settings{};
    return ::tcgetattr(terminal, &settings) == 0 && (settings.c_lflag & (ICANON | ECHO | ISIG | IEXTEN)) == 0 &&
           (settings.c_iflag & (ICRNL | INLCR | IGNCR | IXON | ISTRIP)) == 0 && (settings.c_oflag & OPOST) == 0;
}

bool isExclusive(int terminal)
{
    int exclusive = -1;
    return ::ioctl(terminal, TIOCGEXCL, &exclusive) != 0 || exclusive != 0;
}

} // namespace

// What passes the doors of the running ksd-simulator, and what its log tells of it.
class KsdSimulatorTest final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_root = std::make_unique<QTemporaryDir>();
        QVERIFY(m_root->isValid());
        m_simulator = std::make_unique<SimulatorProcess>(m_root->path());
    }
    void cleanup()
    {
        m_simulator.reset();
        m_root.reset();
    }

    void replies_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("driver version") << QByteArray("/ver\n") << kVersion;
        QTest::newRow("device version") << QByteArray("/get dev_version\n")
                                        << QByteArray("/get dev_version reply: 3.07/Teslin\n");
        QTest::newRow("identification") << QByteArray("/rawxact WCY\n")
                                        << QByteArray("/rawxact WCY reply 00 ok: Teslin 60044718\n");
        QTest::newRow("read") << QByteArray("/rawxact WPV013\n") << kParameter;
        QTest::newRow("write") << QByteArray("/rawsend WPW013=0D\n") << QByteArray("/rawsend WPW013=0D ok\n");
        QTest::newRow("raw") << QByteArray("/rawsend \\xA8\\x40\n") << QByteArray("/rawsend \\xA8\\x40 ok\n");
        QTest::newRow("two commands in one write") << QByteArray("/rawxact WPV013\n/ver\n") << kParameter + kVersion;
        QTest::newRow("an unknown one in between")
            << QByteArray("/rawxact WPV115\n/ver\n\n/rawxact WPV013\n") << kVersion + kParameter;
    }
    void replies()
    {
        QFETCH(QByteArray, command);
        QFETCH(QByteArray, reply);
        QVERIFY(m_simulator->start());
        const TerminalClient client(m_simulator->entry(kPort));
        QVERIFY(client.send(command));
        QCOMPARE(client.read(reply.size()), reply);
        // Nothing came before the next reply but this one.
        QVERIFY(client.send("/ver\n"));
        QCOMPARE(client.read(kVersion.size()), kVersion);
    }

    void theDeviceObjectNamesThePort()
    {
        QVERIFY(m_simulator->start({QStringLiteral("--port=17")}));
        QVERIFY(QFileInfo(m_simulator->entry(QStringLiteral("com17"))).isSymLink());
        const TerminalClient client(m_simulator->entry(kDevice));
        QVERIFY(client.send("/ver\n/get port_name\n"));
        QCOMPARE(client.readTo('\r'), QByteArray("/get port_name=COM17\r"));
        QTRY_COMPARE_WITH_TIMEOUT(m_simulator->logOf("device", {"recv", "sent"}),
                                  QByteArray(R"(recv /ver\n|recv /get port_name\n|sent /get port_name=COM17\r|)"),
                                  SimulatorProcess::kLimit);
    }

    void bothDoorsAreRaw()
    {
        QVERIFY(m_simulator->start());
        for (const QString& entry : {kPort, kDevice}) {
            QVERIFY(isRaw(TerminalClient(m_simulator->entry(entry)).descriptor()));
        }
    }

    void bytesPassUnchangedInBothDirections()
    {
        const QByteArray odd("\x01\x03\x04\x0D\x11\x13\x1A\x1C\x7F\x80\xFF", 11);
        QVERIFY(
            m_simulator->start({QStringLiteral("--fault"),
                                QStringLiteral("*: reply=\"\\x01\\x03\\x04\\r\\x11\\x13\\x1A\\x1C\\x7F\\x80\\xFF\"")}));
        const TerminalClient client(m_simulator->entry(kPort));
        QVERIFY(client.send(odd + '\n'));
        QCOMPARE(client.read(odd.size() + 1), odd + '\n');
        const QByteArray escaped = "\\x01\\x03\\x04\\r\\x11\\x13\\x1A\\x1C\\x7F\\x80\\xFF\\n";
        QTRY_COMPARE_WITH_TIMEOUT(m_simulator->logOf("port", {"recv", "sent"}),
                                  "recv " + escaped + "|sent " + escaped + "|", SimulatorProcess::kLimit);
    }

    void everyByteReceivedIsInTheLog()
    {
        QVERIFY(m_simulator->start());
        const TerminalClient device(m_simulator->entry(kDevice));
        QVERIFY(device.send("/get po"));
        TerminalClient first(m_simulator->entry(kPort));
        QVERIFY(first.send("/rawsend "));
        first.close();
        const TerminalClient second(m_simulator->entry(kPort));
        QVERIFY(second.send("\\xA5\r\n\n/ver\n/rawxact WPV0"));
        QCOMPARE(second.read(kVersion.size()), kVersion);
        QCOMPARE(m_simulator->stop().exitCode, 0);
        QCOMPARE(m_simulator->logOf("port", {"recv", "unfinished"}),
                 QByteArray(R"(recv /rawsend \\xA5\r\n|recv \n|recv /ver\n|unfinished /rawxact WPV0|)"));
        QCOMPARE(m_simulator->logOf("device", {"recv", "unfinished"}), QByteArray("unfinished /get po|"));
    }

    void everyLineOfTheLogHasItsForm()
    {
        QVERIFY(m_simulator->start({QStringLiteral("--fault"), QStringLiteral("/rawxact WPV014: hang-up")}));
        {
            const TerminalClient client(m_simulator->entry(kPort));
            QVERIFY(client.send("/ver\n\"\\\n/rawxact WPV014\n"));
            QVERIFY(client.waitForHangUp());
        }
        QCOMPARE(m_simulator->stop().exitCode, 0);
        double before = 0.0;
        for (const SimulatorProcess::LogLine& line : m_simulator->log()) {
            QVERIFY(!line.door.isEmpty());
            QVERIFY(line.milliseconds >= before);
            before = line.milliseconds;
        }
        QCOMPARE(m_simulator->log().first().event, QByteArray("start"));
        QCOMPARE(m_simulator->log().last().event, QByteArray("end"));
        QCOMPARE(m_simulator->log().last().detail, QByteArray("SIGTERM"));
    }

    void theLogIsAppendedTo()
    {
        QVERIFY(m_simulator->start());
        QCOMPARE(m_simulator->stop().exitCode, 0);
        QVERIFY(m_simulator->start());
        QCOMPARE(m_simulator->stop(SIGINT).exitCode, 0);
        QCOMPARE(m_simulator->logOf("-", {"end"}), QByteArray("end SIGTERM|end SIGINT|"));
    }

    void withVerboseTheLogGoesToStandardErrorToo()
    {
        QVERIFY(m_simulator->start());
        const SimulatorProcess::Outcome quiet = m_simulator->stop();
        QCOMPARE(quiet.errors, QByteArray());
        QCOMPARE(quiet.output, QByteArray()); // beyond the ready line
        QVERIFY(QFile::remove(m_simulator->logFile()));
        QVERIFY(m_simulator->start({QStringLiteral("--verbose")}));
        const SimulatorProcess::Outcome verbose = m_simulator->stop();
        QFile log(m_simulator->logFile());
        QVERIFY(log.open(QIODevice::ReadOnly));
        QCOMPARE(verbose.errors, log.readAll());
        QCOMPARE(verbose.output, QByteArray());
    }

    void openingAndClosingIsLogged()
    {
        QVERIFY(m_simulator->start());
        {
            const TerminalClient client(m_simulator->entry(kPort));
            QVERIFY(client.send("/ver\n"));
            QCOMPARE(client.read(kVersion.size()), kVersion);
        }
        QTRY_COMPARE_WITH_TIMEOUT(m_simulator->logOf("port", {"open", "recv", "close"}),
                                  QByteArray(R"(open|recv /ver\n|close|)"), SimulatorProcess::kLimit);
    }

    void aClientLeavesNothingBehind()
    {
        QVERIFY(m_simulator->start());
        {
            const TerminalClient client(m_simulator->entry(kPort));
            QCOMPARE(::ioctl(client.descriptor(), TIOCEXCL), 0);
            termios cooked{};
            QCOMPARE(::tcgetattr(client.descriptor(), &cooked), 0);
            cooked.c_lflag |= static_cast<tcflag_t>(ICANON | ECHO);
            cooked.c_oflag |= static_cast<tcflag_t>(OPOST);
            QCOMPARE(::tcsetattr(client.descriptor(), TCSANOW, &cooked), 0);
            QVERIFY(isExclusive(client.descriptor()));
            QVERIFY(!isRaw(client.descriptor()));
        }
        // Without the right to pass over the claim, the next client cannot even open until it is lifted.
        std::unique_ptr<TerminalClient> next;
        QTRY_VERIFY_WITH_TIMEOUT((next = std::make_unique<TerminalClient>(m_simulator->entry(kPort)))->isOpen(),
                                 SimulatorProcess::kLimit);
        QTRY_VERIFY_WITH_TIMEOUT(!isExclusive(next->descriptor()), SimulatorProcess::kLimit);
        QTRY_VERIFY_WITH_TIMEOUT(isRaw(next->descriptor()), SimulatorProcess::kLimit);
        QVERIFY(next->send("/ver\n"));
        QCOMPARE(next->read(kVersion.size()), kVersion);
    }

    void faults_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QByteArray>("received"); // up to the reply to /ver
        QTest::addColumn<QByteArray>("sent");     // as logged, less the reply to /ver; empty: not looked at
        const auto row = [](const char* fault, const QByteArray& received, const char* sent = "") {
            QTest::newRow(fault) << QString::fromLatin1(fault) << received << QByteArray(sent);
        };
        row("silent", "");
        row("value=FF", "/rawxact WPV013 reply 00: FF\n");
        row("cut=27", "/rawxact WPV013 reply 00: 9\n");
        row("pad=30", "/rawxact WPV013 reply 00: 95..\n");
        row("reply=abc garbled end=\"\\r\"", "\xE1\xE2\xE3\r");
        row("reply=abc end=\"\"", "abc");
        row("twice", kParameter + kParameter, "sent /rawxact WPV013 reply 00: 95\\n/rawxact WPV013 reply 00: 95\\n|");
        row("after=\"/read report status: 07\"", kParameter + "/read report status: 07\n",
            "sent /rawxact WPV013 reply 00: 95\\n|sent /read report status: 07\\n|");
        row("split=5,27 pause=20", kParameter, "sent /rawx|sent act WPV013 reply 00: 9|sent 5\\n|");
        row("reply=abc split=every", "abc\n", "sent a|sent b|sent c|sent \\n|");
        row("on=2 silent", kParameter);
    }
    void faults()
    {
        QFETCH(QString, fault);
        QFETCH(QByteArray, received);
        QFETCH(QByteArray, sent);
        QVERIFY(m_simulator->start({QStringLiteral("--fault"), QStringLiteral("/rawxact WPV013: ") + fault}));
        const TerminalClient client(m_simulator->entry(kPort));
        QVERIFY(client.send("/rawxact WPV013\n"));
        QCOMPARE(client.read(received.size()), received);
        QVERIFY(client.send("/ver\n"));
        QCOMPARE(client.read(kVersion.size()), kVersion);
        if (!sent.isEmpty()) {
            QTRY_COMPARE_WITH_TIMEOUT(m_simulator->logOf("port", {"sent"}),
                                      sent + "sent " + kVersion.chopped(1) + "\\n|", SimulatorProcess::kLimit);
        }
        const bool due = !fault.startsWith(QLatin1String("on=2"));
        QCOMPARE(m_simulator->logOf("port", {"fault"}).isEmpty(), !due);
    }

    void aDelayedReplyComesLateAndMeanwhileTheSimulatorSleeps()
    {
        QVERIFY(m_simulator->start({QStringLiteral("--fault"), QStringLiteral("/rawxact WPV013: delay=400")}));
        const TerminalClient client(m_simulator->entry(kPort));
        const auto processorTime = [this] {
            clockid_t clock{};
            timespec used{};
            ::clock_getcpuclockid(static_cast<pid_t>(m_simulator->processId()), &clock);
            ::clock_gettime(clock, &used);
            return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
        };
        const auto before = processorTime();
        QVERIFY(client.send("/rawxact WPV013\n/ver\n"));
        QCOMPARE(client.read(kVersion.size() + kParameter.size()), kVersion + kParameter);
        QVERIFY(processorTime() - before < std::chrono::milliseconds(100));
        QTRY_VERIFY_WITH_TIMEOUT(timeOf("sent", R"(/rawxact WPV013 reply 00: 95\n)") > 0.0, SimulatorProcess::kLimit);
        const double asked = timeOf("recv", R"(/rawxact WPV013\n)");
        const double answered = timeOf("sent", R"(/rawxact WPV013 reply 00: 95\n)");
        QVERIFY(asked > 0.0);
        QVERIFY2(answered - asked >= 400.0, qPrintable(QString::number(answered - asked)));
    }

    void faultsOfTheDeviceObject_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QByteArray>("received");
        QTest::newRow("without COM") << QStringLiteral("value=LPT1") << QByteArray("/get port_name=LPT1\r");
        QTest::newRow("control characters") << QStringLiteral("reply=\"\\x01\\x02COM12\\r\"")
                                            << QByteArray("\x01\x02"
                                                          "COM12\r\r");
        QTest::newRow("2,000 bytes") << QStringLiteral("pad=1999")
                                     << "/get port_name=COM5" + QByteArray(1999 - 19, '.') + '\r';
        QTest::newRow("split") << QStringLiteral("split=every pause=0") << QByteArray("/get port_name=COM5\r");
    }
    void faultsOfTheDeviceObject()
    {
        QFETCH(QString, fault);
        QFETCH(QByteArray, received);
        QVERIFY(m_simulator->start({QStringLiteral("--fault"), QStringLiteral("/get port_name: ") + fault}));
        const TerminalClient client(m_simulator->entry(kDevice));
        QVERIFY(client.send("/get port_name\n"));
        QCOMPARE(client.read(received.size()), received);
    }

    void theDeviceObjectCanBeSilentOnce()
    {
        QVERIFY(m_simulator->start({QStringLiteral("--fault"), QStringLiteral("/get port_name: on=1 silent")}));
        const TerminalClient client(m_simulator->entry(kDevice));
        QVERIFY(client.send("/get port_name\n/get port_name\n"));
        QCOMPARE(client.readTo('\r'), QByteArray("/get port_name=COM5\r"));
        QTRY_COMPARE_WITH_TIMEOUT(
            m_simulator->logOf("device", {"recv", "sent"}),
            QByteArray(R"(recv /get port_name\n|recv /get port_name\n|sent /get port_name=COM5\r|)"),
            SimulatorProcess::kLimit);
    }

    void aReplyLongerThanTheTerminalHoldsArrivesWhole()
    {
        QVERIFY(m_simulator->start({QStringLiteral("--fault"), QStringLiteral("/ver: pad=100000")}));
        const TerminalClient client(m_simulator->entry(kPort));
        QVERIFY(client.send("/ver\n"));
        const QByteArray received = client.readTo('\n');
        QCOMPARE(received.size(), 100001);
        QVERIFY(received == kVersion.chopped(1) + QByteArray(100001 - kVersion.size(), '.') + '\n');
    }

    void afterAHangUpThePortIsBack()
    {
        QVERIFY(m_simulator->start({QStringLiteral("--fault"), QStringLiteral("/rawxact WPV014: on=1 hang-up")}));
        TerminalClient client(m_simulator->entry(kPort));
        QVERIFY(client.send("/rawsend WPW013=01\n/rawxact WPV014\n/rawxa"));
        QVERIFY(client.waitForHangUp());
        // Who has seen the hang-up can open again at once, and the reader still has its memory.
        TerminalClient again(m_simulator->entry(kPort));
        QVERIFY(again.isOpen());
        QVERIFY(isRaw(again.descriptor()));
        QVERIFY(again.send("/rawxact WPV013\n/rawxact WPV014\n"));
        QCOMPARE(again.readTo('\n'), QByteArray("/rawxact WPV013 reply 00: 01\n"));
        QCOMPARE(again.readTo('\n'), QByteArray("/rawxact WPV014 reply 00: 63\n"));
        const QByteArray log = m_simulator->logOf("port", {"recv", "unfinished", "hang-up"});
        QVERIFY2(log.startsWith(R"(recv /rawsend WPW013=01\n|recv /rawxact WPV014\n|hang-up|unfinished /rawxa|recv )"),
                 log.constData());
    }

    void aHangUpCanLastForATime()
    {
        QVERIFY(m_simulator->start({QStringLiteral("--fault"), QStringLiteral("/ver: hang-up=300")}));
        const TerminalClient client(m_simulator->entry(kPort));
        QVERIFY(client.send("/ver\n"));
        QVERIFY(client.waitForHangUp());
        QTRY_VERIFY_WITH_TIMEOUT(TerminalClient(m_simulator->entry(kPort)).isOpen(), SimulatorProcess::kLimit);
        QTRY_VERIFY_WITH_TIMEOUT(timeOf("back") > 0.0, SimulatorProcess::kLimit);
        QVERIFY(timeOf("hang-up") > 0.0);
        const double away = timeOf("back") - timeOf("hang-up");
        QVERIFY2(away >= 300.0, qPrintable(QString::number(away)));
    }

    void aHangUpCanBeForGood()
    {
        QVERIFY(m_simulator->start({QStringLiteral("--fault"), QStringLiteral("/ver: hang-up=for-good")}));
        const TerminalClient client(m_simulator->entry(kPort));
        QVERIFY(client.send("/ver\n"));
        QVERIFY(client.waitForHangUp());
        QVERIFY(!QFileInfo(m_simulator->entry(kPort)).isSymLink());
        const TerminalClient device(m_simulator->entry(kDevice));
        QVERIFY(device.send("/get port_name\n"));
        QCOMPARE(device.readTo('\r'), QByteArray("/get port_name=COM5\r"));
        QCOMPARE(m_simulator->logOf("port", {"hang-up", "back"}), QByteArray("hang-up|"));
        QCOMPARE(m_simulator->stop().exitCode, 0);
        QVERIFY(!QFileInfo::exists(m_simulator->folder()));
    }

    void theDeviceObjectHangsUpToo()
    {
        QVERIFY(m_simulator->start({QStringLiteral("--fault"), QStringLiteral("/get port_name: on=1 hang-up")}));
        const TerminalClient client(m_simulator->entry(kDevice));
        QVERIFY(client.send("/get port_name\n"));
        QVERIFY(client.waitForHangUp());
        const TerminalClient again(m_simulator->entry(kDevice));
        QVERIFY(again.send("/get port_name\n"));
        QCOMPARE(again.readTo('\r'), QByteArray("/get port_name=COM5\r"));
    }

    void aKilledSimulatorIsSeenAsAHangUp()
    {
        QVERIFY(m_simulator->start());
        const TerminalClient client(m_simulator->entry(kPort));
        QVERIFY(client.send("/ver\n"));
        QCOMPARE(client.read(kVersion.size()), kVersion);
        m_simulator->kill();
        QVERIFY(client.waitForHangUp());
    }

private:
    // When an event first stood in the log, 0 when it does not.
    double timeOf(const QByteArray& event, const QByteArray& detail = {}) const
    {
        for (const SimulatorProcess::LogLine& line : m_simulator->log()) {
            if (line.event == event && (detail.isEmpty() || line.detail == detail)) {
                return line.milliseconds;
            }
        }
        return 0.0;
    }

    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<SimulatorProcess> m_simulator;
};

static const testsupport::RunnableTest<KsdSimulatorTest> kRunnable;
#include "KsdSimulatorTest.moc"
