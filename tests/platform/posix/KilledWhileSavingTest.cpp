#include "platform/ReplaceFile.h"

#include "tests/platform/TestFiles.h"
#include "tests/platform/posix/StepByStep.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <algorithm>
#include <ctime>
#include <vector>

#include <sys/syscall.h>
#include <unistd.h>

using namespace platform;
using test::bytesOf;
using test::TemporaryFolder;

namespace {

namespace fs = std::filesystem;

QByteArray table(int rows, char mark)
{
    return (QByteArray("083-084,20-03 ;") + QByteArray(40, mark) + "\r\n").repeated(rows);
}

// A child process that saves once and stands still before and after each of its system calls.
class SavingStepByStep final : public test::StepByStep
{
public:
    SavingStepByStep(const fs::path& path, const std::string& bytes)
        : StepByStep([&] { return static_cast<bool>(replaceFile(path, bytes)); })
    {}
    [[nodiscard]] bool hasSaved() const { return hasSucceeded(); }
};

} // namespace

class KilledWhileSavingTest final : public QObject
{
    Q_OBJECT

private:
    // As long as table files become, and of two lengths, so that neither can hide the rest of the other.
    const QByteArray m_old = table(200, 'o');
    const QByteArray m_new = table(255, 'n');

private slots:
    void atEverySystemCall()
    {
        int timesOld = 0;
        int timesNew = 0;
        for (int steps = 0;; ++steps) {
            const TemporaryFolder folder;
            test::writeBytes(folder / "table", m_old.toStdString());
            SavingStepByStep saving(folder / "table", m_new.toStdString());
            if (saving.mayNotBeTraced()) {
                QSKIP("processes may not be traced here");
            }
            for (int step = 0; step < steps && saving.isRunning(); ++step) {
                saving.step();
            }
            if (!saving.isRunning()) {
                QVERIFY(saving.hasSaved());
                QCOMPARE(bytesOf(folder / "table"), m_new);
                QVERIFY(test::namesIn(folder.path()) == std::set<std::string>{"table"});
                break;
            }
            // It stands still; what it would do next it shall never do.
            const QByteArray found = bytesOf(folder / "table");
            QVERIFY2(found == m_old || found == m_new, qPrintable(QStringLiteral("after step %1").arg(steps)));
            ++(found == m_old ? timesOld : timesNew);
        }
        // Opening, writing, bringing to the disk, closing and renaming are two stops each.
        QVERIFY2(timesOld >= 10, qPrintable(QString::number(timesOld)));
        QVERIFY2(timesNew >= 1, qPrintable(QString::number(timesNew)));
    }

    void theContentIsOnTheDiskBeforeTheFileIsInItsPlace()
    {
        const TemporaryFolder folder;
        test::writeBytes(folder / "table", m_old.toStdString());
        SavingStepByStep saving(folder / "table", m_new.toStdString());
        if (saving.mayNotBeTraced()) {
            QSKIP("processes may not be traced here");
        }
        std::vector<long> calls;
        while (saving.isRunning()) {
            calls.push_back(saving.callAhead());
            saving.step();
        }
        QVERIFY(saving.hasSaved());
        const auto isRename = [](long call) {
#ifdef SYS_rename
            if (call == SYS_rename) {
                return true;
            }
#endif
            return call == SYS_renameat || call == SYS_renameat2;
        };
        const auto written = std::find(calls.begin(), calls.end(), SYS_write);
        const auto onDisk = std::find(written, calls.end(), SYS_fsync);
        const auto renamed = std::find_if(onDisk, calls.end(), isRename);
        QVERIFY(written != calls.end());
        QVERIFY(onDisk != calls.end());
        QVERIFY(renamed != calls.end());
        QVERIFY(std::find_if(calls.begin(), onDisk, isRename) == onDisk);
        QVERIFY(std::find(renamed, calls.end(), SYS_fsync) != calls.end()); // the folder's
    }

    void atManyMoments()
    {
        const TemporaryFolder folder;
        const fs::path path = folder / "table";
        test::writeBytes(path, m_old.toStdString());
        constexpr int kTimes = 60;
        constexpr long kNanosecondsApart = 91'000;
        for (int times = 0; times < kTimes; ++times) {
            int ends[2];
            QCOMPARE(::pipe(ends), 0);
            const pid_t child = ::fork();
            if (child == 0) {
                for (bool isNew = true; replaceFile(path, (isNew ? m_new : m_old).toStdString()); isNew = !isNew) {
                    static_cast<void>(::write(ends[1], ".", 1) == 1);
                }
                ::_exit(1);
            }
            // The time that passes after the first save is not waited for anything: it chooses the moment.
            char byte = 0;
            QCOMPARE(::read(ends[0], &byte, 1), ssize_t{1});
            const timespec moment{0, times * kNanosecondsApart};
            ::nanosleep(&moment, nullptr);
            test::kill(child);
            ::close(ends[0]);
            ::close(ends[1]);
            const QByteArray found = bytesOf(path);
            QVERIFY2(found == m_old || found == m_new, qPrintable(QStringLiteral("the %1th time").arg(times)));
        }
    }
};

static const testsupport::RunnableTest<KilledWhileSavingTest> kRunnable;
#include "KilledWhileSavingTest.moc"
