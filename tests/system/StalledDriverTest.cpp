#include "tests/support/RunnableTest.h"
#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include <QFile>
#include <QTest>

#include <csignal>
#include <string>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

constexpr qsizetype kIdentification = 5;
constexpr qsizetype kSomeRows = kIdentification + 4;
constexpr int kLimit = limitFor(32);
constexpr int kLongestWrite = 2000;

// A second way to the program's half of the port, so that a test can fill the line that the driver no longer reads.
class PortLine final
{
public:
    explicit PortLine(const QString& port)
        : m_descriptor(::open(QFile::encodeName(port).constData(), O_WRONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {}
    ~PortLine() { ::close(m_descriptor); }
    PortLine(const PortLine&) = delete;
    PortLine& operator=(const PortLine&) = delete;

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }

    // Until it takes not one byte more; the system moves bytes on a little later, and then there is room again.
    void fill() const
    {
        const std::string bytes(512, '.');
        std::size_t piece = bytes.size();
        for (int refusals = 0; refusals < 20;) {
            if (::write(m_descriptor, bytes.data(), piece) > 0) {
                refusals = 0;
            } else if (piece > 1) {
                piece = 1;
            } else {
                ++refusals;
                ::poll(nullptr, 0, 5);
            }
        }
    }

private:
    int m_descriptor;
};

// The reader's driver stops reading its port in the middle of an Update, and reads again later.
class StalledDriverTest final : public QObject
{
    Q_OBJECT

private slots:
    void anUpdateEndsAsOneWhoseReaderIsGone()
    {
        SystemFixture desk;
        QVERIFY(desk.start());
        const PortLine line(desk.machine().names() + u"/com5"_s);
        QVERIFY(line.isOpen());
        QVERIFY(desk.press(u"KEY_UPDATE"_s));
        QTRY_VERIFY_WITH_TIMEOUT(desk.commands().size() >= kSomeRows, kLimit);

        const auto driver = static_cast<pid_t>(desk.reader().processId());
        QCOMPARE(::kill(driver, SIGSTOP), 0);
        line.fill();
        ProgramProcess& program = desk.program();
        QTRY_COMPARE_WITH_TIMEOUT(program.text(u"StatusBar1_1"_s), u"Lost the connection to COM5"_s,
                                  kPatience * kLongestWrite);
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        QCOMPARE(program.box(), QString());
        QCOMPARE(program.ask(u"windows"_s), u"frmMain"_s);
        QCOMPARE(program.text(u"KEY_EXIT"_s), u"Exit"_s);

        // Nothing was kept back that would go out now: what the driver finds is what it has not been sent whole at
        // most.
        QCOMPARE(::kill(driver, SIGCONT), 0);
        QVERIFY(program.act(u"click KEY_EXIT"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!program.isRunning(), kStart);
        const QByteArrayList commands = desk.commands();
        const QByteArrayList expected = update_CFG(factoryMemory());
        qsizetype written = 0;
        while (written < commands.size() && written < expected.size() && commands[written] == expected[written]) {
            ++written;
        }
        QVERIFY2(written >= kSomeRows && written < expected.size(), qPrintable(QString::number(written)));
        for (const QByteArray& command : commands.sliced(written)) {
            QVERIFY2(command.count("/rawsend") <= 1, command.constData()); // none that begins in another
        }
    }
};

} // namespace

static const testsupport::RunnableTest<StalledDriverTest> kRunnable;

#include "StalledDriverTest.moc"
