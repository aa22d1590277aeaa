#include "tests/simulator/FolderTree.h"
#include "tests/support/RunnableTest.h"
#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"
#include "tests/system/driver/LineText.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace systemtest;

// The two programs at one reader: what one of them writes is, byte for byte, what the other writes, and each reads the
// other's files.
class TeslinBesideWindowTest final : public QObject
{
    Q_OBJECT

private:
    struct Outcome
    {
        int exitCode;
        QByteArray said;
    };

    // teslin in the program's folder, on the desk's reader.
    static Outcome teslin(SystemFixture& desk, const QStringList& arguments)
    {
        QProcess process;
        process.setProcessEnvironment(desk.machine().environment());
        process.setWorkingDirectory(desk.program().folder());
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(TESLIN), arguments);
        const bool ended = process.waitForFinished(kStart) && process.exitStatus() == QProcess::NormalExit;
        return {ended ? process.exitCode() : -1, process.readAll()};
    }

    static void enter(ProgramProcess& program, const QString& file)
    {
        QTRY_VERIFY_WITH_TIMEOUT(program.is(u"fileNameEdit"_s, u"focus"_s), kAtOnce);
        QVERIFY(program.actOnKeyboard(u"keys Ctrl+A"_s));
        QVERIFY(program.actOnKeyboard(u"type "_s + windowdriver::inOneLine(file)));
        // The first Return may go to the list of names that has opened below.
        QVERIFY(QTest::qWaitFor([&program] { return isClosed(program) || closesOnReturn(program); }, kAtOnce));
    }
    static bool isClosed(ProgramProcess& program) { return !program.ask(u"windows"_s).contains(u"fileDialog"_s); }
    static bool closesOnReturn(ProgramProcess& program)
    {
        return program.actOnKeyboard(u"keys Return"_s) &&
               QTest::qWaitFor([&program] { return isClosed(program); }, kCommandTicks * kTick);
    }

    static void selectTab(ProgramProcess& program, int tab, const QString& grid)
    {
        QVERIFY(program.act(u"clicktab SSTab1 %1"_s.arg(tab)));
        QTRY_VERIFY_WITH_TIMEOUT(program.is(grid, u"visible"_s), kAtOnce);
    }

    static void save(SystemFixture& desk, const QString& file)
    {
        QVERIFY(desk.press(u"KEY_SAVE"_s));
        enter(desk.program(), file);
        QTRY_VERIFY_WITH_TIMEOUT(QFile(file).size() > 0, kAtOnce);
        QCOMPARE(desk.program().box(), QString());
    }

    static void saveSummary(SystemFixture& desk, const QString& file)
    {
        QVERIFY(desk.press(u"KEY_SUMMARY"_s));
        QTRY_VERIFY_WITH_TIMEOUT(desk.program().is(u"frmSummary"_s, u"visible"_s), kAtOnce);
        QVERIFY(desk.program().act(u"click btnSave"_s));
        enter(desk.program(), file);
        QTRY_VERIFY_WITH_TIMEOUT(QFile(file).size() > 0, kAtOnce);
        QVERIFY(desk.program().act(u"click btnDone"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!desk.program().ask(u"windows"_s).contains(u"frmSummary"_s), kAtOnce);
    }

    static void addTables()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("grid");
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("ending");
        QTest::newRow("Configuration") << 0 << u"grdCFG"_s << u"cfg"_s << u".tlc"_s;
        QTest::newRow("Keyboard Language") << 1 << u"grdKB"_s << u"kb"_s << u".txt"_s;
    }

