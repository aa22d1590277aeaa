#include "platform/ProfileStrings.h"

#include "tests/platform/TestFiles.h"
#include "tests/platform/posix/ChildProcess.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <sys/stat.h>

using namespace platform;
using test::asOrdinaryUser;
using test::bytesOf;
using test::namesIn;
using test::TemporaryFolder;
using test::writeBytes;

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

QByteArray text(bool isTrue)
{
    return isTrue ? "true" : "false";
}

QByteArray portIn(const ProfileStrings& settings)
{
    return QByteArray::fromStdString(settings.get("Port", "Virtual Port"));
}

void setMode(const fs::path& path, mode_t mode)
{
    QCOMPARE(::chmod(path.c_str(), mode), 0);
}

class ProfileStringsTest final : public QObject
{
    Q_OBJECT

private slots:
    void aMissingFile()
    {
        const TemporaryFolder folder;
        ProfileStrings settings(folder / "x.INI");
        QCOMPARE(portIn(settings), "");
        QVERIFY(namesIn(folder.path()).empty());
        QVERIFY(settings.set("Port", "Virtual Port", "COM5"));
        QCOMPARE(bytesOf(folder / "x.INI"), "[Port]\r\nVirtual Port=COM5\r\n");
        QCOMPARE(portIn(settings), "COM5");
        QVERIFY(namesIn(folder.path()) == Names{"x.INI"});
    }

    void othersKeepTheirBytes()
    {
        const TemporaryFolder folder;
        writeBytes(folder / "x.INI", "; by hand\n[port]\nVIRTUAL PORT = COM1\nx=y");
        ProfileStrings settings(folder / "x.INI");
        QVERIFY(settings.set("Port", "Virtual Port", "COM12\r"));
        QVERIFY(settings.set("Name", "Friendly Name", "Teslin"));
        QCOMPARE(bytesOf(folder / "x.INI"),
                 "; by hand\n[port]\nVIRTUAL PORT =COM12\nx=y\r\n[Name]\r\nFriendly Name=Teslin\r\n");
    }

    void theFileIsReadAfresh()
    {
        const TemporaryFolder folder;
        ProfileStrings settings(folder / "x.INI");
        writeBytes(folder / "x.INI", "[Port]\r\nVirtual Port=COM1\r\n");
        QCOMPARE(portIn(settings), "COM1");
        writeBytes(folder / "x.INI", "[Port]\r\nVirtual Port=COM2\r\n");
        QCOMPARE(portIn(settings), "COM2");
    }

    void theBufferIsThatOfTheCall()
    {
        const TemporaryFolder folder;
        ProfileStrings settings(folder / "x.INI");
        QVERIFY(settings.set("Port", "Virtual Port", std::string(200, 'x')));
        QCOMPARE(settings.get("Port", "Virtual Port").size(), std::size_t{39});
        QCOMPARE(settings.get("Port", "Virtual Port", 4).size(), std::size_t{3});
    }

    void anUnchangedValueIsNotWritten()
    {
        const TemporaryFolder folder;
        writeBytes(folder / "x.INI", "[Port]\r\nVirtual Port=COM1\r\n");
        const auto before = fs::last_write_time(folder / "x.INI");
        ProfileStrings settings(folder / "x.INI");
        QVERIFY(settings.set("Port", "Virtual Port", "COM1"));
        QVERIFY(fs::last_write_time(folder / "x.INI") == before);
    }

    void aReadOnlyFile()
    {
        const TemporaryFolder folder;
        setMode(folder.path(), 0777);
        writeBytes(folder / "x.INI", "[Port]\r\nVirtual Port=COM1\r\n");
        setMode(folder / "x.INI", 0444);
        const QByteArray report = asOrdinaryUser([&] {
            ProfileStrings settings(folder / "x.INI");
            const QByteArray isSet = text(settings.set("Port", "Virtual Port", "COM2"));
            return isSet + ' ' + portIn(settings);
        });
        QCOMPARE(report, "false COM1");
        QVERIFY(namesIn(folder.path()) == Names{"x.INI"});
    }

