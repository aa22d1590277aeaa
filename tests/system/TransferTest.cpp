#include "tests/support/RunnableTest.h"
#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

const QString kRetrieve = u"KEY_RETRIEVE"_s;
const QString kUpdate = u"KEY_UPDATE"_s;
const QString kExit = u"KEY_EXIT"_s;
const QString kConfiguration = u"grdCFG"_s;
const QString kKeyboard = u"grdKB"_s;
const QString kProgress = u"pgbTransfer"_s;
const QString kStatus = u"StatusBar1_1"_s;
const QString kPort = u"StatusBar1_2"_s;

constexpr int kMarkColumn = 0;
constexpr int kValueColumn = 2;

constexpr int kConfigurationLimit = limitFor(32);
constexpr int kKeyboardLimit = limitFor(154);

// The whole-table transfers over a real pseudo-terminal. Those of the Keyboard Language table take the reader's full
// twenty-three seconds, so they run beside the others from the beginning and are looked at in the end.
class TransferTest final : public QObject
{
    Q_OBJECT

private:
    SystemFixture m_desk;
    SystemFixture m_keyboardRetrieve;
    SystemFixture m_keyboardUpdate;
    QByteArray m_memory = strangeMemory();

    static QStringList captions(ProgramProcess& program) { return program.ask(u"tabs SSTab1"_s).split(u'\t'); }

    // The states of all seven buttons, from left to right.
    static QString enabledButtons(ProgramProcess& program)
    {
        QStringList states;
        for (const QString& line : program.ask(u"actions Toolbar1"_s).split(u'\n')) {
            states.append(line.section(u'\t', 1));
        }
        return states.join(u' ').replace(u'\t', u':');
    }

    static QString unmarked(int rows) { return QStringList(rows, u" "_s).join(u' '); }

    // Waits until so many commands have passed the port, looks at what the window shows meanwhile.
    void watch(SystemFixture& desk, qsizetype commands, const char* lastCommand)
    {
        ProgramProcess& program = desk.program();
        QTRY_VERIFY_WITH_TIMEOUT(desk.commands().size() >= commands, kConfigurationLimit);
        QCOMPARE(program.text(kExit), u"Abort"_s);
        QCOMPARE(enabledButtons(program),
                 u"Retrieve:false Update:false Load File:false Save File:false Set Default:false "
                 "Summary:false Abort:true"_s);
        QVERIFY(program.is(kProgress, u"visible"_s));
        const int rowsDone = program.property(kProgress, u"value"_s).toInt();
        QVERIFY2(rowsDone >= commands - 7 && rowsDone < 27, qPrintable(QString::number(rowsDone)));
        QCOMPARE(program.property(kProgress, u"maximum"_s), u"27"_s);
        QVERIFY2(program.text(kStatus).startsWith(QLatin1String(lastCommand)), qPrintable(program.text(kStatus)));
        QCOMPARE(program.text(kPort), u"KSD Port: COM5"_s);
        QVERIFY(desk.isPortOpen());
        QCOMPARE(program.box(), QString());
    }

