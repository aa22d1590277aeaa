#include "simulator/ParameterMemory.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace simulator;

class ParameterMemoryTest final : public QObject
{
    Q_OBJECT

private slots:
    void factoryDefaults_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<QByteArray>("value"); // empty: no such parameter
        QTest::newRow("000") << QByteArray("000") << QByteArray();
        QTest::newRow("001") << QByteArray("001") << QByteArray("00");
        QTest::newRow("002") << QByteArray("002") << QByteArray();
        QTest::newRow("012") << QByteArray("012") << QByteArray();
        QTest::newRow("013") << QByteArray("013") << QByteArray("95");
        QTest::newRow("01A") << QByteArray("01A") << QByteArray("12");
        QTest::newRow("02A") << QByteArray("02A") << QByteArray("00");
        QTest::newRow("02B") << QByteArray("02B") << QByteArray();
        QTest::newRow("02D") << QByteArray("02D") << QByteArray("00");
        QTest::newRow("02E") << QByteArray("02E") << QByteArray();
        QTest::newRow("07F") << QByteArray("07F") << QByteArray();
        QTest::newRow("080") << QByteArray("080") << QByteArray("00");
        QTest::newRow("081") << QByteArray("081") << QByteArray("04");
        QTest::newRow("082") << QByteArray("082") << QByteArray("09");
        QTest::newRow("083, a first half") << QByteArray("083") << QByteArray("20");
        QTest::newRow("084, a second half") << QByteArray("084") << QByteArray("03");
        QTest::newRow("100, behind 0FF") << QByteArray("100") << QByteArray("19");
        QTest::newRow("114") << QByteArray("114") << QByteArray("2C");
        QTest::newRow("115") << QByteArray("115") << QByteArray();
        QTest::newRow("a pair is no address") << QByteArray("083-084") << QByteArray();
        QTest::newRow("lower case is no address") << QByteArray("01a") << QByteArray();
        QTest::newRow("empty") << QByteArray("") << QByteArray();
    }
    void factoryDefaults()
    {
        QFETCH(QByteArray, address);
        QFETCH(QByteArray, value);
        const ParameterMemory memory;
        QCOMPARE(QByteArray::fromStdString(memory.value(address.toStdString()).value_or("")), value);
    }

    void itHolds176Parameters()
    {
        // 27 of the Configuration table; 080 to 114 are 0x95.
        const std::string text = ParameterMemory().text();
        QCOMPARE(std::count(text.begin(), text.end(), '\n'), 27 + 0x95);
    }

    void store_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("stored");
        QTest::addColumn<QByteArray>("then"); // the value of 013
        QTest::newRow("two digits") << QByteArray("013") << QByteArray("0D") << true << QByteArray("0D");
        QTest::newRow("lower case") << QByteArray("013") << QByteArray("fe") << true << QByteArray("FE");
        QTest::newRow("one digit") << QByteArray("013") << QByteArray("D") << false << QByteArray("95");
        QTest::newRow("three digits") << QByteArray("013") << QByteArray("0D0") << false << QByteArray("95");
        QTest::newRow("not hex") << QByteArray("013") << QByteArray("0G") << false << QByteArray("95");
        QTest::newRow("blank") << QByteArray("013") << QByteArray(" D") << false << QByteArray("95");
        QTest::newRow("empty") << QByteArray("013") << QByteArray("") << false << QByteArray("95");
        QTest::newRow("a pair") << QByteArray("013") << QByteArray("20-03") << false << QByteArray("95");
        QTest::newRow("unknown address") << QByteArray("115") << QByteArray("0D") << false << QByteArray("95");
    }
    void store()
    {
        QFETCH(QByteArray, address);
        QFETCH(QByteArray, value);
        QFETCH(bool, stored);
        QFETCH(QByteArray, then);
        ParameterMemory memory;
        QCOMPARE(memory.store(address.toStdString(), value.toStdString()), stored);
        QCOMPARE(QByteArray::fromStdString(memory.value("013").value_or("")), then);
        QVERIFY(!memory.value("115"));
    }

    void loadTakesWhatIsNamedAndKeepsTheRest()
    {
        ParameterMemory memory;
        QVERIFY(memory.store("014", "11"));
        QVERIFY(memory.load("# a reader from the workshop\r\n"
                            "\n"
                            "013=0d\r\n"
                            "  01a = FE\t# slow\n"
                            "#015=00\n"
                            "114=01"));
        QCOMPARE(memory.value("013").value_or(""), std::string("0D"));
        QCOMPARE(memory.value("014").value_or(""), std::string("11"));
        QCOMPARE(memory.value("015").value_or(""), std::string("40"));
        QCOMPARE(memory.value("01A").value_or(""), std::string("FE"));
        QCOMPARE(memory.value("114").value_or(""), std::string("01"));
    }

    void loadRefusals_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("error");
        QTest::newRow("no equals sign") << QByteArray("014=01\n01395\n")
                                        << QByteArray(R"(line 2: "01395" is not of the form aaa=vv)");
        QTest::newRow("no value") << QByteArray("013=") << QByteArray(R"(line 1: "013=" is not of the form aaa=vv)");
        QTest::newRow("no address") << QByteArray("=13") << QByteArray(R"(line 1: "=13" is not of the form aaa=vv)");
        QTest::newRow("only an equals sign")
            << QByteArray("=") << QByteArray(R"(line 1: "=" is not of the form aaa=vv)");
        QTest::newRow("short address") << QByteArray("13=95")
                                       << QByteArray(R"(line 1: "13=95" is not of the form aaa=vv)");
        QTest::newRow("long value") << QByteArray("\n\n\n013=095")
                                    << QByteArray(R"(line 4: "013=095" is not of the form aaa=vv)");
        QTest::newRow("not hex") << QByteArray("01G=00") << QByteArray(R"(line 1: "01G=00" is not of the form aaa=vv)");
        QTest::newRow("binary") << QByteArray("\x01\xFF")
                                << QByteArray(R"(line 1: "\x01\xFF" is not of the form aaa=vv)");
        QTest::newRow("unknown address") << QByteArray("# none\n02b=00\n")
                                         << QByteArray("line 2: the reader has no parameter 02B");
        QTest::newRow("given twice") << QByteArray("014=01\n01A=05\n01a=06\n")
                                     << QByteArray("line 3: parameter 01A stands on line 2 already");
    }
    void loadRefusals()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, error);
        ParameterMemory memory;
        QCOMPARE(QByteArray::fromStdString(memory.load(text.toStdString()).error), error);
        QCOMPARE(memory.text(), ParameterMemory().text());
    }

    void textIsReadBack()
    {
        ParameterMemory memory;
        QVERIFY(memory.store("013", "01"));
        QVERIFY(memory.store("114", "FF"));
        const std::string text = memory.text();
        QVERIFY(text.starts_with("001=00\n013=01\n014=63\n"));
        QVERIFY(text.ends_with("\n113=00\n114=FF\n"));
        ParameterMemory other;
        QVERIFY(other.load(text));
        QCOMPARE(other.text(), text);
    }
};

static const testsupport::RunnableTest<ParameterMemoryTest> kRunnable;
#include "ParameterMemoryTest.moc"
