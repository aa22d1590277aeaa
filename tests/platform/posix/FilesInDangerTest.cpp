#include "platform/ReplaceFile.h"

#include "tests/platform/TestFiles.h"
#include "tests/platform/posix/ChildProcess.h"
#include "tests/platform/posix/FailingCalls.h"
#include "tests/platform/posix/FileAttempts.h"
#include "tests/platform/posix/StepByStep.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <cerrno>
#include <fstream>

using namespace platform;
using test::bytesOf;
using test::namesIn;
using test::TemporaryFolder;
using test::writeBytes;

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

} // namespace

// Files that change or are hard to tell while they are read or saved.
class FilesInDangerTest final : public QObject
{
    Q_OBJECT

private slots:
    void aLinkThatCannotBeReadIsNotReplaced_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<QByteArray>("description");
        QTest::newRow("a broken disk") << EIO << QByteArray("Input/output error");
        QTest::newRow("no right to it") << EACCES << QByteArray("Permission denied");
        QTest::newRow("a server that forgot it") << ESTALE << QByteArray("Stale file handle");
        QTest::newRow("no memory") << ENOMEM << QByteArray("Cannot allocate memory");
    }
    void aLinkThatCannotBeReadIsNotReplaced()
    {
        QFETCH(int, error);
        QFETCH(QByteArray, description);
        const TemporaryFolder folder;
        writeBytes(folder / "real.tlc", "old");
        fs::create_symlink("real.tlc", folder / "shop.tlc");
        const QByteArray report = test::inChild([&]() -> QByteArray {
            if (!test::failCalls({SYS_readlink, SYS_readlinkat}, error)) {
                return "(not arranged)";
            }
            return test::replace(folder / "shop.tlc", "new") +
                   (canReplaceFile(folder / "shop.tlc") ? ", could" : ", could not");
        });
        QCOMPARE(report, description + ", could not");
        QVERIFY(fs::is_symlink(folder / "shop.tlc"));
        QCOMPARE(bytesOf(folder / "real.tlc"), "old");
        QVERIFY(namesIn(folder.path()) == (Names{"real.tlc", "shop.tlc"}));
    }

    // The beginning and the end of what was there at some moment, and nothing that was never in it.
    void aFileThatGrowsWhileItIsRead()
    {
        const TemporaryFolder folder;
        const QByteArray before(5000, 'a');
        const QByteArray added(70'000, 'b');
        writeBytes(folder / "growing", before.toStdString());
        test::StepByStep reading([&] {
            const Result<std::string> bytes = readFile(folder / "growing");
            writeBytes(folder / "read", bytes ? bytes.value() : "(failed)");
            return bool(bytes);
        });
        if (reading.mayNotBeTraced()) {
            QSKIP("processes may not be traced here");
        }
        bool hasGrown = false;
        for (; reading.isRunning(); reading.step()) {
            if (!hasGrown && reading.callAhead() == SYS_read) { // its size is known by now
                std::ofstream(folder / "growing", std::ios::app | std::ios::binary) << added.toStdString();
                hasGrown = true;
            }
        }
        QVERIFY(hasGrown);
        QVERIFY(reading.hasSucceeded());
        QCOMPARE(bytesOf(folder / "read"), before + added);
    }

    // From its making on, nobody may look into the new file who may not look into the old one.
    void aPrivateFileIsNeverOpenToOthers()
    {
        const TemporaryFolder folder;
        writeBytes(folder / "shop.tlc", "old");
        test::setMode(folder / "shop.tlc", 0600);
        test::StepByStep saving([&] {
            ::umask(0);
            return bool(replaceFile(folder / "shop.tlc", "new"));
        });
        if (saving.mayNotBeTraced()) {
            QSKIP("processes may not be traced here");
        }
        int looks = 0;
        for (; saving.isRunning(); saving.step()) {
            for (const std::string& name : namesIn(folder.path())) {
                QCOMPARE(test::modeOf(folder / name), mode_t{0600});
                looks += name == "shop.tlc" ? 0 : 1;
            }
        }
        QVERIFY(saving.hasSucceeded());
        QVERIFY2(looks > 8, qPrintable(QString::number(looks)));
    }
};

static const testsupport::RunnableTest<FilesInDangerTest> kRunnable;
#include "FilesInDangerTest.moc"
