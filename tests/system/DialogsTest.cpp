#include "tests/support/RunnableTest.h"
#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

const QString kNoPort = u"Could not open COM5, "_s + Machine::noSuchFile();
const QString kNoDriver =
    u"Was unable to open the Teslin Device Driver.  Check to see if the driver is installed and the Teslin is attached"_s;

QString notice(const QString& text, const QString& icon = u"none"_s)
{
    return boxOf(u"Teslin Configure"_s, icon, u"OK*"_s, text);
}

// The options and the single setting, with what a user types and clicks, over the wire to a reader.
class DialogsTest final : public QObject
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
    static void openOptions(ProgramProcess& program) { choose(program, "mnuFile", "mnuOptions", u"frmOptions"_s); }
    static void openSingleField(ProgramProcess& program)
    {
        choose(program, "mnuTools", "mnuEditSingle", u"dlgSingleField"_s);
    }
    static void click(ProgramProcess& program, const char* control)
    {
        QVERIFY(program.act(u"click "_s + QLatin1String(control)));
    }
    static void answer(ProgramProcess& program, const QString& box)
    {
        QTRY_COMPARE_WITH_TIMEOUT(program.box(), box, kDeviceObject);
        QVERIFY(program.act(u"press OK"_s));
    }
    // Waits until a test or a setting is done with.
    static void verifyDone(ProgramProcess& program, const char* button)
    {
        QTRY_COMPARE_WITH_TIMEOUT(program.box(), QString(), kAtOnce);
        QTRY_VERIFY_WITH_TIMEOUT(program.is(QLatin1String(button), u"enabled"_s), kAtOnce);
    }
    // Types into the open single-setting dialog, over what its boxes hold.
    static void typeSetting(ProgramProcess& program, const QString& address, const QString& value)
    {
        click(program, "txtSingleAddress");
        QTRY_VERIFY_WITH_TIMEOUT(program.is(u"txtSingleAddress"_s, u"focus"_s),
                                 kAtOnce); // or the main window would get the keys
        QVERIFY(program.actOnKeyboard(u"keys Home Shift+End"_s));
        QVERIFY(program.actOnKeyboard(u"type "_s + address));
        QVERIFY(program.actOnKeyboard(u"keys Tab"_s));
        QVERIFY(program.actOnKeyboard(u"type "_s + value));
    }
    static QByteArray reading(const char* address) { return "/rawxact WPV"_ba + address + "\\n"; }
    static QByteArray writing(const char* setting) { return "/rawsend WPW"_ba + setting + "\\n"; }
    static QByteArray settingsOf(const ProgramProcess& program)
    {
        QFile file(program.settingsFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no settings)");
    }

