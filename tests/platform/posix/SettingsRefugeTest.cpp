#include "platform/ProfileStrings.h"

#include "tests/platform/TestFiles.h"
#include "tests/platform/posix/ChildProcess.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <chrono>
#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace platform;
using test::bytesOf;
using test::namesIn;
using test::TemporaryFolder;
using test::writeBytes;

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

QByteArray portIn(const ProfileStrings& settings)
{
    return QByteArray::fromStdString(settings.get("Port", "Virtual Port"));
}

// A folder of the program that looks as if it could be written, until that is tried: it is removed.
struct Folders
{
    Folders() { fs::create_directory(root / "bin"); }

    TemporaryFolder root;
    fs::path beside = root / "bin/teslin.INI";
    fs::path own = root / "config/teslin.INI";
};

} // namespace

// Settings whose place beside the program does not take them, and settings that belong together.
class SettingsRefugeTest final : public QObject
{
    Q_OBJECT

private slots:
    void settingsThatCannotBeWrittenGoToTheUsersFolderAndStayThere()
    {
        const Folders at;
        writeBytes(at.beside, "[Name]\r\nFriendly Name=Kept\r\n[Port]\r\nVirtual Port=COM1\r\n");
        const QByteArray report = test::inChild([&]() -> QByteArray {
            ProfileStrings settings(at.beside, at.beside, at.own);
            // The disk is full for this file alone: what is added does not fit.
            const rlimit full{60, RLIM_INFINITY};
            const rlimit free{RLIM_INFINITY, RLIM_INFINITY};
            ::signal(SIGXFSZ, SIG_IGN);
            if (::setrlimit(RLIMIT_FSIZE, &full) != 0) {
                return "(cannot be limited)";
            }
            QByteArray seen = settings.set("Port", "Virtual Port", std::string(30, 'x')) ? "set" : "lost";
            ::setrlimit(RLIMIT_FSIZE, &free);
            return seen + ' ' + portIn(settings);
        });
        // Neither place took it: nothing is half-written, and the old value stands.
        QCOMPARE(report, "lost COM1");
        QVERIFY(!fs::exists(at.own));

        // Now the one beside the program fails alone: a folder stands in its place.
        fs::remove(at.beside);
        ProfileStrings settings(at.beside, at.beside, at.own);
        fs::remove(at.root / "bin");
        writeBytes(at.root / "bin", "no folder");
        QVERIFY(settings.set("Port", "Virtual Port", "COM7"));
        QCOMPARE(bytesOf(at.own), "[Port]\r\nVirtual Port=COM7\r\n");
        QCOMPARE(portIn(settings), "COM7");
        // It stays, even when the other place is of use again.
        fs::remove(at.root / "bin");
        fs::create_directory(at.root / "bin");
        QVERIFY(settings.set("Port", "Virtual Port", "COM8"));
        QCOMPARE(bytesOf(at.own), "[Port]\r\nVirtual Port=COM8\r\n");
        QVERIFY(!fs::exists(at.beside));
        QCOMPARE(settings.folder().string(), at.own.parent_path().string());
    }

    void whatStoodBesideTheProgramGoesAlong()
    {
        const Folders at;
        writeBytes(at.beside, "; by hand\r\n[Name]\r\nFriendly Name=Kept\r\n");
        ::chmod(at.root.path().c_str(), 0777);
        ::chmod((at.root / "bin").c_str(), 0777);
        ::chmod(at.beside.c_str(), 0444);
        const QByteArray report = test::asOrdinaryUser([&]() -> QByteArray {
            ProfileStrings settings(at.beside, at.beside, at.own);
            return settings.set("Port", "Virtual Port", "COM7") ? "set" : "lost";
        });
        QCOMPARE(report, "set");
        QCOMPARE(bytesOf(at.own), "; by hand\r\n[Name]\r\nFriendly Name=Kept\r\n[Port]\r\nVirtual Port=COM7\r\n");
        QCOMPARE(bytesOf(at.beside), "; by hand\r\n[Name]\r\nFriendly Name=Kept\r\n");
    }

    void theNextStartFindsThemThere()
    {
        const Folders at;
        const auto chosen = [&] { return settingsFilePath(at.root / "bin/teslin", at.own.parent_path()).string(); };
        const fs::path beside = fs::canonical(at.root / "bin") / "teslin.INI";
        QCOMPARE(chosen(), beside.string());
        writeBytes(at.own, "");
        QCOMPARE(chosen(), at.own.string()); // there is no other
        writeBytes(at.beside, "");
        fs::last_write_time(at.beside, fs::last_write_time(at.own) - std::chrono::hours(1));
        QCOMPARE(chosen(), at.own.string());
        fs::last_write_time(at.beside, fs::last_write_time(at.own) + std::chrono::hours(1));
        QCOMPARE(chosen(), beside.string());
    }

    // --- together

    void whatBelongsTogetherIsWrittenOnce()
    {
        const TemporaryFolder folder;
        ProfileStrings settings(folder / "x.INI");
        {
            const ProfileStrings::Together outer(settings);
            QVERIFY(settings.set("Select_Window_frmMain", "Settings", "1,2,3,4"));
            {
                const ProfileStrings::Together inner(settings);
                QVERIFY(settings.set("Port", "Virtual Port", "COM1"));
                QVERIFY(settings.set("Port", "Virtual Port", "COM2"));
            }
            QVERIFY(namesIn(folder.path()).empty());
            QCOMPARE(portIn(settings), "COM2"); // what waits counts already
        }
        QCOMPARE(bytesOf(folder / "x.INI"),
                 "[Select_Window_frmMain]\r\nSettings=1,2,3,4\r\n[Port]\r\nVirtual Port=COM2\r\n");
        QVERIFY(settings.set("Port", "Virtual Port", "COM3"));
        QCOMPARE(portIn(ProfileStrings(folder / "x.INI")), "COM3");
    }

    void allOfItOrNothing()
    {
        const TemporaryFolder folder;
        const QByteArray before = "[Name]\r\nFriendly Name=A\r\n[Port]\r\nVirtual Port=COM1\r\n";
        writeBytes(folder / "x.INI", before.toStdString());
        const QByteArray report = test::inChild([&]() -> QByteArray {
            const rlimit full{80, 80};
            if (::signal(SIGXFSZ, SIG_IGN) == SIG_ERR || ::setrlimit(RLIMIT_FSIZE, &full) != 0) {
                return "(cannot be limited)";
            }
            ProfileStrings settings(folder / "x.INI");
            const ProfileStrings::Together together(settings);
            settings.set("Name", "Friendly Name", "B");                 // this one would have room
            settings.set("Port", "Virtual Port", std::string(60, 'x')); // this one has none
            return "tried";
        });
        QCOMPARE(report, "tried");
        QCOMPARE(bytesOf(folder / "x.INI"), before);
        QVERIFY(namesIn(folder.path()) == Names{"x.INI"});
    }
};

static const testsupport::RunnableTest<SettingsRefugeTest> kRunnable;
#include "SettingsRefugeTest.moc"
