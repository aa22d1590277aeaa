#include "tests/platform/SerialLine.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QRegularExpression>
#include <QTest>

#include <cerrno>

using test::SerialLine;

namespace {

using Texts = std::vector<std::string>;

std::string allBytes()
{
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

// Runs as a user without rights for its life, where the test runs as the one who has them all.
class UserWithoutRights final
{
public:
    UserWithoutRights()
    {
        if (m_before == 0 && ::seteuid(65534) != 0) {
            m_isInPlace = false;
        }
    }
    ~UserWithoutRights()
    {
        if (::geteuid() != m_before && ::seteuid(m_before) != 0) {
            qFatal("cannot become the user of before again");
        }
    }
    UserWithoutRights(const UserWithoutRights&) = delete;
    UserWithoutRights& operator=(const UserWithoutRights&) = delete;

    [[nodiscard]] bool isInPlace() const { return m_isInPlace; }

private:
    uid_t m_before = ::geteuid();
    bool m_isInPlace = true;
};

} // namespace

// The serial control on real terminals.
class QtSerialControlTest final : public QObject
{
    Q_OBJECT

private slots:
    // --- sending

    void commandsGoOut()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.control.Output("/ver\n");
        QCOMPARE(on.terminal->receive(5), "/ver\n");
        on.control.Output("/rawxact WCY\n");
        QCOMPARE(on.terminal->receive(13), "/rawxact WCY\n");
    }

    // Without an event loop between: what was sent must not be lost when the operation ends.
    void bytesGoOutWholeWhenThePortIsClosedRightAfter_data()
    {
        QTest::addColumn<int>("lines");
        QTest::newRow("one line") << 1;
        QTest::newRow("a hundred lines") << 100;
    }
    void bytesGoOutWholeWhenThePortIsClosedRightAfter()
    {
        QFETCH(int, lines);
        SerialLine on;
        std::string sent;
        QVERIFY(on.open());
        for (int line = 0; line < lines; ++line) {
            on.control.Output("/rawsend WPW013=95\n");
            sent += "/rawsend WPW013=95\n";
        }
        QVERIFY(on.control.setPortOpen(false));
        QCOMPARE(on.terminal->receive(sent.size()), sent);
    }

