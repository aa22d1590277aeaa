#include "tests/support/RunnableTest.h"
#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

constexpr qsizetype kIdentification = 5;
constexpr qsizetype kSomeRows = kIdentification + 6;
constexpr int kLimit = limitFor(32);

// Transfers that the user ends before they are through, by the Abort button or with the program itself.
class AbortTest final : public QObject
{
    Q_OBJECT

private:
    QByteArray m_memory = strangeMemory();
    SystemFixture m_retrieve;
    SystemFixture m_update;
    SystemFixture m_closed;
    SystemFixture m_exited;
    SystemFixture m_unsaved;

    static QString unsavedBox()
    {
        return boxOf(u"Configuration"_s, u"question"_s, u"Cancel No Yes*"_s,
                     u"Configuration table changed but not saved!\r\nDo you wish to save now?"_s);
    }

    static bool answer(ProgramProcess& program, const QString& box, const QString& button)
    {
        return QTest::qWaitFor([&] { return program.box() == box; }, kLimit) && program.act(u"press "_s + button) &&
               QTest::qWaitFor([&] { return !program.isRunning() || program.box() != box; }, kAtOnce);
    }

    // Waits until a run that was started is well on its way.
    static void waitForSomeRows(SystemFixture& desk, qsizetype before = 0)
    {
        QTRY_VERIFY_WITH_TIMEOUT(desk.commands().size() >= before + kSomeRows, kLimit);
        QCOMPARE(desk.program().text(u"KEY_EXIT"_s), u"Abort"_s);
    }

    static void verifyAtRest(SystemFixture& desk)
    {
        ProgramProcess& program = desk.program();
        QVERIFY(program.is(u"KEY_UPDATE"_s, u"enabled"_s));
        // How far it came stays to be seen.
        QVERIFY(program.is(u"pgbTransfer"_s, u"visible"_s));
        const int rowsDone = program.property(u"pgbTransfer"_s, u"value"_s).toInt();
        QVERIFY2(rowsDone < program.property(u"pgbTransfer"_s, u"maximum"_s).toInt(),
                 qPrintable(QString::number(rowsDone)));
        QCOMPARE(program.ask(u"windows"_s), u"frmMain"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!desk.isPortOpen(), kAtOnce);
    }

    // The rows up to some row hold what the reader holds, those behind it what they held before. Gives the number of
    // the former, or -1 when it is not so.
    static int rowsRead(const QStringList& values, const QStringList& fresh, const QStringList& old)
    {
        qsizetype read = 0;
        while (read < values.size() && values[read] == fresh[read]) {
            ++read;
        }
        return values.mid(read) == old.mid(read) ? static_cast<int>(read) : -1;
    }

private slots:
    void initTestCase()
    {
        for (SystemFixture* const desk : {&m_retrieve, &m_update, &m_closed, &m_exited, &m_unsaved}) {
            QVERIFY(desk->start(m_memory));
        }
    }

    void retrieve()
    {
        ProgramProcess& program = m_retrieve.program();
        QVERIFY(m_retrieve.press(u"KEY_RETRIEVE"_s));
        waitForSomeRows(m_retrieve);
        QVERIFY(m_retrieve.press(u"KEY_EXIT"_s));
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        verifyAtRest(m_retrieve);

        const QByteArrayList commands = m_retrieve.commands();
        const int rows = rowsRead(program.column(u"grdCFG"_s, 2).split(u' '), values_CFG(m_memory).split(u' '),
                                  values_CFG(factoryMemory()).split(u' '));
        QVERIFY2(rows >= kSomeRows - kIdentification - 1 && rows < 27, qPrintable(QString::number(rows)));
        QCOMPARE(commands, retrieve_CFG().first(commands.size()));
        QCOMPARE(program.property(u"pgbTransfer"_s, u"value"_s), QString::number(rows));
        // The row that was being read is the last one whose mark was wiped, and holds its old value.
        QStringList marks;
        for (const QStringList& row : program.rows(u"grdCFG"_s)) {
            marks.append(row[0]);
        }
        QCOMPARE(marks.count(u" "_s), commands.size() - kIdentification);
        QVERIFY(rows == marks.count(u" "_s) - 1);

        // The press that starts the next run wipes the abort.
        QVERIFY(m_retrieve.press(u"KEY_RETRIEVE"_s));
        QTRY_COMPARE_WITH_TIMEOUT(m_retrieve.commands().mid(commands.size()), retrieve_CFG(), kLimit);
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        QCOMPARE(program.column(u"grdCFG"_s, 2), values_CFG(m_memory));
    }

