#include "tests/support/RunnableTest.h"
#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include "tables/Parameters.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

QString joined(const QStringList& lines)
{
    return lines.join(u"\r\n"_s);
}

QList<QStringList> rowsOf(std::span<const tables::Parameter> rows)
{
    QList<QStringList> texts;
    for (const tables::Parameter& row : rows) {
        QStringList cells = {QString()};
        for (const std::string_view cell : {row.address, row.value, row.notes}) {
            cells.append(QString::fromLatin1(cell.data(), static_cast<qsizetype>(cell.size())));
        }
        texts.append(cells);
    }
    return texts;
}

// What the program shows before anybody has touched it, its boxes that need no reader, and its end.
class StartTest final : public QObject
{
    Q_OBJECT

private:
    SystemFixture m_desk;
    ProgramProcess& m_program = m_desk.program();

    void choose(const char* menu, const char* entry)
    {
        QVERIFY(m_program.act(u"clickaction %1"_s.arg(QLatin1String(menu))));
        QTRY_VERIFY_WITH_TIMEOUT(m_program.is(QLatin1String(menu), u"visible"_s), kAtOnce);
        QVERIFY(m_program.act(u"clickaction %1"_s.arg(QLatin1String(entry))));
    }

    // Waits for a box and presses its only button.
    void expectBox(ProgramProcess& program, const QString& box)
    {
        QTRY_COMPARE_WITH_TIMEOUT(program.box(), box, kStart);
        QVERIFY(program.act(u"press OK"_s));
        QTRY_COMPARE_WITH_TIMEOUT(program.box(), QString(), kAtOnce);
    }

private slots:
    // The splash stands for a moment above the window, and has labels of the same names.
    void initTestCase()
    {
        QVERIFY(m_desk.start());
        QTRY_COMPARE_WITH_TIMEOUT(m_program.ask(u"windows"_s), u"frmMain"_s, kStart);
    }

    void window()
    {
        QCOMPARE(m_program.property(u"frmMain"_s, u"windowTitle"_s), u"Teslin Configure"_s);
        for (const char* const state : {"minimized", "maximized", "fullScreen"}) {
            QVERIFY2(!m_program.is(u"frmMain"_s, QLatin1String(state)), state);
        }
        QCOMPARE(m_program.ask(u"tabs SSTab1"_s), u"Configuration\tKeyboard Language\tRead Test"_s);
        QCOMPARE(m_program.property(u"SSTab1"_s, u"currentIndex"_s), u"0"_s);
    }

    // What is done while the driver is waited for is handled when the wait is over. This loop would hold it back.
    void itsEventLoopIsNotTheOneOfGLib()
    {
        const QString loop = m_program.ask(u"loop"_s);
        QVERIFY2(loop.contains(u"EventDispatcher"_s) && !loop.contains(u"glib"_s, Qt::CaseInsensitive),
                 qPrintable(loop));
    }

    void tablesAtTheirDefaults()
    {
        const QString captions = u"Changed\tAdr\tHex\tNotes"_s;
        QCOMPARE(m_program.ask(u"header grdCFG"_s), captions);
        QCOMPARE(m_program.ask(u"header grdKB"_s), captions);
        QCOMPARE(m_program.rows(u"grdCFG"_s), rowsOf(tables::parameters_CFG()));
        QCOMPARE(m_program.rows(u"grdKB"_s), rowsOf(tables::parameters_KB()));
        // The same in words of this test.
        QCOMPARE(m_program.rows(u"grdCFG"_s).size(), 27);
        QCOMPARE(m_program.rows(u"grdKB"_s).size(), 75);
        QCOMPARE(m_program.rows(u"grdCFG"_s).at(8),
                 QStringList({{}, u"01A"_s, u"12"_s, u"Char Output Delay [Enter as decimal] (x512 uS)"_s}));
        QCOMPARE(m_program.rows(u"grdKB"_s).at(40),
                 QStringList({{}, u"0CF-0D0"_s, u"00-2B"_s, u"5C, USA KB key -> \\ "_s}));
        QCOMPARE(m_program.ask(u"current grdCFG"_s), u"1 2"_s);
    }

