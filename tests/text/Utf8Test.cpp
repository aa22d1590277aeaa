#include "text/Utf8.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QByteArray>
#include <QTest>

#include <string>

// The code page as UTF-8 and back.
class Utf8Test final : public QObject
{
    Q_OBJECT

private slots:
    void everyByteSurvivesTheWayThereAndBack()
    {
        std::string all;
        for (int byte = 0; byte < 256; ++byte) {
            all += static_cast<char>(byte);
        }
        QCOMPARE(text::fromUtf8(text::toUtf8(all)), all);
    }

    void oneTwoAndThreeBytes() { QCOMPARE(text::toUtf8("a\xFC\x80"), "a\xC3\xBC\xE2\x82\xAC"); }

    void whatIsNoTextIsAQuestionMarkForEachByte_data()
    {
        QTest::addColumn<QByteArray>("utf8");
        QTest::addColumn<QByteArray>("ansi");
        QTest::newRow("a letter that the code page lacks") << QByteArray("\xC5\x81") << QByteArray("?");
        QTest::newRow("four bytes") << QByteArray("\xF0\x9F\x98\x80") << QByteArray("?");
        QTest::newRow("a following byte alone") << QByteArray("a\x80z") << QByteArray("a?z");
        QTest::newRow("cut short") << QByteArray("\xE2\x82") << QByteArray("??");
        QTest::newRow("too long a form") << QByteArray("\xC0\xAF") << QByteArray("??");
        QTest::newRow("half of a pair") << QByteArray("\xED\xA0\xBD") << QByteArray("???");
        QTest::newRow("beyond the last character") << QByteArray("\xF4\x90\x80\x80") << QByteArray("????");
    }
    void whatIsNoTextIsAQuestionMarkForEachByte()
    {
        QFETCH(QByteArray, utf8);
        QFETCH(QByteArray, ansi);
        QCOMPARE(QByteArray::fromStdString(text::fromUtf8(utf8.toStdString())), ansi);
    }
};

static const testsupport::RunnableTest<Utf8Test> kRunnable;
#include "Utf8Test.moc"
