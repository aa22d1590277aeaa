#include "text/HexText.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace text;

class HexTextTest final : public QObject
{
    Q_OBJECT

private slots:
    void hexNumber_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<uint>("number");
        QTest::newRow("address") << QByteArray("01A") << 0x1Au;
        QTest::newRow("lower case") << QByteArray("ff") << 0xFFu;
        QTest::newRow("empty") << QByteArray() << 0u;
        QTest::newRow("blank") << QByteArray(" ") << 0u;
        QTest::newRow("not hex") << QByteArray("ZZ") << 0u;
        QTest::newRow("stops at another character") << QByteArray("9G") << 9u;
        QTest::newRow("blank inside") << QByteArray("1 2") << 0x12u;
        QTest::newRow("tab and line feed inside") << QByteArray("1\t2\n3") << 0x123u;
        QTest::newRow("carriage return ends it") << QByteArray("1\r2") << 1u;
        QTest::newRow("trailing blank") << QByteArray("5 ") << 5u;
        QTest::newRow("semicolon first") << QByteArray(";6") << 0u;
        QTest::newRow("a pair reads its first half") << QByteArray("081-082") << 0x81u;
        QTest::newRow("prefix 0x") << QByteArray("0x1F") << 0u;
        QTest::newRow("minus") << QByteArray("-5") << 0u;
        QTest::newRow("plus") << QByteArray("+5") << 0u;
        QTest::newRow("longer than 32 bits keeps the low ones") << QByteArray("123456789A") << 0x3456789Au;
    }
    void hexNumber()
    {
        QFETCH(QByteArray, text);
        QFETCH(uint, number);
        QCOMPARE(text::hexNumber(text.toStdString()), number);
    }

    void bytesKeepTheLowEightBits()
    {
        QCOMPARE(int{text::hexByte("1FF")}, 0xFF);
        QCOMPARE(int{text::hexByte("123")}, 0x23);
        QCOMPARE(int{text::hexByte("95")}, 0x95);
    }

    void decimalNumber_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("number");
        QTest::newRow("plain") << QByteArray("18") << 18.0;
        QTest::newRow("empty") << QByteArray() << 0.0;
        QTest::newRow("trailing letters") << QByteArray("12abc") << 12.0;
        QTest::newRow("letters first") << QByteArray("abc") << 0.0;
        QTest::newRow("sign") << QByteArray("-3") << -3.0;
        QTest::newRow("fraction") << QByteArray("2.5") << 2.5;
        QTest::newRow("fraction of several digits") << QByteArray("2.375") << 2.375;
        QTest::newRow("blanks") << QByteArray(" 1 2 ") << 12.0;
        QTest::newRow("control character") << QByteArray("12\r") << 12.0;
        QTest::newRow("huge") << QByteArray("99999999999") << 99999999999.0;
    }
    void decimalNumber()
    {
        QFETCH(QByteArray, text);
        QFETCH(double, number);
        QCOMPARE(text::decimalNumber(text.toStdString()), number);
    }

    void digits()
    {
        QCOMPARE(text::hexTwoDigits(5), "05");
        QCOMPARE(text::hexTwoDigits(0xAB), "AB");
        QCOMPARE(text::hexThreeDigits(0x1A), "01A");
        QCOMPARE(text::hexThreeDigits(0x114), "114");
        QCOMPARE(text::hexThreeDigits(0x1000), "000");
    }

    void nextAddress()
    {
        QCOMPARE(text::nextAddress("083"), "084");
        QCOMPARE(text::nextAddress("0FF"), "100");
        QCOMPARE(text::nextAddress("09f"), "0A0");
        QCOMPARE(text::nextAddress("FFF"), "000");
        QCOMPARE(text::nextAddress("xyz"), "001");
    }
};

static const testsupport::RunnableTest<HexTextTest> kRunnable;
#include "HexTextTest.moc"
