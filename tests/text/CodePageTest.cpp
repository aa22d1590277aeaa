// The characters of Windows-1252, both ways.

#include "tests/support/RunnableTest.h"
#include "text/AnsiText.h"

#include <QTest>

#include <string>
#include <string_view>

using namespace text;

namespace {

// The characters from 80 to 9F as the code page lists them; a dot stands for a byte that it leaves open.
constexpr std::u16string_view kFrom80 = u"€.‚ƒ„…†‡ˆ‰Š‹Œ.Ž."
                                        u".‘’“”•–—˜™š›œ.žŸ";

char16_t expected(int byte)
{
    const bool isOpen = byte < 0x80 || byte >= 0xA0 || kFrom80.at(static_cast<std::size_t>(byte - 0x80)) == u'.';
    return isOpen ? static_cast<char16_t>(byte) : kFrom80.at(static_cast<std::size_t>(byte - 0x80));
}

} // namespace

class CodePageTest final : public QObject
{
    Q_OBJECT

private slots:
    void everyByteIsItsCharacterAndBack()
    {
        for (int byte = 0; byte < 256; ++byte) {
            const char16_t character = ansiToUnicode(static_cast<std::uint8_t>(byte));
            QVERIFY2(character == expected(byte), qPrintable(QString::number(byte, 16)));
            QCOMPARE(int{unicodeToAnsi(character)}, byte);
        }
    }

    void othersAreAQuestionMark()
    {
        // The first behind the code page's own, its neighbours' numbers, and one that two bytes cannot hold.
        for (const char32_t character : {U'\u0100', U'\u017F', U'\u20AB', U'\u2123', U'\U0001F5B6'}) {
            QCOMPARE(unicodeToAnsi(character), std::uint8_t{'?'});
        }
        // The numbers of bytes that stand for other characters.
        for (const char32_t character : {char32_t{0x80}, char32_t{0x9F}}) {
            QCOMPARE(unicodeToAnsi(character), std::uint8_t{'?'});
        }
    }
};

static const testsupport::RunnableTest<CodePageTest> kRunnable;
#include "CodePageTest.moc"
