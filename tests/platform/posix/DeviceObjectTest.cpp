#include "platform/DeviceObject.h"

#include "tests/platform/TestFiles.h"
#include "tests/platform/posix/ChildProcess.h"
#include "tests/platform/posix/PseudoTerminal.h"
#include "tests/support/RunnableTest.h"

#include <QElapsedTimer>
#include <QTest>

#include <cerrno>
#include <functional>
#include <thread>

#include <sys/stat.h>

using namespace platform;
using namespace std::chrono_literals;
using std::chrono::milliseconds;
using test::PseudoTerminal;
using test::TemporaryFolder;

namespace {

constexpr std::size_t kBufferSize = 2000;
const QByteArray kQuestion = "/get port_name\n";

// Never reached by an answer, however slow the machine: a test that ends was ended by the rule it is about.
constexpr DeviceObjectLimits kPatient{test::kPatience, test::kPatience};

} // namespace

class DeviceObjectTest final : public QObject
{
    Q_OBJECT

private:
    TemporaryFolder m_folder;

    [[nodiscard]] std::unique_ptr<DeviceObject> device(DeviceObjectLimits limits = kPatient) const
    {
        return makeDeviceObject(DosNames(m_folder.path()), limits);
    }

    void mapTo(const std::filesystem::path& path) const
    {
        std::filesystem::remove(m_folder / "teslin");
        std::filesystem::create_symlink(path, m_folder / "teslin");
    }

    // Asks the device object as the program does and gives its answer or the error's number in brackets. The driver's
    // side of the talk begins when the question has arrived.
    [[nodiscard]] QByteArray ask(const PseudoTerminal& terminal, const std::function<void()>& driver,
                                 DeviceObjectLimits limits = kPatient) const
    {
        mapTo(terminal.path());
        const auto object = device(limits);
        const Result<void> opened = object->open(R"(\\.\Teslin)");
        if (!opened) {
            return "(open: " + QByteArray::number(opened.error().number) + ")";
        }
        QByteArray question;
        std::thread other([&] {
            question = terminal.receiveUntil('\n');
            driver();
        });
        const Result<void> written = object->write(kQuestion.toStdString());
        const Result<std::string> answer = object->read(kBufferSize);
        other.join();
        if (!written || question != kQuestion) {
            return "(the driver received: " + question.toHex(' ') + ")";
        }
        return answer ? QByteArray::fromStdString(answer.value())
                      : "(" + QByteArray::number(answer.error().number) + ")";
    }

    [[nodiscard]] static QByteArray errorOf(int number) { return "(" + QByteArray::number(number) + ")"; }

private slots:
    void theProductsLimits()
    {
        QCOMPARE(DeviceObjectLimits().firstByte.count(), 2000);
        QCOMPARE(DeviceObjectLimits().quiet.count(), 50);
        QVERIFY(DeviceObjectLimits().breath.count() <= 50); // a window that is painted later than that feels slow
    }