    void aFileThatCannotBeReadIsNotReplaced()
    {
        const TemporaryFolder folder;
        setMode(folder.path(), 0777);
        writeBytes(folder / "x.INI", "[Port]\r\nVirtual Port=COM1\r\n");
        setMode(folder / "x.INI", 0222);
        const QByteArray report = asOrdinaryUser([&] {
            ProfileStrings settings(folder / "x.INI");
            const QByteArray isSet = text(settings.set("Port", "Virtual Port", "COM2"));
            return isSet + ' ' + portIn(settings);
        });
        QCOMPARE(report, "false ");
        setMode(folder / "x.INI", 0644);
        QCOMPARE(bytesOf(folder / "x.INI"), "[Port]\r\nVirtual Port=COM1\r\n");
    }

    void aFolderThatCannotBeWritten()
    {
        const TemporaryFolder folder;
        setMode(folder.path(), 0555);
        const QByteArray report = asOrdinaryUser([&] {
            ProfileStrings settings(folder / "x.INI");
            const QByteArray isSet = text(settings.set("Port", "Virtual Port", "COM2"));
            return isSet + ' ' + portIn(settings);
        });
        setMode(folder.path(), 0755);
        QCOMPARE(report, "false ");
        QVERIFY(namesIn(folder.path()).empty());
    }

    void aFolderInTheFilesPlace()
    {
        const TemporaryFolder folder;
        fs::create_directory(folder / "x.INI");
        ProfileStrings settings(folder / "x.INI");
        QVERIFY(!settings.set("Port", "Virtual Port", "COM2"));
        QCOMPARE(portIn(settings), "");
    }

    void aMissingFolderIsMade()
    {
        const TemporaryFolder folder;
        ProfileStrings settings(folder / "config/teslin/x.INI");
        QCOMPARE(portIn(settings), "");
        QVERIFY(namesIn(folder.path()).empty());
        QVERIFY(settings.set("Port", "Virtual Port", "COM5"));
        QCOMPARE(bytesOf(folder / "config/teslin/x.INI"), "[Port]\r\nVirtual Port=COM5\r\n");
    }

    void noNameAtAll()
    {
        ProfileStrings settings{fs::path()};
        QVERIFY(!settings.set("Port", "Virtual Port", "COM5"));
        QCOMPARE(portIn(settings), "");
    }

    void theFallbackIsReadUntilTheFileExists()
    {
        const TemporaryFolder folder;
        writeBytes(folder / "installed.INI", "[Port]\r\nVirtual Port=COM1\r\n[Name]\r\nFriendly Name=Common\r\n");
        ProfileStrings settings(folder / "own.INI", folder / "installed.INI");
        QCOMPARE(portIn(settings), "COM1");
        QVERIFY(settings.set("Port", "Virtual Port", "COM2"));
        QCOMPARE(portIn(settings), "COM2");
        QCOMPARE(QByteArray::fromStdString(settings.get("Name", "Friendly Name")), "Common");
        QCOMPARE(bytesOf(folder / "own.INI"), "[Port]\r\nVirtual Port=COM2\r\n[Name]\r\nFriendly Name=Common\r\n");
        QCOMPARE(bytesOf(folder / "installed.INI"),
                 "[Port]\r\nVirtual Port=COM1\r\n[Name]\r\nFriendly Name=Common\r\n");
        writeBytes(folder / "own.INI", "");
        QCOMPARE(portIn(settings), "");
    }

    void aFallbackThatCannotBeReadIsNone()
    {
        const TemporaryFolder folder;
        fs::create_directory(folder / "installed.INI");
        ProfileStrings settings(folder / "own.INI", folder / "installed.INI");
        QCOMPARE(portIn(settings), "");
        QVERIFY(settings.set("Port", "Virtual Port", "COM2"));
        QCOMPARE(bytesOf(folder / "own.INI"), "[Port]\r\nVirtual Port=COM2\r\n");
    }

