#include "platform/NewFileName.h"
#include "platform/ReplaceFile.h"

#include "tests/platform/TestFiles.h"
#include "tests/platform/posix/FileAttempts.h"
#include "tests/platform/posix/StepByStep.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <fcntl.h>
#include <sys/file.h>

using namespace platform;
using test::namesIn;
using test::replace;
using test::TemporaryFolder;
using test::writeBytes;

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

// The number of a process that has lived and lives no longer.
unsigned long deadProcess()
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(0);
    }
    static_cast<void>(test::waitFor(child));
    return static_cast<unsigned long>(child);
}

} // namespace

// What processes that died while they saved have left in a folder.
class LeftOverFilesTest final : public QObject
{
    Q_OBJECT

private slots:
    void theNextSaveRemovesThem()
    {
        const TemporaryFolder folder;
        const unsigned long dead = deadProcess();
        writeBytes(folder / newFileName(dead, 0), "half");
        writeBytes(folder / newFileName(dead, 17), "");
        writeBytes(folder / "shop.tlc", "old");
        QCOMPARE(replace(folder / "shop.tlc", "new"), "ok");
        QVERIFY(namesIn(folder.path()) == Names{"shop.tlc"});
        // As when a file is made that was not there.
        writeBytes(folder / newFileName(dead, 0), "half");
        QCOMPARE(replace(folder / "new.tlc", "new"), "ok");
        QVERIFY(namesIn(folder.path()) == (Names{"new.tlc", "shop.tlc"}));
    }

    void aKilledSaveLeavesNothingForLong()
    {
        const TemporaryFolder folder;
        writeBytes(folder / "shop.tlc", "old");
        {
            test::StepByStep saving([&] { return bool(replaceFile(folder / "shop.tlc", "new")); });
            if (saving.mayNotBeTraced()) {
                QSKIP("processes may not be traced here");
            }
            while (saving.isRunning() && namesIn(folder.path()).size() == 1) {
                saving.step();
            }
            QVERIFY2(saving.isRunning(), "it was never seen with a second file");
            // While it lives, another save lets its file be.
            QCOMPARE(replace(folder / "other.tlc", "x"), "ok");
            QCOMPARE(namesIn(folder.path()).size(), std::size_t{3});
        }
        QCOMPARE(namesIn(folder.path()).size(), std::size_t{3});
        QCOMPARE(replace(folder / "other.tlc", "y"), "ok");
        QVERIFY(namesIn(folder.path()) == (Names{"other.tlc", "shop.tlc"}));
        QCOMPARE(test::bytesOf(folder / "shop.tlc"), "old");
    }

    // On a disk that machines share, the number of a process says nothing: who writes holds a lock.
    void anotherMachinesSaveIsLetBe()
    {
        const TemporaryFolder folder;
        const fs::path foreign = folder / newFileName(deadProcess(), 0);
        writeBytes(foreign, "half");
        const int descriptor = ::open(foreign.c_str(), O_RDWR | O_CLOEXEC);
        QCOMPARE(::flock(descriptor, LOCK_EX), 0);
        QCOMPARE(replace(folder / "shop.tlc", "new"), "ok");
        QVERIFY(fs::exists(foreign));
        ::close(descriptor);
        QCOMPARE(replace(folder / "shop.tlc", "newer"), "ok");
        QVERIFY(!fs::exists(foreign));
    }

    // Such a lock is there from the making of the file to its renaming.
    void aSaveHoldsALock()
    {
        const TemporaryFolder folder;
        writeBytes(folder / "shop.tlc", "old");
        test::StepByStep saving([&] { return bool(replaceFile(folder / "shop.tlc", "new")); });
        if (saving.mayNotBeTraced()) {
            QSKIP("processes may not be traced here");
        }
        int locked = 0;
        for (; saving.isRunning(); saving.step()) {
            Names names = namesIn(folder.path());
            names.erase("shop.tlc");
            if (names.empty()) {
                continue;
            }
            const int descriptor = ::open((folder / *names.begin()).c_str(), O_RDONLY | O_CLOEXEC);
            const bool isLocked = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0;
            ::close(descriptor);
            // It cannot be locked in the same call that makes it.
            QVERIFY2(isLocked || locked == 0, "the lock was let go too early");
            locked += isLocked ? 1 : 0;
        }
        QVERIFY(saving.hasSucceeded());
        QVERIFY2(locked > 8, qPrintable(QString::number(locked)));
    }

    void nothingElseIsRemoved()
    {
        const TemporaryFolder folder;
        const std::string dead = std::to_string(deadProcess());
        const std::string own = std::to_string(::getpid());
        const Names others = {
            ".teslin-" + own + "-999",       ".teslin-" + dead, ".teslin-" + dead + "-", ".teslin-" + dead + "-x",
            ".teslin-" + dead + "-1.tlc",    ".teslin--1",      "teslin-" + dead + "-1", ".teslin-0-0",
            ".teslin-99999999999999999999-0"};
        for (const std::string& name : others) {
            writeBytes(folder / name, "x");
        }
        fs::create_directory(folder / (".teslin-" + dead + "-2"));
        fs::create_symlink("shop.tlc", folder / (".teslin-" + dead + "-3"));
        Names all = others;
        all.insert({".teslin-" + dead + "-2", ".teslin-" + dead + "-3", "shop.tlc"});
        QCOMPARE(replace(folder / "shop.tlc", "new"), "ok");
        QVERIFY(namesIn(folder.path()) == all);
    }

    void names_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<qint64>("writer");
        QTest::newRow("as it is made") << QByteArray(".teslin-1234-5") << qint64{1234};
        QTest::newRow("no number") << QByteArray(".teslin-1234-") << qint64{-1};
        QTest::newRow("a sign") << QByteArray(".teslin--5") << qint64{-1};
        QTest::newRow("more behind it") << QByteArray(".teslin-1-2-3") << qint64{-1};
        QTest::newRow("another file") << QByteArray("shop.tlc") << qint64{-1};
        QTest::newRow("nothing") << QByteArray("") << qint64{-1};
    }
    void names()
    {
        QFETCH(QByteArray, name);
        QFETCH(qint64, writer);
        const auto found = writerOf(name.toStdString());
        QCOMPARE(found ? static_cast<qint64>(*found) : -1, writer);
    }
};

static const testsupport::RunnableTest<LeftOverFilesTest> kRunnable;
#include "LeftOverFilesTest.moc"
