#include "tests/support/RunnableTest.h"
#include "text/Dec2Bin.h"
#include "text/Parsings.h"

#include <QTest>

using namespace text;

class TextHelpersTest final : public QObject
{
    Q_OBJECT

private slots:
    void binaryTexts()
    {
        QCOMPARE(text::Dec2Bin(0), "0000 0000");
        QCOMPARE(text::Dec2Bin(255), "1111 1111");
        QCOMPARE(text::Dec2Bin(0x95), "1001 0101");
        QCOMPARE(text::Dec2Bin(1), "0000 0001");
    }

    void controlCharacters_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("named");
        QTest::newRow("empty") << QByteArray() << QByteArray();
        QTest::newRow("printable") << QByteArray("%B12 ;?") << QByteArray("%B12 ;?");
        QTest::newRow("line end") << QByteArray("a\r\nb") << QByteArray("a<CR><LF>b");
        QTest::newRow("NUL stays") << QByteArray("a\0b", 3) << QByteArray("a\0b", 3);
        QTest::newRow("DEL and above stay") << QByteArray("\x7F\x95\xFF") << QByteArray("\x7F\x95\xFF");
        const QByteArray names = "SOH STX ETX EOT ENQ ACK BEL BS HT LF VT FF CR SO SI DLE DC1 DC2 DC3 DC4 NAK SYN ETB "
                                 "CAN EM SUB ESC FS GS RS US";
        const QList<QByteArray> list = names.split(' ');
        for (int code = 1; code <= 31; ++code) {
            QTest::addRow("code %d", code)
                << QByteArray(1, static_cast<char>(code)) << QByteArray("<" + list.at(code - 1) + ">");
        }
    }
    void controlCharacters()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, named);
        std::string s = text.toStdString();
        text::NameControlChars(s);
        QCOMPARE(QByteArray::fromStdString(s), named);
    }
};

static const testsupport::RunnableTest<TextHelpersTest> kRunnable;
#include "TextHelpersTest.moc"
