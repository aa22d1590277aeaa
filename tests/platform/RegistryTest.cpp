#include "platform/Registry.h"
#include "platform/StartProgram.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace platform;

class RegistryTest final : public QObject
{
    Q_OBJECT

private slots:
    void valuesAsText_data()
    {
        QTest::addColumn<uint>("type");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("text");
        const auto row = [](const char* what, uint type, const QByteArray& bytes, const QByteArray& text) {
            QTest::newRow(what) << type << bytes << text;
        };
        row("string", 1, QByteArray("C:\\x.exe\0", 9), "C:\\x.exe");
        row("string with more behind its end", 1, QByteArray("C:\\x.exe\0old", 12), "C:\\x.exe");
        row("string without an end", 1, "C:\\x.exe", "C:\\x.exe");
        row("empty string", 1, QByteArray("\0", 1), "");
        row("string of no bytes", 1, "", "");
        row("string with bytes above 127", 1, QByteArray("\xE9\x80\0", 3), "\xE9\x80");

        row("double word", 4, "\x78\x56\x34\x12", "305419896"); // 12345678 in hexadecimal digits
        row("zero", 4, QByteArray(4, '\0'), "0");
        row("one", 4, QByteArray("\x01\0\0\0", 4), "1");
        row("bytes of one digit keep their zero", 4, QByteArray("\x01\x02\x03\x04", 4), "67305985");
        row("the highest bit is no sign", 4, QByteArray("\0\0\0\x80", 4), "2147483648");
        row("all bits", 4, "\xFF\xFF\xFF\xFF", "4294967295");
        row("two bytes", 4, QByteArray("\0\x01", 2), "256");
        row("no bytes", 4, "", "0");
        row("five bytes", 4, QByteArray("\x05\0\0\0\x01", 5), "5");

        row("string to be expanded", 2, QByteArray("%x%\0", 4), QByteArray("%x%\0", 4));
        row("binary", 3, QByteArray("a\0b", 3), QByteArray("a\0b", 3));
        row("double word, high byte first", 5, QByteArray("\0\0\0\x01", 4), QByteArray("\0\0\0\x01", 4));
        row("several strings", 7, QByteArray("a\0b\0\0", 5), QByteArray("a\0b\0\0", 5));
        row("no type", 0, "", "");
    }
    void valuesAsText()
    {
        QFETCH(uint, type);
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, text);
        QCOMPARE(QByteArray::fromStdString(registryValueText({type, bytes.toStdString()})), text);
    }

#ifndef Q_OS_WIN
    void elsewhereThereIsNoRegistry()
    {
        QVERIFY(!makeRegistry()->read(kLocalMachine, R"(SOFTWARE\Microsoft\Shared Tools\MSINFO)", "PATH"));
    }

    void elsewhereNothingIsStarted()
    {
        QVERIFY(!makeStartProgram()->start("/bin/true"));
    }
#endif
};

static const testsupport::RunnableTest<RegistryTest> kRunnable;
#include "RegistryTest.moc"
