#include "platform/ReplaceFile.h"

#include "tests/platform/TestFiles.h"
#include "tests/platform/posix/ChildProcess.h"
#include "tests/platform/posix/FileAttempts.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <cerrno>
#include <csignal>
#include <utility>

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>

using namespace platform;
using test::asOrdinaryUser;
using test::bytesOf;
using test::inChild;
using test::lookAt;
using test::namesIn;
using test::read;
using test::replace;
using test::setMode;
using test::TemporaryFolder;
using test::writeBytes;

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

// A folder that an ordinary user can search and read, but not write; undone at the end so that it can be removed.
class ClosedFolder final
{
public:
    explicit ClosedFolder(fs::path path)
        : m_path(std::move(path))
    {
        setMode(m_path, 0555);
    }
    ~ClosedFolder() { setMode(m_path, 0755); }
    ClosedFolder(const ClosedFolder&) = delete;
    ClosedFolder& operator=(const ClosedFolder&) = delete;

private:
    fs::path m_path;
};

// From now on this process cannot make a file longer than this: its disk is full.
bool limitFiles(rlim_t size)
{
    const rlimit limit{size, size};
    return ::signal(SIGXFSZ, SIG_IGN) != SIG_ERR && ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

// Gives this process file systems of its own, which end with it. The administrator alone may do so, and not everywhere.
bool separateFileSystems()
{
    return ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

const QByteArray kNoMounts = "(may not mount)";

} // namespace

class HinderedSavingTest final : public QObject
{
    Q_OBJECT

private slots:
    void aReadOnlyFileIsNotReplaced()
    {
        const TemporaryFolder folder;
        setMode(folder.path(), 0777);
        writeBytes(folder / "file", "old");
        setMode(folder / "file", 0444);
        const QByteArray report = asOrdinaryUser([&]() -> QByteArray {
            return replace(folder / "file", "new") + (canReplaceFile(folder / "file") ? ", could" : ", could not");
        });
        QCOMPARE(report, "Permission denied, could not");
        QCOMPARE(bytesOf(folder / "file"), "old");
        QVERIFY(namesIn(folder.path()) == Names{"file"});
    }

    void anUnreadableFileIsNotRead()
    {
        const TemporaryFolder folder;
        setMode(folder.path(), 0755);
        writeBytes(folder / "file", "old");
        setMode(folder / "file", 0);
        QCOMPARE(asOrdinaryUser([&] { return read(folder / "file"); }), "(Permission denied)");
    }

    void aFolderWithoutNewFilesIsWrittenInPlace_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("shorter") << QByteArray("n");
        QTest::newRow("as long") << QByteArray("new content");
        QTest::newRow("longer") << QByteArray("new content that is longer");
        QTest::newRow("nothing") << QByteArray("");
    }
    void aFolderWithoutNewFilesIsWrittenInPlace()
    {
        QFETCH(QByteArray, bytes);
        const TemporaryFolder folder;
        writeBytes(folder / "file", "old content");
        setMode(folder / "file", 0666);
        const ino_t before = lookAt(folder / "file").st_ino;
        const ClosedFolder closed(folder.path());
        const QByteArray report = asOrdinaryUser([&]() -> QByteArray {
            return replace(folder / "file", bytes) + (canReplaceFile(folder / "file") ? ", could" : ", could not");
        });
        QCOMPARE(report, "ok, could");
        QCOMPARE(bytesOf(folder / "file"), bytes);
        QCOMPARE(lookAt(folder / "file").st_ino, before);
        QVERIFY(namesIn(folder.path()) == Names{"file"});
    }

    void inPlaceWithoutPermissionToRead()
    {
        const TemporaryFolder folder;
        writeBytes(folder / "file", "old content");
        setMode(folder / "file", 0222);
        const ClosedFolder closed(folder.path());
        QCOMPARE(asOrdinaryUser([&] { return replace(folder / "file", "new"); }), "ok");
        setMode(folder / "file", 0644);
        QCOMPARE(bytesOf(folder / "file"), "new");
    }

    void aFolderWithoutNewFilesTakesNone()
    {
        const TemporaryFolder folder;
        const ClosedFolder closed(folder.path());
        const QByteArray report = asOrdinaryUser([&]() -> QByteArray {
            return replace(folder / "file", "new") + (canReplaceFile(folder / "file") ? ", could" : ", could not");
        });
        QCOMPARE(report, "Permission denied, could not");
        QVERIFY(namesIn(folder.path()).empty());
    }

    void aStickyFolderWithAnothersFile()
    {
        if (::geteuid() != 0) {
            QSKIP("only the administrator can make another's file");
        }
        const TemporaryFolder folder;
        setMode(folder.path(), 01777);
        writeBytes(folder / "file", "old");
        setMode(folder / "file", 0666);
        QCOMPARE(asOrdinaryUser([&] { return replace(folder / "file", "new"); }), "ok");
        QCOMPARE(bytesOf(folder / "file"), "new");
        QCOMPARE(lookAt(folder / "file").st_uid, uid_t{0});
        QVERIFY(namesIn(folder.path()) == Names{"file"});
    }

    void aFileThatIsMountedAlone()
    {
        const TemporaryFolder folder;
        writeBytes(folder / "file", "old");
        writeBytes(folder / "mounted", "old");
        const QByteArray report = inChild([&]() -> QByteArray {
            const fs::path source = folder / "mounted";
            const fs::path target = folder / "file";
            if (!separateFileSystems() || ::mount(source.c_str(), target.c_str(), nullptr, MS_BIND, nullptr) != 0) {
                return kNoMounts;
            }
            return replace(target, "new");
        });
        if (report == kNoMounts) {
            QSKIP("this user may not mount file systems");
        }
        QCOMPARE(report, "ok");
        QCOMPARE(bytesOf(folder / "mounted"), "new");
        QCOMPARE(bytesOf(folder / "file"), "old");
        QVERIFY(namesIn(folder.path()) == (Names{"file", "mounted"}));
    }

    void aWritableFileOnAReadOnlyDisk()
    {
        const TemporaryFolder folder;
        const TemporaryFolder disk;
        writeBytes(folder / "mounted", "old");
        const QByteArray report = inChild([&]() -> QByteArray {
            const fs::path place = disk.path();
            const fs::path source = folder / "mounted";
            const fs::path target = place / "file";
            if (!separateFileSystems() || ::mount("none", place.c_str(), "tmpfs", 0, "size=64k") != 0) {
                return kNoMounts;
            }
            writeBytes(target, "covered");
            if (::mount(source.c_str(), target.c_str(), nullptr, MS_BIND, nullptr) != 0 ||
                ::mount("none", place.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0) {
                return "(cannot be arranged)";
            }
            return replace(target, "new");
        });
        if (report == kNoMounts) {
            QSKIP("this user may not mount file systems");
        }
        QCOMPARE(report, "ok");
        QCOMPARE(bytesOf(folder / "mounted"), "new");
    }

    void aFullDevice()
    {
        const Result<void> written = replaceFile("/dev/full", "new");
        QVERIFY(!written);
        QCOMPARE(written.error().number, ENOSPC);
        QCOMPARE(written.error().description, "No space left on device");
    }

    void aLinkToADevice()
    {
        const TemporaryFolder folder;
        fs::create_symlink("/dev/full", folder / "full");
        fs::create_symlink("/dev/null", folder / "null");
        QCOMPARE(replace(folder / "full", "new"), "No space left on device");
        QCOMPARE(replace(folder / "null", "new"), "ok");
        QVERIFY(fs::is_symlink(folder / "null"));
        QVERIFY(fs::is_character_file("/dev/null"));
        QVERIFY(namesIn(folder.path()) == (Names{"full", "null"}));
    }

    void aFullDiskLeavesTheOldFile()
    {
        const TemporaryFolder folder;
        writeBytes(folder / "file", "old");
        const QByteArray report = inChild([&]() -> QByteArray {
            return limitFiles(1000) ? replace(folder / "file", QByteArray(1001, 'n')) + ", " +
                                          replace(folder / "new", QByteArray(1001, 'n')) + ", " +
                                          replace(folder / "short", QByteArray(1000, 'n'))
                                    : QByteArray("(cannot be limited)");
        });
        QCOMPARE(report, "File too large, File too large, ok");
        QCOMPARE(bytesOf(folder / "file"), "old");
        QVERIFY(namesIn(folder.path()) == (Names{"file", "short"}));
    }

    void aFullDiskInPlaceBringsTheOldContentBack()
    {
        const TemporaryFolder folder;
        const QByteArray old(500, 'o');
        writeBytes(folder / "file", old.toStdString());
        setMode(folder / "file", 0666);
        const ClosedFolder closed(folder.path());
        const QByteArray report = asOrdinaryUser([&] {
            return limitFiles(1000) ? replace(folder / "file", QByteArray(1001, 'n'))
                                    : QByteArray("(cannot be limited)");
        });
        QCOMPARE(report, "File too large");
        QCOMPARE(bytesOf(folder / "file"), old);
    }

    void aSmallDiskThatIsFull()
    {
        const TemporaryFolder folder;
        const QByteArray report = inChild([&]() -> QByteArray {
            if (!separateFileSystems() ||
                ::mount("none", folder.path().c_str(), "tmpfs", 0, "size=64k,mode=0777") != 0) {
                return kNoMounts;
            }
            const QByteArray old(40'000, 'o');
            writeBytes(folder / "file", old.toStdString());
            const QByteArray full = replace(folder / "file", QByteArray(50'000, 'n'));
            const bool isUntouched = bytesOf(folder / "file") == old && namesIn(folder.path()) == Names{"file"};
            const QByteArray fits = replace(folder / "file", QByteArray(20'000, 'n'));
            const bool isNew = bytesOf(folder / "file") == QByteArray(20'000, 'n');
            return full + (isUntouched ? ", untouched, " : ", damaged, ") + fits + (isNew ? ", new" : ", not new");
        });
        if (report == kNoMounts) {
            QSKIP("this user may not mount file systems");
        }
        QCOMPARE(report, "No space left on device, untouched, ok, new");
    }

    void aSmallDiskThatIsFullInPlace()
    {
        const TemporaryFolder folder;
        const QByteArray report = inChild([&]() -> QByteArray {
            if (!separateFileSystems() ||
                ::mount("none", folder.path().c_str(), "tmpfs", 0, "size=64k,mode=0755") != 0) {
                return kNoMounts;
            }
            const QByteArray old(40'000, 'o');
            writeBytes(folder / "file", old.toStdString());
            setMode(folder / "file", 0666);
            setMode(folder.path(), 0555);
            const QByteArray full = asOrdinaryUser([&] { return replace(folder / "file", QByteArray(80'000, 'n')); });
            return full + (bytesOf(folder / "file") == old ? ", untouched" : ", damaged");
        });
        if (report == kNoMounts) {
            QSKIP("this user may not mount file systems");
        }
        QCOMPARE(report, "No space left on device, untouched");
    }

    void aDiskThatIsReadOnly()
    {
        const TemporaryFolder folder;
        const QByteArray report = inChild([&]() -> QByteArray {
            const fs::path place = folder.path();
            if (!separateFileSystems() || ::mount("none", place.c_str(), "tmpfs", 0, "size=64k") != 0) {
                return kNoMounts;
            }
            writeBytes(folder / "file", "old");
            if (::mount("none", place.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0) {
                return "(stays writable)";
            }
            const bool could = canReplaceFile(folder / "file") || canReplaceFile(folder / "new");
            return replace(folder / "file", "new") + ", " + replace(folder / "new", "new") + ", " +
                   bytesOf(folder / "file") + (could ? ", could" : ", could not");
        });
        if (report == kNoMounts) {
            QSKIP("this user may not mount file systems");
        }
        QCOMPARE(report, "Read-only file system, Read-only file system, old, could not");
    }
};

static const testsupport::RunnableTest<HinderedSavingTest> kRunnable;
#include "HinderedSavingTest.moc"