    void anAnswerEndsWithAControlCharacterAfterItsPort_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("carriage return") << QByteArray("/get port_name=COM5\r");
        QTest::newRow("line feed") << QByteArray("/get port_name=COM12\n");
        QTest::newRow("both") << QByteArray("/get port_name=COM12\r\n");
        QTest::newRow("NUL") << QByteArray("COM5\0", 5);
        QTest::newRow("control characters before the port") << QByteArray("\r\n\x01\x02\x7f COM5\r");
        QTest::newRow("every flow-control and signal character") << QByteArray("\x03\x04\x11\x13\x1a\x1c\xff COM5\r");
        QTest::newRow("bytes above 127 are no control characters") << QByteArray("COM5\x80\xA5\xFF\r");
    }
    void anAnswerEndsWithAControlCharacterAfterItsPort()
    {
        QFETCH(QByteArray, answer);
        const PseudoTerminal terminal;
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(ask(terminal, [&] { terminal.send(answer); }), answer);
        QVERIFY2(timer.elapsed() < milliseconds(kPatient.quiet).count(), "it was silence that ended the answer");
    }

    void anAnswerInPieces()
    {
        const PseudoTerminal terminal;
        QElapsedTimer timer;
        timer.start();
        const QByteArray answer = "/get port_name=COM5\r";
        const auto byteByByte = [&] {
            for (const char byte : answer) {
                terminal.send(QByteArray(1, byte));
            }
        };
        QCOMPARE(ask(terminal, byteByByte), answer);
        QVERIFY2(timer.elapsed() < milliseconds(kPatient.quiet).count(), "it was silence that ended the answer");
    }

    void anAnswerWithoutAnEndEndsInSilence_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("port without a terminator") << QByteArray("COM5");
        QTest::newRow("no port") << QByteArray("no such command\r\n");
        QTest::newRow("control characters alone") << QByteArray("\x01\x02\x03\r\n");
        QTest::newRow("lower case is no port") << QByteArray("com5\r");
        QTest::newRow("one byte") << QByteArray("C");
    }
    void anAnswerWithoutAnEndEndsInSilence()
    {
        QFETCH(QByteArray, answer);
        const PseudoTerminal terminal;
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(ask(terminal, [&] { terminal.send(answer); }, {test::kPatience, 50ms}), answer);
        QVERIFY(timer.elapsed() >= 50);
        QVERIFY(timer.elapsed() < milliseconds(test::kPatience).count());
    }

    void anAnswerIsCutAtTheSizeAskedFor()
    {
        const PseudoTerminal terminal;
        const QByteArray answer = QByteArray(2500, 'x');
        QCOMPARE(ask(terminal, [&] { terminal.send(answer); }), answer.first(kBufferSize));
    }

    void anAnswerOfExactlyTheSizeAskedFor()
    {
        const PseudoTerminal terminal;
        const QByteArray answer = QByteArray(kBufferSize - 4, '\x01') + "COM5";
        QCOMPARE(ask(terminal, [&] { terminal.send(answer); }), answer);
    }

    void silenceIsAnError()
    {
        const PseudoTerminal terminal;
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(ask(terminal, [] {}, {100ms, test::kPatience}), errorOf(ETIMEDOUT));
        QVERIFY(timer.elapsed() >= 100);
        QVERIFY(timer.elapsed() < milliseconds(test::kPatience).count());
    }

    void aHangUpIsAnError_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::newRow("instead of an answer") << QByteArray();
        QTest::newRow("in the middle of an answer") << QByteArray("/get port_name=COM1");
    }
    void aHangUpIsAnError()
    {
        QFETCH(QByteArray, before);
        PseudoTerminal terminal;
        const auto driver = [&] {
            terminal.send(before);
            terminal.hangUp();
        };
        QCOMPARE(ask(terminal, driver), errorOf(EIO));
    }

    void aHangUpBeforeTheQuestionIsAnError()
    {
        PseudoTerminal terminal;
        mapTo(terminal.path());
        const auto object = device();
        QVERIFY(object->open(R"(\\.\Teslin)"));
        terminal.hangUp();
        const Result<void> written = object->write(kQuestion.toStdString());
        QVERIFY(!written);
        QCOMPARE(written.error().number, EIO);
        QCOMPARE(written.error().description, "Input/output error");
        QCOMPARE(object->read(kBufferSize).error().number, EIO);
    }

    void aDriverThatTakesNothingIsAnError()
    {
        const PseudoTerminal terminal;
        mapTo(terminal.path());
        const auto object = device({100ms, test::kPatience});
        QVERIFY(object->open(R"(\\.\Teslin)"));
        const Result<void> written = object->write(std::string(1'000'000, 'x'));
        QVERIFY(!written);
        QCOMPARE(written.error().number, ETIMEDOUT);
    }

    void somebodyIsToldOfEveryWaitWhileItLasts_data()
    {
        QTest::addColumn<bool>("reads");
        QTest::newRow("for an answer") << true;
        QTest::newRow("for the driver to take what is written") << false;
    }
    void somebodyIsToldOfEveryWaitWhileItLasts()
    {
        QFETCH(bool, reads);
        const PseudoTerminal terminal;
        mapTo(terminal.path());
        const auto object = device({.firstByte = 200ms, .quiet = test::kPatience, .breath = 10ms});
        int times = 0;
        object->setWhileWaiting([&times] { ++times; });
        QVERIFY(object->open(R"(\\.\Teslin)"));
        QCOMPARE(times, 0);
        QElapsedTimer timer;
        timer.start();
        const int error = reads ? object->read(kBufferSize).error().number
                                : object->write(std::string(1'000'000, 'x')).error().number;
        QCOMPARE(error, ETIMEDOUT);
        QVERIFY(timer.elapsed() >= 200);
        QVERIFY2(times > 2, qPrintable(QString::number(times)));
    }

    // Somebody who takes longer than the limit does not make a driver late.
    void anAnswerThatCameWhileSomebodyWasToldCounts()
    {
        const PseudoTerminal terminal;
        mapTo(terminal.path());
        const auto object = device({.firstByte = 50ms, .quiet = 50ms});
        QVERIFY(object->open(R"(\\.\Teslin)"));
        object->setWhileWaiting([&terminal] {
            QElapsedTimer busy;
            busy.start();
            terminal.send("COM5\r");
            while (busy.elapsed() < 60) {
            }
        });
        const Result<std::string> answer = object->read(5);
        QVERIFY(answer);
        QCOMPARE(answer.value(), "COM5\r");
    }

    void aLongWriteArrivesWhole()
    {
        const PseudoTerminal terminal;
        mapTo(terminal.path());
        const auto object = device();
        QVERIFY(object->open(R"(\\.\Teslin)"));
        QByteArray received;
        std::thread driver([&] { received = terminal.receiveUntil('\n'); });
        const QByteArray sent = QByteArray(100'000, 'x') + '\n';
        const Result<void> written = object->write(sent.toStdString());
        driver.join();
        QVERIFY(written);
        QCOMPARE(received, sent);
    }

    void theTerminalIsMadeRaw()
    {
        const PseudoTerminal terminal;
        QVERIFY(terminal.settings().c_lflag & ICANON);
        mapTo(terminal.path());
        const auto object = device();
        QVERIFY(object->open(R"(\\.\Teslin)"));
        const termios raw = terminal.settings();
        QCOMPARE(raw.c_lflag & (ECHO | ECHONL | ICANON | ISIG | IEXTEN), 0u);
        QCOMPARE(raw.c_iflag & (ICRNL | INLCR | IGNCR | ISTRIP | IXON | IGNBRK | BRKINT | PARMRK), 0u);
        QCOMPARE(raw.c_oflag & OPOST, 0u);
        QCOMPARE(raw.c_cflag & CSIZE, unsigned{CS8});
    }

    void whatCameBeforeTheOpenIsThrownAway()
    {
        const PseudoTerminal terminal;
        terminal.makeRaw(); // or the driver would hear the echo of its own old answer
        terminal.send("an old answer: COM9\r");
        QVERIFY(terminal.hasArrived());
        QCOMPARE(ask(terminal, [&] { terminal.send("COM5\r"); }), "COM5\r");
    }

    void whatCameAfterTheOpenIsNot()
    {
        const PseudoTerminal terminal;
        mapTo(terminal.path());
        const auto object = device();
        QVERIFY(object->open(R"(\\.\Teslin)"));
        terminal.send("COM5\r");
        QVERIFY(terminal.hasArrived());
        QVERIFY(object->write("x"));
        QCOMPARE(object->read(kBufferSize).value(), "COM5\r");
    }

    void theTerminalDoesNotBecomeTheControllingOne()
    {
        const PseudoTerminal terminal;
        mapTo(terminal.path());
        const QByteArray controlling = test::inChild([this]() -> QByteArray {
            // A session leader without a terminal gets the next one that it opens carelessly.
            if (::setsid() < 0) {
                return "(no session)";
            }
            const auto object = device();
            if (!object->open(R"(\\.\Teslin)")) {
                return "(not opened)";
            }
            return ::open("/dev/tty", O_RDWR) < 0 && errno == ENXIO ? "none" : "one";
        });
        QCOMPARE(controlling, "none");
    }

    void aPlainFileIsReadOnFromBehindTheQuestion()
    {
        std::filesystem::remove(m_folder / "teslin");
        test::writeBytes(m_folder / "teslin", "012345678901234COM5\rthe rest");
        const auto object = device();
        QVERIFY(object->open(R"(\\.\Teslin)"));
        QVERIFY(object->write(kQuestion.toStdString()));
        QCOMPARE(QByteArray::fromStdString(object->read(kBufferSize).value()), "COM5\rthe rest");
        object->close();
        QCOMPARE(test::bytesOf(m_folder / "teslin"), kQuestion + "COM5\rthe rest");
    }

    void theEndOfAPlainFileIsNoError_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("empty") << QByteArray() << QByteArray();
        QTest::newRow("as long as the question") << QByteArray(15, '.') << QByteArray();
        QTest::newRow("port without a terminator") << QByteArray(15, '.') + "COM5" << QByteArray("COM5");
        QTest::newRow("no port") << QByteArray(15, '.') + "nothing" << QByteArray("nothing");
        QTest::newRow("3,000 bytes") << QByteArray(3015, '.') << QByteArray(kBufferSize, '.');
    }
    void theEndOfAPlainFileIsNoError()
    {
        QFETCH(QByteArray, content);
        QFETCH(QByteArray, answer);
        std::filesystem::remove(m_folder / "teslin");
        test::writeBytes(m_folder / "teslin", content.toStdString());
        const auto object = device();
        QVERIFY(object->open(R"(\\.\Teslin)"));
        QVERIFY(object->write(kQuestion.toStdString()));
        QCOMPARE(QByteArray::fromStdString(object->read(kBufferSize).value()), answer);
    }

    void theNullDeviceAnswersNothing()
    {
        mapTo("/dev/null");
        const auto object = device();
        QVERIFY(object->open(R"(\\.\Teslin)"));
        QVERIFY(object->write(kQuestion.toStdString()));
        QCOMPARE(object->read(kBufferSize).value(), "");
    }

    void aFullDeviceCannotBeWritten()
    {
        mapTo("/dev/full");
        const auto object = device();
        QVERIFY(object->open(R"(\\.\Teslin)"));
        const Result<void> written = object->write(kQuestion.toStdString());
        QVERIFY(!written);
        QCOMPARE(written.error().number, ENOSPC);
    }

    void aMissingDeviceIsNotFoundAndNotCreated()
    {
        std::filesystem::remove(m_folder / "teslin");
        const auto names = test::namesIn(m_folder.path());
        const Result<void> opened = device()->open(R"(\\.\Teslin)");
        QVERIFY(!opened);
        QVERIFY(isNotFound(opened.error()));
        QVERIFY(test::namesIn(m_folder.path()) == names);
    }

    void aRefusedNameIsNotOpened()
    {
        const Result<void> opened = device()->open(R"(\\.\../teslin)");
        QVERIFY(!opened);
        QVERIFY(!isNotFound(opened.error()));
    }

    void aFolderIsNotOpened()
    {
        mapTo(m_folder.path());
        const Result<void> opened = device()->open(R"(\\.\Teslin)");
        QVERIFY(!opened);
        QCOMPARE(opened.error().number, EISDIR);
        QCOMPARE(opened.error().description, "Is a directory");
    }

    void aDeviceThatIsNotPermitted()
    {
        std::filesystem::remove(m_folder / "teslin");
        test::writeBytes(m_folder / "teslin", "");
        QCOMPARE(::chmod(m_folder.path().c_str(), 0755), 0);
        QCOMPARE(::chmod((m_folder / "teslin").c_str(), 0400), 0);
        const QByteArray error = test::asOrdinaryUser([this] {
            const Result<void> opened = device()->open(R"(\\.\Teslin)");
            return opened ? QByteArray("opened") : QByteArray::fromStdString(opened.error().description);
        });
        QCOMPARE(error, "Permission denied");
    }

    void nothingCanBeDoneWithAClosedDevice()
    {
        mapTo("/dev/null");
        const auto object = device();
        QCOMPARE(object->write("x").error().number, EBADF);
        QCOMPARE(object->read(1).error().number, EBADF);
        QVERIFY(object->open(R"(\\.\Teslin)"));
        QVERIFY(object->write("x"));
        object->close();
        object->close();
        QCOMPARE(object->write("x").error().number, EBADF);
    }

    void aFailedOpenLeavesTheDeviceClosed()
    {
        mapTo("/dev/null");
        const auto object = device();
        QVERIFY(object->open(R"(\\.\Teslin)"));
        QVERIFY(!object->open(R"(\\.\Missing)"));
        QCOMPARE(object->write("x").error().number, EBADF);
    }

    void itCanBeOpenedAgain()
    {
        const PseudoTerminal terminal;
        for (const char* const answer : {"COM5\r", "COM6\r"}) {
            QCOMPARE(ask(terminal, [&] { terminal.send(answer); }), answer);
        }
    }
};

static const testsupport::RunnableTest<DeviceObjectTest> kRunnable;
#include "DeviceObjectTest.moc"
