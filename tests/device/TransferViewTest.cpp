#include "tests/device/ReaderScript.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

using namespace testsupport;
using reader::kTicksOfIdentification;

namespace {

// A transfer over a grid of a few rows, one of them cut at the lower edge.
struct SmallView : DeviceLink
{
    explicit SmallView(int tab)
        : shown(tab == 0 ? tables.CFG : tables.KB)
    {
        link.PortNumber = 5;
        chooseTab(tab);
        port.setScript(reader::Script());
        for (PlainTable* const each : {&tables.CFG, &tables.KB}) {
            each->grid.rowsInView = 5;
            each->grid.showsAPieceMore = true;
        }
    }

    void transferUnder(bool retrieves)
    {
        operations.run(
            [&] { (void)(retrieves ? transfer.btnRetrieveParms_Click(table) : transfer.UpdateDevice(table)); });
    }
    [[nodiscard]] bool showsItsRow() const { return shown.grid.rowIsWhole(shown.grid.row()); }

    PlainTable& shown;
};

} // namespace

// The view during a transfer and after it: the row under way is on screen and whole.
class TransferViewTest final : public QObject
{
    Q_OBJECT

private:
    static void bothWays()
    {
        QTest::addColumn<bool>("retrieves");
        QTest::addColumn<int>("tab");
        QTest::newRow("Configuration read") << true << 0;
        QTest::newRow("Keyboard Language read") << true << 1;
        QTest::newRow("Configuration written") << false << 0;
        QTest::newRow("Keyboard Language written") << false << 1;
    }

private slots:
    void everyRowUnderWayIsWhole_data() { bothWays(); }
    void everyRowUnderWayIsWhole()
    {
        QFETCH(bool, retrieves);
        QFETCH(int, tab);
        SmallView on(tab);
        on.shown.grid.setRow(20);
        on.shown.grid.setTopRow(18);
        int seen = 0;
        QByteArrayList cut;
        for (int tick = kTicksOfIdentification + 1; tick < kTicksOfIdentification + 3 * 75; ++tick) {
            on.pump.atTick(tick, [&] {
                ++seen;
                if (!on.showsItsRow()) {
                    cut << QByteArray::number(on.shown.grid.row());
                }
            });
        }
        on.transferUnder(retrieves);
        QVERIFY(seen > 60);
        QCOMPARE(cut, QByteArrayList{});
        QVERIFY(on.showsItsRow());
    }

    // The user has scrolled away, below the row under way: the next row brings the view back.
    void theViewFollowsUpwards_data() { bothWays(); }
    void theViewFollowsUpwards()
    {
        QFETCH(bool, retrieves);
        QFETCH(int, tab);
        SmallView on(tab);
        int rowBefore = 0;
        bool wasAway = false;
        bool isBack = false;
        on.pump.atTick(kTicksOfIdentification + 13, [&] {
            rowBefore = on.shown.grid.row();
            on.shown.grid.setTopRow(20);
            wasAway = !on.showsItsRow();
        });
        on.pump.atTick(kTicksOfIdentification + 20,
                       [&] { isBack = on.showsItsRow() && on.shown.grid.row() > rowBefore; });
        on.transferUnder(retrieves);
        QVERIFY(wasAway);
        QVERIFY(isBack);
    }

    // Stopped while the user looks elsewhere.
    void afterTheRunTheRowIsShown_data()
    {
        QTest::addColumn<bool>("retrieves");
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("topRow");
        QTest::addColumn<int>("row");
        QTest::newRow("Configuration read") << true << 0 << 20 << 1;
        QTest::newRow("Keyboard Language read") << true << 1 << 20 << 1;
        QTest::newRow("Configuration written, looking below") << false << 0 << 20 << 12;
        QTest::newRow("Configuration written, looking above") << false << 0 << 1 << 12;
        QTest::newRow("Keyboard Language written, looking above") << false << 1 << 1 << 6;
    }
    void afterTheRunTheRowIsShown()
    {
        QFETCH(bool, retrieves);
        QFETCH(int, tab);
        QFETCH(int, topRow);
        SmallView on(tab);
        on.pump.atTick(kTicksOfIdentification + 32, [&] {
            on.shown.grid.setTopRow(topRow);
            on.link.UserAbort = true;
        });
        on.transferUnder(retrieves);
        QTEST(on.shown.grid.row(), "row");
        QVERIFY(on.showsItsRow());
    }

    // Reading the Keyboard Language table moves the cursor of the other one.
    void theOtherTablesRowIsShownToo()
    {
        SmallView on(1);
        on.transferUnder(true);
        QCOMPARE(on.tables.CFG.grid.row(), 27);
        QVERIFY(on.tables.CFG.grid.rowIsWhole(27));
    }
};

static const testsupport::RunnableTest<TransferViewTest> kRunnable;
#include "TransferViewTest.moc"
