#include "device/StrictReplies.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace device;

class StrictRepliesTest final : public QObject
{
    Q_OBJECT

private slots:
    void parameterValue_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<int>("value"); // -1: not believed
        QTest::newRow("the reply") << QByteArray("/rawxact WPV013 reply 00: 95") << 0x95;
        QTest::newRow("zero") << QByteArray("/rawxact WPV013 reply 00: 00") << 0x00;
        QTest::newRow("lower-case digits") << QByteArray("/rawxact WPV013 reply 00: fe") << 0xFE;
        QTest::newRow("another head that tells no address") << QByteArray("some driver: reply WP 00: 95") << 0x95;
        QTest::newRow("one character short") << QByteArray("/rawxact WPV013 reply 00: 9") << -1;
        QTest::newRow("no payload") << QByteArray("/rawxact WPV013 reply 00: ") << -1;
        QTest::newRow("one character long") << QByteArray("/rawxact WPV013 reply 00: 955") << -1;
        QTest::newRow("no hex digit") << QByteArray("/rawxact WPV013 reply 00: 9G") << -1;
        QTest::newRow("a blank in the value") << QByteArray("/rawxact WPV013 reply 00:  9") << -1;
        QTest::newRow("another address") << QByteArray("/rawxact WPV014 reply 00: 95") << -1;
        QTest::newRow("the address in other letters") << QByteArray("/rawxact WPV01a reply 00: 95") << -1;
        QTest::newRow("an identification") << QByteArray("/rawxact WCY reply 00 ok: 123") << -1;
        QTest::newRow("both letters") << QByteArray("/rawxact WPV013 reply WC: 95") << -1;
        QTest::newRow("the echo of a write") << QByteArray("/rawsend WPW013=95 ok ok: 95") << -1;
        QTest::newRow("the echo in capitals") << QByteArray("/RAWSEND WPW013=95 ok ok: 95") << -1;
        QTest::newRow("a garbled head") << QByteArray("/rawxact WPV013 rep\xECy 00: 95") << -1;
        QTest::newRow("a control character") << QByteArray("/rawxact WPV013\treply 00: 95") << -1;
        QTest::newRow("empty") << QByteArray() << -1;
    }
    void parameterValue()
    {
        QFETCH(QByteArray, line);
        QFETCH(int, value);
        const auto found = strict::parameterValue(line.toStdString(), "013");
        QCOMPARE(found ? static_cast<int>(*found) : -1, value);
    }

    void echo_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<bool>("isEcho");
        QTest::newRow("the echo") << QByteArray("/rawsend WPW013=95 ok") << true;
        QTest::newRow("in capitals, telling nothing") << QByteArray("/RAWSEND ok") << true;
        QTest::newRow("of another address") << QByteArray("/rawsend WPW014=95 ok") << false;
        QTest::newRow("of another value") << QByteArray("/rawsend WPW013=94 ok") << false;
        QTest::newRow("a reply") << QByteArray("/rawxact WPV013 reply 00: 95") << false;
        QTest::newRow("empty") << QByteArray() << false;
    }
    void echo()
    {
        QFETCH(QByteArray, line);
        QTEST(strict::isEchoOfWrite(line.toStdString(), "013", "95"), "isEcho");
    }
};

static const testsupport::RunnableTest<StrictRepliesTest> kRunnable;
#include "StrictRepliesTest.moc"
