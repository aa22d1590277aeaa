#include "simulator/FaultRule.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace simulator;
using std::chrono::milliseconds;

class FaultRuleTest final : public QObject
{
    Q_OBJECT

private slots:
    void commandsAndPatterns_data()
    {
        QTest::addColumn<QByteArray>("pattern");
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<bool>("fits");
        QTest::newRow("the command") << QByteArray("/ver") << QByteArray("/ver") << true;
        QTest::newRow("longer") << QByteArray("/ver") << QByteArray("/version") << false;
        QTest::newRow("shorter") << QByteArray("/ver") << QByteArray("/ve") << false;
        QTest::newRow("other case") << QByteArray("/ver") << QByteArray("/VER") << false;
        QTest::newRow("blank inside") << QByteArray("/get port_name") << QByteArray("/get port_name") << true;
        QTest::newRow("backslash is itself")
            << QByteArray(R"(/rawsend \xA5)") << QByteArray(R"(/rawsend \xA5)") << true;
        QTest::newRow("star alone") << QByteArray("*") << QByteArray("/ver") << true;
        QTest::newRow("star and an empty line") << QByteArray("*") << QByteArray("") << true;
        QTest::newRow("star at the end") << QByteArray("/rawxact WPV*") << QByteArray("/rawxact WPV013") << true;
        QTest::newRow("star for nothing") << QByteArray("/rawxact WPV*") << QByteArray("/rawxact WPV") << true;
        QTest::newRow("star at the end, no") << QByteArray("/rawxact WPV*") << QByteArray("/rawxact WCY") << false;
        QTest::newRow("star in front") << QByteArray("*=95") << QByteArray("/rawsend WPW013=95") << true;
        QTest::newRow("star in front, no") << QByteArray("*=95") << QByteArray("/rawsend WPW013=950") << false;
        QTest::newRow("star in the middle") << QByteArray("/raw*013*") << QByteArray("/rawsend WPW013=95") << true;
        QTest::newRow("goes back for more") << QByteArray("*ab*abc") << QByteArray("xababxabababc") << true;
        QTest::newRow("goes back in vain") << QByteArray("*ab*abc") << QByteArray("xababxabababd") << false;
        QTest::newRow("two stars") << QByteArray("**") << QByteArray("x") << true;
    }
    void commandsAndPatterns()
    {
        QFETCH(QByteArray, pattern);
        QFETCH(QByteArray, command);
        QFETCH(bool, fits);
        FaultRule rule;
        QVERIFY(parseFaultRule(pattern.toStdString() + ": silent", rule));
        QCOMPARE(rule.fits(command.toStdString()), fits);
    }

    void everyFaultIsRead()
    {
        FaultRule rule;
        QVERIFY(parseFaultRule(
            "  /ver  :  reply=x garbled  cut=3\tend=\"\\r\" twice with=\"a b\" before=\"\" after=\"\\\"\" "
            "split=1,20 pause=0 delay=600000 on=2-4 ",
            rule));
        QCOMPARE(rule.command, std::string("/ver"));
        QCOMPARE(rule.firstTime, 2);
        QCOMPARE(rule.lastTime, 4);
        QVERIFY(!rule.silent);
        QVERIFY(rule.reply == "x");
        QVERIFY(!rule.value);
        QVERIFY(rule.garbled);
        QVERIFY(rule.cut == 3U);
        QVERIFY(!rule.pad);
        QVERIFY(rule.end == "\r");
        QVERIFY(rule.twice);
        QVERIFY(rule.with == "a b");
        QVERIFY(rule.before == "");
        QVERIFY(rule.after == "\"");
        QVERIFY((rule.splitAfter == std::vector<std::size_t>{1, 20}));
        QVERIFY(!rule.splitEverywhere);
        QCOMPARE(rule.pause, milliseconds(0));
        QCOMPARE(rule.delay, milliseconds(600000));
        QVERIFY(!rule.hangUp);
    }