    void toolbar()
    {
        const QList<QStringList> buttons = {
            {u"KEY_RETRIEVE"_s, u"Retrieve"_s, u"Get the current values from the attached Teslin"_s},
            {u"KEY_UPDATE"_s, u"Update"_s, u"Send the below config to the attached Teslin"_s},
            {u"KEY_LOAD"_s, u"Load File"_s, u"Load the below table from a file"_s},
            {u"KEY_SAVE"_s, u"Save File"_s, u"Save the below table to a file"_s},
            {u"KEY_DEFAULT"_s, u"Set Default"_s, u"Preset the table below to the factory defaults"_s},
            {u"KEY_SUMMARY"_s, u"Summary"_s, u"Create a summary of the settings below"_s},
            {u"KEY_EXIT"_s, u"Exit"_s, u"Exit the program"_s},
        };
        const QStringList entries = m_program.ask(u"actions Toolbar1"_s).split(u'\n');
        QCOMPARE(entries.size(), buttons.size());
        for (qsizetype i = 0; i < buttons.size(); ++i) {
            const QString& key = buttons[i][0];
            QCOMPARE(entries[i].section(u'\t', 0, 1), key + u'\t' + buttons[i][1]);
            QCOMPARE(m_program.text(key), buttons[i][1]);
            QCOMPARE(m_program.property(key, u"toolTip"_s), buttons[i][2]);
        }
        for (const char* const key : {"KEY_RETRIEVE", "KEY_UPDATE", "KEY_DEFAULT", "KEY_EXIT"}) {
            QVERIFY2(m_program.is(QLatin1String(key), u"enabled"_s), key);
        }
    }

    void menus()
    {
        const auto captions = [this](const char* menu) {
            QStringList texts;
            for (const QString& entry : m_program.ask(u"actions "_s + QLatin1String(menu)).split(u'\n')) {
                texts.append(entry.section(u'\t', 0, 1));
            }
            return texts;
        };
        QCOMPARE(m_program.property(u"mnuFile"_s, u"title"_s), u"&File"_s);
        QCOMPARE(
            captions("mnuFile"),
            QStringList({u"mnuOpen_CFG\t&Load Teslin Config File"_s, u"mnuSave_CFG\t&Save  Teslin Config File"_s,
                         u"mnuSaveAs_CFG\tSave  Teslin Config File &As..."_s, u"mnuSep3\t"_s,
                         u"mnuOpen_KB\tLoad &Keyboard Language File"_s, u"mnuSave_KB\tSa&ve  Keyboard Language File"_s,
                         u"mnuSaveAs_KB\tSave  Ke&yboard Language File As..."_s, u"mnuSep1\t"_s,
                         u"mnuOptions\tPort Setup &Options"_s, u"mnuSep2\t"_s, u"mnuExit\t&Exit"_s}));
        QCOMPARE(m_program.property(u"mnuTools"_s, u"title"_s), u"&Tools"_s);
        QCOMPARE(captions("mnuTools"), QStringList(u"mnuEditSingle\t&Edit Single Field"_s));
        QCOMPARE(m_program.property(u"menuHelp"_s, u"title"_s), u"&Help"_s);
        QCOMPARE(captions("menuHelp"),
                 QStringList({u"mnuRead\t&Brief help"_s, u"mnuAbout\t&About Teslin Configure"_s}));
    }

    void linkAtRest()
    {
        QCOMPARE(m_program.text(u"StatusBar1_2"_s), QString());
        QVERIFY(!m_program.is(u"pgbTransfer"_s, u"visible"_s));
        QVERIFY(!m_program.is(u"shpSend"_s, u"lit"_s));
        QVERIFY(!m_program.is(u"shpRecv"_s, u"lit"_s));
        for (const char* const label : {"lblDriverLabel", "lblDriverName", "lblFirmware", "lblFirmwareValue",
                                        "lblCopyright", "lblCopyRightValue"}) {
            QVERIFY2(!m_program.is(QLatin1String(label), u"visible"_s), label);
        }
        // The reader is not touched before somebody asks for it.
        for (const SimulatorProcess::LogLine& line : m_desk.reader().log()) {
            QCOMPARE(line.event, QByteArray("start"));
        }
    }

    void helpFromTheMenu()
    {
        choose("menuHelp", "mnuRead");
        expectBox(m_program,
                  boxOf(u"Teslin Configure help"_s, u"none"_s, u"OK*"_s,
                        joined({u"Read the Teslin\u2122 Swipe Reader Technical Manual (P/N 60044718) for "
                                "details."_s,
                                u"Connect Teslin and click the Retrieve button to download current values."_s,
                                u"Click the Update button to send edited values back to the Teslin."_s})));
    }

