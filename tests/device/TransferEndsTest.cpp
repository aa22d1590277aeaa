#include "tests/device/ReaderScript.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

using namespace testsupport;
using reader::kTicksOfIdentification;

namespace {

// A link whose reader answers everything, on a tab.
struct AnsweringLink : DeviceLink
{
    explicit AnsweringLink(int tab)
    {
        link.PortNumber = 5;
        chooseTab(tab);
        port.setScript(reader::Script());
    }

    bool transferUnder(bool retrieves)
    {
        bool complete = false;
        operations.run(
            [&] { complete = retrieves ? transfer.btnRetrieveParms_Click(table) : transfer.UpdateDevice(table); });
        return complete;
    }
};

} // namespace

// How a transfer ends and what is left of it: how far it came, what was edited meanwhile, and the editor.
class TransferEndsTest final : public QObject
{
    Q_OBJECT

private slots:
    // --- how far it came

    void theRowsThatWereReached_data()
    {
        QTest::addColumn<bool>("retrieves");
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("abortTick");
        QTest::addColumn<QByteArray>("progress");
        QTest::newRow("Configuration read") << true << 0 << 0 << QByteArray("27/27");
        QTest::newRow("Keyboard Language read") << true << 1 << 0 << QByteArray("75/75");
        QTest::newRow("Configuration read, row 1") << true << 0 << 1 << QByteArray("0/27");
        QTest::newRow("Configuration read, row 10") << true << 0 << 3 * 9 + 1 << QByteArray("9/27");
        QTest::newRow("Configuration read, last row") << true << 0 << 3 * 26 + 1 << QByteArray("26/27");
        QTest::newRow("Keyboard Language read, second byte") << true << 1 << 3 + 6 + 3 + 1 << QByteArray("2/75");
        QTest::newRow("Configuration written") << false << 0 << 0 << QByteArray("27/27");
        QTest::newRow("Keyboard Language written") << false << 1 << 0 << QByteArray("75/75");
        QTest::newRow("Configuration written, row 10") << false << 0 << 3 * 8 + 1 << QByteArray("9/27");
        QTest::newRow("Keyboard Language written, row 1") << false << 1 << 1 << QByteArray("0/75");
        QTest::newRow("Keyboard Language written, second byte") << false << 1 << 3 + 3 + 1 << QByteArray("1/75");
    }
    void theRowsThatWereReached()
    {
        QFETCH(bool, retrieves);
        QFETCH(int, tab);
        QFETCH(int, abortTick);
        AnsweringLink on(tab);
        if (abortTick != 0) {
            on.pump.atTick(kTicksOfIdentification + abortTick, [&] { on.link.UserAbort = true; });
        }
        QCOMPARE(on.transferUnder(retrieves), abortTick == 0);
        QTEST(QByteArray::fromStdString(on.window.progress), "progress");
    }

    void theNextTransferBeginsAtNothing()
    {
        AnsweringLink on(0);
        QVERIFY(on.transferUnder(true));
        on.log.clear();
        QVERIFY(on.transferUnder(false));
        QCOMPARE(linesWith(on.log, {"progress"}).first(), QByteArray("progress 0/27"));
    }

    // --- a reader that goes while it is asked who it is

    void theReaderGoesDuringIdentification_data()
    {
        QTest::addColumn<bool>("retrieves");
        QTest::addColumn<int>("tab");
        QTest::newRow("Configuration read") << true << 0;
        QTest::newRow("Keyboard Language read") << true << 1;
        QTest::newRow("Configuration written") << false << 0;
        QTest::newRow("Keyboard Language written") << false << 1;
    }
    void theReaderGoesDuringIdentification()
    {
        QFETCH(bool, retrieves);
        QFETCH(int, tab);
        AnsweringLink on(tab);
        PlainTable& table = tab == 0 ? on.tables.CFG : on.tables.KB;
        table.mark(1);
        on.log.clear();
        const std::vector<std::string> values = table.values();
        on.pump.atTick(7, [&] { on.port.loseConnection(); });
        QVERIFY(!on.transferUnder(retrieves));
        QCOMPARE(linesWith(on.log, {"CheckForUnsavedData", "Hide_All", "progress"}), QByteArrayList{});
        QCOMPARE(table.changed(1), "XXX");
        QCOMPARE(table.values(), values);
        QCOMPARE(linesWith(on.log,
                           {"port: output /rawsend", "port: output /rawxact WPV001", "port: output /rawxact WPV080"}),
                 QByteArrayList{});
        QVERIFY(on.link.connectionLost);
        QVERIFY(!on.port.PortOpen());
        QVERIFY(on.window.buttonsEnabled);
        QCOMPARE(on.window.exitCaption, "Exit");
    }

