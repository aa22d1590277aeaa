#include "platform/ReplaceFile.h"

#include "tests/platform/TestFiles.h"
#include "tests/platform/posix/ChildProcess.h"
#include "tests/platform/posix/FileAttempts.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <algorithm>
#include <cerrno>

#include <sys/xattr.h>

using namespace platform;
using test::asOrdinaryUser;
using test::bytesOf;
using test::lookAt;
using test::modeOf;
using test::namesIn;
using test::read;
using test::replace;
using test::setMode;
using test::TemporaryFolder;
using test::writeBytes;

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

} // namespace

class ReplaceFileTest final : public QObject
{
    Q_OBJECT

private slots:
    // Somebody else may write the file, its own group may not; the mode alone would read as if the group might.
    void keepsTheListOfOthersWhoMayWrite()
    {
        constexpr const char* kList = "system.posix_acl_access";
        const TemporaryFolder folder;
        writeBytes(folder / "shop", "old");
        // The system's form: version 2, then tag, rights and number of each entry, the lowest byte first.
        const auto entry = [](char tag, char rights, quint32 who) {
            QByteArray bytes = QByteArray(1, tag) + '\0' + rights + '\0';
            for (int i = 0; i < 4; ++i) {
                bytes += static_cast<char>(who >> (8 * i) & 0xFF);
            }
            return bytes;
        };
        const QByteArray list = QByteArray("\2\0\0\0", 4) + entry(0x01, 6, ~0U) + entry(0x02, 6, 1234) +
                                entry(0x04, 0, ~0U) + entry(0x10, 6, ~0U) + entry(0x20, 0, ~0U);
        if (::setxattr((folder / "shop").c_str(), kList, list.constData(), static_cast<std::size_t>(list.size()), 0) !=
            0) {
            QSKIP("The file system has no such lists.");
        }
        QCOMPARE(replace(folder / "shop", "new"), "ok");
        QCOMPARE(bytesOf(folder / "shop"), "new");
        QByteArray after(list.size() + 100, '\0');
        const auto size =
            ::getxattr((folder / "shop").c_str(), kList, after.data(), static_cast<std::size_t>(after.size()));
        QCOMPARE(after.first(std::max<qsizetype>(size, 0)), list);
    }

