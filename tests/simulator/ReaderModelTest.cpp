#include "simulator/ReaderModel.h"
#include "simulator/DeviceObject.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace simulator;

class ReaderModelTest final : public QObject
{
    Q_OBJECT

private slots:
    void answers_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QByteArray>("answer"); // null: none
        QTest::newRow("driver version") << QByteArray("/ver") << QByteArray("/ver reply: Teslin KSD 2.10");
        QTest::newRow("device version") << QByteArray("/get dev_version")
                                        << QByteArray("/get dev_version reply: 3.07/Teslin");
        QTest::newRow("identification") << QByteArray("/rawxact WCY")
                                        << QByteArray("/rawxact WCY reply 00 ok: Teslin 60044718");
        QTest::newRow("first parameter") << QByteArray("/rawxact WPV001") << QByteArray("/rawxact WPV001 reply 00: 00");
        QTest::newRow("a parameter") << QByteArray("/rawxact WPV013") << QByteArray("/rawxact WPV013 reply 00: 95");
        QTest::newRow("last parameter") << QByteArray("/rawxact WPV114") << QByteArray("/rawxact WPV114 reply 00: 2C");
        QTest::newRow("a write") << QByteArray("/rawsend WPW013=0D") << QByteArray("/rawsend WPW013=0D ok");
        QTest::newRow("raw A5") << QByteArray(R"(/rawsend \xA5)") << QByteArray(R"(/rawsend \xA5 ok)");
        QTest::newRow("raw A2") << QByteArray(R"(/rawsend \xA2)") << QByteArray(R"(/rawsend \xA2 ok)");
        QTest::newRow("raw A8 40") << QByteArray(R"(/rawsend \xA8\x40)") << QByteArray(R"(/rawsend \xA8\x40 ok)");
        const QByteArray none;
        QTest::newRow("unknown address") << QByteArray("/rawxact WPV115") << none;
        QTest::newRow("no 02B") << QByteArray("/rawxact WPV02B") << none;
        QTest::newRow("no address") << QByteArray("/rawxact WPV") << none;
        QTest::newRow("lower-case address") << QByteArray("/rawxact WPV01a") << none;
        QTest::newRow("something behind the address") << QByteArray("/rawxact WPV013 ") << none;
        QTest::newRow("write to an unknown address") << QByteArray("/rawsend WPW115=00") << none;
        QTest::newRow("write without address") << QByteArray("/rawsend WPW=") << none;
        QTest::newRow("write without value") << QByteArray("/rawsend WPW013=") << none;
        QTest::newRow("write without equals sign") << QByteArray("/rawsend WPW01395") << none;
        QTest::newRow("write of a pair") << QByteArray("/rawsend WPW083=20-03") << none;
        QTest::newRow("the raw byte itself") << QByteArray("/rawsend \xA5") << none;
        QTest::newRow("carriage return at the end") << QByteArray("/ver\r") << none;
        QTest::newRow("other case") << QByteArray("/VER") << none;
        QTest::newRow("the device object's question") << QByteArray("/get port_name") << none;
        QTest::newRow("empty line") << QByteArray("") << none;
    }
    void answers()
    {
        QFETCH(QByteArray, command);
        QFETCH(QByteArray, answer);
        ReaderModel model;
        const std::optional<std::string> given = model.answerTo(command.toStdString());
        QCOMPARE(given.has_value(), !answer.isNull());
        QCOMPARE(QByteArray::fromStdString(given.value_or("")), answer);
    }

    // The program reads replies by column.
    void payloadsStartWhereTheyAreLookedFor()
    {
        ReaderModel model;
        QCOMPARE(model.answerTo("/ver").value_or("").substr(12), std::string("Teslin KSD 2.10"));
        QCOMPARE(model.answerTo("/get dev_version").value_or("").substr(24), std::string("3.07/Teslin"));
        QCOMPARE(model.answerTo("/rawxact WCY").value_or("").substr(26), std::string("Teslin 60044718"));
        QCOMPARE(model.answerTo("/rawxact WPV014").value_or("").substr(26), std::string("63"));
        QVERIFY(model.answerTo("/rawsend WPW014=63").value_or("").size() < 28);
    }

    void aWriteIsReadBack()
    {
        ReaderModel model;
        QVERIFY(model.answerTo("/rawsend WPW0FF=7e"));
        QCOMPARE(model.answerTo("/rawxact WPV0FF").value_or(""), std::string("/rawxact WPV0FF reply 00: 7E"));
        QCOMPARE(model.memory().value("0FF").value_or(""), std::string("7E"));
        QCOMPARE(model.answerTo("/rawxact WPV100").value_or(""), std::string("/rawxact WPV100 reply 00: 19"));
    }

    void aRefusedWriteChangesNothing()
    {
        ReaderModel model;
        QVERIFY(!model.answerTo("/rawsend WPW013=9"));
        QVERIFY(!model.answerTo("/rawsend WPW115=99"));
        QCOMPARE(model.memory().text(), ParameterMemory().text());
    }

    void theDeviceObjectNamesThePort()
    {
        QCOMPARE(DeviceObject(5).answerTo("/get port_name").value_or(""), std::string("/get port_name=COM5"));
        QCOMPARE(DeviceObject(12).answerTo("/get port_name").value_or(""), std::string("/get port_name=COM12"));
        QVERIFY(!DeviceObject(5).answerTo("/ver"));
        QVERIFY(!DeviceObject(5).answerTo("/get port_name\r"));
        QVERIFY(!DeviceObject(5).answerTo(""));
    }
};

static const testsupport::RunnableTest<ReaderModelTest> kRunnable;
#include "ReaderModelTest.moc"
