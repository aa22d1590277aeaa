#include "text/AnsiText.h"
#include "platform/qt/AnsiText.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace platform;

class AnsiTextTest final : public QObject
{
    Q_OBJECT

private slots:
    void everyByteSurvives()
    {
        std::string all;
        for (int byte = 0; byte < 256; ++byte) {
            all += static_cast<char>(byte);
        }
        QCOMPARE(toQString(all).size(), 256);
        QCOMPARE(toAnsi(toQString(all)), all);
    }

    void knownCharacters()
    {
        QCOMPARE(text::ansiToUnicode(0x95), char16_t{0x2022});
        QCOMPARE(text::ansiToUnicode(0x80), char16_t{0x20AC});
        QCOMPARE(text::ansiToUnicode(0xE9), char16_t{0x00E9});
        QCOMPARE(int{text::unicodeToAnsi(0x20AC)}, 0x80);
        QCOMPARE(int{text::unicodeToAnsi(0x2122)}, 0x99);
    }

    void undefinedBytesKeepTheirNumber_data()
    {
        QTest::addColumn<int>("byte");
        for (const int byte : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
            QTest::addRow("%02X", static_cast<unsigned>(byte)) << byte;
        }
    }
    void undefinedBytesKeepTheirNumber()
    {
        QFETCH(int, byte);
        QCOMPARE(int{text::ansiToUnicode(static_cast<std::uint8_t>(byte))}, byte);
        QCOMPARE(int{text::unicodeToAnsi(static_cast<char32_t>(byte))}, byte);
    }

    void foreignCharactersBecomeQuestionMarks()
    {
        QCOMPARE(toAnsi(QString::fromUtf8("\xCE\xB1")), "?");             // Greek alpha
        QCOMPARE(toAnsi(QString::fromUtf8("a\xF0\x9F\x98\x80z")), "a?z"); // a surrogate pair is one character
    }
};

static const testsupport::RunnableTest<AnsiTextTest> kRunnable;
#include "AnsiTextTest.moc"
