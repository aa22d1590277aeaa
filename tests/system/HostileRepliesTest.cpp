#include "tests/support/RunnableTest.h"
#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include <QTest>

#include <map>
#include <memory>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

constexpr qsizetype kIdentification = 5;
constexpr int kLimit = limitFor(40);

constexpr qsizetype kRow = 4;         // the row that goes wrong ...
const QByteArray kAddress = "015"_ba; // ... and its address

// What the reader does wrong, and what becomes of a Retrieve of the Configuration table.
struct Case
{
    QStringList faults;
    bool endsAtRow = false; // no reply that counts: the row keeps its old value, the later ones are not read
    QString value = {};     // what the row holds in the end; empty: what the reader holds
    QString status = {};    // the first panel in the end
    bool blankLine = false; // a box on the way
};

std::map<QByteArray, Case> cases(const QString& right)
{
    const auto fault = [](const QString& text) { return QStringList(u"/rawxact WPV015: "_s + text); };
    std::map<QByteArray, Case> all;
    all["everything split at every byte"] = {
        {u"/ver: split=every"_s, u"/get*: split=every"_s, u"/rawxact*: split=every"_s}};
    all["two parameters in one write"] = {.faults = fault(u"with=\"/rawxact WPV016 reply 00: 7E\""_s),
                                          .value = u"7E"_s};
    all["reply and echo in one write"] = {fault(u"with=\"/rawsend WPW016=7E ok\""_s)};
    all["reply twice in one write"] = {fault(u"twice"_s)};
    all["unsolicited lines around the reply"] = {
        fault(u"before=\"/read report status: 07\" after=\"something else\""_s)};
    all["late"] = {fault(u"delay=200"_s)};
    all["too late"] = {.faults = fault(u"delay=1200"_s), .endsAtRow = true};
    all["silent"] = {.faults = fault(u"silent"_s), .endsAtRow = true};
    all["garbled"] = {.faults = fault(u"garbled"_s), .endsAtRow = true};
    all["25 characters"] = {.faults = fault(u"cut=25"_s), .endsAtRow = true};
    all["26 characters"] = {.faults = fault(u"cut=26"_s), .endsAtRow = true};
    all["27 characters"] = {.faults = fault(u"cut=27"_s), .endsAtRow = true};
    all["28 characters"] = {fault(u"cut=28"_s)};
    all["29 characters"] = {.faults = fault(u"pad=29"_s), .value = right + u'.'};
    all["5,000 characters"] = {.faults = fault(u"pad=5000"_s), .value = right + QString(5000 - 28, u'.')};
    all["ended by a carriage return"] = {fault(u"end=\"\\r\""_s)};
    all["never ended"] = {.faults = fault(u"end=\"\""_s), .endsAtRow = true};
    all["blank line before the reply"] = {.faults = fault(u"before=\"\""_s), .blankLine = true};
    all["hung up, and back at once"] = {
        .faults = fault(u"hang-up on=1"_s), .endsAtRow = true, .status = u"Lost the connection to COM5"_s};
    all["identification of every wrong kind"] = {
        {u"/ver: garbled"_s, u"/get dev_version: cut=20"_s, u"/rawxact WCY: cut=25"_s, u"/rawxact WPV081: silent"_s}};
    return all;
}

// With the padding of a long reply counted, so that a failure shows what differs.
QStringList counted(QStringList values)
{
    for (QString& value : values) {
        if (const qsizetype padding = value.count(u'.'); padding > 1) {
            value = value.remove(u'.') + u"+%1"_s.arg(padding);
        }
    }
    return values;
}

// Replies that no reader in order would send. Each kind has a desk of its own, and all Retrieves run at the same time.
class HostileRepliesTest final : public QObject
{
    Q_OBJECT

private:
    QByteArray m_memory = strangeMemory();
    std::map<QByteArray, Case> m_cases = cases(QString::fromLatin1(valueIn(m_memory, kAddress)));
    std::map<QByteArray, std::unique_ptr<SystemFixture>> m_desks;

    [[nodiscard]] QStringList expectedValues(const Case& kind) const
    {
        QStringList values = values_CFG(m_memory).split(u' ');
        if (kind.endsAtRow) {
            return values.first(kRow - 1) + values_CFG(factoryMemory()).split(u' ').sliced(kRow - 1);
        }
        if (!kind.value.isEmpty()) {
            values[kRow - 1] = kind.value;
        }
        return values;
    }

    // The commands of a run; where it is cut off, of those up to the row. A parameter of the identification that does
    // not answer keeps the one behind it from being asked.
    static QByteArrayList expectedCommands(const QByteArray& name, const Case& kind)
    {
        QByteArrayList commands = retrieve_CFG();
        if (name == "identification of every wrong kind") {
            commands.removeAt(kIdentification - 1);
        }
        return kind.endsAtRow ? commands.first(kIdentification + kRow) : commands;
    }

    // Of all the commands that came; what else the reader's log tells of a hang-up is left out.
    static QByteArrayList commandsOf(const SystemFixture& desk)
    {
        QByteArrayList commands = desk.commands();
        commands.removeIf([](const QByteArray& command) { return command.startsWith('('); });
        return commands;
    }

