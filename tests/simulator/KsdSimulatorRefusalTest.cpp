#include "FolderTree.h"
#include "SimulatorProcess.h"
#include "TerminalClient.h"
#include "tests/support/RunnableTest.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <memory>

namespace {

const QString kPort = QStringLiteral("com5");
const QString kDevice = QStringLiteral("teslin");

} // namespace

// What ksd-simulator refuses, in which words, and that it leaves no trace then.
class KsdSimulatorRefusalTest final : public QObject
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

    void whatIsAliveIsLeftAlone_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QByteArray>("target"); // empty: a plain file
        QTest::newRow("port, a device") << kPort << QByteArray("/dev/null");
        QTest::newRow("port in upper case") << QStringLiteral("Com5") << QByteArray("/dev/null");
        QTest::newRow("port, a file") << kPort << QByteArray();
        QTest::newRow("device object, a file") << kDevice << QByteArray();
        QTest::newRow("device object, a device") << kDevice << QByteArray("/dev/null");
    }
    void whatIsAliveIsLeftAlone()
    {
        QFETCH(QString, entry);
        QFETCH(QByteArray, target);
        QVERIFY(QDir().mkpath(m_simulator->folder()));
        const QString path = m_simulator->entry(entry);
        QVERIFY(target.isEmpty() ? makeFile(path, "mine") : makeLink(target, path));
        const SimulatorProcess::Outcome outcome =
            SimulatorProcess::run({QStringLiteral("--dosdevices"), m_simulator->folder()});
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(outcome.errors, "ksd-simulator: " + QFile::encodeName(QDir(m_simulator->folder()).canonicalPath()) +
                                     '/' + entry.toLatin1() +
                                     " is in use; is another simulator running on this folder?\n");
        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(treeOf(m_simulator->folder()), QStringList{entry});
        QCOMPARE(targetOf(path), target);
    }

    void aTerminalThatIsAliveIsLeftAlone()
    {
        const ForeignTerminal terminal;
        QVERIFY(QDir().mkpath(m_simulator->folder()));
        QVERIFY(makeLink(terminal.path(), m_simulator->entry(kPort)));
        QCOMPARE(SimulatorProcess::run({QStringLiteral("--dosdevices"), m_simulator->folder()}).exitCode, 1);
        QCOMPARE(targetOf(m_simulator->entry(kPort)), terminal.path());
        QCOMPARE(treeOf(m_simulator->folder()), QStringList{kPort});
    }

    void aSecondOneIsRefusedAndTheFirstGoesOn()
    {
        QVERIFY(m_simulator->start());
        const QStringList before = treeOf(m_simulator->folder());
        const SimulatorProcess::Outcome second =
            SimulatorProcess::run({QStringLiteral("--dosdevices"), m_simulator->folder()});
        QCOMPARE(second.exitCode, 1);
        QVERIFY2(second.errors.contains("/teslin is in use; "), second.errors.constData());
        QCOMPARE(treeOf(m_simulator->folder()), before);
        const TerminalClient client(m_simulator->entry(kPort));
        QVERIFY(client.send("/ver\n"));
        QCOMPARE(client.readTo('\n'), QByteArray("/ver reply: Teslin KSD 2.10\n"));
    }

    void whatCannotBeSetUp_data()
    {
        QTest::addColumn<QStringList>("arguments"); // %1: the folder for this test
        QTest::addColumn<QString>("error");
        const QString dos = QStringLiteral("--dosdevices=%1/dos");
        QTest::newRow("the folder is a file")
            << QStringList{QStringLiteral("--dosdevices=%1/file")} << QStringLiteral("%1/file is not a folder");
        QTest::newRow("a folder above is a file")
            << QStringList{QStringLiteral("--dosdevices=%1/file/dos")} << QStringLiteral("%1/file is not a folder");
        QTest::newRow("drive C is a file") << QStringList{QStringLiteral("--dosdevices=%1/bad-drive")}
                                           << QStringLiteral("%1/bad-drive/c: is not a folder");
        QTest::newRow("drive C leads nowhere") << QStringList{QStringLiteral("--dosdevices=%1/lost-drive")}
                                               << QStringLiteral("%1/lost-drive/C: is not a folder");
        QTest::newRow("no log") << QStringList{dos, QStringLiteral("--log=%1/none/wire.log")}
                                << QStringLiteral("cannot open the log %1/none/wire.log: No such file or directory");
        QTest::newRow("no memory file") << QStringList{dos, QStringLiteral("--memory=%1/none")}
                                        << QStringLiteral("cannot read %1/none: No such file or directory");
        QTest::newRow("the memory file is a folder")
            << QStringList{dos, QStringLiteral("--memory=%1")} << QStringLiteral("cannot read %1: Is a directory");
        QTest::newRow("a bad memory file") << QStringList{dos, QStringLiteral("--memory=%1/file")}
                                           << QStringLiteral("%1/file, line 2: the reader has no parameter 02B");
    }
    void whatCannotBeSetUp()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, error);
        const QString root = QDir(m_root->path()).canonicalPath();
        QVERIFY(makeFile(root + QStringLiteral("/file"), "013=01\n02B=00\n"));
        QVERIFY(QDir().mkpath(root + QStringLiteral("/bad-drive")));
        QVERIFY(makeFile(root + QStringLiteral("/bad-drive/c:"), {}));
        QVERIFY(QDir().mkpath(root + QStringLiteral("/lost-drive")));
        QVERIFY(makeLink("nowhere", root + QStringLiteral("/lost-drive/C:")));
        const QStringList before = treeOf(root);
        const SimulatorProcess::Outcome outcome =
            SimulatorProcess::run(arguments.replaceInStrings(QStringLiteral("%1"), root));
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(QString::fromLocal8Bit(outcome.errors),
                 QStringLiteral("ksd-simulator: ") + error.replace(QStringLiteral("%1"), root) + QLatin1Char('\n'));
        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(treeOf(root), before);
    }

    void badUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("error");
        QTest::newRow("nothing") << QStringList() << QByteArray("--dosdevices is missing");
        QTest::newRow("unknown option") << QStringList{QStringLiteral("--speed")}
                                        << QByteArray("unknown argument '--speed'");
        QTest::newRow("bad port") << QStringList{QStringLiteral("--port=COM5")}
                                  << QByteArray("--port wants a number from 1 to 256");
        QTest::newRow("bad fault") << QStringList{QStringLiteral("--dosdevices=/nonexistent/dos"),
                                                  QStringLiteral("--fault=/ver: silent"),
                                                  QStringLiteral("--fault=/ver: mute")}
                                   << QByteArray("fault rule '/ver: mute': unknown fault 'mute'");
    }
    void badUsage()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, error);
        const SimulatorProcess::Outcome outcome = SimulatorProcess::run(arguments);
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(outcome.errors, "ksd-simulator: " + error + "\nTry 'ksd-simulator --help'.\n");
        QCOMPARE(outcome.output, QByteArray());
    }

    void memoryThatCannotBeSavedIsAFailure()
    {
        const QString after = m_root->filePath(QStringLiteral("none/after.txt"));
        QVERIFY(m_simulator->start({QStringLiteral("--save-memory"), after}));
        const SimulatorProcess::Outcome outcome = m_simulator->stop();
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(QString::fromLocal8Bit(outcome.errors),
                 QStringLiteral("ksd-simulator: cannot write %1: No such file or directory\n").arg(after));
        QVERIFY(!QFileInfo::exists(m_simulator->folder()));
    }

private:
    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<SimulatorProcess> m_simulator;
};

static const testsupport::RunnableTest<KsdSimulatorRefusalTest> kRunnable;
#include "KsdSimulatorRefusalTest.moc"
