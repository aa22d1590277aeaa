#include "cli/Settings.h"
#include "cli/Failure.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

class SettingsTest final : public QObject
{
    Q_OBJECT

private slots:
    void accepted()
    {
        const cli::Values settings = cli::readSettings({"01a=20", "013=95", "114=fF"}, false);
        QCOMPARE(settings.size(), std::size_t{3});
        QCOMPARE(int{settings.at("01A")}, 0x20);
        QCOMPARE(int{settings.at("013")}, 0x95);
        QCOMPARE(int{settings.at("114")}, 0xFF);
    }

    void refused_data()
    {
        QTest::addColumn<QByteArray>("setting");
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("no equals sign") << QByteArray("013") << QByteArray("\"013\" is no setting");
        QTest::newRow("no value") << QByteArray("013=") << QByteArray("two hexadecimal digits, 00 to FF");
        QTest::newRow("one digit") << QByteArray("013=5") << QByteArray("two hexadecimal digits, 00 to FF");
        QTest::newRow("too large") << QByteArray("013=100") << QByteArray("two hexadecimal digits, 00 to FF");
        QTest::newRow("not hex") << QByteArray("013=0x") << QByteArray("two hexadecimal digits, 00 to FF");
        QTest::newRow("a sign") << QByteArray("013=-1") << QByteArray("two hexadecimal digits, 00 to FF");
        QTest::newRow("short address") << QByteArray("13=95") << QByteArray("three hexadecimal digits");
        QTest::newRow("no such parameter") << QByteArray("02B=00") << QByteArray("001, 013 to 02A, 02C and 02D");
        QTest::newRow("behind the last") << QByteArray("115=00") << QByteArray("080 to 114");
        QTest::newRow("read only") << QByteArray("001=00") << QByteArray("read only");
        QTest::newRow("no track mapping") << QByteArray("02A=07") << QByteArray("Track mapping would be 7");
        QTest::newRow("no state of track 1") << QByteArray("013=03") << QByteArray("the reader knows 0, 1, 2");
        QTest::newRow("no state of track 3") << QByteArray("013=30") << QByteArray("Track 3 would be 3");
        QTest::newRow("no error response") << QByteArray("014=02") << QByteArray("the reader knows 0, 1, 3");
    }
    void refused()
    {
        QFETCH(QByteArray, setting);
        QFETCH(QByteArray, reason);
        try {
            static_cast<void>(cli::readSettings({setting.toStdString()}, false));
            QFAIL("accepted");
        } catch (const cli::Failure& failure) {
            QCOMPARE(static_cast<int>(failure.exit()), 2);
            QVERIFY2(QByteArray(failure.what()).contains(reason), failure.what());
        }
    }

    void twiceIsRefused()
    {
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(cli::readSettings({"013=95", "013=95"}, false)), cli::Failure);
    }

    void forceGoesBeyondTheCatalogueButNotBeyondReadOnly()
    {
        QCOMPARE(int{cli::readSettings({"02B=12"}, true).at("02B")}, 0x12);
        QCOMPARE(int{cli::readSettings({"02A=07"}, true).at("02A")}, 0x07);
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(cli::readSettings({"001=00"}, true)), cli::Failure);
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(cli::readSettings({"013=100"}, true)), cli::Failure);
    }

    // Whatever the reader is delivered with can be put back.
    void factoryValuesAreAccepted()
    {
        for (const cli::Parameter& parameter : cli::parameters()) {
            QVERIFY2(!cli::objectionTo(parameter.address, parameter.factory), parameter.address.c_str());
        }
    }
};

static const testsupport::RunnableTest<SettingsTest> kRunnable;
#include "SettingsTest.moc"
