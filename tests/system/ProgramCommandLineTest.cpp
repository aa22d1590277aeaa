#include "tests/support/RunnableTest.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include <QDir>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

struct Outcome
{
    int exitCode = -1; // -1: did not end, or crashed
    QByteArray output;
    QByteArray errors;
};

// The program on a machine without a display, until it ends by itself.
Outcome runWithoutDisplay(const QStringList& arguments, const QString& output = {})
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const char* const variable : {"DISPLAY", "WAYLAND_DISPLAY", "HOME", "XDG_RUNTIME_DIR"}) {
        variables.remove(QString::fromLatin1(variable));
    }
    variables.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    QProcess process;
    process.setProcessEnvironment(variables);
    if (!output.isEmpty()) {
        process.setStandardOutputFile(output);
    }
    process.start(ProgramProcess::builtExecutable(), arguments);
    Outcome outcome;
    if (process.waitForFinished(kStart) && process.exitStatus() == QProcess::NormalExit) {
        outcome.exitCode = process.exitCode();
    }
    outcome.output = process.readAllStandardOutput();
    outcome.errors = process.readAllStandardError();
    return outcome;
}

// What the program does with its arguments.
class ProgramCommandLineTest final : public QObject
{
    Q_OBJECT

private slots:
    void helpNeedsNoDisplay()
    {
        const Outcome outcome = runWithoutDisplay({u"--help"_s});
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY2(outcome.output.startsWith("Usage: TeslinConfigure [R]\n"), outcome.output.constData());
        QVERIFY(outcome.output.contains("TESLIN_DOSDEVICES"));
        QCOMPARE(outcome.errors, QByteArray());
    }

    void versionNeedsNoDisplay()
    {
        // Behind the letter of the read test, too.
        for (const QStringList& arguments : {QStringList{u"--version"_s}, QStringList{u"R"_s, u"--version"_s}}) {
            const Outcome outcome = runWithoutDisplay(arguments);
            QCOMPARE(outcome.exitCode, 0);
            QCOMPARE(outcome.output, QByteArray("TeslinConfigure 1.4.1\n"));
            QCOMPARE(outcome.errors, QByteArray());
        }
    }

    void anAnswerThatCannotBeWritten()
    {
        // A disk without room.
        if (!QFile::exists(u"/dev/full"_s)) {
            QSKIP("there is no /dev/full here");
        }
        QCOMPARE(runWithoutDisplay({u"--version"_s}, u"/dev/full"_s).exitCode, 1);
    }

    void unknownArgumentsAreIgnored()
    {
        SystemFixture desk;
        QVERIFY(desk.start({}, {}, {.arguments = {u"--nonsense"_s, u"-R"_s, u"R"_s}}));
        ProgramProcess& program = desk.program();
        QCOMPARE(program.property(u"SSTab1"_s, u"currentIndex"_s), u"0"_s);
        QVERIFY(program.act(u"close frmMain"_s));
        QCOMPARE(program.waitForEnd(), 0);
    }
};

} // namespace

static const testsupport::RunnableTest<ProgramCommandLineTest> kRunnable;

#include "ProgramCommandLineTest.moc"
