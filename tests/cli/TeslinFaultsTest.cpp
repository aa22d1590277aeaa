#include "TeslinProcess.h"
#include "tests/support/RunnableTest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

namespace {

struct Fault
{
    const char* name;
    const char* fault;
    int exitCode;     // of what reads
    bool isLie;       // a value that nobody can tell from the true one
    bool hasOccasion; // also tried on the first question alone, which the second one heals
};

// Each fault rule of the simulated reader, as the reply to a question for a parameter.
constexpr Fault kFaults[] = {
    {"silent", "silent", 4, false, true},
    {"garbled", "garbled", 4, false, true},
    {"one character short", "cut=27", 4, false, true},
    {"without a value", "cut=26", 4, false, true},
    {"only a beginning", "cut=5", 4, false, true},
    {"nothing but a line end", "cut=0", 4, false, true},
    {"one character long", "pad=29", 4, false, true},
    {"very long", "pad=2000", 4, false, true},
    {"unfinished", "end=\"\"", 4, false, true},
    {"no hexadecimal value", "value=ZZ", 4, false, true},
    {"a blank in the value", "value=\" 5\"", 4, false, true},
    {"one digit", "value=9", 4, false, true},
    {"another line", "reply=nonsense", 4, false, true},
    {"the reply of another address", "reply=\"/rawxact WPV02C reply 00: EE\"", 4, false, true},
    {"an identification", "reply=\"/rawxact WCY reply 00 ok: EE\"", 4, false, true},
    {"too late", "delay=5000", 4, false, true},
    {"a little late", "delay=40", 0, false, false},
    {"late the first time", "delay=250 on=1", 0, false, false},
    {"hangs up", "hang-up", 3, false, false},
    {"hangs up for good", "hang-up=for-good", 3, false, false},
    {"a believable lie", "value=EE", 0, true, false},
    {"twice", "twice", 0, false, false},
    {"with another's reply", "with=\"/rawxact WPV02C reply 00: EE\"", 0, false, false},
    {"after another's reply", "before=\"/rawxact WPV02C reply 00: EE\"", 0, false, false},
    {"after a card", "before=\"/read report status: 07\"", 0, false, false},
    {"before a card", "after=\"/read report status: 07\"", 0, false, false},
    {"in pieces", "split=every pause=1", 0, false, false},
    {"in two pieces", "split=14 pause=30", 0, false, false},
    {"ended by CR", "end=\"\\r\"", 0, false, false},
    {"ended by CR LF", "end=\"\\r\\n\"", 0, false, false},
};

constexpr const char* kPlaces[] = {"001", "0A0", "114"}; // first, middle and last
constexpr const char* kWritable[] = {"013", "0A0", "114"};

// All takes ten minutes. So each fault meets one of the three places, the next fault the next place; with
// TESLIN_EVERY_FAULT=1, as every night, it meets them all.
std::vector<const char*> placesOf(const Fault& fault, const char* const (&places)[3])
{
    if (qEnvironmentVariableIntValue("TESLIN_EVERY_FAULT") == 1) {
        return {std::begin(places), std::end(places)};
    }
    return {places[(&fault - std::begin(kFaults)) % 3]};
}

} // namespace

