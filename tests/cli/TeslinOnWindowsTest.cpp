#include "tests/simulator/FolderTree.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SourceFile.h"
#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace systemtest;

// teslin.exe on a Windows under Wine, with the simulated reader of this system.
class TeslinOnWindowsTest final : public QObject
{
    Q_OBJECT

private:
    struct Outcome
    {
        int exitCode;
        QByteArray output;
        QByteArray errors;
    };

    // Through files: servers that Wine leaves behind would hold pipes open.
    static Outcome teslin(SystemFixture& desk, const QStringList& arguments)
    {
        const QString folder = desk.program().folder();
        QProcess process;
        process.setProcessEnvironment(desk.machine().environment());
        process.setWorkingDirectory(folder);
        process.setStandardInputFile(QProcess::nullDevice());
        process.setStandardOutputFile(folder + u"/output"_s);
        process.setStandardErrorFile(folder + u"/errors"_s);
        const QStringList line =
            Machine::command(qEnvironmentVariable("TESLIN_WINDOWS_PROGRAMS") + u"/teslin.exe"_s, arguments);
        process.start(line.front(), line.mid(1));
        const bool ended = process.waitForFinished(kStart) && process.exitStatus() == QProcess::NormalExit;
        return {ended ? process.exitCode() : -1, contentOf(folder + u"/output"_s), contentOf(folder + u"/errors"_s)};
    }

    static QByteArray golden(const QString& name)
    {
        return contentOf(testsupport::sourceFile(u"tests/files/golden/"_s + name));
    }

private slots:
    void initTestCase() { QVERIFY2(Machine::isWindows(), "TESLIN_WINDOWS_PROGRAMS names no Windows build"); }

    void version()
    {
        SystemFixture desk;
        QVERIFY(desk.machine().setUp());
        const Outcome outcome = teslin(desk, {u"--version"_s});
        QCOMPARE(outcome.output, QByteArray("teslin " TESLIN_VERSION "\n"));
        QCOMPARE(outcome.exitCode, 0);
    }

    void info()
    {
        SystemFixture desk;
        QVERIFY(desk.machine().setUp() && desk.startReader());
        const Outcome outcome = teslin(desk, {u"info"_s});
        QCOMPARE(outcome.output, QByteArray("Port:            COM5\n"
                                            "Driver:          Teslin KSD 2.10\n"
                                            "Firmware:        3.07\n"
                                            "Identification:  Teslin 60044718\n"
                                            "Keyboard layout: 0409 English\n"));
        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.exitCode, 0);
    }

    void retrieveAndSummary()
    {
        SystemFixture desk;
        QVERIFY(desk.machine().setUp() && desk.startReader("081=00\n082=00\n"));
        QCOMPARE(teslin(desk, {u"retrieve"_s, u"-o"_s, u"held.tlc"_s, u"-o"_s, u"held.txt"_s}).exitCode, 0);
        QCOMPARE(contentOf(desk.program().folder() + u"/held.tlc"_s), golden(u"FactoryDefaults.tlc"_s));
        QCOMPARE(contentOf(desk.program().folder() + u"/held.txt"_s), golden(u"FactoryDefaults.txt"_s));
        // No byte of a report is changed on its way out.
        const QByteArray report = teslin(desk, {u"summary"_s, u"held.tlc"_s}).output;
        QCOMPARE(report.count('\r'), report.count('\n'));
        QVERIFY(report.endsWith("\r\n\r\n") && !report.contains("\r\r"));
    }

    void updateWithProof()
    {
        SystemFixture desk;
        QVERIFY(desk.machine().setUp() && desk.startReader());
        QByteArray file = golden(u"FactoryDefaults.tlc"_s);
        file.replace("013,95", "013,96").replace("020,00", "020,41");
        QVERIFY(makeFile(desk.program().folder() + u"/wanted.tlc"_s, file));
        const Outcome outcome = teslin(desk, {u"update"_s, u"wanted.tlc"_s});
        QVERIFY2(outcome.exitCode == 0, outcome.errors.constData());
        QCOMPARE(outcome.output, QByteArray("2 parameters written and proven\n"));
        const QByteArray held = desk.memoryAtEnd();
        QCOMPARE(valueIn(held, "013"), "96");
        QCOMPARE(valueIn(held, "020"), "41");
        QCOMPARE(valueIn(held, "01A"), "12");
    }

    void aSilentReader()
    {
        SystemFixture desk;
        QVERIFY(desk.machine().setUp() && desk.startReader({}, {u"/rawxact WPV020: silent"_s}));
        const Outcome outcome = teslin(desk, {u"--timeout"_s, u"200"_s, u"--json"_s, u"get"_s, u"020"_s});
        QCOMPARE(outcome.exitCode, 4);
        const QJsonObject json = QJsonDocument::fromJson(outcome.output).object();
        QCOMPARE(json["error"_L1].toObject()["kind"_L1].toString(), u"no-reply"_s);
    }

    void noReader()
    {
        SystemFixture desk;
        QVERIFY(desk.machine().setUp());
        QCOMPARE(teslin(desk, {u"info"_s}).exitCode, 3);
    }
};

static const testsupport::RunnableTest<TeslinOnWindowsTest> kRunnable;
#include "TeslinOnWindowsTest.moc"