    void theFileIsNamedAfterTheProgram_data()
    {
        QTest::addColumn<QByteArray>("program");
        QTest::addColumn<QByteArray>("file");
        const auto row = [](const QByteArray& program, const QByteArray& file) {
            QTest::newRow(program.constData()) << program << file;
        };
        row("/nowhere/at/all/teslin-configure", "/nowhere/at/all/teslin-configure.INI");
        row("/nowhere/teslin.exe", "/nowhere/teslin.INI");
        row("/nowhere/x-1.4.1", "/nowhere/x-1.4.INI");
        row("/nowhere.d/teslin", "/nowhere.d/teslin.INI");
        row("/nowhere/with blanks", "/nowhere/with blanks.INI");
        row("/nowhere-in-the-root", "/nowhere-in-the-root.INI");
        row("/nowhere/../elsewhere/teslin", "/elsewhere/teslin.INI");
    }
    void theFileIsNamedAfterTheProgram()
    {
        QFETCH(QByteArray, program);
        QFETCH(QByteArray, file);
        QCOMPARE(QByteArray::fromStdString(settingsFileBeside(program.toStdString()).string()), file);
    }

    void linksToTheProgramAreFollowed()
    {
        const TemporaryFolder folder;
        const fs::path real = fs::canonical(folder.path());
        writeBytes(folder / "opt/teslin.bin", "");
        fs::create_symlink("opt/teslin.bin", folder / "start");
        QCOMPARE(settingsFileBeside(folder / "start").string(), (real / "opt/teslin.INI").string());
    }

    void settingsStayBesideAProgramInAWritableFolder()
    {
        const TemporaryFolder folder;
        const fs::path beside = fs::canonical(folder.path()) / "teslin.INI";
        QCOMPARE(settingsFilePath(folder / "teslin", folder / "config").string(), beside.string());
        writeBytes(folder / "config/teslin.INI", "");
        writeBytes(folder / "teslin.INI", "");
        fs::last_write_time(folder / "teslin.INI", fs::last_write_time(folder / "config/teslin.INI"));
        QCOMPARE(settingsFilePath(folder / "teslin", folder / "config").string(), beside.string());
        QCOMPARE(bytesOf(folder / "teslin.INI"), "");
    }

    void settingsGoToTheUsersFolderOtherwise_data()
    {
        QTest::addColumn<bool>("hasFile");
        QTest::addColumn<uint>("folderMode");
        QTest::addColumn<uint>("fileMode");
        QTest::addColumn<bool>("isBeside");
        QTest::newRow("a folder that cannot be written") << false << 0555u << 0u << false;
        QTest::newRow("a file that cannot be written") << true << 0777u << 0444u << false;
        QTest::newRow("neither can") << true << 0555u << 0444u << false;
        QTest::newRow("only the file can") << true << 0555u << 0666u << true;
        QTest::newRow("both can") << true << 0777u << 0666u << true;
        QTest::newRow("a folder that can, without a file") << false << 0777u << 0u << true;
    }
    void settingsGoToTheUsersFolderOtherwise()
    {
        QFETCH(bool, hasFile);
        QFETCH(uint, folderMode);
        QFETCH(uint, fileMode);
        QFETCH(bool, isBeside);
        const TemporaryFolder folder;
        setMode(folder.path(), 0755);
        fs::create_directory(folder / "bin");
        if (hasFile) {
            writeBytes(folder / "bin/teslin.INI", "");
            setMode(folder / "bin/teslin.INI", fileMode);
        }
        setMode(folder / "bin", folderMode);
        const QByteArray chosen = asOrdinaryUser([&] {
            return QByteArray::fromStdString(settingsFilePath(folder / "bin/teslin", folder / "config").string());
        });
        setMode(folder / "bin", 0755);
        const fs::path expected =
            isBeside ? fs::canonical(folder.path()) / "bin/teslin.INI" : folder / "config/teslin.INI";
        QCOMPARE(chosen, QByteArray::fromStdString(expected.string()));
        QVERIFY(namesIn(folder.path()) == (hasFile ? Names{"bin", "bin/teslin.INI"} : Names{"bin"}));
    }

    void withoutAUsersFolderSettingsStayBeside()
    {
        QCOMPARE(settingsFilePath("/nowhere/teslin", "").string(), "/nowhere/teslin.INI");
    }
};

} // namespace

static const testsupport::RunnableTest<ProfileStringsTest> kRunnable;
#include "ProfileStringsTest.moc"
