#include "tests/device/ReaderScript.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

#include <numeric>

using namespace testsupport;
using reader::asking;
using reader::valueAt;

namespace {

using Texts = std::vector<std::string>;

// The pair of a Keyboard Language row as the reader holds it.
std::string pairAt(int first)
{
    return valueAt(first) + "-" + valueAt(first + 1);
}

QList<int> rows(const std::vector<int>& list)
{
    return {list.begin(), list.end()};
}

QList<int> rowsFrom(int first, int last)
{
    QList<int> list(last - first + 1);
    std::iota(list.begin(), list.end(), first);
    return list;
}

} // namespace

// Reading whole tables that the reader answers in full, and what the window shows of it.
class RetrieveTest final : public QObject
{
    Q_OBJECT

private slots:
    void readsTheConfigurationTable()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));

        QByteArrayList commands = reader::kIdentification;
        Texts values;
        for (const int address : reader::configurationAddresses()) {
            commands.append(asking(address));
            values.push_back(valueAt(address));
        }
        QCOMPARE(commands.size(), 32);
        QCOMPARE(lines(on.port.commands()), commands);
        QCOMPARE(QByteArray::fromStdString(on.port.written()), commands.join('\n') + '\n');
        QCOMPARE(on.pump.ticks(), 96);
        QCOMPARE(on.tables.CFG.values(), values);
        QCOMPARE(on.tables.CFG.changedMarks(), Texts(27, " "));
        QVERIFY(!on.link.UserAbort);
        QVERIFY(!on.port.PortOpen());
    }

    void readsTheKeyboardLanguageTable()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));

        QByteArrayList commands = reader::kIdentification;
        for (int address = 0x080; address <= 0x114; ++address) {
            commands.append(asking(address));
        }
        QCOMPARE(commands.size(), 154);
        QCOMPARE(lines(on.port.commands()), commands);
        QCOMPARE(QByteArray::fromStdString(on.port.written()), commands.join('\n') + '\n');
        QCOMPARE(on.pump.ticks(), 462);
        Texts values = {valueAt(0x080)};
        for (int address = 0x081; address < 0x114; address += 2) {
            values.push_back(pairAt(address));
        }
        QCOMPARE(on.tables.KB.values(), values);
        QCOMPARE(on.tables.KB.changedMarks(), Texts(75, " "));
        QCOMPARE(on.tables.KB.address(3), "083-084"); // reading does not advance addresses
        QVERIFY(!on.port.PortOpen());
    }

    void theOtherTableKeepsItsValues_data()
    {
        QTest::addColumn<int>("tab");
        QTest::newRow("Configuration read") << 0;
        QTest::newRow("Keyboard Language read") << 1;
    }
    void theOtherTableKeepsItsValues()
    {
        QFETCH(int, tab);
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(tab);
        on.port.setScript(reader::Script());
        const PlainTable& other = tab == 0 ? on.tables.KB : on.tables.CFG;
        const Texts before = other.values();
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(other.values(), before);
    }

    // The whole run over a table of two rows, with everything but the lamps.
    void theOrderOfARun()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.tables.KB.table.NumParms = 2;
        on.port.setScript(reader::Script());
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        const QByteArrayList calls = linesWithout(on.log, {"send", "recv"});
        QCOMPARE(calls.mid(calls.indexOf("HidePleaseWait")), (QByteArrayList{
                                                                 "HidePleaseWait",
                                                                 "Exit: Abort",
                                                                 "CheckForUnsavedData_KB",
                                                                 "EnableButtons false",
                                                                 "Hide_All",
                                                                 "port: InputLen = 0",
                                                                 "progress 0/2",
                                                                 "P1: Sent command: /rawxact WPV080",
                                                                 "port: output /rawxact WPV080\\n",
                                                                 "progress 1/2",
                                                                 "P1: Sent command: /rawxact WPV081",
                                                                 "port: output /rawxact WPV081\\n",
                                                                 "P1: Sent command: /rawxact WPV082",
                                                                 "port: output /rawxact WPV082\\n",
                                                                 "progress 2/2",
                                                                 "EnableButtons true",
                                                                 "port: close",
                                                                 "Copyright: ",
                                                                 "Driver: ",
                                                                 "Exit: Exit",
                                                             }));
    }

    void whatTheWindowShowsMeanwhile()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.tables.CFG.grid.setCol(tables::kNotesColumn);
        on.pump.atTick(reader::kTicksOfIdentification - 1, [&] {
            QCOMPARE(on.window.exitCaption, "Exit"); // as long as the port is being opened
            QVERIFY(on.window.buttonsEnabled);
            QCOMPARE(on.window.progress, "");
        });
        on.pump.atTick(reader::kTicksOfIdentification + 1, [&] {
            QCOMPARE(on.window.exitCaption, "Abort");
            QVERIFY(!on.window.buttonsEnabled);
            QCOMPARE(on.window.progress, "0/27");
            QVERIFY(!on.window.pleaseWait);
            QCOMPARE(on.window.statusText, "Sent command: /rawxact WPV001");
            QCOMPARE(on.tables.CFG.grid.row(), 1);
            QCOMPARE(on.tables.CFG.grid.col(), 0);
        });
        on.pump.atTick(95, [&] {
            QCOMPARE(on.window.exitCaption, "Abort");
            QCOMPARE(on.tables.CFG.grid.row(), 27);
        });
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.pump.ticks(), 96);
        QCOMPARE(on.window.exitCaption, "Exit");
        QVERIFY(on.window.buttonsEnabled);
        QCOMPARE(on.window.progress, "27/27");
        QCOMPARE(on.tables.CFG.grid.row(), 1);
    }

    void theValueIsBlankWhileItIsAsked()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        Texts asked;
        on.pump.atTick(reader::kTicksOfIdentification + 3 * 8 + 1, [&] {
            asked = {on.tables.CFG.value(8), on.tables.CFG.value(9), on.tables.CFG.value(10)};
        });
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(asked, (Texts{valueAt(0x019), " ", "32"}));
    }

    void theFirstByteStandsAloneWhileTheSecondIsAsked()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        std::string meanwhile;
        // 080, 081, 082 and 083 have been asked for.
        on.pump.atTick(reader::kTicksOfIdentification + 3 * 4 + 1, [&] { meanwhile = on.tables.KB.value(3); });
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(meanwhile, valueAt(0x083));
        QCOMPARE(on.tables.KB.value(3), pairAt(0x083));
    }

    void theViewBeginsAtTheTop()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.tables.KB.grid.setRow(50);
        on.tables.KB.grid.setTopRow(45);
        int topRow = 0;
        on.pump.atTick(reader::kTicksOfIdentification + 1, [&] { topRow = on.tables.KB.grid.topRow(); });
        (void)on.transfer.btnRetrieveParms_Click(on.table);
        QCOMPARE(topRow, 1);
        QCOMPARE(on.tables.KB.grid.row(), 1);
    }

    // Every row that becomes current opens its editor, row 1 last.
    void theEditorFollows()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.tables.CFG.editedRows.clear(); // row 2 is being edited
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(rows(on.tables.CFG.editedRows), rowsFrom(1, 27) + QList<int>{1});
    }

    // The row that is current scrolls back into view one row at a time, once more than its entries do by themselves.
    void theViewFollowsTheConfigurationRows()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        PlainGrid& grid = on.tables.CFG.grid;
        grid.rowsInView = 5;
        const int duringRow20 = reader::kTicksOfIdentification + 3 * 19 + 1;
        int before = 0;
        int after = 0;
        on.pump.atTick(duringRow20, [&] {
            before = grid.topRow();
            grid.setTopRow(1); // the user's hand
        });
        on.pump.atTick(duringRow20 + 3, [&] { after = grid.topRow(); });
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(before, 17); // rows 17 to 21
        // Row 20: the mark, the value, the mark again and the row itself. Row 21: the old value and the blank.
        QCOMPARE(after, 1 + 4 + 2);
    }

    void theKeyboardRowsScrollByTheirEntriesAlone()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        PlainGrid& grid = on.tables.KB.grid;
        grid.rowsInView = 5;
        const int duringRow20 = reader::kTicksOfIdentification + 3 + 6 * 18 + 1;
        int after = 0;
        on.pump.atTick(duringRow20, [&] { grid.setTopRow(1); });
        on.pump.atTick(duringRow20 + 6, [&] { after = grid.topRow(); });
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        // Row 20: the first byte, both, the mark. Row 21: the old value and the blank.
        QCOMPARE(after, 1 + 3 + 2);
    }

    // --- the marks

    // A Keyboard Language row takes the mark off the Configuration row of the same number as well.
    // kb-marks-of-the-other
    void theMarksOfBothTables()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        for (int row = 1; row <= 27; ++row) {
            on.tables.CFG.mark(row);
        }
        on.tables.KB.mark(40);
        on.tables.CFG.grid.setRow(1);
        on.tables.CFG.grid.rowsSet.clear();
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.tables.CFG.changedMarks(), Texts(27, " "));
        QCOMPARE(on.tables.KB.changedMarks(), Texts(75, " "));
        // The Configuration rows became current on the way, and their editor opened.
        QCOMPARE(rows(on.tables.CFG.grid.rowsSet), rowsFrom(1, 27));
        QCOMPARE(on.tables.CFG.grid.row(), 27);
        QCOMPARE(on.tables.CFG.editedRows.back(), 27);
        // Only the caption of the table that was read loses its mark; the tables still count as changed.
        QCOMPARE(on.tables.KB.tabCaption, "Keyboard Language");
        QCOMPARE(on.tables.CFG.tabCaption, "Configuration *");
        QVERIFY(on.tables.CFG.table.TableChanged);
        QVERIFY(on.tables.KB.table.TableChanged);
    }

    void aRowWithoutAValueLeavesTheOtherTablesMark()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        reader::Script script;
        script.silent = {"/rawxact WPV083"};
        on.port.setScript(script);
        for (const int row : {2, 3, 4}) {
            on.tables.CFG.mark(row);
        }
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.tables.CFG.changed(2), " ");
        QCOMPARE(on.tables.CFG.changed(3), "XXX");
        QCOMPARE(on.tables.CFG.changed(4), "XXX");
    }

    void configurationRowsLeaveTheOtherTablesMarks()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.tables.KB.mark(3);
        on.tables.CFG.mark(3);
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.tables.KB.changed(3), "XXX");
        QCOMPARE(on.tables.CFG.changed(3), " ");
        QCOMPARE(on.tables.CFG.tabCaption, "Configuration");
        QCOMPARE(on.tables.KB.tabCaption, "Keyboard Language *");
        QVERIFY(on.tables.CFG.table.TableChanged);
    }

    // --- odd tables

    void rowsWithoutAnAddressAreSkipped()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        on.tables.KB.address(3).clear();
        on.tables.KB.address(75).clear();
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.port.commands().size(), std::size_t{154 - 4});
        QCOMPARE(linesWith(on.port.commands(), {"/rawxact WPV083", "/rawxact WPV084", "/rawxact WPV113"}),
                 QByteArrayList{});
        QCOMPARE(on.tables.KB.value(3), "20-03");
        QCOMPARE(on.tables.KB.changed(3), "");
        QCOMPARE(on.tables.KB.value(4), pairAt(0x085));
        QCOMPARE(on.tables.KB.value(75), "00-2C");
        QCOMPARE(linesWith(on.log, {"progress 3/", "progress 75/"}),
                 (QByteArrayList{"progress 3/75", "progress 75/75"}));
    }

    // A loaded file may hold a single byte above 080: it is read as a pair all the same.
    void aSingleByteAboveTheFirstRowBecomesAPair()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        on.tables.KB.table.NumParms = 3;
        on.tables.KB.address(3) = "0FF";
        on.tables.KB.setValue(3, "12");
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(lines(on.port.commands()).mid(8), (QByteArrayList{"/rawxact WPV0FF", "/rawxact WPV100"}));
        QCOMPARE(on.tables.KB.value(3), pairAt(0x0FF));
    }

    void aTableOf255RowsEnds()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        PlainTable& table = on.tables.CFG;
        table.table.setRowCount(256);
        for (int row = 1; row <= 255; ++row) {
            table.table.SetGridItem(row, reader::address(0x200 + row), "00", "");
        }
        table.table.NumParms = 255;
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.port.commands().size(), std::size_t{5 + 255});
        QCOMPARE(table.value(255), valueAt(0x2FF));
    }

    void anEmptyTableIsReadAtOnce()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.tables.CFG.table.NumParms = 0;
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(lines(on.port.commands()), reader::kIdentification);
        QCOMPARE(on.window.exitCaption, "Exit");
    }

    // --- nothing is read

    void unsavedChangesAreKept_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QByteArray>("question");
        QTest::newRow("Configuration") << 0 << QByteArray("CheckForUnsavedData_CFG");
        QTest::newRow("Keyboard Language") << 1 << QByteArray("CheckForUnsavedData_KB");
    }
    void unsavedChangesAreKept()
    {
        QFETCH(int, tab);
        QFETCH(QByteArray, question);
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(tab);
        on.window.mayDiscard = false;
        on.port.setScript(reader::Script());
        PlainTable& table = tab == 0 ? on.tables.CFG : on.tables.KB;
        const Texts before = table.values();
        table.mark(3);
        bool openDuringTheQuestion = false;
        on.window.onCheckForUnsavedData = [&] { openDuringTheQuestion = on.port.PortOpen(); };
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        // The port is open, and identified, when the question comes.
        QVERIFY(openDuringTheQuestion);
        QCOMPARE(lines(on.port.commands()), reader::kIdentification);
        const QByteArrayList calls = lines(on.log);
        QCOMPARE(calls.mid(calls.indexOf("HidePleaseWait")),
                 (QByteArrayList{"HidePleaseWait", "Exit: Abort", question, "port: close",
                                 "Copyright: ", "Driver: ", "Exit: Exit"}));
        QCOMPARE(table.values(), before);
        QCOMPARE(table.changed(3), "XXX");
        QVERIFY(table.tabCaption.ends_with(" *"));
    }

    void thePortDoesNotOpen()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.openError = platform::SystemError{.number = 2, .description = "No such file or directory"};
        on.boxes.expect(platform::BoxAnswer::Ok);
        const Texts before = on.tables.CFG.values();
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.boxes.lastText(), "Could not open COM5, No such file or directory");
        QCOMPARE(linesWith(on.log, {"Exit", "EnableButtons", "CheckForUnsavedData", "progress", "port: output"}),
                 QByteArrayList{});
        QCOMPARE(lines(on.log).back(), "HidePleaseWait");
        QCOMPARE(on.tables.CFG.values(), before);
        QCOMPARE(on.pump.ticks(), 0);
    }
};

static const testsupport::RunnableTest<RetrieveTest> kRunnable;
#include "RetrieveTest.moc"
