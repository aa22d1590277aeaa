#include "tests/support/RunnableTest.h"
#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

constexpr qsizetype kIdentification = 5;
constexpr int kLimit = limitFor(32);

// The reader's driver dies in the middle of a transfer. A terminal that has hung up reports its error without end, so
// the program is watched for a while: it must not spend that while on it.
class LostReaderTest final : public QObject
{
    Q_OBJECT

private:
    static constexpr int kWatchedTicks = 40;
    static constexpr int kWatched = kWatchedTicks * kTick;
    static constexpr int kMostPercent = 5;

    QByteArray m_memory = strangeMemory();

    SystemFixture m_retrieve;
    SystemFixture m_update;

    static void startTransfer(SystemFixture& desk, const QByteArray& memory, const QString& key)
    {
        QVERIFY(desk.start(memory));
        QVERIFY(desk.press(key));
        QTRY_VERIFY_WITH_TIMEOUT(desk.commands().size() >= kIdentification + 4, kLimit);
    }

    static void verifyRestful(qint64 before, qint64 after)
    {
        const qint64 spent = after - before;
        QVERIFY(before > 0 && spent >= 0);
        QVERIFY2(spent * 100 <= kMostPercent * kWatched,
                 qPrintable(u"%1 ms of processor time in %2 ms"_s.arg(spent).arg(kWatched)));
    }

    static void verifyLoss(SystemFixture& desk)
    {
        ProgramProcess& program = desk.program();
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        QCOMPARE(program.text(u"StatusBar1_1"_s), u"Lost the connection to COM5"_s);
        QCOMPARE(program.box(), QString());
        QCOMPARE(program.ask(u"windows"_s), u"frmMain"_s);
        QVERIFY(program.is(u"pgbTransfer"_s, u"visible"_s));
        const int rowsDone = program.property(u"pgbTransfer"_s, u"value"_s).toInt();
        QVERIFY2(rowsDone > 0 && rowsDone < 27, qPrintable(QString::number(rowsDone)));
    }

    // With the reader still away the next press says so, and nothing else happens.
    static void pressWithoutReader(SystemFixture& desk, const QString& key)
    {
        ProgramProcess& program = desk.program();
        QVERIFY(desk.press(key));
        QTRY_COMPARE_WITH_TIMEOUT(
            program.box(),
            boxOf(u"Teslin Configure"_s, u"critical"_s, u"OK*"_s, u"Could not open COM5, "_s + Machine::noSuchFile()),
            kAtOnce);
        QVERIFY(program.act(u"press OK"_s));
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        QCOMPARE(program.text(u"StatusBar1_1"_s), QString());
    }

private slots:
    // Kills both readers on the way and leaves both programs alone for a while.
    void initTestCase()
    {
        startTransfer(m_retrieve, m_memory, u"KEY_RETRIEVE"_s);
        startTransfer(m_update, m_memory, u"KEY_UPDATE"_s);
        const qint64 before_retrieve = m_retrieve.program().processorTime();
        const qint64 before_update = m_update.program().processorTime();
        m_retrieve.unplugReader();
        m_update.unplugReader();
        QTest::qWait(kWatched);
        verifyRestful(before_retrieve, m_retrieve.program().processorTime());
        verifyRestful(before_update, m_update.program().processorTime());
    }

    void retrieve()
    {
        SystemFixture& desk = m_retrieve;
        ProgramProcess& program = desk.program();
        verifyLoss(desk);

        // Every command but the last one has been answered; the row of the last one has its old value back.
        const qsizetype asked = desk.commands().size() - kIdentification;
        const QStringList values = program.column(u"grdCFG"_s, 2).split(u' ');
        const QStringList fresh = values_CFG(m_memory).split(u' ');
        const QStringList old = values_CFG(factoryMemory()).split(u' ');
        QVERIFY(fresh[asked - 1] != old[asked - 1]);
        if (values[asked - 1] == fresh[asked - 1]) {
            QCOMPARE(values, fresh.first(asked) + old.sliced(asked)); // killed right behind a reply
        } else {
            QCOMPARE(values, fresh.first(asked - 1) + old.sliced(asked - 1));
        }

        pressWithoutReader(desk, u"KEY_RETRIEVE"_s);
        QVERIFY(desk.startReader(m_memory));
        QVERIFY(desk.press(u"KEY_RETRIEVE"_s));
        QTRY_COMPARE_WITH_TIMEOUT(desk.commands(), retrieve_CFG(), kLimit);
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        QCOMPARE(program.column(u"grdCFG"_s, 2), values_CFG(m_memory));
        QCOMPARE(program.text(u"StatusBar1_1"_s), QString());
    }

    void update()
    {
        SystemFixture& desk = m_update;
        verifyLoss(desk);
        const QByteArrayList commands = desk.commands();
        QVERIFY(commands.size() < 31);
        QCOMPARE(commands, update_CFG(factoryMemory()).first(commands.size()));
        QCOMPARE(desk.program().column(u"grdCFG"_s, 2), values_CFG(factoryMemory()));

        QVERIFY(desk.startReader(m_memory));
        QVERIFY(desk.press(u"KEY_UPDATE"_s));
        QTRY_COMPARE_WITH_TIMEOUT(desk.commands(), update_CFG(factoryMemory()), kLimit);
        QTRY_VERIFY_WITH_TIMEOUT(desk.program().isIdle(), kAtOnce);
    }
};

} // namespace

static const testsupport::RunnableTest<LostReaderTest> kRunnable;

#include "LostReaderTest.moc"