    void aRuleKeepsItsText()
    {
        FaultRule rule;
        QVERIFY(parseFaultRule(" /ver:  silent ", rule));
        QCOMPARE(rule.text, std::string(" /ver:  silent "));
    }

    void occasions_data()
    {
        QTest::addColumn<QByteArray>("on");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        constexpr int kForEver = std::numeric_limits<int>::max();
        QTest::newRow("always") << QByteArray("") << 1 << kForEver;
        QTest::newRow("first time only") << QByteArray("on=1") << 1 << 1;
        QTest::newRow("n-th time only") << QByteArray("on=40") << 40 << 40;
        QTest::newRow("span") << QByteArray("on=2-4") << 2 << 4;
        QTest::newRow("span of one") << QByteArray("on=2-2") << 2 << 2;
        QTest::newRow("from then on") << QByteArray("on=2-") << 2 << kForEver;
    }
    void occasions()
    {
        QFETCH(QByteArray, on);
        QFETCH(int, first);
        QFETCH(int, last);
        FaultRule rule;
        QVERIFY(parseFaultRule("/ver: silent " + on.toStdString(), rule));
        QCOMPARE(rule.firstTime, first);
        QCOMPARE(rule.lastTime, last);
    }

    void hangUps()
    {
        FaultRule rule;
        QVERIFY(parseFaultRule("/ver: hang-up", rule));
        QVERIFY(rule.hangUp && rule.hangUp->backAfter == milliseconds(0));
        QVERIFY(parseFaultRule("/ver: hang-up=250", rule));
        QVERIFY(rule.hangUp && rule.hangUp->backAfter == milliseconds(250));
        QVERIFY(parseFaultRule("/ver: hang-up=for-good", rule));
        QVERIFY(rule.hangUp && !rule.hangUp->backAfter);
    }

