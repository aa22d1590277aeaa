#include "TeslinProcess.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <array>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace {

// A terminal that a program runs on, and the hands and eyes before it.
class Terminal final
{
public:
    Terminal()
        : m_master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        std::array<char, 64> name{};
        if (::grantpt(m_master) == 0 && ::unlockpt(m_master) == 0 &&
            ::ptsname_r(m_master, name.data(), name.size()) == 0) {
            m_slave = ::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        }
    }
    ~Terminal()
    {
        ::close(m_slave);
        ::close(m_master);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void giveTo(QProcess& process) const
    {
        process.setChildProcessModifier([slave = m_slave] {
            for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
                ::dup2(slave, stream);
            }
        });
    }

    [[nodiscard]] bool type(const QByteArray& keys) const
    {
        return ::write(m_master, keys.constData(), static_cast<std::size_t>(keys.size())) == keys.size();
    }

    // Waits until the words stand on the screen.
    [[nodiscard]] bool shows(const QByteArray& words)
    {
        pollfd screen{m_master, POLLIN, 0};
        while (!m_screen.contains(words)) {
            std::array<char, 1024> buffer{};
            if (::poll(&screen, 1, CliDesk::kLimit) <= 0) {
                return false;
            }
            const ssize_t count = ::read(m_master, buffer.data(), buffer.size());
            if (count <= 0) {
                return false;
            }
            m_screen.append(buffer.data(), count);
        }
        return true;
    }
    [[nodiscard]] const QByteArray& screen() const { return m_screen; }

    // What the line does with keys by itself.
    [[nodiscard]] tcflag_t localModes() const
    {
        termios settings{};
        ::tcgetattr(m_slave, &settings);
        return settings.c_lflag;
    }

private:
    int m_master;
    int m_slave = -1;
    QByteArray m_screen;
};

QByteArray commandsOf(const CliDesk& desk)
{
    QByteArray commands;
    for (const SimulatorProcess::LogLine& line : const_cast<CliDesk&>(desk).reader().log()) {
        if (line.event == "recv" && line.detail.contains("rawsend")) {
            commands += line.detail + '|';
        }
    }
    return commands;
}

} // namespace

class TeslinReadTestTest final : public QObject
{
    Q_OBJECT

private slots:
    void swipe()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        Terminal terminal;
        QProcess process;
        terminal.giveTo(process);
        desk.start(process, {"test-read"});
        QVERIFY2(terminal.shows("==========================="), terminal.screen().constData());
        QTRY_COMPARE_WITH_TIMEOUT(commandsOf(desk), QByteArray(R"(/rawsend \\xA8\\x40\n|/rawsend \\xA2\n|)"),
                                  CliDesk::kLimit);
        QTRY_COMPARE_WITH_TIMEOUT(desk.reader().logOf("port", {"open", "close"}), QByteArray("open|close|"),
                                  CliDesk::kLimit);
        QVERIFY(terminal.type("%B12 34^X?;56=78?\r"));
        QVERIFY2(terminal.shows("Raw Data: %B12\u2022"
                                "34^X?;56=78?<CR>"),
                 terminal.screen().constData());
        QVERIFY2(terminal.screen().contains("===\r\n\r\nTrack1: %B12\u2022"
                                            "34^X?\r\n\r\nTrack2: ;56=78?\r\n"),
                 terminal.screen().constData());
        QVERIFY(terminal.type("\x03"));
        QCOMPARE(CliDesk::end(process).exitCode, 0);
        QTRY_COMPARE_WITH_TIMEOUT(commandsOf(desk),
                                  QByteArray(R"(/rawsend \\xA8\\x40\n|/rawsend \\xA2\n|/rawsend \\xA5\n|)"),
                                  CliDesk::kLimit);
        QVERIFY((terminal.localModes() & (ICANON | ECHO | ISIG)) == (ICANON | ECHO | ISIG));
        QCOMPARE(desk.endReader(), freshMemory());
    }

    void asksToEndByASignal()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        Terminal terminal;
        QProcess process;
        terminal.giveTo(process);
        desk.start(process, {"test-read"});
        QVERIFY2(terminal.shows("==========================="), terminal.screen().constData());
        process.terminate();
        QCOMPARE(CliDesk::end(process).exitCode, 130);
        QTRY_VERIFY_WITH_TIMEOUT(commandsOf(desk).endsWith(R"(/rawsend \\xA5\n|)"), CliDesk::kLimit);
        QVERIFY((terminal.localModes() & ICANON) != 0);
    }

    void needsATerminalAndAReader()
    {
        CliDesk desk;
        QCOMPARE(desk.run({"test-read"}).exitCode, 2);
        QCOMPARE(desk.run({"--json", "test-read"}).exitCode, 2);
        Terminal terminal;
        QProcess process;
        terminal.giveTo(process);
        desk.start(process, {"test-read"});
        QCOMPARE(CliDesk::end(process).exitCode, 3);
    }

    void aReaderThatIsGoneAtTheEnd()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        Terminal terminal;
        QProcess process;
        terminal.giveTo(process);
        desk.start(process, {"test-read"});
        QVERIFY2(terminal.shows("==========================="), terminal.screen().constData());
        QVERIFY(!desk.endReader().isEmpty());
        QVERIFY(terminal.type("\x03"));
        QCOMPARE(CliDesk::end(process).exitCode, 3);
        QVERIFY2(terminal.shows("may still be in its normal mode"), terminal.screen().constData());
    }

    void progressBarOnATerminal()
    {
        CliDesk desk;
        QVERIFY(desk.startReader());
        Terminal terminal;
        QProcess process;
        terminal.giveTo(process);
        desk.start(process, {"retrieve", "-o", "a.tlc"});
        QCOMPARE(CliDesk::end(process).exitCode, 0);
        QVERIFY2(terminal.shows("is kept in a.tlc"), terminal.screen().constData());
        QVERIFY2(terminal.screen().contains("\rReading [############################..] 26/27\r "),
                 terminal.screen().constData());
    }
};

static const testsupport::RunnableTest<TeslinReadTestTest> kRunnable;
#include "TeslinReadTestTest.moc"
