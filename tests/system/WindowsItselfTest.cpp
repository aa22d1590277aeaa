#include "tests/support/RunnableTest.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

// What the program on Windows leaves for other programs there, and takes from them: Windows itself is asked.
class WindowsItselfTest final : public QObject
{
    Q_OBJECT

private:
    static void choose(ProgramProcess& program, const char* menu, const char* entry, const QString& window)
    {
        QVERIFY(program.act(u"clickaction %1"_s.arg(QLatin1String(menu))));
        QTRY_VERIFY_WITH_TIMEOUT(program.is(QLatin1String(menu), u"visible"_s), kAtOnce);
        QVERIFY(program.act(u"clickaction %1"_s.arg(QLatin1String(entry))));
        QTRY_VERIFY_WITH_TIMEOUT(program.is(window, u"visible"_s), kAtOnce);
    }
    static QByteArray read(SystemFixture& desk, const char* section, const char* key)
    {
        return desk.machine().askTool({u"get"_s, Machine::nameOf(desk.program().settingsFile()),
                                       QString::fromLatin1(section), QString::fromLatin1(key)});
    }
    static bool write(SystemFixture& desk, const char* section, const char* key, const QString& value)
    {
        return desk.machine().askTool({u"set"_s, Machine::nameOf(desk.program().settingsFile()),
                                       QString::fromLatin1(section), QString::fromLatin1(key), value}) != "(failed)";
    }

private slots:
    void initTestCase() { QVERIFY2(Machine::isWindows(), "TESLIN_WINDOWS_PROGRAMS names no Windows build"); }

    void theSystemReadsTheSettings()
    {
        SystemFixture desk;
        QVERIFY(desk.start({}, {}, {.settings = "; by hand\r\n[Name]\r\nFriendly Name=Till 4\r\n"}));
        ProgramProcess& program = desk.program();
        QVERIFY(program.act(u"close frmMain"_s));
        QCOMPARE(program.waitForEnd(), 0);
        QCOMPARE(read(desk, "Name", "Friendly Name"), "Till 4");
        QCOMPARE(read(desk, "Port", "Virtual Port"), "COM5");
        QCOMPARE(read(desk, "Select_Window_frmMain", "Settings").count(','), 3);
        QCOMPARE(read(desk, "Select_Window_frmMain", "WindowState"), "0");
        QFile file(program.settingsFile());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().startsWith("; by hand\r\n"));
    }

    void theProgramReadsWhatTheSystemWrote()
    {
        SystemFixture desk;
        QVERIFY(desk.startReader());
        QVERIFY(write(desk, "Name", "Friendly Name", u"Till 4"_s));
        QVERIFY(write(desk, "Port", "Virtual Port", u"COM12"_s));
        QVERIFY(write(desk, "Select_Window_frmMain", "Settings", u"11,22,780,750"_s));
        QVERIFY(desk.startProgram());
        QVERIFY(desk.waitForWindow());
        ProgramProcess& program = desk.program();
        QTRY_COMPARE_WITH_TIMEOUT(program.property(u"frmMain"_s, u"size"_s), u"780x750"_s, kAtOnce);
        choose(program, "mnuFile", "mnuOptions", u"frmOptions"_s);
        QCOMPARE(program.text(u"txtFriendlyName"_s), u"Till 4"_s);
        QCOMPARE(program.text(u"txtComPort"_s), u"COM12"_s);
    }

    // On a real screen, and by the window manager's own word.
    void theSingleSettingStaysAboveAllOthers()
    {
        SystemFixture desk;
        QVERIFY(desk.machine().setUp() && desk.startScreen());
        QVERIFY(desk.start());
        ProgramProcess& program = desk.program();
        QCOMPARE(desk.machine().askTool({u"topmost"_s, u"Teslin Configure"_s}), "no");
        choose(program, "mnuTools", "mnuEditSingle", u"dlgSingleField"_s);
        QTRY_COMPARE_WITH_TIMEOUT(desk.machine().askTool({u"topmost"_s, u"Change Single Field"_s}), "yes", kStart);
        QCOMPARE(desk.machine().askTool({u"topmost"_s, u"Teslin Configure"_s}), "no");
        QVERIFY(program.act(u"click OKButton"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!program.is(u"dlgSingleField"_s, u"visible"_s), kAtOnce);
    }
};

} // namespace

static const testsupport::RunnableTest<WindowsItselfTest> kRunnable;

#include "WindowsItselfTest.moc"
