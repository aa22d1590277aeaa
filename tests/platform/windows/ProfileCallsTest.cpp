// The program's profile strings beside the system's own calls, on the same files: what the one writes the other reads.

#include "platform/ProfileStrings.h"
#include "platform/windows/Windows.h"
#include "tests/platform/TestFiles.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <array>

using platform::ProfileStrings;
using test::TemporaryFolder;

namespace {

// A file that the system has not seen yet, because it keeps files in memory for a while.
struct File
{
    explicit File(const QByteArray& bytes)
        : path(folder / "TeslinConfigure.INI")
    {
        if (!bytes.isEmpty()) {
            test::writeBytes(path, bytes.toStdString());
        }
    }

    [[nodiscard]] QByteArray ours(const char* section, const char* key) const
    {
        return QByteArray::fromStdString(ProfileStrings(path).get(section, key));
    }
    [[nodiscard]] QByteArray theirs(const char* section, const char* key) const
    {
        std::array<char, platform::kProfileBufferSize> buffer{};
        const DWORD length =
            ::GetPrivateProfileStringA(section, key, "", buffer.data(), DWORD{buffer.size()}, path.string().c_str());
        return {buffer.data(), static_cast<qsizetype>(length)};
    }
    [[nodiscard]] bool letThemWrite(const char* section, const char* key, const QByteArray& value) const
    {
        return ::WritePrivateProfileStringA(section, key, value.constData(), path.string().c_str()) != 0 &&
               ::WritePrivateProfileStringA(nullptr, nullptr, nullptr, path.string().c_str()) == 0; // to the disk
    }

    TemporaryFolder folder;
    std::filesystem::path path;
};

} // namespace

class ProfileCallsTest final : public QObject
{
    Q_OBJECT

private:
    static void oddFiles()
    {
        QTest::addColumn<QByteArray>("bytes");
        const auto row = [](const char* what, const QByteArray& bytes) { QTest::newRow(what) << bytes; };
        row("plain", "[Name]\r\nFriendly Name=Teslin\r\n");
        row("other case", "[NAME]\r\nfriendly NAME=Teslin\r\n");
        row("blanks around", "  [Name]\r\n  Friendly Name  =  Teslin  \r\n");
        row("tabs around", "[Name]\r\n\tFriendly Name\t=\tTeslin\t\r\n");
        row("double quotes", "[Name]\r\nFriendly Name=\"Teslin\"\r\n");
        row("single quotes", "[Name]\r\nFriendly Name='Teslin'\r\n");
        row("blanks inside quotes", "[Name]\r\nFriendly Name=\"  Teslin \"\r\n");
        row("one quote", "[Name]\r\nFriendly Name=\"Teslin\r\n");
        row("quotes of two kinds", "[Name]\r\nFriendly Name=\"Teslin'\r\n");
        row("quotes inside quotes", "[Name]\r\nFriendly Name=\"\"Teslin\"\"\r\n");
        row("a quote and nothing else", "[Name]\r\nFriendly Name=\"\r\n");
        row("nothing", "");
        row("no section", "Friendly Name=Teslin\r\n");
        row("empty value", "[Name]\r\nFriendly Name=\r\n");
        row("other section first", "[Port]\r\nFriendly Name=wrong\r\n[Name]\r\nFriendly Name=Teslin\r\n");
        row("key twice", "[Name]\r\nFriendly Name=first\r\nFriendly Name=second\r\n");
        row("section twice", "[Name]\r\nOther=1\r\n[Name]\r\nFriendly Name=second\r\n");
        row("comment", "[Name]\r\n;Friendly Name=comment\r\nFriendly Name=Teslin\r\n");
        row("line feeds", "[Name]\nFriendly Name=Teslin\n");
        row("carriage returns", "[Name]\rFriendly Name=Teslin\r");
        row("no line end", "[Name]\r\nFriendly Name=Teslin");
        row("equal sign in the value", "[Name]\r\nFriendly Name=a=b\r\n");
        row("39 characters", "[Name]\r\nFriendly Name=" + QByteArray(39, 'x') + "\r\n");
        row("40 characters", "[Name]\r\nFriendly Name=" + QByteArray(40, 'x') + "\r\n");
        row("300 characters", "[Name]\r\nFriendly Name=" + QByteArray(300, 'x') + "\r\n");
        row("letters beyond ASCII", "[Name]\r\nFriendly Name=L\xE4ser \x80\r\n");
        row("text behind the section", "[Name] old\r\nFriendly Name=Teslin\r\n");
        row("empty lines", "\r\n\r\n[Name]\r\n\r\nFriendly Name=Teslin\r\n\r\n");
        row("line without a key", "[Name]\r\nnonsense\r\nFriendly Name=Teslin\r\n");
    }

private slots:
    // The bytes are the program's code page, and so must be the machine's for the two to be compared.
    void initTestCase() { QCOMPARE(::GetACP(), 1252U); }

    void bothReadTheSame_data() { oddFiles(); }
    void bothReadTheSame()
    {
        QFETCH(QByteArray, bytes);
        const File file(bytes);
        QCOMPARE(file.ours("Name", "Friendly Name"), file.theirs("Name", "Friendly Name"));
    }

    void theSystemReadsWhatTheProgramWrote_data() { oddFiles(); }
    void theSystemReadsWhatTheProgramWrote()
    {
        QFETCH(QByteArray, bytes);
        const File file(bytes);
        QVERIFY(ProfileStrings(file.path).set("Name", "Friendly Name", "Teslin 2"));
        QVERIFY(ProfileStrings(file.path).set("Port", "Virtual Port", "COM12"));
        QCOMPARE(file.theirs("Name", "Friendly Name"), "Teslin 2");
        QCOMPARE(file.theirs("Port", "Virtual Port"), "COM12");
    }

    void theProgramReadsWhatTheSystemWrote_data() { oddFiles(); }
    void theProgramReadsWhatTheSystemWrote()
    {
        QFETCH(QByteArray, bytes);
        const File file(bytes);
        QVERIFY(file.letThemWrite("Name", "Friendly Name", "Teslin 2"));
        QVERIFY(file.letThemWrite("Port", "Virtual Port", "COM12"));
        QCOMPARE(file.ours("Name", "Friendly Name"), "Teslin 2");
        QCOMPARE(file.ours("Port", "Virtual Port"), "COM12");
    }

    void valuesThereAndBack_data()
    {
        QTest::addColumn<QByteArray>("value");
        for (const char* const value : {"Teslin", "10,20,300,400", "a=b", "[x]", "; no comment", "L\xE4ser", "100%"}) {
            QTest::newRow(value) << QByteArray(value);
        }
    }
    void valuesThereAndBack()
    {
        QFETCH(QByteArray, value);
        const File written({});
        QVERIFY(ProfileStrings(written.path).set("Select_Window_frmMain", "Settings", value.toStdString()));
        QCOMPARE(written.theirs("Select_Window_frmMain", "Settings"), value);
        const File given({});
        QVERIFY(given.letThemWrite("Select_Window_frmMain", "Settings", value));
        QCOMPARE(given.ours("Select_Window_frmMain", "Settings"), value);
        // A new file is the same file, whoever makes it.
        QCOMPARE(test::bytesOf(written.path), test::bytesOf(given.path));
    }
};

static const testsupport::RunnableTest<ProfileCallsTest> kRunnable;
#include "ProfileCallsTest.moc"
