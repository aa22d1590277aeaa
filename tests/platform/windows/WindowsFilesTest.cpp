// Whole files, in and out, with what Windows alone has in the way.

#include "platform/KeptCopy.h"
#include "platform/NewFileName.h"
#include "platform/ReplaceFile.h"
#include "platform/windows/Handle.h"
#include "platform/windows/NewFile.h"
#include "tests/platform/TestFiles.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace platform;
using test::bytesOf;
using test::TemporaryFolder;

namespace {

const std::string kOld = "what was there before";
const std::string kNew(100'000, 'n');

// Everything in the folder, joined by blanks.
QByteArray names(const TemporaryFolder& folder)
{
    QByteArrayList all;
    for (const std::string& name : test::namesIn(folder.path())) {
        all.append(QByteArray::fromStdString(name));
    }
    return all.join(' ');
}

// Another program that has the file open.
Handle heldOpen(const std::filesystem::path& path, DWORD share)
{
    return Handle(::CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

} // namespace

class WindowsFilesTest final : public QObject
{
    Q_OBJECT

private slots:
    void aFileIsReadWhole()
    {
        const TemporaryFolder folder;
        std::string bytes;
        for (int i = 0; i < 200'000; ++i) {
            bytes += static_cast<char>(i * 7);
        }
        test::writeBytes(folder / "a", bytes);
        const auto read = readFile(folder / "a");
        QVERIFY(read);
        QVERIFY(read.value() == bytes);
        test::writeBytes(folder / "empty", "");
        QCOMPARE(readFile(folder / "empty").value(), "");
    }

    void whatIsNoFileIsNotRead()
    {
        const TemporaryFolder folder;
        const auto missing = readFile(folder / "missing");
        QVERIFY(!missing);
        QVERIFY(isNotFound(missing.error()));
        const auto noFolder = readFile(folder / "none/missing");
        QVERIFY(!noFolder);
        QVERIFY(isNotFound(noFolder.error()));
        QVERIFY(!readFile(folder.path()));
        QVERIFY(!isNotFound(readFile(folder.path()).error()));
        QVERIFY(!readFile("NUL"));
    }

    void aFileIsMadeAndReplaced()
    {
        const TemporaryFolder folder;
        const auto file = folder / "shop.tlc";
        QVERIFY(canReplaceFile(file));
        QVERIFY(replaceFile(file, kOld));
        QCOMPARE(bytesOf(file), QByteArray::fromStdString(kOld));
        QVERIFY(canReplaceFile(file));
        QVERIFY(replaceFile(file, kNew));
        QVERIFY(bytesOf(file) == QByteArray::fromStdString(kNew));
        QVERIFY(replaceFile(file, ""));
        QCOMPARE(bytesOf(file), "");
        QCOMPARE(names(folder), "shop.tlc"); // nothing is left beside it
    }

    void aFileKeepsItsAttributes()
    {
        const TemporaryFolder folder;
        const auto file = folder / "shop.tlc";
        test::writeBytes(file, kOld);
        QVERIFY(::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_HIDDEN) != 0);
        QVERIFY(replaceFile(file, kNew));
        QVERIFY(bytesOf(file) == QByteArray::fromStdString(kNew));
        if ((::GetFileAttributesW(file.c_str()) & FILE_ATTRIBUTE_HIDDEN) == 0) {
            QSKIP("this system's own call for replacing a file does not keep attributes");
        }
    }

    void aReadOnlyFileStaysAsItIs()
    {
        const TemporaryFolder folder;
        const auto file = folder / "shop.tlc";
        test::writeBytes(file, kOld);
        QVERIFY(::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY) != 0);
        QVERIFY(!canReplaceFile(file));
        const auto replaced = replaceFile(file, kNew);
        QVERIFY(!replaced);
        QCOMPARE(replaced.error().number, int{ERROR_ACCESS_DENIED});
        QCOMPARE(bytesOf(file), QByteArray::fromStdString(kOld));
        QCOMPARE(names(folder), "shop.tlc");
        ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    }

    void aFileThatAnotherProgramReads_data()
    {
        QTest::addColumn<uint>("share");
        QTest::addColumn<bool>("isReplaced");
        QTest::newRow("letting others write and remove")
            << uint{FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE} << true;
        QTest::newRow("letting others write") << uint{FILE_SHARE_READ | FILE_SHARE_WRITE} << true;
        QTest::newRow("letting others read") << uint{FILE_SHARE_READ} << false;
    }
    void aFileThatAnotherProgramReads()
    {
        QFETCH(uint, share);
        QFETCH(bool, isReplaced);
        const TemporaryFolder folder;
        const auto file = folder / "shop.tlc";
        test::writeBytes(file, kOld);
        Handle other = heldOpen(file, share);
        QVERIFY(other.isOpen());
        const auto replaced = replaceFile(file, kNew);
        other.close();
        QCOMPARE(bool(replaced), isReplaced);
        QVERIFY(bytesOf(file) == QByteArray::fromStdString(isReplaced ? kNew : kOld));
        QCOMPARE(names(folder), "shop.tlc");
    }

    void whatDeadProcessesLeftIsRemoved()
    {
        const TemporaryFolder folder;
        // The number of this process is alive; no process has an odd number like the other.
        const std::string alive = newFileName(::GetCurrentProcessId(), 900);
        test::writeBytes(folder / alive, "half");
        test::writeBytes(folder / newFileName(0x7FFFFFFD, 0), "half");
        test::writeBytes(folder / ".teslin-note", "x");
        QVERIFY(replaceFile(folder / "shop.tlc", kNew));
        QCOMPARE(names(folder), QByteArray::fromStdString(".teslin-" + std::to_string(::GetCurrentProcessId()) +
                                                          "-900 .teslin-note shop.tlc"));
        QVERIFY((::GetFileAttributesW((folder / "shop.tlc").c_str()) & FILE_ATTRIBUTE_HIDDEN) == 0);
    }

    // Only a process that dies leaves one, and then nobody shall stumble over it.
    void aFileOnItsWayIsHidden()
    {
        const TemporaryFolder folder;
        test::writeBytes(folder / ".plain", "x");
        if ((::GetFileAttributesW((folder / ".plain").c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0) {
            QSKIP("this system hides every file whose name begins with a dot");
        }
        const auto made = NewFile::beside(folder / "shop.tlc");
        QVERIFY(made);
        const auto path = folder / newFileName(::GetCurrentProcessId(), 0);
        QVERIFY((::GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0);
    }

    void aCopyIsKeptWhileAFileIsWrittenInPlace()
    {
        const TemporaryFolder folder;
        test::writeBytes(folder / "shop/shop.tlc", kOld);
        {
            KeptCopy copy(folder / "copies", folder / "shop/shop.tlc", kNew);
            QVERIFY(bytesOf(folder / "copies/shop.tlc.unfinished") == QByteArray::fromStdString(kNew));
            copy.remove();
        }
        QVERIFY(std::filesystem::is_empty(folder / "copies"));
        // Another program reads the file and does not let it be replaced.
        const Handle other = heldOpen(folder / "shop/shop.tlc", FILE_SHARE_READ | FILE_SHARE_WRITE);
        QVERIFY(replaceFile(folder / "shop/shop.tlc", kNew, folder / "copies"));
        QVERIFY(bytesOf(folder / "shop/shop.tlc") == QByteArray::fromStdString(kNew));
        QVERIFY(std::filesystem::is_empty(folder / "copies"));
    }

    // The disk takes neither the new content nor the old one again.
    void theCopyStaysWhenTheFileMayBeAMixture()
    {
        const TemporaryFolder folder;
        const auto file = folder / "shop.tlc";
        test::writeBytes(file, kOld);
        const Handle other(::CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                         OPEN_EXISTING, 0, nullptr));
        QVERIFY(other.isOpen());
        QVERIFY(::LockFile(other.get(), static_cast<DWORD>(kOld.size() - 1), 0, 1, 0) != 0);
        const std::string cut = std::string(kOld.size(), 'n');
        QVERIFY(!replaceFile(file, cut, folder / "copies"));
        QVERIFY(::UnlockFile(other.get(), static_cast<DWORD>(kOld.size() - 1), 0, 1, 0) != 0);
        QVERIFY(bytesOf(folder / "copies/shop.tlc.unfinished") == QByteArray::fromStdString(cut));
    }

    void whatCannotBeAFile()
    {
        const TemporaryFolder folder;
        QVERIFY(!canReplaceFile({}));
        QVERIFY(!replaceFile({}, kNew));
        QVERIFY(!canReplaceFile(folder.path()));
        QVERIFY(!replaceFile(folder.path(), kNew));
        QVERIFY(!canReplaceFile(folder / "none/shop.tlc"));
        QVERIFY(!replaceFile(folder / "none/shop.tlc", kNew));
        QCOMPARE(names(folder), "");
    }

    void aDeviceIsWrittenAsItIs()
    {
        QVERIFY(!canReplaceFile("NUL"));
        QVERIFY(replaceFile("NUL", kNew));
    }

    void namesBeyondTheCodePage()
    {
        const TemporaryFolder folder;
        const auto file = folder.path() / L"\x0416\x4E2D.tlc";
        QVERIFY(replaceFile(file, kNew));
        QVERIFY(readFile(file).value() == kNew);
    }
};

static const testsupport::RunnableTest<WindowsFilesTest> kRunnable;
#include "WindowsFilesTest.moc"