private slots:
    void optionsTestTheLinkByNameAndByPort()
    {
        SystemFixture desk;
        QVERIFY(desk.start());
        ProgramProcess& program = desk.program();
        openOptions(program);
        click(program, "btnTestName");
        answer(program, notice(u"Teslin successfully opened (COM port 5 found)"_s));
        verifyDone(program, "btnTestName");
        QCOMPARE(desk.commands(), QByteArrayList{}); // only the driver was asked
        click(program, "btnTestPort");
        answer(program, notice(u"Teslin successfully opened"_s));
        verifyDone(program, "btnTestPort");
        QCOMPARE(desk.commands(), identification());
        QVERIFY(desk.isPortOpen());
        QCOMPARE(program.text(u"StatusBar1_2"_s), u"KSD Port: COM5"_s);

        desk.unplugReader();
        click(program, "btnTestName");
        answer(program, notice(u"Unable to open Teslin"_s));
        verifyDone(program, "btnTestName");
        click(program, "btnTestPort");
        answer(program, notice(kNoPort, u"critical"_s));
        answer(program, notice(u"Unable to open the Teslin"_s));
        verifyDone(program, "btnTestPort");
        QVERIFY(program.is(u"frmOptions"_s, u"visible"_s));
        QCOMPARE(program.text(u"txtComPort"_s), u"COM5"_s);
    }

    void aReaderThatGoesDuringATest()
    {
        SystemFixture desk;
        QVERIFY(desk.start({}, {u"/rawxact WCY: hang-up=for-good"_s}));
        ProgramProcess& program = desk.program();
        openOptions(program);
        click(program, "btnTestPort");
        answer(program, notice(u"Unable to open the Teslin"_s));
        verifyDone(program, "btnTestPort");
        QCOMPARE(program.text(u"lblDriverName"_s), QString()); // the port that had opened is closed again
        QCOMPARE(program.text(u"StatusBar1_1"_s), u"Lost the connection to COM5"_s);
    }

    void optionsAreKeptOrNot()
    {
        SystemFixture desk;
        QVERIFY(desk.start({}, {}, {.settings = "; by hand\r\n[Port]\r\nVirtual Port=COM7\r\n"}));
        ProgramProcess& program = desk.program();
        openOptions(program);
        QCOMPARE(program.text(u"txtComPort"_s), u"COM7"_s);
        QCOMPARE(program.property(u"sclComPort"_s, u"value"_s), u"7"_s);
        QVERIFY(program.actOnKeyboard(u"type Till 4"_s)); // replaces the name, which is selected
        QVERIFY(program.actOnKeyboard(u"keys Escape"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!program.is(u"frmOptions"_s, u"visible"_s), kAtOnce);
        QCOMPARE(settingsOf(program), "; by hand\r\n[Port]\r\nVirtual Port=COM7\r\n");
        openOptions(program);
        QCOMPARE(program.text(u"txtFriendlyName"_s), u"Till 4"_s);
        QVERIFY(program.actOnKeyboard(u"keys Tab Tab Tab Tab Right"_s)); // the scroll bar
        QTRY_COMPARE_WITH_TIMEOUT(program.text(u"txtComPort"_s), u"COM8"_s, kAtOnce);
        QVERIFY(program.actOnKeyboard(u"keys Return"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!program.is(u"frmOptions"_s, u"visible"_s), kAtOnce);
        const QByteArray kept = settingsOf(program);
        QVERIFY2(kept.startsWith("; by hand\r\n[Port]\r\nVirtual Port=COM8\r\n"), kept.constData());
        QVERIFY2(kept.contains("[Name]\r\nFriendly Name=Till 4\r\n"), kept.constData());
    }

    void aSingleSettingIsReadAndWritten()
    {
        const QByteArray memory = strangeMemory();
        SystemFixture desk;
        QVERIFY(desk.start(memory));
        ProgramProcess& program = desk.program();
        openSingleField(program);
        QByteArrayList commands;
        const auto verifySent = [&](const QByteArray& command) {
            commands += identification() + QByteArrayList{command};
            QTRY_COMPARE_WITH_TIMEOUT(desk.commands(), commands, limitFor(10));
            QTRY_VERIFY_WITH_TIMEOUT(!desk.isPortOpen(), kAtOnce);
        };

        typeSetting(program, u"1a"_s, u"g5"_s); // padded to 01A, and no g
        click(program, "btnGetCurrentSingle");
        verifySent(reading("01A"));
        QTRY_COMPARE_WITH_TIMEOUT(program.text(u"txtSingleValue"_s), QString::fromLatin1(valueIn(memory, "01A")),
                                  kAtOnce);

        typeSetting(program, u"01a"_s, u"c"_s);
        click(program, "btnUpdateSingleField");
        answer(program, notice(u"Updated Configuration table with 01A=0C"_s, u"information"_s));
        verifySent(writing("01A=0C"));
        QCOMPARE(program.rows(u"grdCFG"_s)[8].first(3), QStringList({u"XXX"_s, u"01A"_s, u"0C"_s}));

        typeSetting(program, u"084"_s, u"5E"_s);
        click(program, "btnUpdateSingleField");
        answer(program, notice(u"Updated Keyboard Language table with 084=5E"_s, u"information"_s));
        verifySent(writing("084=5E"));
        typeSetting(program, u"083"_s, u"40"_s);
        click(program, "btnUpdateSingleField");
        answer(program, notice(u"Updated Keyboard Language table with 083=40"_s, u"information"_s));
        verifySent(writing("083=40"));
        QCOMPARE(program.rows(u"grdKB"_s)[2].first(3), QStringList({u"XXX"_s, u"083-084"_s, u"40-5E"_s}));

        // The reader's own address and one that no table holds are sent, and nothing else happens.
        for (const char* const setting : {"001=11", "02B=22"}) {
            typeSetting(program, QString::fromLatin1(setting, 3), QString::fromLatin1(setting + 4));
            click(program, "btnUpdateSingleField");
            verifySent(writing(setting));
            QCOMPARE(program.box(), QString());
        }
        QCOMPARE(program.column(u"grdCFG"_s, 0).count(u"XXX"_s), 1);
        QCOMPARE(program.rows(u"grdCFG"_s)[0][2], u"00"_s);
        click(program, "OKButton");
        QTRY_VERIFY_WITH_TIMEOUT(!program.is(u"dlgSingleField"_s, u"visible"_s), kAtOnce);

        const QByteArray held = desk.memoryAtEnd();
        for (const char* const setting : {"01A=0C", "083=40", "084=5E"}) {
            QVERIFY2(held.contains(setting), setting);
        }
    }

    void aSingleSettingOnADeadLink()
    {
        SystemFixture desk;
        QVERIFY(desk.start());
        desk.unplugReader();
        ProgramProcess& program = desk.program();
        openSingleField(program);
        typeSetting(program, u"013"_s, u"5A"_s);
        click(program, "btnGetCurrentSingle");
        answer(program, notice(kNoDriver, u"critical"_s));
        verifyDone(program, "btnGetCurrentSingle");
        QCOMPARE(program.text(u"txtSingleValue"_s), u"5A"_s);
        // The table follows what was typed, whether or not the reader heard of it.
        click(program, "btnUpdateSingleField");
        answer(program, notice(kNoDriver, u"critical"_s));
        answer(program, notice(u"Updated Configuration table with 013=5A"_s, u"information"_s));
        QTRY_COMPARE_WITH_TIMEOUT(program.rows(u"grdCFG"_s)[1].first(3), QStringList({u"XXX"_s, u"013"_s, u"5A"_s}),
                                  kAtOnce);
    }

    void closingWhileASingleSettingIsWaitedFor()
    {
        SystemFixture desk;
        QVERIFY(desk.start({}, {u"/rawxact WPV01A: silent"_s}));
        ProgramProcess& program = desk.program();
        openSingleField(program);
        typeSetting(program, u"01A"_s, u"00"_s);
        click(program, "btnGetCurrentSingle");
        QTRY_VERIFY_WITH_TIMEOUT(desk.commands().contains(reading("01A")), limitFor(10));
        QVERIFY(program.act(u"close frmMain"_s));
        QCOMPARE(program.waitForEnd(), 0);
        QVERIFY(!desk.isPortOpen());
        QVERIFY2(settingsOf(program).contains("Virtual Port=COM5"), settingsOf(program).constData());
    }
};

} // namespace

static const testsupport::RunnableTest<DialogsTest> kRunnable;

#include "DialogsTest.moc"
