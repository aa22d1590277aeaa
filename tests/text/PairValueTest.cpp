// The two halves of a Keyboard Language value.

#include "text/PairValue.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace text;

class PairValueTest final : public QObject
{
    Q_OBJECT

private slots:
    void theEndsOfAText()
    {
        QCOMPARE(leftOf("081-082", 3), "081");
        QCOMPARE(leftOf("08", 3), "08");
        QCOMPARE(rightOf("081-082", 3), "082");
        QCOMPARE(rightOf("82", 3), "82");
    }

    // What a file holds need not have the form that the program writes.
    void twoCharactersAHalf_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");
        QTest::newRow("a pair") << QByteArray("20-03") << 0x20 << 0x03;
        QTest::newRow("nothing between the halves") << QByteArray("1234") << 0x12 << 0x34;
        QTest::newRow("lower case, more between them") << QByteArray("ab - cd") << 0xAB << 0xCD;
        QTest::newRow("the halves overlap") << QByteArray("123") << 0x12 << 0x23;
        QTest::newRow("one digit is both") << QByteArray("7") << 0x07 << 0x07;
        QTest::newRow("empty") << QByteArray() << 0 << 0;
        QTest::newRow("not hexadecimal") << QByteArray("GH-IJ") << 0 << 0;
    }
    void twoCharactersAHalf()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, first);
        QFETCH(int, second);
        const PairValue pair = pairValue(text.toStdString());
        QCOMPARE(int{pair.first}, first);
        QCOMPARE(int{pair.second}, second);
    }

    void twoDigitsAHalf()
    {
        QCOMPARE(pairText({.first = 0x20, .second = 0x03}), "20-03");
        QCOMPARE(pairText({}), "00-00");
    }
};

static const testsupport::RunnableTest<PairValueTest> kRunnable;
#include "PairValueTest.moc"