    // --- edits meanwhile

    void anEditMeanwhileKeepsTheStar_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<bool>("aborts");
        QTest::newRow("Configuration") << 0 << false;
        QTest::newRow("Configuration, stopped") << 0 << true;
        QTest::newRow("Keyboard Language") << 1 << false;
        QTest::newRow("Keyboard Language, stopped") << 1 << true;
    }
    void anEditMeanwhileKeepsTheStar()
    {
        QFETCH(int, tab);
        QFETCH(bool, aborts);
        AnsweringLink on(tab);
        PlainTable& table = tab == 0 ? on.tables.CFG : on.tables.KB;
        on.pump.atTick(kTicksOfIdentification + 30, [&] { table.mark(2); });
        if (aborts) {
            on.pump.atTick(kTicksOfIdentification + 40, [&] { on.link.UserAbort = true; });
        }
        QCOMPARE(on.transferUnder(true), !aborts);
        QCOMPARE(table.changed(2), "XXX");
        QVERIFY(table.table.TableChanged);
        QCOMPARE(table.tabCaption, tab == 0 ? "Configuration *" : "Keyboard Language *");
    }

    // The row under way loses its mark in any case, and with the last mark goes the star.
    void anEditOfTheRowUnderWayIsGone()
    {
        AnsweringLink on(0);
        on.pump.atTick(kTicksOfIdentification + 3 * 4 + 1, [&] { on.tables.CFG.mark(5); });
        QVERIFY(on.transferUnder(true));
        QCOMPARE(on.tables.CFG.changed(5), " ");
        QCOMPARE(on.tables.CFG.tabCaption, "Configuration");
    }

    // Marks from before the run are no edits of it: a stopped run takes the star off all the same.
    void olderMarksDoNotKeepTheStar()
    {
        AnsweringLink on(0);
        on.tables.CFG.mark(20);
        on.pump.atTick(kTicksOfIdentification + 3 * 4 + 1, [&] { on.link.UserAbort = true; });
        QVERIFY(!on.transferUnder(true));
        QCOMPARE(on.tables.CFG.changed(20), "XXX");
        QVERIFY(on.tables.CFG.table.TableChanged);
        QCOMPARE(on.tables.CFG.tabCaption, "Configuration");
    }

    // --- the editor

    // The editor is hidden for the run and opens with the next row; where none came, a click on the row opens it.
    void aRunThatStoppedInItsFirstRowCanBeEditedAgain_data()
    {
        QTest::addColumn<bool>("retrieves");
        QTest::addColumn<int>("tab");
        QTest::newRow("Configuration read") << true << 0;
        QTest::newRow("Keyboard Language read") << true << 1;
        QTest::newRow("Keyboard Language written") << false << 1;
    }
    void aRunThatStoppedInItsFirstRowCanBeEditedAgain()
    {
        QFETCH(bool, retrieves);
        QFETCH(int, tab);
        AnsweringLink on(tab);
        PlainTable& table = tab == 0 ? on.tables.CFG : on.tables.KB;
        table.grid.setRow(1);
        table.editedRows.clear();
        on.pump.atTick(kTicksOfIdentification + 1, [&] { on.link.UserAbort = true; });
        QVERIFY(!on.transferUnder(retrieves));
        QCOMPARE(table.grid.row(), 1);
        QVERIFY(table.editedRows.empty());
        table.live.rowChanged(); // as a click on the row does
        QCOMPARE(table.editedRows, std::vector<int>{1});
    }

    // Hide_All comes after the first row was made current: what that has opened goes, too.
    void theFirstRowIsCurrentBeforeTheEditorIsHidden()
    {
        AnsweringLink on(0);
        PlainTable& table = on.tables.CFG;
        table.grid.setRow(9);
        QByteArrayList order;
        table.onEditData = [&] {
            order << "edit " + QByteArray::number(table.grid.row()) + " after " +
                         QByteArray::number(linesWith(on.log, {"Hide_All"}).size());
        };
        QVERIFY(on.transferUnder(true));
        QCOMPARE(order.mid(0, 2), (QByteArrayList{"edit 1 after 0", "edit 2 after 1"}));
        QCOMPARE(order.last(), QByteArray("edit 1 after 1"));
    }
};

static const testsupport::RunnableTest<TransferEndsTest> kRunnable;
#include "TransferEndsTest.moc"