private slots:
    // Both read the same reader, write a file and a summary.
    void sameReaderSameFiles_data() { addTables(); }
    void sameReaderSameFiles()
    {
        QFETCH(int, tab);
        QFETCH(QString, grid);
        QFETCH(QString, table);
        QFETCH(QString, ending);
        SystemFixture desk;
        QVERIFY(desk.start(strangeMemory()));
        ProgramProcess& program = desk.program();
        const QString folder = program.folder() + u'/';
        selectTab(program, tab, grid);
        QVERIFY(desk.press(u"KEY_RETRIEVE"_s));
        QTRY_VERIFY_WITH_TIMEOUT(desk.isPortOpen(), kAtOnce);
        // Meanwhile the port is the window's.
        const Outcome refused = teslin(desk, {u"get"_s, u"013"_s});
        QVERIFY2(refused.exitCode == 3 && refused.said.contains("COM5 is in use by TeslinConfigure (process "),
                 refused.said.constData());
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle() && !desk.isPortOpen(), limitFor(154));
        save(desk, folder + u"window"_s + ending);
        saveSummary(desk, folder + u"window-summary.txt"_s);

        const Outcome retrieved = teslin(desk, {u"retrieve"_s, u"-o"_s, u"teslin"_s + ending});
        QVERIFY2(retrieved.exitCode == 0, retrieved.said.constData());
        const QByteArray file = contentOf(folder + u"window"_s + ending);
        QVERIFY(file.count('\n') >= 28);
        QCOMPARE(contentOf(folder + u"teslin"_s + ending), file);

        const Outcome summed =
            teslin(desk, {u"--table"_s, table, u"summary"_s, u"reader"_s, u"-o"_s, u"teslin-summary.txt"_s});
        QVERIFY2(summed.exitCode == 0, summed.said.constData());
        const QByteArray summary = contentOf(folder + u"window-summary.txt"_s);
        QVERIFY(summary.size() > 1000);
        QCOMPARE(contentOf(folder + u"teslin-summary.txt"_s), summary);

        // Each takes the other's file for what the reader holds.
        const Outcome verified = teslin(desk, {u"verify"_s, u"window"_s + ending});
        QVERIFY2(verified.exitCode == 0, verified.said.constData());
        QCOMPARE(teslin(desk, {u"diff"_s, u"window"_s + ending, u"defaults"_s}).exitCode, 1);
    }

    // A file that teslin wrote, loaded by the window, is shown as it is and saved as it was.
    void theWindowLoadsWhatTeslinWrote_data() { addTables(); }
    void theWindowLoadsWhatTeslinWrote()
    {
        QFETCH(int, tab);
        QFETCH(QString, grid);
        QFETCH(QString, ending);
        SystemFixture desk;
        QVERIFY(desk.start(strangeMemory()));
        ProgramProcess& program = desk.program();
        const QString folder = program.folder() + u'/';
        const Outcome retrieved = teslin(desk, {u"retrieve"_s, u"-o"_s, u"given"_s + ending});
        QVERIFY2(retrieved.exitCode == 0, retrieved.said.constData());
        selectTab(program, tab, grid);
        QVERIFY(desk.press(u"KEY_LOAD"_s));
        enter(program, folder + u"given"_s + ending);
        const QString values = tab == 0 ? values_CFG(strangeMemory()) : values_KB(strangeMemory());
        QTRY_COMPARE_WITH_TIMEOUT(program.column(grid, 2), values, kAtOnce);
        save(desk, folder + u"again"_s + ending);
        QCOMPARE(contentOf(folder + u"again"_s + ending), contentOf(folder + u"given"_s + ending));

        // The summary of a file, too.
        saveSummary(desk, folder + u"window-summary.txt"_s);
        const Outcome summed = teslin(desk, {u"summary"_s, u"given"_s + ending, u"-o"_s, u"teslin-summary.txt"_s});
        QVERIFY2(summed.exitCode == 0, summed.said.constData());
        QCOMPARE(contentOf(folder + u"teslin-summary.txt"_s), contentOf(folder + u"window-summary.txt"_s));
    }
};

static const testsupport::RunnableTest<TeslinBesideWindowTest> kRunnable;
#include "TeslinBesideWindowTest.moc"
