#include "simulator/FaultRules.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace simulator;
using std::chrono::milliseconds;

namespace {

const std::string kCommand = "/rawxact WPV013";
const std::string kReply = "/rawxact WPV013 reply 00: 95";

// Actions as "12: bytes" and "12: hang-up, back after 5", one a line, so that a difference can be read.
QByteArray inWords(const std::vector<Action>& actions)
{
    QByteArray words;
    for (const Action& action : actions) {
        words += QByteArray::number(static_cast<qlonglong>(action.after.count())) + ": ";
        if (action.kind == Action::Kind::HangUp) {
            const QByteArray back =
                action.backAfter ? "back after " + QByteArray::number(static_cast<qlonglong>(action.backAfter->count()))
                                 : QByteArray("for good");
            words += "hang-up, " + back + "|";
        } else {
            words += QByteArray::fromStdString(action.bytes) + "|";
        }
    }
    return words;
}

} // namespace

class FaultRulesTest final : public QObject
{
    Q_OBJECT

private slots:
    void faults_data()
    {
        QTest::addColumn<QByteArray>("faults");
        QTest::addColumn<QByteArray>("actions");
        const auto row = [](const char* faults, const QByteArray& actions) {
            QTest::newRow(faults) << QByteArray(faults) << actions;
        };
        const QByteArray reply = QByteArray::fromStdString(kReply);
        row("silent", "");
        row("reply=hello", "0: hello\n|");
        row("reply=\"\"", "0: \n|");
        row("reply=\"two\\nlines\"", "0: two\nlines\n|");
        row("value=FF", "0: /rawxact WPV013 reply 00: FF\n|");
        row("value=\"\"", "0: /rawxact WPV013 reply 00: \n|");
        row("value=\"\\x01\"", "0: /rawxact WPV013 reply 00: \x01\n|");
        row("reply=\"A 0~\" garbled", "0: \xC1\xA0\xB0\xFE\n|");
        row("cut=25", "0: /rawxact WPV013 reply 00:\n|");
        row("cut=27", "0: /rawxact WPV013 reply 00: 9\n|");
        row("cut=28", "0: " + reply + "\n|");
        row("cut=1000", "0: " + reply + "\n|");
        row("cut=0", "0: \n|");
        row("pad=29", "0: " + reply + ".\n|");
        row("pad=28", "0: " + reply + "\n|");
        row("pad=2000", "0: " + reply + QByteArray(2000 - 28, '.') + "\n|");
        row("end=\"\\r\"", "0: " + reply + "\r|");
        row("end=\"\\r\\n\"", "0: " + reply + "\r\n|");
        row("end=\"\"", "0: " + reply + "|");
        row("cut=10 end=\"\"", "0: /rawxact W|");
        row("cut=0 end=\"\"", "");
        row("twice", "0: " + reply + "\n" + reply + "\n|");
        row("with=other", "0: " + reply + "\nother\n|");
        row("twice with=other", "0: " + reply + "\n" + reply + "\nother\n|");
        row("end=\"\" with=other", "0: " + reply + "other\n|");
        row("before=other", "0: other\n|0: " + reply + "\n|");
        row("after=other", "0: " + reply + "\n|0: other\n|");
        row("silent before=one after=other", "0: one\n|0: other\n|");
        row("split=5", "0: /rawx|1: act WPV013 reply 00: 95\n|");
        row("split=5,27 pause=20", "0: /rawx|20: act WPV013 reply 00: 9|40: 5\n|");
        row("split=5,27 pause=0", "0: /rawx|0: act WPV013 reply 00: 9|0: 5\n|");
        row("split=28", "0: " + reply + "|1: \n|");
        row("split=29", "0: " + reply + "\n|");
        row("split=5,29,40", "0: /rawx|1: act WPV013 reply 00: 95\n|");
        row("reply=abc split=every pause=7", "0: a|7: b|14: c|21: \n|");
        row("reply=ab twice split=every", "0: a|1: b|2: \n|3: a|4: b|5: \n|");
        row("reply=ab split=1 after=x pause=9", "0: a|9: b\n|9: x\n|");
        row("delay=300", "300: " + reply + "\n|");
        row("reply=abc split=2 before=x after=y delay=300 pause=5", "300: x\n|300: ab|305: c\n|305: y\n|");
        row("hang-up", "0: hang-up, back after 0|");
        row("hang-up=40 delay=300", "300: hang-up, back after 40|");
        row("hang-up=for-good", "0: hang-up, for good|");
        // The order of the faults in the rule does not matter.
        row("split=4 pause=3 delay=1 cut=3 value=x", "1: /ra\n|");
    }
    void faults()
    {
        QFETCH(QByteArray, faults);
        QFETCH(QByteArray, actions);
        FaultRules rules;
        const std::string rule = kCommand + ": " + faults.toStdString();
        const Verdict verdict = rules.add(rule);
        QVERIFY2(verdict, verdict.error.c_str());
        const Reaction reaction = rules.react(kCommand, kReply, "\n");
        QCOMPARE(inWords(reaction.actions), actions);
        QCOMPARE(reaction.rule, rule);
    }

    void withoutRuleTheReplyGoesOutAtOnce()
    {
        FaultRules rules;
        const Reaction reaction = rules.react(kCommand, kReply, "\n");
        QCOMPARE(inWords(reaction.actions), "0: " + QByteArray::fromStdString(kReply) + "\n|");
        QVERIFY(reaction.rule.empty());
        QVERIFY((rules.react("nonsense", std::nullopt, "\n") == Reaction{}));
    }

