#include "platform/ReplaceFile.h"

#include "tests/platform/TestFiles.h"
#include "tests/platform/posix/ChildProcess.h"
#include "tests/platform/posix/FailingCalls.h"
#include "tests/platform/posix/FileAttempts.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <cerrno>

#include <fcntl.h>

using namespace platform;
using test::bytesOf;
using test::namesIn;
using test::setMode;
using test::TemporaryFolder;
using test::writeBytes;

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

const std::string kOld(3000, 'o');
const fs::path kCopy = "shop.tlc.unfinished";

// A file that can only be written in place, and the folder for the copy that is kept meanwhile.
struct Shop
{
    Shop()
    {
        setMode(root.path(), 0777);
        fs::create_directory(root / "closed");
        writeBytes(file, kOld);
        setMode(file, 0666);
        setMode(root / "closed", 0555);
    }
    ~Shop() { setMode(root / "closed", 0755); }
    Shop(const Shop&) = delete;
    Shop& operator=(const Shop&) = delete;

    // Saves as a user whom the folder binds, on a disk that fails as arranged: the arrangement gets the descriptors
    // that the file and its copy will have. Tells whether it was saved.
    template <typename Arrangement>
    [[nodiscard]] QByteArray save(const std::string& bytes, Arrangement arrange) const
    {
        return test::asOrdinaryUser([&]() -> QByteArray {
            const int first = ::open("/dev/null", O_RDONLY);
            const int second = ::open("/dev/null", O_RDONLY);
            ::close(second);
            ::close(first);
            if (!arrange(first, second)) {
                return "(not arranged)";
            }
            return replaceFile(file, bytes, copies) ? "ok" : "failed";
        });
    }

    TemporaryFolder root;
    fs::path file = root / "closed/shop.tlc";
    fs::path copies = root / "copies";
};

QByteArray bytes(const std::string& text)
{
    return QByteArray::fromStdString(text);
}

} // namespace

// The copy that is kept while a file is written in place, on a disk that fails in the middle.
class CopyWhenDisksFailTest final : public QObject
{
    Q_OBJECT

private slots:
    void itStaysWhenNeitherContentReachesTheDisk_data()
    {
        QTest::addColumn<int>("size");
        QTest::newRow("shorter") << 2000;
        QTest::newRow("as long") << 3000;
        QTest::newRow("longer") << 4000;
    }
    void itStaysWhenNeitherContentReachesTheDisk()
    {
        QFETCH(int, size);
        const Shop shop;
        const std::string fresh(static_cast<std::size_t>(size), 'n');
        QCOMPARE(shop.save(fresh, [](int file, int) { return test::failCallsOn(file, {SYS_fsync}, EIO); }), "failed");
        QCOMPARE(bytesOf(shop.copies / kCopy), bytes(fresh));
    }

    // The new content has been written over the old one when the failure comes.
    void itGoesWhenTheOldContentIsBack()
    {
        const Shop shop;
        const std::string fresh(2000, 'n');
        QCOMPARE(shop.save(fresh, [](int file, int) { return test::failCallOn(file, SYS_ftruncate, 1, 2000, EIO); }),
                 "failed");
        QCOMPARE(bytesOf(shop.file), bytes(kOld));
        QVERIFY(namesIn(shop.copies).empty());
    }

    void itStaysWhenTheOldContentCannotBePutBack()
    {
        const Shop shop;
        const std::string fresh(2000, 'n');
        QCOMPARE(shop.save(fresh, [](int file, int) { return test::failCallsOn(file, {SYS_ftruncate}, EIO); }),
                 "failed");
        QCOMPARE(bytesOf(shop.copies / kCopy), bytes(fresh));
    }

    // Nobody could read it before, so there is nothing to put back.
    void itStaysWhenTheOldContentIsNotKnown()
    {
        const Shop shop;
        if (::geteuid() == 0) {
            QCOMPARE(::chown(shop.file.c_str(), test::kNobody, test::kNobody), 0);
        }
        setMode(shop.file, 0200);
        const std::string fresh(2000, 'n');
        QCOMPARE(shop.save(fresh, [](int file, int) { return test::failCallOn(file, SYS_ftruncate, 1, 2000, EIO); }),
                 "failed");
        QCOMPARE(bytesOf(shop.copies / kCopy), bytes(fresh));
    }

    void itGoesWhenNothingWasWrittenOverTheOldContent()
    {
        const Shop shop;
        QCOMPARE(shop.save(std::string(4000, 'n'),
                           [](int file, int) { return test::failCallsOn(file, {SYS_write}, ENOSPC); }),
                 "failed");
        QCOMPARE(bytesOf(shop.file), bytes(kOld));
        QVERIFY(namesIn(shop.copies).empty());
    }

    void itStaysWhenWhatStandsBehindTheOldContentCannotBeCutOff()
    {
        const Shop shop;
        const std::string fresh(4000, 'n');
        QCOMPARE(shop.save(fresh,
                           [](int file, int) {
                               return test::failCallsOn(file, {SYS_fsync, SYS_ftruncate}, EIO);
                           }),
                 "failed");
        QCOMPARE(bytesOf(shop.file), bytes(kOld + std::string(1000, 'n')));
        QCOMPARE(bytesOf(shop.copies / kCopy), bytes(fresh));
    }

    void halfOfACopyIsNotKept_data()
    {
        QTest::addColumn<int>("call");
        QTest::newRow("written") << int{SYS_write};
        QTest::newRow("brought to the disk") << int{SYS_fsync};
    }
    void halfOfACopyIsNotKept()
    {
        QFETCH(int, call);
        const Shop shop;
        // Neither the copy is whole nor, afterwards, the file.
        QCOMPARE(shop.save("new",
                           [call](int file, int copy) {
                               return test::failCallsOn(copy, {call}, EIO) && test::failCallsOn(file, {SYS_fsync}, EIO);
                           }),
                 "failed");
        QVERIFY(fs::is_directory(shop.copies));
        QVERIFY(namesIn(shop.copies).empty());
    }
};

static const testsupport::RunnableTest<CopyWhenDisksFailTest> kRunnable;
#include "CopyWhenDisksFailTest.moc"