// Each fault at the first, a middle and the last parameter: what a command says is true, and what it leaves is whole.
class TeslinFaultsTest final : public QObject
{
    Q_OBJECT

private slots:
    void reading_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("address");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<bool>("isLie");
        for (const Fault& fault : kFaults) {
            for (const char* const address : placesOf(fault, kPlaces)) {
                const QString rule = QStringLiteral("/rawxact WPV%1: ").arg(QLatin1String(address)) + fault.fault;
                QTest::addRow("%s, %s", fault.name, address)
                    << rule << QString(address) << fault.exitCode << fault.isLie;
                if (fault.hasOccasion) {
                    QTest::addRow("%s once, %s", fault.name, address)
                        << rule + " on=1" << QString(address) << 0 << false;
                }
            }
        }
    }
    void reading()
    {
        QFETCH(QString, fault);
        QFETCH(QString, address);
        QFETCH(int, exitCode);
        QFETCH(bool, isLie);
        CliDesk desk;
        QVERIFY(desk.startReader({fault}, {"081=00", "082=00"}));
        const CliDesk::Outcome outcome = desk.run({"--table", "all", "retrieve", "-o", "held"});
        QVERIFY2(outcome.exitCode == exitCode, outcome.errors.constData());
        QCOMPARE(outcome.output, QByteArray());
        if (exitCode != 0) {
            QCOMPARE(desk.files("held*"), QStringList());
        } else if (isLie) {
            QVERIFY((desk.content("held.tlc") + desk.content("held.txt")).contains("EE"));
        } else {
            QCOMPARE(desk.content("held.tlc"), golden("FactoryDefaults.tlc"));
            QCOMPARE(desk.content("held.txt"), golden("FactoryDefaults.txt"));
        }
        QVERIFY(desk.writes().isEmpty());
    }

    void gettingOne_data() { reading_data(); }
    void gettingOne()
    {
        QFETCH(QString, fault);
        QFETCH(QString, address);
        QFETCH(int, exitCode);
        QFETCH(bool, isLie);
        CliDesk desk;
        QVERIFY(desk.startReader({fault}));
        const CliDesk::Outcome outcome = desk.run({"get", address});
        QVERIFY2(outcome.exitCode == exitCode, outcome.errors.constData());
        const QByteArray value = isLie ? QByteArray("EE") : freshMemory()[address.toLatin1()];
        QCOMPARE(outcome.output, exitCode == 0 ? value + '\n' : QByteArray());
        QVERIFY(desk.writes().isEmpty());
    }

    void comparing_data() { reading_data(); }
    void comparing()
    {
        QFETCH(QString, fault);
        QFETCH(int, exitCode);
        QFETCH(bool, isLie);
        const int expected = isLie ? 1 : exitCode;
        for (const QStringList& command :
             {QStringList{"verify", "factory.tlc", "factory.txt"}, QStringList{"diff", "reader", "defaults"}}) {
            CliDesk desk;
            QVERIFY(desk.write("factory.tlc", golden("FactoryDefaults.tlc")));
            QVERIFY(desk.write("factory.txt", golden("FactoryDefaults.txt")));
            QVERIFY(desk.startReader({fault}, {"081=00", "082=00"}));
            const CliDesk::Outcome outcome = desk.run(QStringList{"--json"} + command);
            QVERIFY2(outcome.exitCode == expected, outcome.output + outcome.errors);
            QCOMPARE(outcome.json()["exit"].toInt(-1), expected);
            QVERIFY(desk.writes().isEmpty());
        }
    }

    void reporting_data() { reading_data(); }
    void reporting()
    {
        QFETCH(QString, fault);
        QFETCH(QString, address);
        QFETCH(int, exitCode);
        CliDesk desk;
        QVERIFY(desk.startReader({fault}));
        const QString table = address < QStringLiteral("080") ? "cfg" : "kb";
        QCOMPARE(desk.run({"--table", table, "summary", "reader", "-o", "report.txt"}).exitCode, exitCode);
        QCOMPARE(desk.files("report*").isEmpty(), exitCode != 0);
        QVERIFY(desk.writes().isEmpty());
    }

    // Before the first write: then there is none.
    void updatingMeetsItWhileReading_data() { updatingRows(false); }
    void updatingMeetsItWhileReading()
    {
        QFETCH(QString, fault);
        QFETCH(int, exitCode);
        CliDesk desk;
        QVERIFY(prepareUpdate(desk, fault));
        const CliDesk::Outcome outcome = desk.run({"--json", "update", "wanted.tlc", "wanted.txt"});
        checkClaims(outcome);
        QVERIFY2(outcome.exitCode == exitCode, outcome.output + outcome.errors);
        const auto held = desk.endReader();
        QCOMPARE(held, exitCode == 0 ? wanted() : freshMemory());
        QCOMPARE(desk.files("teslin-backup*").isEmpty(), exitCode != 0);
    }

    // While a written parameter is read back.
    void updatingMeetsItWhileProving_data() { updatingRows(true); }
    void updatingMeetsItWhileProving()
    {
        QFETCH(QString, fault);
        QFETCH(int, exitCode);
        CliDesk desk;
        QVERIFY(prepareUpdate(desk, fault));
        const CliDesk::Outcome outcome = desk.run({"--json", "update", "wanted.tlc", "wanted.txt"});
        QVERIFY2(outcome.exitCode == exitCode, outcome.output + outcome.errors);
        checkClaims(outcome);
        checkAgainst(outcome, desk.endReader());
        QCOMPARE(desk.files("teslin-backup*").size(), 2);
    }

    void settingMeetsItWhileProving_data() { updatingRows(true); }
    void settingMeetsItWhileProving()
    {
        QFETCH(QString, fault);
        QFETCH(int, exitCode);
        CliDesk desk;
        QVERIFY(desk.startReader({fault}));
        const CliDesk::Outcome outcome = desk.run({"--json", "set", "013=96", "0A0=77", "114=78"});
        QVERIFY2(outcome.exitCode == exitCode, outcome.output + outcome.errors);
        checkClaims(outcome);
        checkAgainst(outcome, desk.endReader(), 3);
    }

    void batchMeetsItWhileProving_data() { updatingRows(true); }
    void batchMeetsItWhileProving()
    {
        QFETCH(QString, fault);
        QFETCH(int, exitCode);
        CliDesk desk;
        QVERIFY(prepareUpdate(desk, fault));
        const CliDesk::Outcome outcome =
            desk.run({"--json", "batch", "--count", "1", "--log", "batch.log", "wanted.tlc", "wanted.txt"});
        QVERIFY2(outcome.exitCode == (exitCode == 0 ? 0 : 1), outcome.output + outcome.errors);
        const QJsonObject reader = outcome.json()["readers"].toArray()[0].toObject();
        QCOMPARE(reader["exit"].toInt(-1), exitCode);
        const CliDesk::Outcome ofReader{exitCode, QJsonDocument(reader).toJson(), {}};
        checkAgainst(ofReader, desk.endReader());
        const QByteArray log = desk.content("batch.log");
        QCOMPARE(log.count('\n'), 1);
        QCOMPARE(log.contains(" reader 1: proven, 6 written"), exitCode == 0);
        QCOMPARE(log.contains(" reader 1: FAILED"), exitCode != 0);
    }

    // While a parameter is written. What is written is stored, whatever the echo is like.
    void updatingMeetsItWhileWriting_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<int>("exitCode");
        for (const Fault& fault : kFaults) {
            for (const char* const address : placesOf(fault, kWritable)) {
                if (!QByteArray(fault.fault).startsWith("value")) { // an echo carries none
                    QTest::addRow("%s, %s", fault.name, address)
                        << QStringLiteral("/rawsend WPW%1=*: ").arg(QLatin1String(address)) + fault.fault
                        << (QByteArray(fault.fault).startsWith("hang-up") ? 3 : 0);
                }
            }
        }
    }
    void updatingMeetsItWhileWriting()
    {
        QFETCH(QString, fault);
        QFETCH(int, exitCode);
        CliDesk desk;
        QVERIFY(prepareUpdate(desk, fault));
        const CliDesk::Outcome outcome = desk.run({"--json", "update", "wanted.tlc", "wanted.txt"});
        QVERIFY2(outcome.exitCode == exitCode, outcome.output + outcome.errors);
        checkClaims(outcome);
        const auto held = desk.endReader();
        checkAgainst(outcome, held);
        QCOMPARE(held == wanted(), exitCode == 0 || fault.contains("WPW114"));
    }