    void verifyEnded(SystemFixture& desk)
    {
        ProgramProcess& program = desk.program();
        QCOMPARE(program.text(kExit), u"Exit"_s);
        QCOMPARE(enabledButtons(program).count(u":true"_s), 7);
        QVERIFY(program.is(kProgress, u"visible"_s));
        QCOMPARE(program.property(kProgress, u"value"_s), program.property(kProgress, u"maximum"_s));
        QCOMPARE(program.text(kPort), u"KSD Port: COM5"_s);
        QCOMPARE(program.ask(u"windows"_s), u"frmMain"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!desk.isPortOpen(), kAtOnce);
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_keyboardRetrieve.start(m_memory));
        QVERIFY(m_keyboardUpdate.start(m_memory));
        QVERIFY(m_desk.start(m_memory));
        for (SystemFixture* const desk : {&m_keyboardRetrieve, &m_keyboardUpdate}) {
            QVERIFY(desk->program().act(u"clicktab SSTab1 1"_s));
            QTRY_VERIFY_WITH_TIMEOUT(desk->program().is(kKeyboard, u"visible"_s), kAtOnce);
        }
        QVERIFY(m_keyboardRetrieve.press(kRetrieve));
        QVERIFY(m_keyboardUpdate.press(kUpdate));
    }

    void retrieveConfiguration()
    {
        ProgramProcess& program = m_desk.program();
        QVERIFY(m_desk.press(kRetrieve));
        watch(m_desk, 12, "Sent command: /rawxact WPV");
        // What the reader is, as it said when the port was opened.
        QCOMPARE(program.text(u"lblDriverName"_s).simplified(), u"Teslin KSD 2.10"_s);
        QCOMPARE(program.text(u"lblFirmwareValue"_s), u" 3.07 "_s);
        QCOMPARE(program.text(u"lblCopyRightValue"_s), u" Teslin 60044718 "_s);
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kConfigurationLimit);

        verifyEnded(m_desk);
        QCOMPARE(retrieve_CFG().size(), 32);
        QCOMPARE(m_desk.commands(), retrieve_CFG());
        QCOMPARE(program.column(kConfiguration, kValueColumn), values_CFG(m_memory));
        QCOMPARE(program.column(kConfiguration, kMarkColumn), unmarked(27));
        QCOMPARE(program.column(kKeyboard, kValueColumn), values_KB(factoryMemory()));
        QCOMPARE(captions(program).first(), u"Configuration"_s);
        QCOMPARE(program.ask(u"current grdCFG"_s).section(u' ', 0, 0), u"1"_s);
        // The reader's name is gone with the link, its version stays.
        QCOMPARE(program.text(u"lblDriverName"_s), QString());
        QCOMPARE(program.text(u"lblFirmwareValue"_s), u" 3.07 "_s);
    }

    void editAndUpdateConfiguration()
    {
        ProgramProcess& program = m_desk.program();
        // The character delay, which is edited as a decimal number.
        QVERIFY(program.act(u"clickcell grdCFG 9 2"_s));
        QTRY_VERIFY_WITH_TIMEOUT(program.is(u"txtDecEntry"_s, u"visible"_s), kAtOnce);
        QVERIFY(program.act(u"click txtDecEntry"_s));
        QVERIFY(program.actOnKeyboard(u"keys Ctrl+A"_s));
        QVERIFY(program.actOnKeyboard(u"type 200"_s));
        QTRY_COMPARE_WITH_TIMEOUT(program.ask(u"cell grdCFG 9 2"_s), u"C8"_s, kAtOnce);
        QCOMPARE(program.ask(u"cell grdCFG 9 0"_s), u"XXX"_s);
        QCOMPARE(captions(program).first(), u"Configuration *"_s);
        QByteArray edited = m_memory;
        edited.replace("01A=" + valueIn(m_memory, "01A"), "01A=C8");
        QVERIFY(edited != m_memory);

        const qsizetype before = m_desk.commands().size();
        QVERIFY(m_desk.press(kUpdate));
        QTRY_VERIFY_WITH_TIMEOUT(!program.isIdle(), kAtOnce);
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kConfigurationLimit);
        verifyEnded(m_desk);
        QCOMPARE(update_CFG(edited).size(), 31);
        QCOMPARE(m_desk.commands().mid(before), update_CFG(edited));
        QCOMPARE(program.column(kConfiguration, kValueColumn), values_CFG(edited));
        QCOMPARE(program.ask(u"cell grdCFG 9 0"_s), u"XXX"_s);
        QCOMPARE(m_desk.memoryAtEnd(), edited);
    }

    void retrieveKeyboardLanguage()
    {
        ProgramProcess& program = m_keyboardRetrieve.program();
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle() && m_keyboardRetrieve.commands().size() > 5, kKeyboardLimit);
        verifyEnded(m_keyboardRetrieve);
        QCOMPARE(retrieve_KB().size(), 154);
        QCOMPARE(m_keyboardRetrieve.commands(), retrieve_KB());
        QCOMPARE(program.column(kKeyboard, kValueColumn), values_KB(m_memory));
        QCOMPARE(program.column(kKeyboard, kMarkColumn), unmarked(75));
        QCOMPARE(program.column(kConfiguration, kValueColumn), values_CFG(factoryMemory()));
        QCOMPARE(captions(program).at(1), u"Keyboard Language"_s);
        QCOMPARE(m_keyboardRetrieve.memoryAtEnd(), m_memory);
    }

    void updateKeyboardLanguage()
    {
        ProgramProcess& program = m_keyboardUpdate.program();
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle() && m_keyboardUpdate.commands().size() > 5, kKeyboardLimit);
        verifyEnded(m_keyboardUpdate);
        QCOMPARE(update_KB(factoryMemory()).size(), 154);
        QCOMPARE(m_keyboardUpdate.commands(), update_KB(factoryMemory()));
        QCOMPARE(program.column(kKeyboard, kValueColumn), values_KB(factoryMemory()));
        // The Configuration parameters in the reader are what they were.
        const qsizetype keyboard = m_memory.indexOf("080=");
        const QByteArray factory = factoryMemory();
        QCOMPARE(m_keyboardUpdate.memoryAtEnd(), m_memory.left(keyboard) + factory.mid(factory.indexOf("080=")));
    }
};

} // namespace

static const testsupport::RunnableTest<TransferTest> kRunnable;

#include "TransferTest.moc"