    static QString addresses(ProgramProcess& program) { return program.column(u"grdCFG"_s, 1); }

private slots:
    void initTestCase()
    {
        QVERIFY(valueIn(m_memory, kAddress) != valueIn(factoryMemory(), kAddress));
        QCOMPARE(retrieve_CFG().at(kIdentification + kRow - 1), "/rawxact WPV" + kAddress + "\\n");
        for (const auto& [name, kind] : m_cases) {
            auto& desk = *(m_desks[name] = std::make_unique<SystemFixture>());
            QVERIFY2(desk.start(m_memory, kind.faults), name.constData());
        }
        // One after the other, so that they do not keep each other from answering in time.
        for (const auto& [name, desk] : m_desks) {
            QVERIFY2(desk->press(u"KEY_RETRIEVE"_s), name.constData());
            QTRY_VERIFY2_WITH_TIMEOUT(desk->isPortOpen(), name.constData(), kAtOnce);
        }
        ProgramProcess& interrupted = m_desks.at("blank line before the reply")->program();
        QTRY_COMPARE_WITH_TIMEOUT(interrupted.box(),
                                  boxOf(u"Teslin Configure"_s, u"none"_s, u"OK*"_s, u"No data read"_s), kLimit);
        QVERIFY(interrupted.act(u"press OK"_s));
    }

    void retrieve_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const auto& [name, kind] : m_cases) {
            QTest::newRow(name.constData()) << name;
        }
    }

    void retrieve()
    {
        QFETCH(QByteArray, name);
        const Case& kind = m_cases.at(name);
        SystemFixture& desk = *m_desks.at(name);
        ProgramProcess& program = desk.program();
        const QByteArrayList commands = expectedCommands(name, kind);
        QTRY_COMPARE_WITH_TIMEOUT(commandsOf(desk), commands, kLimit);
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        QTRY_VERIFY_WITH_TIMEOUT(!desk.isPortOpen(), kAtOnce);
        QCOMPARE(commandsOf(desk), commands);
        QCOMPARE(counted(program.column(u"grdCFG"_s, 2).split(u' ')), counted(expectedValues(kind)));
        QVERIFY(addresses(program).startsWith(u"001 013 014 015 016"_s));
        QCOMPARE(program.box(), QString());
        QCOMPARE(program.ask(u"windows"_s), u"frmMain"_s);
        if (!kind.status.isEmpty()) {
            QCOMPARE(program.text(u"StatusBar1_1"_s), kind.status);
        }
    }

    // A reply that comes when nobody waits for it any more changes nothing, and no later run takes it for its own.
    void afterTheLateReply()
    {
        SystemFixture& desk = *m_desks.at("too late");
        const auto isSent = [&desk] {
            const auto log = desk.reader().log();
            return std::any_of(log.begin(), log.end(), [](const SimulatorProcess::LogLine& line) {
                return line.event == "sent" && line.detail.startsWith("/rawxact WPV" + kAddress);
            });
        };
        QTRY_VERIFY_WITH_TIMEOUT(isSent(), kLimit);
        QCOMPARE(desk.program().column(u"grdCFG"_s, 2).split(u' '), expectedValues(m_cases.at("too late")));
        const qsizetype before = desk.commands().size();
        QVERIFY(desk.press(u"KEY_RETRIEVE"_s));
        QTRY_COMPARE_WITH_TIMEOUT(desk.commands().mid(before), retrieve_CFG().first(kIdentification + kRow), kLimit);
        QTRY_VERIFY_WITH_TIMEOUT(desk.program().isIdle(), kAtOnce);
        QCOMPARE(desk.commands().size(), before + kIdentification + kRow);
        QCOMPARE(desk.program().column(u"grdCFG"_s, 2).split(u' '), expectedValues(m_cases.at("too late")));
    }

    void onceMoreAfterTheHangUp()
    {
        SystemFixture& desk = *m_desks.at("hung up, and back at once");
        const qsizetype before = commandsOf(desk).size();
        QVERIFY(desk.press(u"KEY_RETRIEVE"_s));
        QTRY_COMPARE_WITH_TIMEOUT(commandsOf(desk).mid(before), retrieve_CFG(), kLimit);
        QTRY_VERIFY_WITH_TIMEOUT(desk.program().isIdle(), kAtOnce);
        QCOMPARE(desk.program().column(u"grdCFG"_s, 2), values_CFG(m_memory));
    }

    void labelsOfAWrongIdentification()
    {
        ProgramProcess& program = m_desks.at("identification of every wrong kind")->program();
        QVERIFY(!program.is(u"lblDriverName"_s, u"visible"_s));
        QVERIFY(!program.is(u"lblFirmwareValue"_s, u"visible"_s));
        ProgramProcess& split = m_desks.at("everything split at every byte")->program();
        QCOMPARE(split.text(u"lblFirmwareValue"_s), u" 3.07 "_s);
    }
};

} // namespace

static const testsupport::RunnableTest<HostileRepliesTest> kRunnable;

#include "HostileRepliesTest.moc"