    void aRuleForAnotherCommandDoesNothing()
    {
        FaultRules rules;
        QVERIFY(rules.add("/rawxact WPV014: silent"));
        const Reaction reaction = rules.react(kCommand, kReply, "\n");
        QCOMPARE(inWords(reaction.actions), "0: " + QByteArray::fromStdString(kReply) + "\n|");
        QVERIFY(reaction.rule.empty());
    }

    void whereNothingIsAnsweredOnlyOwnLinesGoOut_data()
    {
        QTest::addColumn<QByteArray>("faults");
        QTest::addColumn<QByteArray>("actions");
        QTest::newRow("twice") << QByteArray("twice") << QByteArray();
        QTest::newRow("pad") << QByteArray("pad=10") << QByteArray();
        QTest::newRow("with") << QByteArray("with=x") << QByteArray();
        QTest::newRow("reply") << QByteArray("reply=x twice") << QByteArray("0: x\nx\n|");
        QTest::newRow("around") << QByteArray("before=x after=y delay=2") << QByteArray("2: x\n|2: y\n|");
    }
    void whereNothingIsAnsweredOnlyOwnLinesGoOut()
    {
        QFETCH(QByteArray, faults);
        QFETCH(QByteArray, actions);
        FaultRules rules;
        QVERIFY(rules.add("/rawxact WPV115: " + faults.toStdString()));
        QCOMPARE(inWords(rules.react("/rawxact WPV115", std::nullopt, "\n").actions), actions);
    }

    void theLineEndIsTheDoors()
    {
        FaultRules rules;
        QVERIFY(rules.add("/get port_name: value=COM12 with=x before=y"));
        QCOMPARE(inWords(rules.react("/get port_name", "/get port_name=COM5", "\r").actions),
                 QByteArray("0: y\r|0: /get port_name=COM12\rx\r|"));
    }

    void wrongValues_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QByteArray>("wrong");
        QTest::newRow("driver version") << QByteArray("/ver reply: Teslin KSD 2.10") << QByteArray("/ver reply: X");
        QTest::newRow("identification") << QByteArray("/rawxact WCY reply 00 ok: Teslin 60044718")
                                        << QByteArray("/rawxact WCY reply 00 ok: X");
        QTest::newRow("port name") << QByteArray("/get port_name=COM5") << QByteArray("/get port_name=X");
        QTest::newRow("an echo carries none")
            << QByteArray("/rawsend WPW013=95 ok") << QByteArray("/rawsend WPW013=95 ok");
    }
    void wrongValues()
    {
        QFETCH(QByteArray, reply);
        QFETCH(QByteArray, wrong);
        FaultRules rules;
        QVERIFY(rules.add("*: value=X"));
        QCOMPARE(inWords(rules.react("/any", reply.toStdString(), "").actions), "0: " + wrong + "|");
    }

    void occasions_data()
    {
        QTest::addColumn<QByteArray>("on");
        QTest::addColumn<QByteArray>("answered"); // of six commands
        QTest::newRow("always") << QByteArray("") << QByteArray("------");
        QTest::newRow("first time only") << QByteArray("on=1") << QByteArray("-aaaaa");
        QTest::newRow("third time only") << QByteArray("on=3") << QByteArray("aa-aaa");
        QTest::newRow("span") << QByteArray("on=2-4") << QByteArray("a---aa");
        QTest::newRow("from then on") << QByteArray("on=4-") << QByteArray("aaa---");
    }
    void occasions()
    {
        QFETCH(QByteArray, on);
        QFETCH(QByteArray, answered);
        FaultRules rules;
        QVERIFY(rules.add("/rawxact WPV*: silent " + on.toStdString()));
        QByteArray seen;
        for (int time = 0; time < 6; ++time) {
            // Commands that do not fit are not counted.
            QCOMPARE(rules.react("/ver", "v", "\n").actions.size(), std::size_t{1});
            seen += rules.react(kCommand, kReply, "\n").actions.empty() ? '-' : 'a';
        }
        QCOMPARE(seen, answered);
    }

    void theFirstRuleThatIsDueDecidesAndAllCount()
    {
        FaultRules rules;
        QVERIFY(rules.add(kCommand + ": on=2 reply=first"));
        QVERIFY(rules.add("/rawxact WPV*: on=2-3 reply=second"));
        QVERIFY(rules.add(kCommand + ": reply=third"));
        QStringList seen;
        for (int time = 0; time < 4; ++time) {
            const Reaction reaction = rules.react(kCommand, kReply, "");
            seen += QString::fromStdString(reaction.actions.at(0).bytes);
        }
        QCOMPARE(seen.join(QLatin1Char(' ')), QStringLiteral("third first second third"));
    }

    void aRefusedRuleIsNotInForce()
    {
        FaultRules rules;
        QCOMPARE(rules.add("/ver: mute").error, std::string("unknown fault 'mute'"));
        QVERIFY(rules.react("/ver", "v", "\n").rule.empty());
    }

    void clearLiftsAllRules()
    {
        FaultRules rules;
        QVERIFY(rules.add("*: silent"));
        QVERIFY(rules.react("/ver", "v", "\n").actions.empty());
        rules.clear();
        QCOMPARE(inWords(rules.react("/ver", "v", "\n").actions), QByteArray("0: v\n|"));
    }
};

static const testsupport::RunnableTest<FaultRulesTest> kRunnable;
#include "FaultRulesTest.moc"
