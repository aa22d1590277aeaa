#include "tests/support/RunnableTest.h"
#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"
#include "tests/system/driver/LineText.h"

#include <QDate>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

// Table files and summaries through the program's own dialogs, looked at byte for byte.
class FilesTest final : public QObject
{
    Q_OBJECT

private:
    static QByteArray contentOf(const QString& file)
    {
        QFile opened(file);
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray("(cannot be read)");
    }

    // Names a file in the open file dialog.
    static void enter(ProgramProcess& program, const QString& file)
    {
        QTRY_VERIFY_WITH_TIMEOUT(program.is(u"fileNameEdit"_s, u"focus"_s), kAtOnce);
        QVERIFY(program.actOnKeyboard(u"keys Ctrl+A"_s));
        QVERIFY(program.actOnKeyboard(u"type "_s + windowdriver::inOneLine(Machine::nameOf(file))));
        confirm(program);
    }
    static void confirm(ProgramProcess& program)
    {
        // The first may go to the list of names that has opened below.
        QVERIFY(QTest::qWaitFor([&program] { return isClosed(program) || closesOnReturn(program); }, kAtOnce));
    }
    static bool isClosed(ProgramProcess& program) { return !program.ask(u"windows"_s).contains(u"fileDialog"_s); }
    static bool closesOnReturn(ProgramProcess& program)
    {
        return program.actOnKeyboard(u"keys Return"_s) &&
               QTest::qWaitFor([&program] { return isClosed(program); }, kCommandTicks * kTick);
    }
    static void selectTab(ProgramProcess& program, int tab, const char* grid)
    {
        QVERIFY(program.act(u"clicktab SSTab1 %1"_s.arg(tab)));
        QTRY_VERIFY_WITH_TIMEOUT(program.is(QLatin1String(grid), u"visible"_s), kAtOnce);
    }

    static void addTables()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QByteArray>("grid");
        QTest::addColumn<QString>("ending");
        QTest::newRow("Configuration") << 0 << QByteArray("grdCFG") << u".tlc"_s;
        QTest::newRow("Keyboard Language") << 1 << QByteArray("grdKB") << u".txt"_s;
    }

private slots:
    void theDefaultsAreSaved_data() { addTables(); }
    void theDefaultsAreSaved()
    {
        QFETCH(int, tab);
        QFETCH(QByteArray, grid);
        QFETCH(QString, ending);
        SystemFixture desk;
        QVERIFY(desk.start());
        ProgramProcess& program = desk.program();
        selectTab(program, tab, grid.constData());
        const QString file = program.folder() + u"/shop"_s + ending;
        QVERIFY(desk.press(u"KEY_SAVE"_s));
        enter(program, file);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(file), kAtOnce);
        QTRY_COMPARE_WITH_TIMEOUT(contentOf(file), contentOf(QStringLiteral(TESLIN_GOLDEN "/FactoryDefaults") + ending),
                                  kAtOnce);
        QCOMPARE(program.box(), QString());
    }

    // A file is read into the table, and saved again it is the same file.
    void aFileIsLoadedAndSaved_data() { addTables(); }
    void aFileIsLoadedAndSaved()
    {
        QFETCH(int, tab);
        QFETCH(QByteArray, grid);
        QFETCH(QString, ending);
        SystemFixture desk;
        QVERIFY(desk.start());
        ProgramProcess& program = desk.program();
        selectTab(program, tab, grid.constData());
        QByteArray bytes = contentOf(QStringLiteral(TESLIN_GOLDEN "/FactoryDefaults") + ending);
        QVERIFY(bytes.contains(tab == 0 ? "01A,12" : "083,20,03"));
        bytes.replace("01A,12", "01A,7E").replace("083,20,03", "083,41,5A");
        const QString given = program.folder() + u"/given"_s + ending;
        QFile file(given);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();

        QVERIFY(desk.press(u"KEY_LOAD"_s));
        enter(program, given);
        const QString cell = u"cell "_s + QString::fromLatin1(grid) + (tab == 0 ? u" 9 2"_s : u" 3 2"_s);
        QTRY_COMPARE_WITH_TIMEOUT(program.ask(cell), tab == 0 ? u"7E"_s : u"41-5A"_s, kAtOnce);
        QCOMPARE(program.column(QString::fromLatin1(grid), 0).count(u'X'), 0);

        // The dialog offers the name that the file had.
        QVERIFY(QFile::remove(given));
        QVERIFY(desk.press(u"KEY_SAVE"_s));
        QTRY_VERIFY_WITH_TIMEOUT(program.is(u"fileNameEdit"_s, u"focus"_s), kAtOnce);
        confirm(program);
        QTRY_COMPARE_WITH_TIMEOUT(contentOf(given), bytes, kAtOnce);
        QCOMPARE(program.box(), QString());
    }

    // Byte for byte but for its date, which is today's.
    void theSummaryIsSaved_data() { addTables(); }
    void theSummaryIsSaved()
    {
        QFETCH(int, tab);
        QFETCH(QByteArray, grid);
        SystemFixture desk;
        QVERIFY(desk.start());
        ProgramProcess& program = desk.program();
        selectTab(program, tab, grid.constData());
        QVERIFY(desk.press(u"KEY_SUMMARY"_s));
        QTRY_VERIFY_WITH_TIMEOUT(program.is(u"frmSummary"_s, u"visible"_s), kAtOnce);
        QVERIFY(program.act(u"click btnSave"_s));
        const QString file = program.folder() + u"/summary.txt"_s;
        enter(program, file);
        QTRY_VERIFY_WITH_TIMEOUT(QFile(file).size() > 0, kAtOnce);
        const auto name = tab == 0 ? u"configuration-defaults.txt"_s : u"keyboard-defaults.txt"_s;
        const QByteArray saved = contentOf(file);
        const QByteArray golden = contentOf(QStringLiteral(TESLIN_GOLDEN_REPORTS "/") + name);
        const QByteArray day = QDate::currentDate().toString(u"MM/dd/yyyy"_s).toLatin1();
        QVERIFY2(saved.left(saved.indexOf('\r')).endsWith(day), saved.left(100).constData());
        QVERIFY(golden.size() > 1000);
        QCOMPARE(saved.mid(saved.indexOf('\r')), golden.mid(golden.indexOf('\r')) + "\r\n"); // a line end of its own
        QCOMPARE(program.box(), QString());
    }
};

} // namespace

static const testsupport::RunnableTest<FilesTest> kRunnable;

#include "FilesTest.moc"
