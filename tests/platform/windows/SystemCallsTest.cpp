// What the program asks of the system beside files and ports: its names, its errors, its registry, its programs.

#include "platform/DosNames.h"
#include "platform/Registry.h"
#include "platform/StartProgram.h"
#include "platform/windows/Windows.h"
#include "tests/platform/TestFiles.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace platform;

class SystemCallsTest final : public QObject
{
    Q_OBJECT

private slots:
    void namesGoToTheSystemAsTheyAre_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("path");
        const QString device = QStringLiteral(R"(\\.\)");
        QTest::newRow("port") << QByteArray("COM5") << device + "COM5";
        QTest::newRow("port above nine") << QByteArray("COM12") << device + "COM12";
        QTest::newRow("device") << QByteArray(R"(\\.\Teslin)") << device + "Teslin";
        QTest::newRow("device beyond ASCII") << QByteArray("\\\\.\\\x80") << device + QChar(0x20AC);
        QTest::newRow("folder") << QByteArray(R"(C:\Windows\system32)") << QStringLiteral(R"(C:\Windows\system32)");
    }
    void namesGoToTheSystemAsTheyAre()
    {
        QFETCH(QByteArray, name);
        QFETCH(QString, path);
        const auto found = DosNames(std::filesystem::path("ignored")).find(name.toStdString());
        QVERIFY(found);
        QCOMPARE(QString::fromStdWString(found.value().native()), path);
    }

    void missingFilesAreNotFound_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("file") << QByteArray(R"(C:\Windows\system32\drivers\no such driver.sys)");
        QTest::newRow("folder") << QByteArray(R"(C:\no such folder\Teslin.sys)");
    }
    void missingFilesAreNotFound()
    {
        QFETCH(QByteArray, name);
        const auto found = DosNames().find(name.toStdString());
        QVERIFY(!found);
        QVERIFY(isNotFound(found.error()));
    }

    void otherFormsAreRefused_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const char* const name :
             {"", "Teslin", R"(\\.\)", R"(\\.\a\b)", R"(C:\..\x)", "C:/Windows", R"(C:\a\\b)"}) {
            QTest::newRow(*name == '\0' ? "nothing" : name) << QByteArray(name);
        }
        QTest::newRow("NUL") << QByteArray("COM5\0", 5);
    }
    void otherFormsAreRefused()
    {
        QFETCH(QByteArray, name);
        const auto found = DosNames().find(name.toStdString());
        QVERIFY(!found);
        QVERIFY(!isNotFound(found.error()));
    }

    void errorsHaveANumberAndAText()
    {
        const SystemError error = systemError(ERROR_FILE_NOT_FOUND);
        QCOMPARE(error.number, 2);
        QVERIFY(error.description.size() > 5);
        QVERIFY(std::string(".\r\n ").find(error.description.back()) == std::string::npos);
        QVERIFY(error.description != systemError(ERROR_ACCESS_DENIED).description);
        QCOMPARE(systemError(0x3FFFFFF).description, "Unknown error 67108863");
        ::SetLastError(ERROR_ACCESS_DENIED);
        QCOMPARE(lastSystemError().number, 5);
    }

    void whatIsNotFound()
    {
        QVERIFY(isNotFound(systemError(ERROR_FILE_NOT_FOUND)));
        QVERIFY(isNotFound(systemError(ERROR_PATH_NOT_FOUND)));
        QVERIFY(!isNotFound(systemError(ERROR_ACCESS_DENIED)));
        QVERIFY(!isNotFound(systemError(ERROR_SHARING_VIOLATION)));
    }

    void theRegistryIsRead()
    {
        constexpr std::uint32_t kCurrentUser = 0x80000001;
        const char* const key = R"(Software\Brennic\SystemCallsTest)";
        HKEY handle = nullptr;
        QCOMPARE(::RegCreateKeyA(HKEY_CURRENT_USER, key, &handle), LSTATUS{ERROR_SUCCESS});
        const std::string text("C:\\L\xE4ser.exe\0", 13);
        const std::string large(2000, 'x');
        const DWORD number = 0x12345678;
        const auto write = [handle](const char* name, DWORD type, const void* bytes, std::size_t size) {
            return ::RegSetValueExA(handle, name, 0, type, static_cast<const BYTE*>(bytes), static_cast<DWORD>(size));
        };
        QCOMPARE(write("text", REG_SZ, text.data(), text.size()), LSTATUS{ERROR_SUCCESS});
        QCOMPARE(write("number", REG_DWORD, &number, sizeof number), LSTATUS{ERROR_SUCCESS});
        QCOMPARE(write("large", REG_SZ, large.c_str(), large.size() + 1), LSTATUS{ERROR_SUCCESS});
        ::RegCloseKey(handle);

        const auto registry = makeRegistry();
        const auto readText = registry->read(kCurrentUser, key, "text");
        const auto readNumber = registry->read(kCurrentUser, key, "number");
        const bool hasLarge = registry->read(kCurrentUser, key, "large").has_value();
        ::RegDeleteKeyA(HKEY_CURRENT_USER, key);
        QVERIFY(readText);
        QCOMPARE(readText->type, kRegistryString);
        QCOMPARE(readText->bytes, text);
        QVERIFY(readNumber);
        QCOMPARE(registryValueText(*readNumber), "305419896");
        QVERIFY(!hasLarge);
        QVERIFY(!registry->read(kCurrentUser, key, "text")); // the key is gone
        QVERIFY(!registry->read(kLocalMachine, R"(SOFTWARE\Brennic\No such key)", "PATH"));
    }

    // The test itself is the program that is started, and tells by a file that it was.
    void aProgramIsStartedByAPathWithVariablesAndBlanks()
    {
        const auto starter = makeStartProgram();
        QVERIFY(!starter->start(R"(%SystemRoot%\no such program.exe)"));
        QVERIFY(!starter->start(""));
        const test::TemporaryFolder folder;
        const auto copy = folder / "a program.exe";
        std::filesystem::copy_file(QCoreApplication::applicationFilePath().toStdWString(), copy);
        const auto sign = folder / "started";
        qputenv("TESLIN_TEST_FOLDER", QByteArray::fromStdString(folder.path().string()));
        qputenv("TESLIN_TEST_SIGN", QByteArray::fromStdString(sign.string()));
        QVERIFY(starter->start(R"(%TESLIN_TEST_FOLDER%\a program.exe)"));
        QTRY_VERIFY_WITH_TIMEOUT(std::filesystem::exists(sign), 20'000);
    }
};

int main(int argc, char* argv[])
{
    if (const QByteArray sign = qgetenv("TESLIN_TEST_SIGN"); !sign.isEmpty()) {
        test::writeBytes(sign.toStdString(), "here");
        return 0;
    }
    const QCoreApplication application(argc, argv);
    return testsupport::runTests(argc, argv);
}

static const testsupport::RunnableTest<SystemCallsTest> kRunnable;
#include "SystemCallsTest.moc"
