#include "tests/support/RunnableTest.h"
#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

#include <functional>
#include <map>
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

const QString kTitle = u"Teslin Configure"_s;
const QString kDriver = u"teslin"_s;
const QString kPort = u"com5"_s;

// One kind of bad surroundings, and what the user sees of it when pressing Retrieve.
struct Case
{
    QStringList faults = {};
    QByteArray settings = {};
    std::function<bool(SystemFixture&)> spoil = {}; // after the reader has started, before the program does
    bool boxAtStart = false;                        // the driver file is missing, too
    QString waiting = {};                           // the first panel while the first box is open
    QStringList boxes = {};                         // what Retrieve shows, one after the other
    QString port = {};                              // the second panel in the end
    bool retrieves = false;                         // and then reads the whole table
};

QString critical(const QString& text)
{
    return boxOf(kTitle, u"critical"_s, u"OK*"_s, text);
}

QString wasUnable()
{
    return critical(u"Was unable to open the Teslin Device Driver.  Check to see if the driver is installed and the "
                    "Teslin is attached"_s);
}

QString couldNotOpen(const QString& reason)
{
    return critical(u"Could not open COM5, "_s + reason);
}

bool replaceByFile(const QString& entry)
{
    QFile file(entry);
    return QFile::remove(entry) && file.open(QIODevice::WriteOnly) && file.write("no terminal") > 0;
}

bool setMode(const QString& entry, mode_t mode)
{
    return ::chmod(QFile::encodeName(entry).constData(), mode) == 0;
}

// Nobody may open the port, everybody the device object.
bool forbidPort(SystemFixture& desk)
{
    return setMode(desk.reader().entry(kDriver), 0666) && setMode(desk.reader().entry(kPort), 0);
}

// Permissions do not bind the administrator, so there the program runs as a user whom they bind.
QStringList ordinaryUser()
{
    if (::geteuid() != 0) {
        return {};
    }
    const QString setpriv = QStandardPaths::findExecutable(u"setpriv"_s);
    return {setpriv, u"--reuid=65534"_s, u"--regid=65534"_s, u"--clear-groups"_s};
}

std::map<QByteArray, Case> cases()
{
    const QString noObject = u"Unable to get virtual com port number."_s;
    const QString noAnswer = u"Unable to get virtual com port number.."_s;
    std::map<QByteArray, Case> all;
    all["no folder of DOS names"] = {
        .spoil = [](SystemFixture& desk) { return QDir(desk.reader().folder()).removeRecursively(); },
        .boxAtStart = true,
        .waiting = noObject,
        .boxes = {wasUnable()}};
    all["no device object"] = {.spoil = [](SystemFixture& desk) { return QFile::remove(desk.reader().entry(kDriver)); },
                               .waiting = noObject,
                               .boxes = {wasUnable()}};
    all["device object never answers"] = {
        .faults = {u"/get port_name: silent"_s}, .waiting = noAnswer, .boxes = {wasUnable()}};
    all["device object hangs up"] = {
        .faults = {u"/get port_name: hang-up=for-good"_s}, .waiting = noAnswer, .boxes = {wasUnable()}};
    all["no port in the answer, one in the settings"] = {.faults = {u"/get port_name: reply=\"/get port_name=LPT1\""_s},
                                                         .boxes = {wasUnable()},
                                                         .port = u"KSD Port: COM5"_s};
    all["no port in the answer, none in the settings"] = {
        .faults = {u"/get port_name: reply=\"/get port_name=LPT1\""_s},
        .settings = "[Port]\r\nVirtual Port=LPT9\r\n",
        .boxes = {boxOf(u"Error"_s, u"exclamation"_s, u"OK*"_s, u"Could not open Teslin port!"_s), wasUnable()}};
    all["control characters before the port's name"] = {
        .faults = {u"/get port_name: reply=\"\\x01\\x02\\t/get port_name=\\x1BCOM5\""_s},
        .port = u"KSD Port: COM5"_s,
        .retrieves = true};
    all["control characters behind the port's name"] = {
        .faults = {u"/get port_name: reply=\"/get port_name=COM5\\x01\""_s}, .retrieves = true};
    all["answer of two thousand bytes"] = {.faults = {u"/get port_name: pad=2000"_s},
                                           .port = u"KSD Port: COM5"_s + QString(1981, u'.'),
                                           .retrieves = true};
    all["two thousand bytes without an end"] = {.faults = {u"/get port_name: pad=5000 end=\"\""_s},
                                                .port = u"KSD Port: COM5"_s + QString(1981, u'.'),
                                                .retrieves = true};
    all["port missing"] = {.spoil = [](SystemFixture& desk) { return QFile::remove(desk.reader().entry(kPort)); },
                           .boxes = {couldNotOpen(u"No such file or directory"_s)},
                           .port = u"KSD Port: COM5"_s};
    all["port is no terminal"] = {
        .spoil = [](SystemFixture& desk) { return replaceByFile(desk.reader().entry(kPort)); },
        .boxes = {couldNotOpen(u"Inappropriate ioctl for device"_s)},
        .port = u"KSD Port: COM5"_s};
    return all;
}

// The program between a driver, a port and a folder that are not as they should be. Each kind has a desk of its own,
// and Retrieve is pressed on all of them before the first is looked at.
class BadSurroundingsTest final : public QObject
{
    Q_OBJECT

private:
    QByteArray m_memory = strangeMemory();
    std::map<QByteArray, Case> m_cases = cases();
    std::map<QByteArray, std::unique_ptr<SystemFixture>> m_desks;

