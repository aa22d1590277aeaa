#include "tables/EditorTexts.h"
#include "tables/KeyFilters.h"
#include "tables/Parameters.h"
#include "tests/support/RunnableTest.h"
#include "text/PairValue.h"

#include <QTest>

#include <limits>
#include <string>
#include <vector>

using namespace tables;

class EditorTextsTest final : public QObject
{
    Q_OBJECT

private slots:
    void aTitleTakesNoMoreThanAThousandCharactersOfTheNotes()
    {
        QCOMPARE(editTitle_KB("083-084", std::string(1500, 'n')), "<083-084> " + std::string(1000, 'n'));
        QCOMPARE(editTitle_CFG("01A", std::string(1500, 'n')), "<01A> " + std::string(1000, 'n'));
    }

    void titles()
    {
        QCOMPARE(editTitle_CFG("001", "Parameter ID and Mod Flag (Read only)"), "<001> Parameter ID and Mod Flag ");
        QCOMPARE(editTitle_CFG("01A", "Char Output Delay [Enter as decimal] (x512 uS)"),
                 "<01A> Char Output Delay [Enter as decimal] ");
        QCOMPARE(editTitle_CFG("015", "no bracket"), "<015> no bracket");
        QCOMPARE(editTitle_CFG("0(1", "a (b"), "<0");
        QCOMPARE(editTitle_KB("09B-09C", "28, USA KB key -> ( "), "<09B-09C> 28, USA KB key -> ( ");
        QCOMPARE(kPastEndOfList, "<past end of list> ");
    }

    void binaryTexts()
    {
        QCOMPARE(binaryText(0x95), "value in binary is 1001 0101");
        QCOMPARE(binaryText(0x20, 0x03), "value in binary is 0010 0000 - 0000 0011");
    }

    void readOnlyLines()
    {
        QCOMPARE(identificationText(0x85), " ID #:05 (modified)  ");
        QCOMPARE(identificationText(0x05), " ID #:05 (unmodified)  ");
        QCOMPARE(identificationText(0xFF), " ID #:7F (modified)  ");
        QCOMPARE(idByteText(0, 0x3F), "Byte 0 = 3F");
        QCOMPARE(idByteText(1, 0x02), "Byte 1 = 02");
    }

    void delays_data()
    {
        QTest::addColumn<double>("counts");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("none") << 0.0 << QByteArray("    0.0 milliseconds");
        QTest::newRow("a typed minus zero") << -0.0 << QByteArray("    0.0 milliseconds");
        QTest::newRow("one") << 1.0 << QByteArray("    0.5 milliseconds");
        QTest::newRow("18") << 18.0 << QByteArray("    9.2 milliseconds");
        QTest::newRow("20: two digits") << 20.0 << QByteArray("   10.2 milliseconds");
        QTest::newRow("255") << 255.0 << QByteArray("  130.6 milliseconds");
        QTest::newRow("256") << 256.0 << QByteArray("*ERROR* (Legal range is 0 to 255)");
        QTest::newRow("255.5") << 255.5 << QByteArray("*ERROR* (Legal range is 0 to 255)");
        QTest::newRow("-1") << -1.0 << QByteArray("*ERROR* (Legal range is 0 to 255)");
        QTest::newRow("huge") << std::numeric_limits<double>::infinity()
                              << QByteArray("*ERROR* (Legal range is 0 to 255)");
    }
    void delays()
    {
        QFETCH(double, counts);
        QFETCH(QByteArray, text);
        QCOMPARE(QByteArray::fromStdString(delayText(counts)), text);
    }

    void sendTexts()
    {
        QCOMPARE(sendQuestion_CFG("013", "95"), "Do you want to send this parameter? ( 013=95)");
        const std::vector<std::string> one = settings_KB("080", "F1");
        QCOMPARE(one, std::vector<std::string>({"080=F1"}));
        QCOMPARE(sendQuestion_KB(one), "Do you want to send this parameter? ( 080=F1 )");
        QCOMPARE(sentNotice_KB(one), "Sent parameter: 080=F1");
        const std::vector<std::string> two = settings_KB("083-084", "10-1E");
        QCOMPARE(two, std::vector<std::string>({"083=10", "084=1E"}));
        QCOMPARE(sendQuestion_KB(two), "Do you want to send these parameters? ( 083=10 and 084=1E )");
        QCOMPARE(sentNotice_KB(two), "Sent parameters: 083=10 and 084=1E");
        QCOMPARE(settings_KB("", ""), std::vector<std::string>({"=", "="}));
    }

    void pairs()
    {
        QCOMPARE(int{text::pairValue("20-03").first}, 0x20);
        QCOMPARE(int{text::pairValue("20-03").second}, 0x03);
        QCOMPARE(text::pairText({.first = 0x01, .second = 0xAB}), "01-AB");
        QCOMPARE(int{text::pairValue("").first}, 0);
        QCOMPARE(int{text::pairValue("7").second}, 7);
        QCOMPARE(text::leftOf("ab", 3), "ab");
        QCOMPARE(text::rightOf("ab", 3), "ab");
        QCOMPARE(text::rightOf("abcd", 3), "bcd");
    }

    void keyboardRows()
    {
        QCOMPARE(keyboardRow("080"), KeyboardRow::Flags);
        QCOMPARE(keyboardRow("080 "), KeyboardRow::None);
        QCOMPARE(keyboardRow("081-082"), KeyboardRow::IdBytes);
        // By its decimal value, however that is written, and not by the hexadecimal one.
        QCOMPARE(keyboardRow("81-82"), KeyboardRow::IdBytes);
        QCOMPARE(keyboardRow(" 81"), KeyboardRow::IdBytes);
        QCOMPARE(keyboardRow("051-052"), KeyboardRow::None);
        QCOMPARE(keyboardRow("082-083"), KeyboardRow::None);
        QCOMPARE(keyboardRow("083-084"), KeyboardRow::Pair);
        QCOMPARE(keyboardRow("0FF-100"), KeyboardRow::Pair);
        QCOMPARE(keyboardRow("113-114"), KeyboardRow::Pair);
        QCOMPARE(keyboardRow("114-115"), KeyboardRow::None);
        QCOMPARE(keyboardRow(""), KeyboardRow::None);
    }

    void hexKeys()
    {
        for (int code = 0; code <= 0xFF; ++code) {
            const bool passes = (code >= '0' && code <= '9') || (code >= 'A' && code <= 'F') || code == 8;
            const bool turnsUpper = code >= 'a' && code <= 'f';
            QCOMPARE(hexKey(code), passes ? code : turnsUpper ? code - 32 : 0);
        }
    }

    void decimalKeys()
    {
        for (int code = 0; code <= 0xFF; ++code) {
            QCOMPARE(decimalKey(code), (code >= '0' && code <= '9') || code == 8 ? code : 0);
        }
    }
};

static const testsupport::RunnableTest<EditorTextsTest> kRunnable;
#include "EditorTextsTest.moc"
