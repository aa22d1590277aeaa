#include "platform/ReplaceFile.h"

#include "tests/platform/TestFiles.h"
#include "tests/platform/posix/ChildProcess.h"
#include "tests/platform/posix/FailingCalls.h"
#include "tests/platform/posix/FileAttempts.h"
#include "tests/platform/posix/StepByStep.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <algorithm>
#include <cerrno>

#include <sys/xattr.h>

using namespace platform;
using test::bytesOf;
using test::namesIn;
using test::setMode;
using test::TemporaryFolder;
using test::writeBytes;

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

// A file in a folder that takes no new ones, and a folder for copies.
struct Shop
{
    Shop()
    {
        setMode(root.path(), 0777);
        fs::create_directory(root / "closed");
        writeBytes(file, old.toStdString());
        setMode(file, 0666);
        setMode(root / "closed", 0555);
    }
    ~Shop() { setMode(root / "closed", 0755); }
    Shop(const Shop&) = delete;
    Shop& operator=(const Shop&) = delete;

    // Saves as a user whom the folder binds.
    [[nodiscard]] auto saving(const QByteArray& bytes) const
    {
        return [this, bytes] {
            return (::geteuid() != 0 || (::setgid(test::kNobody) == 0 && ::setuid(test::kNobody) == 0)) &&
                   bool(replaceFile(file, bytes.toStdString(), copies));
        };
    }
    [[nodiscard]] QByteArray save(const QByteArray& bytes) const
    {
        return test::inChild([&]() -> QByteArray { return saving(bytes)() ? "ok" : "failed"; });
    }

    TemporaryFolder root;
    fs::path file = root / "closed/shop.tlc";
    fs::path copies = root / "copies";
    QByteArray old = QByteArray(3000, 'o');
};

const fs::path kCopy = "shop.tlc.unfinished";

} // namespace

// Saving where the folder lets no file be replaced, and what is left when that is cut short.
class SavingInPlaceTest final : public QObject
{
    Q_OBJECT

private slots:
    void theCopyGoesWhenTheFileIsWhole()
    {
        const Shop shop;
        QCOMPARE(shop.save("new"), "ok");
        QCOMPARE(bytesOf(shop.file), "new");
        QVERIFY(fs::is_directory(shop.copies));
        QVERIFY(namesIn(shop.copies).empty());
    }

    // Whenever it is killed, the file is the old one, or the old one with something behind it, or the new one is whole
    // somewhere.
    void atEveryMomentEitherIsThere_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("shorter") << QByteArray(1000, 'n');
        QTest::newRow("as long") << QByteArray(3000, 'n');
        QTest::newRow("longer") << QByteArray(9000, 'n');
        QTest::newRow("much longer") << QByteArray(300'000, 'n');
    }
    void atEveryMomentEitherIsThere()
    {
        QFETCH(QByteArray, bytes);
        const Shop shop;
        test::StepByStep saving(shop.saving(bytes));
        if (saving.mayNotBeTraced()) {
            QSKIP("processes may not be traced here");
        }
        int changed = 0;
        int copied = 0;
        for (int step = 0; saving.isRunning(); saving.step(), ++step) {
            const QByteArray found = bytesOf(shop.file);
            const bool hasCopy = fs::exists(shop.copies / kCopy) && bytesOf(shop.copies / kCopy) == bytes;
            QVERIFY2(found.startsWith(shop.old) || found == bytes || hasCopy,
                     qPrintable(QStringLiteral("step %1").arg(step)));
            QVERIFY2(found == shop.old || found == bytes || hasCopy,
                     qPrintable(QStringLiteral("no copy at step %1").arg(step)));
            if (hasCopy) {
                QCOMPARE(test::modeOf(shop.copies / kCopy), mode_t{0600});
            }
            changed += found != shop.old && found != bytes ? 1 : 0;
            copied += hasCopy ? 1 : 0;
        }
        QVERIFY(saving.hasSucceeded());
        QCOMPARE(bytesOf(shop.file), bytes);
        QVERIFY(namesIn(shop.copies).empty());
        QVERIFY(copied > 4);
        QVERIFY(changed > 0 || bytes.size() == shop.old.size()); // else nothing dangerous was ever looked at
    }

    void whatLacksRoomIsWrittenFirst()
    {
        const Shop shop;
        test::StepByStep saving(shop.saving(QByteArray(9000, 'n')));
        if (saving.mayNotBeTraced()) {
            QSKIP("processes may not be traced here");
        }
        while (saving.isRunning() && bytesOf(shop.file) == shop.old) {
            saving.step();
        }
        QCOMPARE(bytesOf(shop.file), shop.old + QByteArray(6000, 'n'));
    }

