// What the field editors send through: one operation each, from opening the link to closing it.

#include "device/ReaderLink.h"
#include "tests/device/ReaderScript.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QByteArrayList>

using namespace testsupport;

namespace {

// A whole link on doubles, with a reader that answers everything.
struct WholeLink
{
    WholeLink()
    {
        on.pump.setOnTick([this] {
            on.port.tickPassed();
            link.Timer1_Timer();
        });
        link.state().PortNumber = 5;
        on.port.setScript(reader::Script());
    }

    DeviceLink on;
    device::ReaderLink link{on.services, on.surfaces, on.tables.tables};
    const std::vector<std::string> pair = {"083=20", "084=03"};
};

} // namespace

class ReaderLinkTest final : public QObject
{
    Q_OBJECT

private slots:
    void aRowIsSentBetweenOpeningAndClosing()
    {
        WholeLink w;
        bool wasBusy = false;
        w.on.pump.atTick(17, [&] { wasBusy = w.link.isBusy(); });
        QVERIFY(w.link.sendRow_CFG("013"));
        QVERIFY(wasBusy);
        const QByteArrayList commands = lines(w.on.port.commands());
        QCOMPARE(commands.mid(0, reader::kIdentification.size()), reader::kIdentification);
        QCOMPARE(commands.mid(reader::kIdentification.size()), QByteArrayList{"/rawsend WPW013=95"});
        QVERIFY(!w.on.port.PortOpen());
        QVERIFY(!w.link.isBusy());
    }

    void settingsAreSentInTheirOrderAndTheSenderIsToldWithinTheOperation()
    {
        WholeLink w;
        int told = 0;
        w.link.sendSettings(w.pair, [&] {
            ++told;
            QVERIFY(w.link.isBusy());
            QVERIFY(!w.on.port.PortOpen());
        });
        QCOMPARE(told, 1);
        QCOMPARE(lines(w.on.port.commands()).mid(reader::kIdentification.size()),
                 (QByteArrayList{"/rawsend WPW083=20", "/rawsend WPW084=03"}));
        QCOMPARE(linesWith(w.on.log, {"P1: Sent command"}),
                 (QByteArrayList{"P1: Sent command: /rawsend WPW083=20", "P1: Sent command: /rawsend WPW084=03"}));
    }

    void aLinkThatDoesNotOpenSendsNothing()
    {
        WholeLink w;
        w.link.state().PortNumber = 0;
        w.on.driver.openError = platform::SystemError{.number = 2, .description = "No such file or directory"};
        w.on.boxes.expect(platform::BoxAnswer::Ok);
        w.on.boxes.expect(platform::BoxAnswer::Ok);
        QVERIFY(!w.link.sendRow_CFG("013"));
        bool told = false;
        w.link.sendSettings(w.pair, [&] { told = true; });
        QVERIFY(!told);
        QCOMPARE(w.on.port.written(), "");
        QCOMPARE(w.on.boxes.shown.size(), 2U);
    }

    void nothingIsSentWhileAnotherOperationRuns()
    {
        WholeLink w;
        bool told = false;
        w.link.operations().run([&] {
            QVERIFY(w.link.isBusy());
            QVERIFY(!w.link.sendRow_CFG("013"));
            w.link.sendSettings(w.pair, [&] { told = true; });
        });
        QVERIFY(!told);
        QCOMPARE(w.on.port.written(), "");
    }

    void nobodyIsToldOfSettingsThatWereCutShort_data()
    {
        QTest::addColumn<bool>("closes");
        QTest::newRow("the program closes") << true;
        QTest::newRow("the connection is lost") << false;
    }
    void nobodyIsToldOfSettingsThatWereCutShort()
    {
        QFETCH(bool, closes);
        WholeLink w;
        bool told = false;
        w.on.pump.atTick(17, [&] {
            if (closes) {
                w.link.beginClosing();
            } else {
                w.link.state().connectionLost = true;
            }
        });
        w.link.sendSettings(w.pair, [&] { told = true; });
        QVERIFY(!told);
        // The first one had gone out.
        QVERIFY(lines(w.on.port.commands()).contains("/rawsend WPW083=20"));
        QVERIFY(!w.on.port.PortOpen());
    }

    void closingEndsEveryWait()
    {
        WholeLink w;
        w.link.beginClosing();
        QVERIFY(w.link.state().UserAbort);
        QVERIFY(w.link.operations().isClosing());
    }
};

static const testsupport::RunnableTest<ReaderLinkTest> kRunnable;
#include "ReaderLinkTest.moc"