    void bytesSurvive_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QByteArray all;
        for (int byte = 0; byte < 256; ++byte) {
            all += static_cast<char>(byte);
        }
        QTest::newRow("nothing") << QByteArray("");
        QTest::newRow("one byte") << QByteArray("x");
        QTest::newRow("every byte") << all;
        QTest::newRow("line ends of all kinds") << QByteArray("a\r\nb\nc\rd\n\r\x1a");
        QTest::newRow("a megabyte") << all.repeated(4096);
    }
    void bytesSurvive()
    {
        QFETCH(QByteArray, bytes);
        const TemporaryFolder folder;
        QCOMPARE(replace(folder / "new", bytes), "ok");
        QCOMPARE(bytesOf(folder / "new"), bytes);
        QCOMPARE(read(folder / "new"), bytes);
        writeBytes(folder / "old", "something else, and longer than one byte");
        QCOMPARE(replace(folder / "old", bytes), "ok");
        QCOMPARE(bytesOf(folder / "old"), bytes);
        QVERIFY(namesIn(folder.path()) == (Names{"new", "old"}));
    }

    void aNameRelativeToTheCurrentFolder()
    {
        const TemporaryFolder folder;
        const fs::path before = fs::current_path();
        fs::current_path(folder.path());
        const QByteArray made = replace("here", "new");
        const QByteArray replaced = replace("here", "newer");
        fs::current_path(before);
        QCOMPARE(made, "ok");
        QCOMPARE(replaced, "ok");
        QCOMPARE(bytesOf(folder / "here"), "newer");
    }

    void aNewFileHasTheUsersUsualMode()
    {
        const TemporaryFolder folder;
        const QByteArray report = test::inChild([&folder] {
            ::umask(027);
            return replace(folder / "new", "x");
        });
        QCOMPARE(report, "ok");
        QCOMPARE(modeOf(folder / "new"), mode_t{0640});
    }

    void theModeIsKept_data()
    {
        QTest::addColumn<uint>("mode");
        for (const uint mode : {0600u, 0640u, 0644u, 0664u, 0666u, 0755u, 0777u}) {
            QTest::addRow("%o", mode) << mode;
        }
    }
    void theModeIsKept()
    {
        QFETCH(uint, mode);
        const TemporaryFolder folder;
        writeBytes(folder / "file", "old");
        setMode(folder / "file", mode);
        QCOMPARE(replace(folder / "file", "new"), "ok");
        QCOMPARE(modeOf(folder / "file"), mode_t{mode});
        QCOMPARE(bytesOf(folder / "file"), "new");
    }

    void theOwnerIsKept()
    {
        if (::geteuid() != 0) {
            QSKIP("only the administrator can keep another's file another's");
        }
        const TemporaryFolder folder;
        writeBytes(folder / "file", "old");
        QCOMPARE(::chown((folder / "file").c_str(), test::kNobody, 12345), 0);
        setMode(folder / "file", 0640);
        QCOMPARE(replace(folder / "file", "new"), "ok");
        QCOMPARE(bytesOf(folder / "file"), "new");
        QCOMPARE(lookAt(folder / "file").st_uid, uid_t{test::kNobody});
        QCOMPARE(lookAt(folder / "file").st_gid, gid_t{12345});
        QCOMPARE(modeOf(folder / "file"), mode_t{0640});
    }

    void anotherUsersFileThatAllMayWrite()
    {
        if (::geteuid() != 0) {
            QSKIP("only the administrator can make another's file");
        }
        const TemporaryFolder folder;
        setMode(folder.path(), 0777);
        writeBytes(folder / "file", "old");
        setMode(folder / "file", 0666);
        QCOMPARE(asOrdinaryUser([&] { return replace(folder / "file", "new"); }), "ok");
        QCOMPARE(bytesOf(folder / "file"), "new");
        QCOMPARE(modeOf(folder / "file"), mode_t{0666});
    }

    void aFileWithTwoNamesIsReplacedUnderOne()
    {
        const TemporaryFolder folder;
        writeBytes(folder / "file", "old");
        fs::create_hard_link(folder / "file", folder / "other");
        QCOMPARE(replace(folder / "file", "new"), "ok");
        QCOMPARE(bytesOf(folder / "file"), "new");
        QCOMPARE(bytesOf(folder / "other"), "old");
    }

    void linksAreFollowed_data()
    {
        QTest::addColumn<bool>("exists");
        QTest::newRow("to a file") << true;
        QTest::newRow("to a file that is not there yet") << false;
    }
    void linksAreFollowed()
    {
        QFETCH(bool, exists);
        const TemporaryFolder folder;
        fs::create_directory(folder / "real");
        if (exists) {
            writeBytes(folder / "real/file", "old");
        }
        fs::create_symlink("real/file", folder / "near");
        fs::create_symlink(folder / "near", folder / "far");
        QCOMPARE(replace(folder / "far", "new"), "ok");
        QVERIFY(fs::is_symlink(folder / "far"));
        QVERIFY(fs::is_symlink(folder / "near"));
        QVERIFY(!fs::is_symlink(folder / "real/file"));
        QCOMPARE(bytesOf(folder / "real/file"), "new");
        QVERIFY(namesIn(folder.path()) == (Names{"far", "near", "real", "real/file"}));
    }

    void aRingOfLinksIsAnError()
    {
        const TemporaryFolder folder;
        fs::create_symlink("two", folder / "one");
        fs::create_symlink("one", folder / "two");
        QCOMPARE(replace(folder / "one", "new"), "Too many levels of symbolic links");
        QCOMPARE(read(folder / "one"), "(Too many levels of symbolic links)");
        QVERIFY(!canReplaceFile(folder / "one"));
        QVERIFY(namesIn(folder.path()) == (Names{"one", "two"}));
    }

    void whatCannotBeAFile_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<int>("number");
        QTest::addColumn<QByteArray>("description");
        QTest::newRow("a folder") << QByteArray("folder") << EISDIR << QByteArray("Is a directory");
        QTest::newRow("in a missing folder")
            << QByteArray("missing/file") << ENOENT << QByteArray("No such file or directory");
        QTest::newRow("below a file") << QByteArray("file/file") << ENOTDIR << QByteArray("Not a directory");
        QTest::newRow("too long a name") << QByteArray(256, 'x') << ENAMETOOLONG << QByteArray("File name too long");
    }
    void whatCannotBeAFile()
    {
        QFETCH(QByteArray, name);
        QFETCH(int, number);
        QFETCH(QByteArray, description);
        const TemporaryFolder folder;
        fs::create_directory(folder / "folder");
        writeBytes(folder / "file", "old");
        const fs::path path = folder / name.toStdString();
        const Result<void> written = replaceFile(path, "new");
        QVERIFY(!written);
        QCOMPARE(written.error().number, number);
        QCOMPARE(QByteArray::fromStdString(written.error().description), description);
        const Result<std::string> content = readFile(path);
        QVERIFY(!content);
        QCOMPARE(content.error().number, number);
        QVERIFY(!canReplaceFile(path));
        QVERIFY(namesIn(folder.path()) == (Names{"folder", "file"}));
        QCOMPARE(bytesOf(folder / "file"), "old");
    }

    void theLongestName()
    {
        const TemporaryFolder folder;
        const fs::path path = folder / std::string(255, 'x');
        QCOMPARE(replace(path, "new"), "ok");
        QCOMPARE(replace(path, "newer"), "ok");
        QCOMPARE(bytesOf(path), "newer");
    }

    void anEmptyName()
    {
        QCOMPARE(replace("", "new"), "No such file or directory");
        QCOMPARE(read(""), "(No such file or directory)");
        QVERIFY(!canReplaceFile(""));
    }

    void onlyPlainFilesAreRead()
    {
        const TemporaryFolder folder;
        QCOMPARE(::mkfifo((folder / "pipe").c_str(), 0600), 0);
        QCOMPARE(read(folder / "pipe"), "(Invalid argument)");
        QCOMPARE(read("/dev/zero"), "(Invalid argument)");
        QCOMPARE(replace(folder / "pipe", "x"), "No such device or address");
    }

    void aFileThatIsTooLargeIsNotRead()
    {
        const TemporaryFolder folder;
        writeBytes(folder / "image", "");
        fs::resize_file(folder / "image", kLargestFile + 1);
        QCOMPARE(read(folder / "image"), "(File too large)");
    }

    void aFileThatDoesNotTellItsSize()
    {
        const QByteArray status = read("/proc/self/status");
        const QByteArray pid = "\nPid:\t" + QByteArray::number(::getpid()) + '\n';
        QVERIFY2(status.contains(pid), status.constData());
    }

    void whatADeadProcessLeftIsNoHindrance()
    {
        const TemporaryFolder folder;
        const std::string left = ".teslin-" + std::to_string(::getpid()) + "-0";
        writeBytes(folder / left, "half");
        writeBytes(folder / "file", "old");
        QCOMPARE(replace(folder / "file", "new"), "ok");
        QCOMPARE(bytesOf(folder / "file"), "new");
        QCOMPARE(bytesOf(folder / left), "half");
        QVERIFY(namesIn(folder.path()) == (Names{"file", left}));
    }

    void askingWhetherAFileCanBeReplacedChangesNothing()
    {
        const TemporaryFolder folder;
        writeBytes(folder / "file", "old");
        const timespec before = lookAt(folder / "file").st_mtim;
        QVERIFY(canReplaceFile(folder / "file"));
        QVERIFY(canReplaceFile(folder / "new"));
        QCOMPARE(bytesOf(folder / "file"), "old");
        const timespec after = lookAt(folder / "file").st_mtim;
        QVERIFY(before.tv_sec == after.tv_sec && before.tv_nsec == after.tv_nsec);
        QVERIFY(namesIn(folder.path()) == Names{"file"});
        QVERIFY(!canReplaceFile("/dev/null"));
    }
};

static const testsupport::RunnableTest<ReplaceFileTest> kRunnable;
#include "ReplaceFileTest.moc"
