#include "platform/FileNameText.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QByteArray>
#include <QTest>

#include <filesystem>
#include <string>

// A file's name as messages show it, one byte a character.
class FileNameTextTest final : public QObject
{
    Q_OBJECT

private slots:
    void aNameIsTextOfTheCodePage_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("ASCII") << QStringLiteral("/shop/till 4.tlc") << QByteArray("/shop/till 4.tlc");
        QTest::newRow("nothing") << QString() << QByteArray();
        QTest::newRow("two bytes") << QStringLiteral("Süd.tlc")
                                   << QByteArray("S\xFC"
                                                 "d.tlc");
        QTest::newRow("three bytes") << QStringLiteral("5 €.tlc") << QByteArray("5 \x80.tlc");
        QTest::newRow("a letter that the code page lacks") << QStringLiteral("Łódź")
                                                           << QByteArray("?\xF3"
                                                                         "d?");
        QTest::newRow("four bytes") << QStringLiteral("a😀b") << QByteArray("a?b");
    }
    void aNameIsTextOfTheCodePage()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, text);
        const std::string utf8 = name.toStdString();
        const std::filesystem::path path(std::u8string(utf8.begin(), utf8.end()));
        QCOMPARE(QByteArray::fromStdString(platform::fileNameText(path)), text);
    }

#ifdef Q_OS_WIN
    void halfOfAPairIsAQuestionMark()
    {
        QCOMPARE(platform::fileNameText(std::filesystem::path(std::wstring{L'a', wchar_t(0xD83D), L'b'})), "a?b");
        QCOMPARE(platform::fileNameText(std::filesystem::path(std::wstring{L'a', wchar_t(0xDE00), L'b'})), "a?b");
        QCOMPARE(platform::fileNameText(std::filesystem::path(std::wstring{L'a', wchar_t(0xD83D)})), "a?");
    }
#else
    void bytesThatAreNoTextAreQuestionMarks_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("a following byte alone") << QByteArray("a\x80"
                                                              "b")
                                                << QByteArray("a?b");
        QTest::newRow("cut short") << QByteArray("a\xC3") << QByteArray("a?");
        QTest::newRow("not followed") << QByteArray("a\xC3"
                                                    "bc")
                                      << QByteArray("a?bc");
        QTest::newRow("too long a form") << QByteArray("\xC0\xAF") << QByteArray("??");
        QTest::newRow("a star in too long a form") << QByteArray("\xE0\x80\xAA") << QByteArray("???");
        QTest::newRow("half of a pair") << QByteArray("\xED\xA0\xBD") << QByteArray("???");
        QTest::newRow("just beyond the last character") << QByteArray("\xF4\x90\x80\x80") << QByteArray("????");
        QTest::newRow("beyond the last character") << QByteArray("\xF5\x80\x80\x80") << QByteArray("????");
    }
    void bytesThatAreNoTextAreQuestionMarks()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, text);
        QCOMPARE(QByteArray::fromStdString(platform::fileNameText(name.toStdString())), text);
    }
#endif
};

static const testsupport::RunnableTest<FileNameTextTest> kRunnable;
#include "FileNameTextTest.moc"
