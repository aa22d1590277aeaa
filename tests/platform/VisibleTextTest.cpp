#include "platform/qt/VisibleText.h"
#include "tests/support/RunnableTest.h"

#include <QSet>
#include <QTest>

using platform::fromVisible;
using platform::toVisible;

namespace {

std::string oneByte(int byte)
{
    return std::string(1, static_cast<char>(byte));
}

} // namespace

class VisibleTextTest final : public QObject
{
    Q_OBJECT

private slots:
    void everyByteIsOneVisibleCharacterOfItsOwn()
    {
        QSet<QString> seen;
        for (int byte = 0; byte < 256; ++byte) {
            const QString shown = toVisible(oneByte(byte));
            QCOMPARE(shown.size(), 1);
            const QChar character = shown.front();
            QVERIFY2(character.isPrint() || character.category() == QChar::Other_PrivateUse,
                     QByteArray::number(byte, 16).constData());
            QVERIFY2(!seen.contains(shown), QByteArray::number(byte, 16).constData());
            seen.insert(shown);
            QCOMPARE(fromVisible(shown), oneByte(byte));
        }
    }

    void standIns_data()
    {
        QTest::addColumn<int>("byte");
        QTest::addColumn<int>("character");
        QTest::newRow("NUL") << 0x00 << 0x2400;
        QTest::newRow("TAB") << 0x09 << 0x2409;
        QTest::newRow("LF") << 0x0A << 0x240A;
        QTest::newRow("CR") << 0x0D << 0x240D;
        QTest::newRow("US") << 0x1F << 0x241F;
        QTest::newRow("blank") << 0x20 << 0x20;
        QTest::newRow("tilde") << 0x7E << 0x7E;
        QTest::newRow("DEL") << 0x7F << 0x2421;
        QTest::newRow("euro") << 0x80 << 0x20AC;
        QTest::newRow("81") << 0x81 << 0xE081;
        QTest::newRow("8D") << 0x8D << 0xE08D;
        QTest::newRow("8F") << 0x8F << 0xE08F;
        QTest::newRow("90") << 0x90 << 0xE090;
        QTest::newRow("9D") << 0x9D << 0xE09D;
        QTest::newRow("no-break space") << 0xA0 << 0xA0;
        QTest::newRow("soft hyphen") << 0xAD << 0x2010;
        QTest::newRow("last") << 0xFF << 0xFF;
    }
    void standIns()
    {
        QFETCH(int, byte);
        QFETCH(int, character);
        QCOMPARE(toVisible(oneByte(byte)), QString(QChar(character)));
    }

    void lineEnds()
    {
        QCOMPARE(toVisible("a\r\nb\r\n"), QStringLiteral("a\nb\n"));
        QCOMPARE(toVisible("a\rb\nc\n\r"), QStringLiteral("a\u240Db\u240Ac\u240A\u240D"));
        QCOMPARE(toVisible("a\r\r\n"), QStringLiteral("a\u240D\n"));
        QCOMPARE(fromVisible(QStringLiteral("a\nb\u2028c\u2029")), std::string("a\r\nb\r\nc\r\n"));
        QCOMPARE(fromVisible(QStringLiteral("a\u240D\n\u240A")), std::string("a\r\r\n\n"));
    }

    void foreignCharacters()
    {
        QCOMPARE(fromVisible(QStringLiteral("\u2420\u2422\uE080\uE0A0\uE000\U0001F600\uFFFC")), std::string("???????"));
    }
};

static const testsupport::RunnableTest<VisibleTextTest> kRunnable;
#include "VisibleTextTest.moc"