    static void acknowledge(ProgramProcess& program)
    {
        const QString box = program.box();
        QVERIFY(program.act(u"press OK"_s));
        QTRY_VERIFY_WITH_TIMEOUT(program.box() != box, kAtOnce);
    }

    void startProgram(SystemFixture& desk, const Case& kind)
    {
        QVERIFY(desk.startProgram({.settings = kind.settings}));
        if (kind.boxAtStart) {
            QTRY_VERIFY_WITH_TIMEOUT(desk.program().box().contains(u"KSD driver needs to be loaded"_s), kStart);
            acknowledge(desk.program());
        }
        QVERIFY(desk.waitForWindow());
    }

    // The boxes of a press that fails, and that nothing is left of it.
    static void verifyFailure(SystemFixture& desk, const Case& kind)
    {
        ProgramProcess& program = desk.program();
        for (const QString& box : kind.boxes) {
            QTRY_COMPARE_WITH_TIMEOUT(program.box(), box, kDeviceObject);
            QCOMPARE(program.text(u"StatusBar1_1"_s), kind.waiting);
            acknowledge(program);
        }
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        QCOMPARE(program.box(), QString());
        QCOMPARE(program.ask(u"windows"_s), u"frmMain"_s);
        QCOMPARE(program.text(u"StatusBar1_1"_s), QString());
        QCOMPARE(program.text(u"StatusBar1_2"_s), kind.port);
        QCOMPARE(program.column(u"grdCFG"_s, 2), values_CFG(factoryMemory()));
        QCOMPARE(desk.commands(), QByteArrayList());
        QVERIFY(program.is(u"KEY_UPDATE"_s, u"enabled"_s));
        QVERIFY(!program.is(u"pgbTransfer"_s, u"visible"_s));
    }

    void verifyRetrieve(SystemFixture& desk)
    {
        ProgramProcess& program = desk.program();
        QTRY_COMPARE_WITH_TIMEOUT(desk.commands(), retrieve_CFG(), kDeviceObject + limitFor(32));
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        QCOMPARE(program.box(), QString());
        QCOMPARE(program.column(u"grdCFG"_s, 2), values_CFG(m_memory));
    }

private slots:
    void initTestCase()
    {
        for (const auto& [name, kind] : m_cases) {
            auto& desk = *(m_desks[name] = std::make_unique<SystemFixture>());
            QVERIFY2(desk.startReader(m_memory, kind.faults), name.constData());
            QVERIFY2(!kind.spoil || kind.spoil(desk), name.constData());
            startProgram(desk, kind);
        }
        for (const auto& [name, desk] : m_desks) {
            QVERIFY2(desk->press(u"KEY_RETRIEVE"_s), name.constData());
        }
    }

    void retrieve_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const auto& [name, kind] : m_cases) {
            QTest::newRow(name.constData()) << name;
        }
    }

    void retrieve()
    {
        QFETCH(QByteArray, name);
        const Case& kind = m_cases.at(name);
        SystemFixture& desk = *m_desks.at(name);
        if (!kind.retrieves) {
            verifyFailure(desk, kind);
            return;
        }
        verifyRetrieve(desk);
        const QString port = desk.program().text(u"StatusBar1_2"_s);
        QVERIFY2(kind.port.isEmpty() ? port.startsWith(u"KSD Port: COM5"_s) : port == kind.port, qPrintable(port));
        // However long the port's name is, the window stays as wide as the screen of this test allows.
        QCOMPARE(desk.program().property(u"frmMain"_s, u"width"_s),
                 m_desks.at("no device object")->program().property(u"frmMain"_s, u"width"_s));
    }

    // Update fails in the same way, and gives the buttons back that it took first.
    void updateWithoutDeviceObject()
    {
        SystemFixture& desk = *m_desks.at("no device object");
        QVERIFY(desk.press(u"KEY_UPDATE"_s));
        QTRY_COMPARE_WITH_TIMEOUT(desk.program().box(), wasUnable(), kAtOnce);
        QVERIFY(!desk.program().is(u"KEY_LOAD"_s, u"enabled"_s));
        verifyFailure(desk, m_cases.at("no device object"));
    }

    // The port of the settings has become the known one, so that the next press opens it without asking the driver.
    void secondPressOnThePortOfTheSettings()
    {
        SystemFixture& desk = *m_desks.at("no port in the answer, one in the settings");
        QVERIFY(desk.press(u"KEY_RETRIEVE"_s));
        verifyRetrieve(desk);
        const auto log = desk.reader().log();
        const auto asked = [](const SimulatorProcess::LogLine& line) {
            return line.door == "device" && line.event == "recv";
        };
        QCOMPARE(std::count_if(log.begin(), log.end(), asked), 1);
    }

    void portNotPermitted()
    {
        const QStringList launcher = ordinaryUser();
        if (!launcher.isEmpty() && launcher.front().isEmpty()) {
            QSKIP("run by the administrator, and there is no setpriv to become somebody else");
        }
        const Case kind = {.boxes = {couldNotOpen(u"Permission denied"_s)}, .port = u"KSD Port: COM5"_s};
        SystemFixture desk;
        QVERIFY(desk.startReader(m_memory));
        QVERIFY(forbidPort(desk));
        QVERIFY(desk.openToEverybody());
        QVERIFY(desk.startProgram({.launcher = launcher}));
        QVERIFY(desk.waitForWindow());
        QVERIFY(desk.press(u"KEY_RETRIEVE"_s));
        verifyFailure(desk, kind);
    }
};

} // namespace

static const testsupport::RunnableTest<BadSurroundingsTest> kRunnable;

#include "BadSurroundingsTest.moc"
