#include "simulator/EscapedText.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace simulator;

class EscapedTextTest final : public QObject
{
    Q_OBJECT

private slots:
    void quoted_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray() << QByteArray("\"\"");
        QTest::newRow("a command") << QByteArray("/rawxact WPV013\n") << QByteArray("\"/rawxact WPV013\\n\"");
        QTest::newRow("three named ones") << QByteArray("\n\r\t") << QByteArray("\"\\n\\r\\t\"");
        QTest::newRow("backslash and quotation mark") << QByteArray("\\xA5 \"") << QByteArray("\"\\\\xA5 \\\"\"");
        QTest::newRow("first control byte") << QByteArray("\0", 1) << QByteArray("\"\\x00\"");
        QTest::newRow("last control byte") << QByteArray("\x1F") << QByteArray("\"\\x1F\"");
        QTest::newRow("blank and tilde") << QByteArray(" ~") << QByteArray("\" ~\"");
        QTest::newRow("delete") << QByteArray("\x7F") << QByteArray("\"\\x7F\"");
        QTest::newRow("upper half") << QByteArray("\x80\xFF") << QByteArray("\"\\x80\\xFF\"");
    }
    void quoted()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, text);
        QCOMPARE(QByteArray::fromStdString(simulator::quoted(bytes.toStdString())), text);
    }

    void everyByteComesBack()
    {
        std::string all;
        for (int byte = 0; byte < 256; ++byte) {
            all += static_cast<char>(byte);
        }
        const std::string text = simulator::quoted(all);
        std::string read;
        QVERIFY(unescape(std::string_view(text).substr(1, text.size() - 2), read));
        QCOMPARE(read, all);
    }

    void hexDigitsOfBothCasesAreRead()
    {
        std::string bytes;
        QVERIFY(unescape("\\xa5\\xA5\\x0d", bytes));
        QCOMPARE(bytes, std::string("\xA5\xA5\r"));
    }

    void refusals_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("error");
        const QByteArray unknown = "unknown escape; known are \\n \\r \\t \\\\ \\\" and \\xHH";
        const QByteArray hex = "\\x wants two hexadecimal digits";
        QTest::newRow("unknown letter") << QByteArray("a\\q") << unknown;
        QTest::newRow("upper case") << QByteArray("\\N") << unknown;
        QTest::newRow("nothing behind the backslash") << QByteArray("a\\") << unknown;
        QTest::newRow("no digits") << QByteArray("\\x") << hex;
        QTest::newRow("one digit") << QByteArray("\\x4") << hex;
        QTest::newRow("not a first digit") << QByteArray("\\xG0") << hex;
        QTest::newRow("not a second digit") << QByteArray("\\x0G") << hex;
    }
    void refusals()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, error);
        std::string bytes = "as it was";
        QCOMPARE(QByteArray::fromStdString(unescape(text.toStdString(), bytes).error), error);
        QCOMPARE(bytes, std::string("as it was"));
    }
};

static const testsupport::RunnableTest<EscapedTextTest> kRunnable;
#include "EscapedTextTest.moc"
