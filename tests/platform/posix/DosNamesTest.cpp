#include "platform/DosNames.h"

#include "tests/platform/TestFiles.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <cerrno>

using namespace platform;
using test::TemporaryFolder;

namespace {

// Sets an environment variable for the life of a test and puts the old value back.
class Variable final
{
public:
    explicit Variable(const char* name)
        : m_name(name)
        , m_wasSet(qEnvironmentVariableIsSet(name))
        , m_old(qgetenv(name))
    {}
    ~Variable() { m_wasSet ? qputenv(m_name, m_old) : qunsetenv(m_name); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
    bool m_wasSet;
    QByteArray m_old;
};

} // namespace

class DosNamesTest final : public QObject
{
    Q_OBJECT

private:
    TemporaryFolder m_folder;
    std::set<std::string> m_before;

    // The path below the folder, or the error's number.
    [[nodiscard]] QByteArray find(const QByteArray& dosName) const
    {
        const auto path = DosNames(m_folder.path()).find(dosName.toStdString());
        if (!path) {
            return QByteArray::number(path.error().number);
        }
        return QByteArray::fromStdString(path.value().string()).mid(qsizetype(m_folder.path().string().size()) + 1);
    }

private slots:
    void initTestCase()
    {
        for (const char* const name : {"teslin", "com5", "COM12", "Plain", "plain", "BOTH", "both", "t\xC3\xA9slin",
                                       "\xE2\x82\xAC", "c:/Windows/system32/drivers/Teslin.sys",
                                       "c:/WINNT/SYSTEM32/DRIVERS/TESLIN.SYS", "c:/a.b/c d", "D:/file"}) {
            test::writeBytes(m_folder / name, "");
        }
        std::filesystem::create_symlink("/nonexistent/tty", m_folder / "com7");
        std::filesystem::create_symlink(m_folder / "com5", m_folder / "com8");
        m_before = test::namesIn(m_folder.path());
    }

    void names_data()
    {
        const auto noEntry = QByteArray::number(ENOENT);
        const auto refused = QByteArray::number(EINVAL);
        QTest::addColumn<QByteArray>("dosName");
        QTest::addColumn<QByteArray>("found");
        const auto row = [](const char* what, const QByteArray& name, const QByteArray& found) {
            QTest::newRow(what) << name << found;
        };
        row("device", R"(\\.\Teslin)", "teslin");
        row("device in capitals", R"(\\.\TESLIN)", "teslin");
        row("port", "COM5", "com5");
        row("port in lower case", "com5", "com5");
        row("port whose entry is in capitals", "COM12", "COM12");
        row("port in lower case, entry in capitals", "com12", "COM12");
        row("port by its device name", R"(\\.\COM5)", "com5");
        row("port through a link", "COM8", "com8");
        row("the exact case", R"(\\.\Plain)", "Plain");
        row("the exact case again", R"(\\.\plain)", "plain");
        row("no exact case: the lower one", R"(\\.\Both)", "both");
        row("driver file", R"(C:\Windows\system32\drivers\Teslin.sys)", "c:/Windows/system32/drivers/Teslin.sys");
        row("driver file in other cases", R"(c:\WINDOWS\System32\DRIVERS\teslin.SYS)",
            "c:/Windows/system32/drivers/Teslin.sys");
        row("driver file of capitals", R"(C:\WINNT\system32\drivers\Teslin.sys)",
            "c:/WINNT/SYSTEM32/DRIVERS/TESLIN.SYS");
        row("folder", R"(C:\Windows)", "c:/Windows");
        row("dots and blanks inside names", R"(C:\a.b\c d)", "c:/a.b/c d");
        row("drive in lower case, entry in capitals", R"(d:\FILE)", "D:/file");
        row("letters beyond ASCII", "\\\\.\\T\xE9slin", "t\xC3\xA9slin");
        row("a character of three bytes", "\\\\.\\\x80", "\xE2\x82\xAC");

        row("missing device", R"(\\.\Teslin2)", noEntry);
        row("missing port", "COM6", noEntry);
        row("missing drive", R"(E:\file)", noEntry);
        row("missing file", R"(C:\Windows\System\Teslin.vxd)", noEntry);
        row("missing folder", R"(C:\Nowhere\Teslin.sys)", noEntry);
        row("link to a device that is gone", "COM7", noEntry);
        row("a longer name is another name", R"(\\.\Tesli)", noEntry);
        row("a leading zero is another name", "COM05", noEntry);

        row("empty", "", refused);
        row("device without a name", R"(\\.\)", refused);
        row("slash in a device", R"(\\.\a/b)", refused);
        row("slash in a path", R"(C:\Windows/system32)", refused);
        row("absolute path of the system", "/etc/passwd", refused);
        row("parent", R"(\\.\..)", refused);
        row("parent in a path", R"(C:\Windows\..\Windows)", refused);
        row("two dots inside a name", R"(\\.\a..b)", refused);
        row("the folder itself", R"(\\.\.)", refused);
        row("the folder itself in a path", R"(C:\.\Windows)", refused);
        row("NUL", QByteArray("\\\\.\\teslin\0x", 12), refused);
        row("separator in a device", R"(\\.\c:\Windows)", refused);
        row("empty step", R"(C:\\Windows)", refused);
        row("separator at the end", R"(C:\Windows\)", refused);
        row("drive alone", "C:", refused);
        row("drive and separator alone", R"(C:\)", refused);
        row("path relative to a drive", "C:Windows", refused);
        row("no letter before the colon", R"(1:\Windows)", refused);
        row("bare name", "Teslin", refused);
        row("port without a number", "COM", refused);
        row("port with letters after it", "COM5x", refused);
        row("half a prefix", R"(\\.)", refused);
        row("name on a network", R"(\\server\share)", refused);
    }
    void names()
    {
        QFETCH(QByteArray, dosName);
        QFETCH(QByteArray, found);
        QCOMPARE(find(dosName), found);
    }