    void update()
    {
        ProgramProcess& program = m_update.program();
        QVERIFY(m_update.press(u"KEY_UPDATE"_s));
        waitForSomeRows(m_update);
        QVERIFY(m_update.press(u"KEY_EXIT"_s));
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        verifyAtRest(m_update);
        const QByteArrayList commands = m_update.commands();
        QVERIFY(commands.size() < 31);
        QCOMPARE(commands, update_CFG(factoryMemory()).first(commands.size()));
        QCOMPARE(program.column(u"grdCFG"_s, 2), values_CFG(factoryMemory()));

        QVERIFY(m_update.press(u"KEY_UPDATE"_s));
        QTRY_COMPARE_WITH_TIMEOUT(m_update.commands().mid(commands.size()), update_CFG(factoryMemory()), kLimit);
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
    }

    void windowClosed()
    {
        QVERIFY(m_closed.press(u"KEY_RETRIEVE"_s));
        waitForSomeRows(m_closed);
        QVERIFY(m_closed.program().act(u"close frmMain"_s));
        QCOMPARE(m_closed.program().waitForEnd(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!m_closed.isPortOpen(), kAtOnce);
        QVERIFY(m_closed.commands().size() < 32);
        QVERIFY(QFile::exists(m_closed.program().settingsFile()));
    }

    void exitFromTheMenu()
    {
        ProgramProcess& program = m_exited.program();
        QVERIFY(m_exited.press(u"KEY_UPDATE"_s));
        waitForSomeRows(m_exited);
        QVERIFY(program.act(u"clickaction mnuFile"_s));
        QTRY_VERIFY_WITH_TIMEOUT(program.is(u"mnuFile"_s, u"visible"_s), kAtOnce);
        QVERIFY(program.act(u"clickaction mnuExit"_s));
        QCOMPARE(program.waitForEnd(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!m_exited.isPortOpen(), kAtOnce);
        QVERIFY(m_exited.commands().size() < 31);
    }

    void windowClosedWithUnsavedChanges()
    {
        ProgramProcess& program = m_unsaved.program();
        // The option for track 2 in "Track enables".
        QVERIFY(program.act(u"clickcell grdCFG 2 2"_s));
        QTRY_VERIFY_WITH_TIMEOUT(program.is(u"radTk2_2"_s, u"visible"_s), kAtOnce);
        QVERIFY(program.act(u"click radTk2_2"_s));
        QTRY_COMPARE_WITH_TIMEOUT(program.ask(u"cell grdCFG 2 0"_s), u"XXX"_s, kAtOnce);
        const QString edited = program.ask(u"cell grdCFG 2 2"_s);
        QVERIFY(edited != u"95"_s);

        // Retrieve asks once the port is open; Cancel reads nothing.
        QVERIFY(m_unsaved.press(u"KEY_RETRIEVE"_s));
        QTRY_COMPARE_WITH_TIMEOUT(program.box(), unsavedBox(), kLimit);
        QCOMPARE(program.text(u"KEY_EXIT"_s), u"Abort"_s);
        QVERIFY(m_unsaved.isPortOpen());
        QVERIFY(answer(program, unsavedBox(), u"Cancel"_s));
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        QCOMPARE(m_unsaved.commands(), identification());
        QCOMPARE(program.ask(u"cell grdCFG 2 2"_s), edited);

        // No reads on; closed on the way, the program asks before it ends, and Cancel keeps it.
        QVERIFY(m_unsaved.press(u"KEY_RETRIEVE"_s));
        QVERIFY(answer(program, unsavedBox(), u"No"_s));
        waitForSomeRows(m_unsaved, kIdentification);
        QVERIFY(program.act(u"close frmMain"_s));
        QVERIFY(answer(program, unsavedBox(), u"Cancel"_s));
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        verifyAtRest(m_unsaved);
        QVERIFY(program.isRunning());

        QVERIFY(program.act(u"close frmMain"_s));
        QVERIFY(answer(program, unsavedBox(), u"No"_s));
        QCOMPARE(program.waitForEnd(), 0);
    }
};

} // namespace

static const testsupport::RunnableTest<AbortTest> kRunnable;

#include "AbortTest.moc"