    void refusals_data()
    {
        QTest::addColumn<QByteArray>("rule");
        QTest::addColumn<QByteArray>("error");
        const auto row = [](const char* rule, const char* error) {
            QTest::newRow(rule) << QByteArray(rule) << QByteArray(error);
        };
        row("", "there is no ':' between a command and its faults");
        row("silent", "there is no ':' between a command and its faults");
        row(": silent", "the command before the ':' is missing");
        row("  : silent", "the command before the ':' is missing");
        row("/ver:", "the fault behind the ':' is missing");
        row("/ver:  ", "the fault behind the ':' is missing");
        row("/ver: loud", "unknown fault 'loud'");
        row("/ver: Silent", "unknown fault 'Silent'");
        row("/ver: =5", "unknown fault ''");
        row("/ver: silent,delay=5", "unknown fault 'silent,delay'");
        row("/ver: silent=1", "'silent' takes no value");
        row("/ver: garbled=1", "'garbled' takes no value");
        row("/ver: twice=2", "'twice' takes no value");
        row("/ver: delay=", "a value is missing behind '='; an empty one is written \"\"");
        row("/ver: delay", "'delay' wants a number from 0 to 600000");
        row("/ver: delay=\"\"", "'delay' wants a number from 0 to 600000");
        row("/ver: delay=-1", "'delay' wants a number from 0 to 600000");
        row("/ver: delay=+1", "'delay' wants a number from 0 to 600000");
        row("/ver: delay=5ms", "'delay' wants a number from 0 to 600000");
        row("/ver: delay=600001", "'delay' wants a number from 0 to 600000");
        row("/ver: delay=99999999999", "'delay' wants a number from 0 to 600000");
        row("/ver: split=every pause=x", "'pause' wants a number from 0 to 600000");
        row("/ver: cut", "'cut' wants a number from 0 to 100000");
        row("/ver: pad=100001", "'pad' wants a number from 0 to 100000");
        row("/ver: reply", "'reply' wants a text, as in reply=\"a text\"");
        row("/ver: value", "'value' wants a text, as in value=\"a text\"");
        row("/ver: end", "'end' wants a text, as in end=\"a text\"");
        row("/ver: with", "'with' wants a text, as in with=\"a text\"");
        row("/ver: before", "'before' wants a text, as in before=\"a text\"");
        row("/ver: after", "'after' wants a text, as in after=\"a text\"");
        row("/ver: reply=\"x", "a quotation mark is not closed");
        row("/ver: reply=\"x\\\"", "a quotation mark is not closed");
        row("/ver: reply=\"x\"y", "a blank is missing behind a closing quotation mark");
        row("/ver: reply=\"\\q\"", R"(unknown escape; known are \n \r \t \\ \" and \xHH)");
        row("/ver: reply=\"\\x1\"", R"(\x wants two hexadecimal digits)");
        row("/ver: reply=a\\n", "a value with blanks, quotation marks or backslashes stands between quotation marks");
        row("/ver: reply=a\"b", "a value with blanks, quotation marks or backslashes stands between quotation marks");
        row("/ver: split", "'split' wants rising byte counts, as in split=5,27, or split=every");
        row("/ver: split=0", "'split' wants rising byte counts, as in split=5,27, or split=every");
        row("/ver: split=5,", "'split' wants rising byte counts, as in split=5,27, or split=every");
        row("/ver: split=,5", "'split' wants rising byte counts, as in split=5,27, or split=every");
        row("/ver: split=5,5", "'split' wants rising byte counts, as in split=5,27, or split=every");
        row("/ver: split=27,5", "'split' wants rising byte counts, as in split=5,27, or split=every");
        row("/ver: split=all", "'split' wants rising byte counts, as in split=5,27, or split=every");
        row("/ver: silent on", "'on' wants a count from 1 or a span, as in on=2, on=2-4 or on=2-");
        row("/ver: silent on=0", "'on' wants a count from 1 or a span, as in on=2, on=2-4 or on=2-");
        row("/ver: silent on=-4", "'on' wants a count from 1 or a span, as in on=2, on=2-4 or on=2-");
        row("/ver: silent on=4-2", "'on' wants a count from 1 or a span, as in on=2, on=2-4 or on=2-");
        row("/ver: silent on=2-x", "'on' wants a count from 1 or a span, as in on=2, on=2-4 or on=2-");
        row("/ver: hang-up=never", "'hang-up' wants the milliseconds until the door is back, or for-good");
        row("/ver: hang-up=-5", "'hang-up' wants the milliseconds until the door is back, or for-good");
        row("/ver: delay=1 delay=2", "'delay' is given twice");
        row("/ver: silent twice silent", "'silent' is given twice");
        row("/ver: silent cut=3", "'silent' and 'cut' exclude each other");
        row("/ver: delay=3 silent", "'silent' and 'delay' exclude each other");
        row("/ver: silent hang-up", "'silent' and 'hang-up' exclude each other");
        row("/ver: twice hang-up", "'hang-up' and 'twice' exclude each other");
        row("/ver: after=x hang-up=5", "'hang-up' and 'after' exclude each other");
        row("/ver: reply=x value=y", "'reply' and 'value' exclude each other");
        row("/ver: pad=30 cut=3", "'cut' and 'pad' exclude each other");
        row("/ver: delay=1 pause=5", "'pause' has no effect without 'split'");
        row("/ver: on=2", "'on' says only when; a fault is missing");
        row("/rawsend WPW013=95: value=x", "'value' has no effect: a reply to /rawsend carries none");
    }
    void refusals()
    {
        QFETCH(QByteArray, rule);
        QFETCH(QByteArray, error);
        FaultRule read;
        read.text = "as it was";
        QCOMPARE(QByteArray::fromStdString(parseFaultRule(rule.toStdString(), read).error), error);
        QCOMPARE(read.text, std::string("as it was"));
    }
};

static const testsupport::RunnableTest<FaultRuleTest> kRunnable;
#include "FaultRuleTest.moc"