    void nothingIsCreated()
    {
        for (const char* const name : {R"(\\.\New)", "COM99", R"(C:\New\File)", R"(Z:\New)"}) {
            QCOMPARE(find(name), QByteArray::number(ENOENT));
        }
        QVERIFY(test::namesIn(m_folder.path()) == m_before);
    }

    void missingIsToldFromRefused()
    {
        const DosNames names(m_folder.path());
        QVERIFY(isNotFound(names.find("COM99").error()));
        QVERIFY(!isNotFound(names.find("a/b").error()));
        QCOMPARE(names.find("COM99").error().description, "No such file or directory");
    }

    void aFolderThatIsMissing()
    {
        const DosNames names(m_folder / "nowhere");
        QVERIFY(isNotFound(names.find("COM5").error()));
        QVERIFY(!std::filesystem::exists(m_folder / "nowhere"));
    }

    void aFolderThatIsAFile() { QVERIFY(isNotFound(DosNames(m_folder / "teslin").find("COM5").error())); }

    void anEmptyFolderNameFindsNothing()
    {
        const std::filesystem::path before = std::filesystem::current_path();
        std::filesystem::current_path(m_folder.path());
        const auto path = DosNames(std::filesystem::path()).find("COM5");
        std::filesystem::current_path(before);
        QVERIFY(!path);
        QVERIFY(isNotFound(path.error()));
    }

    void entriesAreLookedUpAfresh()
    {
        const TemporaryFolder folder;
        const DosNames names(folder.path());
        QVERIFY(!names.find("COM3"));
        test::writeBytes(folder / "com3", "");
        QVERIFY(names.find("COM3"));
        std::filesystem::remove(folder / "com3");
        QVERIFY(!names.find("COM3"));
    }

    void defaultFolder()
    {
        const Variable folder("TESLIN_DOSDEVICES");
        const Variable home("HOME");
        qputenv("HOME", "/home/someone");
        qputenv("TESLIN_DOSDEVICES", "/tmp/doors");
        QCOMPARE(DosNames::defaultFolder().string(), "/tmp/doors");
        qputenv("TESLIN_DOSDEVICES", "");
        QCOMPARE(DosNames::defaultFolder().string(), "/home/someone/.teslin/dosdevices");
        qunsetenv("TESLIN_DOSDEVICES");
        QCOMPARE(DosNames::defaultFolder().string(), "/home/someone/.teslin/dosdevices");
        qunsetenv("HOME");
        QCOMPARE(DosNames::defaultFolder().string(), "");
    }
};

static const testsupport::RunnableTest<DosNamesTest> kRunnable;
#include "DosNamesTest.moc"
