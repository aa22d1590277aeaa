#include "FolderTree.h"
#include "SimulatorProcess.h"
#include "TerminalClient.h"
#include "tests/support/RunnableTest.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <sys/stat.h>

#include <memory>
#include <vector>

namespace {

const QString kPort = QStringLiteral("com5");
const QString kDevice = QStringLiteral("teslin");
const QString kDriverFile = QStringLiteral("c:/Windows/system32/drivers/Teslin.sys");

bool isYoungerThanLink(const QByteArray& file, const QString& link)
{
    struct stat a
    {};
    struct stat b
    {};
    if (::stat(file.constData(), &a) != 0 || ::lstat(QFile::encodeName(link).constData(), &b) != 0) {
        return false;
    }
    return a.st_ctim.tv_sec > b.st_ctim.tv_sec ||
           (a.st_ctim.tv_sec == b.st_ctim.tv_sec && a.st_ctim.tv_nsec > b.st_ctim.tv_nsec);
}

} // namespace

// What the running ksd-simulator makes, leaves alone, replaces and removes.
class KsdSimulatorSetupTest final : public QObject
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

    void theFolderIsFilled()
    {
        QVERIFY(m_simulator->start());
        QCOMPARE(m_simulator->readyLine(), "ready: device object teslin, port COM5, folder " +
                                               QFile::encodeName(QDir(m_simulator->folder()).canonicalPath()) + '\n');
        QCOMPARE(treeOf(m_simulator->folder()),
                 (QStringList{QStringLiteral(".com5.values"), QStringLiteral("c:"), QStringLiteral("c:/Windows"),
                              QStringLiteral("c:/Windows/system32"), QStringLiteral("c:/Windows/system32/drivers"),
                              kDriverFile, kPort, kDevice}));
        QCOMPARE(contentOf(m_simulator->entry(kDriverFile)), QByteArray());
        for (const QString& entry : {kPort, kDevice}) {
            QVERIFY(targetOf(m_simulator->entry(entry)).startsWith("/dev/pts/"));
        }
        QVERIFY(targetOf(m_simulator->entry(kPort)) != targetOf(m_simulator->entry(kDevice)));
    }

    void namesAreLowerCase()
    {
        QVERIFY(m_simulator->start({QStringLiteral("--name=MyReader"), QStringLiteral("--port=256")}));
        QVERIFY(QFileInfo(m_simulator->entry(QStringLiteral("myreader"))).isSymLink());
        QVERIFY(QFileInfo(m_simulator->entry(QStringLiteral("com256"))).isSymLink());
    }

    void theEndRemovesWhatWasMade_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGTERM") << SIGTERM;
    }
    void theEndRemovesWhatWasMade()
    {
        QFETCH(int, signal);
        QVERIFY(m_simulator->start());
        QCOMPARE(m_simulator->stop(signal).exitCode, 0);
        QCOMPARE(treeOf(m_root->path()), QStringList{QStringLiteral("wire.log")});
    }

    void foldersAboveAreMadeAndRemovedToo()
    {
        QVERIFY(QDir(m_root->path()).mkdir(QStringLiteral("a")));
        const QString folder = m_root->filePath(QStringLiteral("a/b/c/dos/"));
        QVERIFY(m_simulator->start()); // one on another folder is no obstacle
        QProcess process;
        process.start(QStringLiteral(KSD_SIMULATOR), {QStringLiteral("--dosdevices"), folder});
        QVERIFY(process.waitForReadyRead(SimulatorProcess::kLimit));
        QVERIFY(QFileInfo(folder + kPort).isSymLink());
        process.terminate();
        QVERIFY(process.waitForFinished(SimulatorProcess::kLimit));
        QCOMPARE(process.exitCode(), 0);
        QCOMPARE(treeOf(m_root->filePath(QStringLiteral("a"))), QStringList());
    }

    void theEndLeavesWhatWasThere()
    {
        const QString drivers = m_simulator->entry(QStringLiteral("C:/WINDOWS/System32"));
        QVERIFY(QDir().mkpath(drivers));
        QVERIFY(makeFile(drivers + QStringLiteral("/notes.txt"), "mine"));
        const QStringList before = treeOf(m_root->path());
        QVERIFY(m_simulator->start());
        QVERIFY(QFileInfo::exists(drivers + QStringLiteral("/drivers/Teslin.sys")));
        QVERIFY(!QFileInfo::exists(m_simulator->entry(QStringLiteral("c:"))));
        QCOMPARE(m_simulator->stop().exitCode, 0);
        QCOMPARE(treeOf(m_root->path()), before + QStringList{QStringLiteral("wire.log")});
        QCOMPARE(contentOf(drivers + QStringLiteral("/notes.txt")), QByteArray("mine"));
    }

    void theEndLeavesWhatOthersAdded()
    {
        QVERIFY(m_simulator->start());
        QVERIFY(makeFile(m_simulator->entry(QStringLiteral("c:/Windows/win.ini")), "mine"));
        QCOMPARE(m_simulator->stop().exitCode, 0);
        QCOMPARE(treeOf(m_simulator->folder()), (QStringList{QStringLiteral("c:"), QStringLiteral("c:/Windows"),
                                                             QStringLiteral("c:/Windows/win.ini")}));
    }

    void theEndLeavesAnEntryThatLeadsElsewhereByNow()
    {
        QVERIFY(m_simulator->start());
        const QString entry = m_simulator->entry(kPort);
        QVERIFY(QFile::remove(entry));
        QVERIFY(makeLink("/dev/null", entry));
        QCOMPARE(m_simulator->stop().exitCode, 0);
        QCOMPARE(targetOf(entry), QByteArray("/dev/null"));
    }

    void aDriverFileThatIsThereStays()
    {
        const QString drivers = m_simulator->entry(QStringLiteral("c:/windows/system32/drivers"));
        QVERIFY(QDir().mkpath(drivers));
        QVERIFY(makeFile(drivers + QStringLiteral("/TESLIN.SYS"), "the real one"));
        QVERIFY(m_simulator->start());
        QCOMPARE(QDir(drivers).entryList(QDir::Files), QStringList{QStringLiteral("TESLIN.SYS")});
        QCOMPARE(m_simulator->stop().exitCode, 0);
        QCOMPARE(contentOf(drivers + QStringLiteral("/TESLIN.SYS")), QByteArray("the real one"));
    }

    void driveCMayBeALink()
    {
        const QString drive = m_root->filePath(QStringLiteral("drive_c"));
        QVERIFY(QDir().mkpath(drive + QStringLiteral("/windows")));
        QVERIFY(QDir().mkpath(m_simulator->folder()));
        QVERIFY(makeLink("../drive_c", m_simulator->entry(QStringLiteral("c:"))));
        QVERIFY(m_simulator->start());
        QVERIFY(QFileInfo::exists(drive + QStringLiteral("/windows/system32/drivers/Teslin.sys")));
        QCOMPARE(m_simulator->stop().exitCode, 0);
        QCOMPARE(treeOf(drive), QStringList{QStringLiteral("windows")});
        QCOMPARE(targetOf(m_simulator->entry(QStringLiteral("c:"))), QByteArray("../drive_c"));
    }

    void afterAKillItStartsAgain()
    {
        QVERIFY(m_simulator->start());
        m_simulator->kill();
        QVERIFY(QFileInfo(m_simulator->entry(kPort)).isSymLink());
        QVERIFY(m_simulator->start());
        const TerminalClient client(m_simulator->entry(kPort));
        QVERIFY(client.send("/ver\n"));
        QCOMPARE(client.readTo('\n'), QByteArray("/ver reply: Teslin KSD 2.10\n"));
        QCOMPARE(m_simulator->stop().exitCode, 0);
        QVERIFY(!QFileInfo(m_simulator->entry(kPort)).isSymLink());
    }

    void staleLinksAreReplaced_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::newRow("port") << kPort;
        QTest::newRow("port in upper case") << QStringLiteral("COM5");
        QTest::newRow("device object") << kDevice;
        QTest::newRow("device object in mixed case") << QStringLiteral("Teslin");
    }
    void staleLinksAreReplaced()
    {
        QFETCH(QString, entry);
        QVERIFY(QDir().mkpath(m_simulator->folder()));
        QVERIFY(makeLink("/dev/pts/99999", m_simulator->entry(entry)));
        QVERIFY(m_simulator->start());
        QCOMPARE(QDir(m_simulator->folder()).entryList(QDir::System | QDir::Files, QDir::Name),
                 (QStringList{kPort, kDevice}));
        QVERIFY(TerminalClient(m_simulator->entry(entry.toLower())).isOpen());
    }

    // The number of a terminal that is gone is soon given to another one.
    void aLinkToATerminalThatWasGivenAwayIsStale()
    {
        QVERIFY(QDir().mkpath(m_simulator->folder()));
        const QString entry = m_simulator->entry(kPort);
        QByteArray path;
        {
            const ForeignTerminal first;
            path = first.path();
            QVERIFY(!path.isEmpty());
            QVERIFY(makeLink(path, entry));
        }
        std::vector<std::unique_ptr<ForeignTerminal>> others;
        const auto isGivenAway = [&] {
            if (QFile::exists(QString::fromLatin1(path))) {
                others.clear(); // so soon that the clock of the files has not gone on
            }
            others.push_back(std::make_unique<ForeignTerminal>());
            return isYoungerThanLink(path, entry);
        };
        QTRY_VERIFY_WITH_TIMEOUT(isGivenAway(), SimulatorProcess::kLimit);
        QVERIFY(m_simulator->start());
        QVERIFY(targetOf(entry) != path);
    }

    void aSecondOneUnderOtherNamesIsWelcome()
    {
        QVERIFY(m_simulator->start());
        SimulatorProcess second(m_root->path());
        QVERIFY(second.start({QStringLiteral("--name=other"), QStringLiteral("--port=6")}));
        for (const QString& entry : {kPort, QStringLiteral("com6")}) {
            const TerminalClient client(m_simulator->entry(entry));
            QVERIFY(client.send("/ver\n"));
            QCOMPARE(client.readTo('\n'), QByteArray("/ver reply: Teslin KSD 2.10\n"));
        }
        QCOMPARE(second.stop().exitCode, 0);
        QVERIFY(!QFileInfo(m_simulator->entry(QStringLiteral("com6"))).isSymLink());
        QVERIFY(QFileInfo(m_simulator->entry(kPort)).isSymLink());
        QVERIFY(QFileInfo::exists(m_simulator->entry(kDriverFile)));
    }

    void aCardIsTypedAndNothingSetUp()
    {
        const SimulatorProcess::Outcome card = SimulatorProcess::run({QStringLiteral("--type-card=credit")});
        QCOMPARE(card.exitCode, 0);
        QCOMPARE(card.output, QByteArray("%B0000000000000000^SAMPLE/CARD A             ^99120000000000000000?"
                                         ";0000000000000000=99120000000000000000?\r"));
        QCOMPARE(card.errors, QByteArray());
        QVERIFY(!QFileInfo::exists(m_simulator->folder()));

        const SimulatorProcess::Outcome list =
            SimulatorProcess::run({QStringLiteral("--type-card"), QStringLiteral("list")});
        QCOMPARE(list.exitCode, 0);
        QCOMPARE(list.output, QByteArray("credit      a payment card, tracks 1 and 2\n"
                                         "bank        a bank card, all three tracks\n"
                                         "licence     a driver licence, track 3 with a start sentinel of its own\n"
                                         "seven-bit   tracks 2 and 3 in the letters of track 1\n"));
    }

    void aCardIsTypedAsTheRunningReaderHasBeenSet()
    {
        const QStringList swipe = {QStringLiteral("--type-card=credit"), QStringLiteral("--dosdevices"),
                                   m_simulator->folder()};
        const SimulatorProcess::Outcome none = SimulatorProcess::run(swipe);
        QCOMPARE(none.exitCode, 1);
        QCOMPARE(none.output, QByteArray());
        QCOMPARE(none.errors,
                 "ksd-simulator: no simulated reader runs on " + QFile::encodeName(m_simulator->folder()) + '\n');

        QVERIFY(m_simulator->start());
        QVERIFY(SimulatorProcess::run(swipe).output.endsWith("=99120000000000000000?\r"));
        const TerminalClient client(m_simulator->entry(kPort));
        QVERIFY(client.send("/rawsend WPW022=09\n/rawsend WPW014=67\n/rawsend WPW013=91\n"));
        for (int replies = 0; replies < 3; ++replies) {
            QVERIFY(client.readTo('\n').endsWith(" ok\n"));
        }
        const SimulatorProcess::Outcome card = SimulatorProcess::run(swipe);
        QCOMPARE(card.output, QByteArray("%b0000000000000000^sample/card a             ^99120000000000000000?\t"));
        QCOMPARE(card.errors, QByteArray());
        QCOMPARE(m_simulator->stop().exitCode, 0);
        QCOMPARE(SimulatorProcess::run(swipe).exitCode, 1);
    }

    void aCardIsTypedAsAFileSays()
    {
        const QString values = m_root->filePath(QStringLiteral("values.txt"));
        QVERIFY(makeFile(values, "022=00\n013=94\n"));
        const SimulatorProcess::Outcome card =
            SimulatorProcess::run({QStringLiteral("--type-card=credit"), QStringLiteral("--memory"), values});
        QCOMPARE(card.output, QByteArray(";0000000000000000=99120000000000000000?"));
    }

    void helpAndVersion()
    {
        const SimulatorProcess::Outcome help = SimulatorProcess::run({QStringLiteral("--help")});
        QCOMPARE(help.exitCode, 0);
        QVERIFY(help.output.startsWith("Usage: ksd-simulator --dosdevices DIR"));
        QVERIFY(help.output.contains("Fault rules: COMMAND: FAULT [FAULT...]\n"));
        QCOMPARE(help.errors, QByteArray());
        const SimulatorProcess::Outcome version = SimulatorProcess::run({QStringLiteral("--version")});
        QCOMPARE(version.exitCode, 0);
        QCOMPARE(version.output, QByteArray("ksd-simulator " TESLIN_VERSION "\n"));
        QCOMPARE(version.errors, QByteArray());
    }

    void memoryIsLoadedAndSaved()
    {
        const QString before = m_root->filePath(QStringLiteral("before.txt"));
        const QString after = m_root->filePath(QStringLiteral("after.txt"));
        QVERIFY(makeFile(before, "# one of ours\n014=0d\n"));
        QVERIFY(m_simulator->start({QStringLiteral("--memory"), before, QStringLiteral("--save-memory"), after}));
        const TerminalClient client(m_simulator->entry(kPort));
        QVERIFY(client.send("/rawxact WPV014\n/rawsend WPW114=7F\n"));
        QCOMPARE(client.readTo('\n'), QByteArray("/rawxact WPV014 reply 00: 0D\n"));
        QCOMPARE(client.readTo('\n'), QByteArray("/rawsend WPW114=7F ok\n"));
        QVERIFY(!QFileInfo::exists(after));
        QCOMPARE(m_simulator->stop().exitCode, 0);
        QVERIFY(contentOf(after).startsWith("001=00\n013=95\n014=0D\n015=40\n"));
        QVERIFY(contentOf(after).endsWith("\n113=00\n114=7F\n"));
        QCOMPARE(contentOf(before), QByteArray("# one of ours\n014=0d\n"));
    }

private:
    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<SimulatorProcess> m_simulator;
};

static const testsupport::RunnableTest<KsdSimulatorSetupTest> kRunnable;
#include "KsdSimulatorSetupTest.moc"