    void aKilledSaveLeavesItsCopyAndTheNextOneKeepsIt()
    {
        const Shop shop;
        {
            test::StepByStep saving(shop.saving(QByteArray(1000, 'n')));
            if (saving.mayNotBeTraced()) {
                QSKIP("processes may not be traced here");
            }
            while (saving.isRunning() && bytesOf(shop.file) == shop.old) {
                saving.step();
            }
        }
        QCOMPARE(bytesOf(shop.file), QByteArray(1000, 'n') + QByteArray(2000, 'o')); // a mixture
        QCOMPARE(bytesOf(shop.copies / kCopy), QByteArray(1000, 'n'));
        QCOMPARE(shop.save("newer"), "ok");
        QCOMPARE(bytesOf(shop.file), "newer");
        QVERIFY(namesIn(shop.copies) == Names{kCopy});
        QCOMPARE(bytesOf(shop.copies / kCopy), QByteArray(1000, 'n'));
    }

    void withoutAFolderForCopiesItIsSavedAllTheSame()
    {
        Shop shop;
        shop.copies = shop.root / "closed/copies";
        QCOMPARE(shop.save("new"), "ok");
        QCOMPARE(bytesOf(shop.file), "new");
        shop.copies.clear();
        QCOMPARE(shop.save("newer"), "ok");
        QCOMPARE(bytesOf(shop.file), "newer");
    }

    void theContentIsOnTheDiskBeforeItCountsAsSaved()
    {
        const Shop shop;
        setMode(shop.file, 0666);
        test::StepByStep saving(shop.saving(QByteArray(9000, 'n')));
        if (saving.mayNotBeTraced()) {
            QSKIP("processes may not be traced here");
        }
        std::vector<long> calls;
        for (; saving.isRunning(); saving.step()) {
            calls.push_back(saving.callAhead());
        }
        QVERIFY(saving.hasSucceeded());
        // The copy, what goes behind, what goes over, and the cut at the end.
        QCOMPARE(std::count(calls.begin(), calls.end(), SYS_write), 3);
        const auto lastWrite = std::find(calls.rbegin(), calls.rend(), SYS_write).base();
        const auto cut = std::find(lastWrite, calls.end(), SYS_ftruncate);
        QVERIFY(std::find(lastWrite, cut, SYS_fsync) != cut);
        QVERIFY(cut != calls.end());
        QVERIFY(std::find(cut, calls.end(), SYS_fsync) != calls.end());
    }

    void aPrivateFileStaysPrivate()
    {
        const Shop shop;
        if (::geteuid() == 0) {
            QCOMPARE(::chown(shop.file.c_str(), test::kNobody, test::kNobody), 0);
        }
        setMode(shop.file, 0600);
        QCOMPARE(shop.save("new"), "ok");
        QCOMPARE(bytesOf(shop.file), "new");
        QCOMPARE(test::modeOf(shop.file), mode_t{0600});
    }

    // A new file would not grant what the old one grants.
    void aListOfOthersThatCannotBeTakenOver()
    {
        constexpr const char* kList = "system.posix_acl_access";
        const TemporaryFolder folder;
        writeBytes(folder / "shop.tlc", "old");
        // Version 2; owner, user 1234, group, the most for both, others.
        const unsigned char list[] = {2, 0,    0,    0,    1,    0,    6,    0, 0xFF, 0xFF, 0xFF, 0xFF, 2,    0,    6,
                                      0, 0xD2, 4,    0,    0,    4,    0,    0, 0,    0xFF, 0xFF, 0xFF, 0xFF, 0x10, 0,
                                      6, 0,    0xFF, 0xFF, 0xFF, 0xFF, 0x20, 0, 0,    0,    0xFF, 0xFF, 0xFF, 0xFF};
        if (::setxattr((folder / "shop.tlc").c_str(), kList, list, sizeof list, 0) != 0) {
            QSKIP("The file system has no such lists.");
        }
        const ino_t before = test::lookAt(folder / "shop.tlc").st_ino;
        const QByteArray report = test::inChild([&]() -> QByteArray {
            return test::failCalls({SYS_fsetxattr}, EOPNOTSUPP) ? test::replace(folder / "shop.tlc", "new")
                                                                : QByteArray("(not arranged)");
        });
        QCOMPARE(report, "ok");
        QCOMPARE(bytesOf(folder / "shop.tlc"), "new");
        QCOMPARE(test::lookAt(folder / "shop.tlc").st_ino, before);
        QVERIFY(namesIn(folder.path()) == Names{"shop.tlc"});
    }
};

static const testsupport::RunnableTest<SavingInPlaceTest> kRunnable;
#include "SavingInPlaceTest.moc"