private:
    static void updatingRows(bool isProof)
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<int>("exitCode");
        for (const Fault& fault : kFaults) {
            for (const char* const address : placesOf(fault, kWritable)) {
                const int exitCode = fault.isLie ? (isProof ? 1 : 0) : fault.exitCode;
                if (QByteArray(fault.fault).contains("on=")) {
                    continue;
                }
                // The question is asked three times before it is given up; a lie is believed at once.
                const char* const occasion = isProof ? " on=2-" : fault.isLie ? " on=1" : " on=1-3";
                QTest::addRow("%s, %s", fault.name, address)
                    << QStringLiteral("/rawxact WPV%1: ").arg(QLatin1String(address)) + fault.fault + occasion
                    << exitCode;
            }
        }
    }

    static QMap<QByteArray, QByteArray> wanted()
    {
        auto memory = freshMemory();
        memory["013"] = "96";
        memory["020"] = "41";
        memory["0A0"] = "77";
        memory["114"] = "78";
        memory["081"] = "00";
        memory["082"] = "00";
        return memory;
    }

    static bool prepareUpdate(CliDesk& desk, const QString& fault)
    {
        QByteArray cfg = golden("FactoryDefaults.tlc");
        cfg.replace("013,95", "013,96").replace("020,00", "020,41");
        QByteArray kb = golden("FactoryDefaults.txt");
        kb.replace("09F,80,09", "09F,80,77").replace("113,00,2C", "113,00,78");
        return desk.write("wanted.tlc", cfg) && desk.write("wanted.txt", kb) && desk.startReader({fault});
    }

    // The exit code is that of the document, and what went wrong is told.
    static void checkClaims(const CliDesk::Outcome& outcome)
    {
        const QJsonObject json = outcome.json();
        QCOMPARE(json["exit"].toInt(-1), outcome.exitCode);
        QCOMPARE(json.contains("error"), outcome.exitCode > 1);
    }

    // Each parameter that was to be written is what the program says of it.
    static void checkAgainst(const CliDesk::Outcome& outcome, const QMap<QByteArray, QByteArray>& held, int count = 6)
    {
        QVERIFY(!held.isEmpty());
        const QJsonArray parameters = outcome.json()["parameters"].toArray();
        QCOMPARE(parameters.size(), count);
        bool areAllProven = true;
        for (const QJsonValue& entry : parameters) {
            const QJsonObject parameter = entry.toObject();
            const QByteArray state = parameter["state"].toString().toLatin1();
            const QByteArray value = held[parameter["address"].toString().toLatin1()];
            if (state == "proven") {
                QCOMPARE(value, parameter["wanted"].toString().toLatin1());
            } else if (state == "not-written") {
                QCOMPARE(value, parameter["before"].toString().toLatin1());
            } else {
                QVERIFY2(state == "unknown" || state == "wrong", state.constData());
            }
            areAllProven = areAllProven && state == "proven";
        }
        QCOMPARE(areAllProven, outcome.exitCode == 0);
    }
};

static const testsupport::RunnableTest<TeslinFaultsTest> kRunnable;
#include "TeslinFaultsTest.moc"