    void notesByTheirAccessKey()
    {
        QVERIFY(m_program.actOnKeyboard(u"keys Alt+N"_s));
        expectBox(m_program, boxOf(u"Notes on the Configuration table"_s, u"information"_s, u"OK*"_s,
                                   joined({u"1. Select the \"Keyboard Language\" tab to review the keyboard"_s,
                                           u"     scan code entries."_s,
                                           u"2. The Keyboard Language tab contains the addresses 080 to 114."_s,
                                           u"3. Any other address not shown is reserved for future use."_s,
                                           u"4. Parameter 01B: A special character is any character with an ASCII."_s,
                                           u"     value less than 0x20."_s,
                                           u"5. Parameter 027: The Command prefix must not be set to a character"_s,
                                           u"     that could appear in a command since a new command is started"_s,
                                           u"     whenever this character is detected."_s,
                                           u"6  Double-clicking a value in the table allows you to send that one"_s,
                                           u"     value to the Teslin."_s})));
    }

    void exitFromTheMenu()
    {
        choose("mnuFile", "mnuExit");
        QCOMPARE(m_program.waitForEnd(), 0);
        QFile settings(m_program.settingsFile());
        QVERIFY(settings.open(QIODevice::ReadOnly));
        const QByteArray text = settings.readAll();
        QVERIFY2(text.contains("[Select_Window_frmMain]"), text.constData());
        QVERIFY2(text.contains("Friendly Name=Teslin"), text.constData());
        QVERIFY2(text.contains("Virtual Port=COM5"), text.constData());
    }

    void windowWhereItWasLastTime()
    {
        SystemFixture desk;
        QVERIFY(desk.startReader());
        QVERIFY(
            desk.startProgram({.settings = "[Select_Window_frmMain]\r\nSettings=11,22,780,750\r\nWindowState=2\r\n"}));
        QVERIFY(desk.waitForWindow());
        ProgramProcess& program = desk.program();
        QTRY_COMPARE_WITH_TIMEOUT(program.property(u"frmMain"_s, u"pos"_s), u"11,22"_s, kAtOnce);
        QCOMPARE(program.property(u"frmMain"_s, u"size"_s), u"780x750"_s);
        QVERIFY(!program.is(u"frmMain"_s, u"maximized"_s));
        QVERIFY(program.act(u"close frmMain"_s));
        QCOMPARE(program.waitForEnd(), 0);
        QFile settings(program.settingsFile());
        QVERIFY(settings.open(QIODevice::ReadOnly));
        QCOMPARE(settings.readAll().replace("\r\n", "\n").left(66),
                 QByteArray("[Select_Window_frmMain]\nSettings=11,22,780,750\nWindowState=0\n[Name]").left(66));
    }

    void driverFileMissing()
    {
        SystemFixture desk;
        QVERIFY(desk.startReader());
        QVERIFY(QFile::remove(desk.machine().driverFile()));
        QVERIFY(desk.startProgram());
        ProgramProcess& program = desk.program();
        QTRY_VERIFY_WITH_TIMEOUT(!program.box().isEmpty(), kStart);
        const QStringList box = program.box().split(u"\r\n"_s);
        QCOMPARE(box.size(), 5);
        QCOMPARE(box[0], boxOf(u"Teslin Configure"_s, u"critical"_s, u"OK*"_s,
                               u"The Teslin KSD driver needs to be loaded before this program will work. "
                               " You may look at the program but nothing will be functional until the "
                               "driver is installed."_s));
        QVERIFY2(box[1].startsWith(u"The KSD driver can be obtained at "_s) && box[1].endsWith(u':') &&
                     box[1].size() > 40,
                 qPrintable(box[1]));
        QCOMPARE(box[2], u"Part Number:\t60051410 for Windows 95/98 and ME"_s);
        QCOMPARE(box[3], u"\t\t60051411 for Windows NT"_s);
        QCOMPARE(box[4], u"\t\t60051412 for Windows 2K and XP"_s);
        QVERIFY(program.act(u"press OK"_s));
        // The program goes on regardless.
        QVERIFY(desk.waitForWindow());
        QTRY_COMPARE_WITH_TIMEOUT(program.rows(u"grdKB"_s), rowsOf(tables::parameters_KB()), kAtOnce);
        QCOMPARE(program.rows(u"grdCFG"_s), rowsOf(tables::parameters_CFG()));
        QCOMPARE(program.box(), QString());
    }
};

} // namespace

static const testsupport::RunnableTest<StartTest> kRunnable;

#include "StartTest.moc"