    void everyByteGoesBothWaysUnchanged()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.control.setRThreshold(0);
        on.control.Output(allBytes());
        QCOMPARE(on.terminal->receive(256), allBytes());
        on.terminal->send(allBytes());
        QTRY_COMPARE(on.control.InBufferCount(), 256);
        QCOMPARE(on.control.Input(), allBytes());
        // Nothing that came was sent back.
        QCOMPARE(on.terminal->received(), "");
    }

    void thePortIsRawAt9600Baud8DataBits()
    {
        SerialLine on;
        QVERIFY(on.open());
        const termios settings = on.terminal->settings();
        QCOMPARE(cfgetospeed(&settings), speed_t{B9600});
        QCOMPARE(cfgetispeed(&settings), speed_t{B9600});
        QCOMPARE(settings.c_cflag & CSIZE, tcflag_t{CS8});
        QCOMPARE(settings.c_lflag & (ICANON | ECHO | ISIG), tcflag_t{0});
        QCOMPARE(settings.c_iflag & (ICRNL | INLCR | IXON), tcflag_t{0});
        QCOMPARE(settings.c_oflag & OPOST, tcflag_t{0});
    }

    void nothingGoesOutThroughAClosedPort()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
        SerialLine on;
        on.control.Output("before\n");
        QVERIFY(on.open());
        on.control.Output("/ver\n");
        QVERIFY(on.control.setPortOpen(false));
        on.control.Output("after\n");
        QCoreApplication::processEvents();
        QCOMPARE(on.terminal->receive(5), "/ver\n");
        QCOMPARE(on.losses, 0);
    }

    // --- receiving

    void staleInputIsDiscardedAtOpening()
    {
        SerialLine on;
        QVERIFY(on.terminal->deliver("/ver reply: of yesterday\nand ha"));
        QVERIFY(on.open());
        QCOMPARE(on.control.InBufferCount(), 0);
        on.terminal->send("fresh\n");
        QTRY_COMPARE(on.lines, Texts{"fresh\n"});
    }

    void whatCameBeforeClosingIsGoneAfterReopening()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.control.setRThreshold(0);
        on.terminal->send("half a li");
        QTRY_COMPARE(on.control.InBufferCount(), 9);
        QVERIFY(on.control.setPortOpen(false));
        QCOMPARE(on.control.InBufferCount(), 0);
        QVERIFY(on.open());
        on.terminal->send("fresh\n");
        QTRY_COMPARE(on.lines, Texts{"fresh\n"});
    }

    // Pieces as the driver writes them; each has arrived before the next one goes.
    void oneEventIsOneLine_data()
    {
        QTest::addColumn<QByteArrayList>("pieces");
        QTest::addColumn<QByteArrayList>("lines");
        QTest::newRow("one") << QByteArrayList{"one\n"} << QByteArrayList{"one\n"};
        QTest::newRow("split") << QByteArrayList{"o", "n", "e", "\n"} << QByteArrayList{"one\n"};
        QTest::newRow("joined") << QByteArrayList{"one\ntwo\nthree\n"} << QByteArrayList{"one\n", "two\n", "three\n"};
        QTest::newRow("joined and split")
            << QByteArrayList{"one\ntw", "o\nth", "ree\n"} << QByteArrayList{"one\n", "two\n", "three\n"};
        QTest::newRow("carriage returns") << QByteArrayList{"one\rtwo\r"} << QByteArrayList{"one\r", "two\r"};
        QTest::newRow("both") << QByteArrayList{"one\r\ntwo\r\n"} << QByteArrayList{"one\r", "two\r"};
        QTest::newRow("both, split between")
            << QByteArrayList{"one\r", "\ntwo\r", "\n", "three\n"} << QByteArrayList{"one\r", "two\r", "three\n"};
        QTest::newRow("empty line") << QByteArrayList{"\n", "one\n"} << QByteArrayList{"\n", "one\n"};
    }
    void oneEventIsOneLine()
    {
        QFETCH(QByteArrayList, pieces);
        QFETCH(QByteArrayList, lines);
        SerialLine on;
        QVERIFY(on.open());
        QList<int> events;
        QByteArrayList taken;
        on.control.setOnComm([&] {
            events.append(on.control.CommEvent());
            taken.append(QByteArray::fromStdString(on.control.Input()));
        });
        for (const QByteArray& piece : pieces) {
            QVERIFY(on.terminal->deliver(piece.toStdString()));
            QTRY_COMPARE(on.terminal->held(), 0);
        }
        QTRY_COMPARE(taken.size(), lines.size());
        QCOMPARE(taken, lines);
        QCOMPARE(events, QList<int>(lines.size(), 2));
        QCOMPARE(on.control.InBufferCount(), 0);
    }

    void eventsOffAndOnAgain()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.control.setRThreshold(0);
        on.terminal->send("one\ntwo\nthr");
        QTRY_COMPARE(on.control.InBufferCount(), 11);
        QCOMPARE(on.lines, Texts{});
        on.control.setRThreshold(1);
        QCOMPARE(on.lines, Texts{});
        QTRY_COMPARE(on.lines, (Texts{"one\n", "two\n"}));
        QCOMPARE(on.control.Input(), "thr");
    }

    void aDirectReadTakesEverything()
    {
        SerialLine on;
        QVERIFY(on.open());
        on.control.setRThreshold(0);
        on.terminal->send("one\ntw");
        QTRY_COMPARE(on.control.InBufferCount(), 6);
        QCOMPARE(on.control.Input(), "one\ntw");
        QCOMPARE(on.control.Input(), "");
        on.terminal->send("o\n");
        QTRY_COMPARE(on.control.InBufferCount(), 2);
        QCOMPARE(on.control.Input(), "o\n");
    }

    // A handler may wait: what comes meanwhile is announced meanwhile.
    void aHandlerWaitsForTheNextLine()
    {
        SerialLine on;
        QVERIFY(on.open());
        Texts order;
        on.control.setOnComm([&] {
            order.push_back(on.control.Input());
            if (order.size() == 1) {
                on.terminal->send("two\n");
                QTRY_COMPARE(order.size(), std::size_t{2});
                order.push_back("end of the first");
            }
        });
        on.terminal->send("one\n");
        QTRY_COMPARE(order.size(), std::size_t{3});
        QCOMPARE(order, (Texts{"one\n", "two\n", "end of the first"}));
    }

    // Replies that come while a command is being written are kept.
    void noEventFromInsideOutput()
    {
        SerialLine on;
        QVERIFY(on.open());
        QVERIFY(on.terminal->deliver("one\n"));
        on.control.Output("/ver\n");
        QCOMPARE(on.lines, Texts{});
        QTRY_COMPARE(on.lines, Texts{"one\n"});
    }

    // --- opening

    void portNumbers_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<bool>("isTaken");
        QTest::newRow("negative") << -1 << false;
        QTest::newRow("zero") << 0 << false;
        QTest::newRow("lowest") << 1 << true;
        QTest::newRow("highest") << 256 << true;
        QTest::newRow("too high") << 257 << false;
        QTest::newRow("huge") << 32767 << false;
    }
    void portNumbers()
    {
        QFETCH(int, number);
        QFETCH(bool, isTaken);
        SerialLine on;
        const auto result = on.control.setCommPort(number);
        QCOMPARE(bool(result), isTaken);
        if (!isTaken) {
            QCOMPARE(result.error().description, "Invalid argument");
            // The port of before stays.
            QVERIFY(on.open());
        }
    }

    void theNumberOfAnOpenPortStays()
    {
        SerialLine on;
        QVERIFY(on.open());
        QVERIFY(!on.control.setCommPort(6));
        QVERIFY(on.control.setCommPort(5));
        on.control.Output("/ver\n");
        QCOMPARE(on.terminal->receive(5), "/ver\n");
    }

    void openingTwiceAndClosingTwice()
    {
        SerialLine on;
        QVERIFY(!on.control.PortOpen());
        QVERIFY(on.control.setPortOpen(false));
        QVERIFY(on.open());
        on.control.setRThreshold(0);
        on.terminal->send("one\n");
        QTRY_COMPARE(on.control.InBufferCount(), 4);
        QVERIFY(on.control.setPortOpen(true));
        QCOMPARE(on.control.InBufferCount(), 4); // nothing was discarded
        QVERIFY(on.control.setPortOpen(false));
        QVERIFY(!on.control.PortOpen());
        QVERIFY(on.control.setPortOpen(false));
        QVERIFY(!on.control.PortOpen());
    }

    void thePortIsOpenedAgainAndAgain()
    {
        SerialLine on;
        for (int i = 0; i < 5; ++i) {
            QVERIFY(on.open());
            on.control.Output("/ver\n");
            QCOMPARE(on.terminal->receive(5), "/ver\n");
            QVERIFY(on.control.setPortOpen(false));
        }
        QCOMPARE(on.losses, 0);
    }

    void portsThatCannotBeOpened_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<int>("number");
        QTest::addColumn<QByteArray>("description");
        QTest::newRow("missing") << "" << ENOENT << QByteArray("No such file or directory");
        QTest::newRow("link to nothing") << "link" << ENOENT << QByteArray("No such file or directory");
        QTest::newRow("plain file") << "file" << ENOTTY << QByteArray("Inappropriate ioctl for device");
        QTest::newRow("folder") << "folder" << EISDIR << QByteArray("Is a directory");
    }
    void portsThatCannotBeOpened()
    {
        QFETCH(QString, entry);
        QFETCH(int, number);
        QFETCH(QByteArray, description);
        SerialLine on;
        const auto port = on.folder / "com7";
        if (entry == QStringLiteral("link")) {
            std::filesystem::create_symlink("/nonexistent/tty", port);
        } else if (entry == QStringLiteral("file")) {
            test::writeBytes(port, "content");
        } else if (entry == QStringLiteral("folder")) {
            std::filesystem::create_directory(port);
        }
        const auto before = test::namesIn(on.folder.path());
        QVERIFY(on.control.setCommPort(7));
        const auto opened = on.control.setPortOpen(true);
        QVERIFY(!opened);
        QCOMPARE(opened.error().number, number);
        QCOMPARE(QByteArray::fromStdString(opened.error().description), description);
        QVERIFY(!on.control.PortOpen());
        QCoreApplication::processEvents();
        QCOMPARE(on.losses, 0);
        QVERIFY(test::namesIn(on.folder.path()) == before);
        if (entry == QStringLiteral("file")) {
            QCOMPARE(test::bytesOf(port), QByteArray("content"));
        }
        // The control is of use afterwards.
        QVERIFY(on.control.setCommPort(5));
        QVERIFY(on.open());
        on.terminal->send("one\n");
        QTRY_COMPARE(on.lines, Texts{"one\n"});
    }

    void aPortThatMayNotBeUsed()
    {
        SerialLine on;
        std::filesystem::permissions(on.folder.path(), std::filesystem::perms(0755));
        std::filesystem::permissions(on.terminal->path(), std::filesystem::perms::none);
        {
            const UserWithoutRights user;
            if (!user.isInPlace()) {
                QSKIP("this user may use everything and cannot become one who may not");
            }
            const auto opened = on.control.setPortOpen(true);
            QVERIFY(!opened);
            QCOMPARE(opened.error().number, EACCES);
            QCOMPARE(opened.error().description, "Permission denied");
            QVERIFY(!on.control.PortOpen());
        }
        QCOMPARE(on.losses, 0);
        std::filesystem::permissions(on.terminal->path(), std::filesystem::perms(0600));
        QVERIFY(on.open());
    }

    void aControlThatGoesClosesItsPort()
    {
        test::TemporaryFolder folder;
        const platform::DosNames names(folder.path());
        const test::PseudoTerminal terminal;
        std::filesystem::create_symlink(terminal.path(), folder / "com5");
        for (int i = 0; i < 2; ++i) {
            platform::QtSerialControl control(names);
            QVERIFY(control.setCommPort(5));
            QVERIFY(control.setPortOpen(true));
            control.Output("/ver\n");
            QCOMPARE(terminal.receive(5), "/ver\n");
        }
    }
};

static const testsupport::RunnableTest<QtSerialControlTest> kRunnable;
#include "QtSerialControlTest.moc"
