#include "tests/device/ReaderScript.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

#include <numeric>

using namespace testsupport;
using reader::asking;
using reader::kTicksOfIdentification;
using reader::valueAt;
using reader::writing;

namespace {

using Texts = std::vector<std::string>;

QList<int> rowsFrom(int first, int last)
{
    QList<int> list(last - first + 1);
    std::iota(list.begin(), list.end(), first);
    return list;
}

// Fills both tables with values that no default has: of each row's own address.
void fillTables(PlainTables& tables)
{
    int row = 0;
    for (const int address : reader::configurationAddresses()) {
        tables.CFG.setValue(++row, valueAt(address));
    }
    tables.KB.setValue(1, valueAt(0x080));
    for (row = 2; row <= 75; ++row) {
        const int address = 0x081 + 2 * (row - 2);
        tables.KB.setValue(row, valueAt(address) + "-" + valueAt(address + 1));
    }
}

// The writes of the Keyboard Language table when its pairs go to addresses that are so much higher than their own.
QByteArrayList keyboardWrites(int shift)
{
    QByteArrayList commands = {writing(0x080, valueAt(0x080))};
    for (int address = 0x081; address <= 0x114; ++address) {
        commands.append(writing(address + shift, valueAt(address)));
    }
    return commands;
}

} // namespace

class UpdateDeviceTest final : public QObject
{
    Q_OBJECT

private slots:
    void writesTheConfigurationTable()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        fillTables(on.tables);
        const Texts before = on.tables.CFG.values();
        on.transfer.UpdateDevice(on.table);
        QByteArrayList commands = reader::kIdentification;
        for (const int address : reader::configurationAddresses()) {
            if (address != 0x001) {
                commands.append(writing(address, valueAt(address)));
            }
        }
        QCOMPARE(commands.size(), 31);
        QCOMPARE(lines(on.port.commands()), commands);
        QCOMPARE(QByteArray::fromStdString(on.port.written()), commands.join('\n') + '\n');
        QCOMPARE(on.pump.ticks(), 93);
        QCOMPARE(on.tables.CFG.values(), before);
        QVERIFY(!on.port.PortOpen());
    }

    void writesTheKeyboardLanguageTable()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        fillTables(on.tables);
        const Texts before = on.tables.KB.values();
        on.transfer.UpdateDevice(on.table);
        const QByteArrayList commands = reader::kIdentification + keyboardWrites(0);
        QCOMPARE(commands.size(), 154);
        QCOMPARE(lines(on.port.commands()), commands);
        QCOMPARE(QByteArray::fromStdString(on.port.written()), commands.join('\n') + '\n');
        QCOMPARE(on.pump.ticks(), 462);
        QCOMPARE(on.tables.KB.values(), before);
        QVERIFY(!on.port.PortOpen());
    }

    // kb-marks-after-update
    void writesRowsWhetherChangedOrNotAndKeepsTheirMarks()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.tables.CFG.mark(5);
        const Texts marks = on.tables.CFG.changedMarks();
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(on.port.commands().size(), std::size_t{31});
        QCOMPARE(on.tables.CFG.changedMarks(), marks);
        QVERIFY(on.tables.CFG.table.TableChanged);
        QCOMPARE(on.tables.CFG.tabCaption, "Configuration *");
    }

    // A Configuration table from a file may hold the identification bytes of the keyboard.
    void neverWritesTheReadOnlyParameters()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.tables.CFG.table.NumParms = 4;
        on.tables.CFG.address(2) = "081";
        on.tables.CFG.address(3) = "082";
        on.tables.CFG.address(4) = "083";
        on.tables.CFG.setValue(4, "77");
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(lines(on.port.commands()), reader::kIdentification + QByteArrayList{"/rawsend WPW083=77"});
    }

    void theOrderOfARun()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.tables.KB.table.NumParms = 2;
        on.port.setScript(reader::Script());
        on.transfer.UpdateDevice(on.table);
        const QByteArrayList calls = linesWithout(on.log, {"send", "recv"});
        QCOMPARE(calls.first(), QByteArray("EnableButtons false"));
        QCOMPARE(calls.mid(calls.indexOf("HidePleaseWait")), (QByteArrayList{
                                                                 "HidePleaseWait",
                                                                 "Exit: Abort",
                                                                 "Hide_All",
                                                                 "progress 0/2",
                                                                 "port: output /rawsend WPW080=00\\n",
                                                                 "P1: Sent command: /rawsend WPW080=00",
                                                                 "progress 1/2",
                                                                 "port: output /rawsend WPW081=00\\n",
                                                                 "P1: Sent command: /rawsend WPW081=00",
                                                                 "port: output /rawsend WPW082=00\\n",
                                                                 "P1: Sent command: /rawsend WPW082=00",
                                                                 "progress 2/2",
                                                                 "EnableButtons true",
                                                                 "port: close",
                                                                 "Copyright: ",
                                                                 "Driver: ",
                                                                 "Exit: Exit",
                                                             }));
    }

    void everyRowBecomesCurrent_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("rows");
        QTest::newRow("Configuration") << 0 << 27;
        QTest::newRow("Keyboard Language") << 1 << 75;
    }
    void everyRowBecomesCurrent()
    {
        QFETCH(int, tab);
        QFETCH(int, rows);
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(tab);
        on.port.setScript(reader::Script());
        PlainTable& table = tab == 0 ? on.tables.CFG : on.tables.KB;
        table.grid.rowsSet.clear();
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(QList<int>(table.grid.rowsSet.begin(), table.grid.rowsSet.end()), rowsFrom(1, rows));
        QCOMPARE(table.grid.row(), rows);
    }

    void buttonsAreOffFromTheStart()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.pump.atTick(1, [&] {
            QVERIFY(!on.window.buttonsEnabled);
            QCOMPARE(on.window.exitCaption, "Exit");
        });
        on.pump.atTick(kTicksOfIdentification + 1, [&] {
            QVERIFY(!on.window.buttonsEnabled);
            QCOMPARE(on.window.progress, "1/27");
            QCOMPARE(on.window.exitCaption, "Abort");
        });
        on.transfer.UpdateDevice(on.table);
        QVERIFY(on.window.buttonsEnabled);
        QCOMPARE(on.window.progress, "27/27");
        QCOMPARE(on.window.exitCaption, "Exit");
    }

    // --- the kept write-back of addresses

    void theAddressesOfPairsAreAdvanced()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(on.tables.KB.address(1), "080");
        for (int row = 2; row <= 75; ++row) {
            QCOMPARE(on.tables.KB.address(row), reader::address(0x082 + 2 * (row - 2)));
            // What is on screen stays.
            const std::string onScreen =
                reader::address(0x081 + 2 * (row - 2)) + "-" + reader::address(0x082 + 2 * (row - 2));
            QCOMPARE(on.tables.KB.table.cell(row, tables::kAddressColumn), onScreen);
        }
        // Look-ups follow the list: of a pair only its second address is found.
        QCOMPARE(on.tables.tables.GetTableEntry_KB("084"), "20-03");
        QCOMPARE(on.tables.tables.GetTableEntry_KB("083"), "");
        on.tables.tables.PutTableEntry_KB("083-084", "XXX", tables::kChangedColumn);
        QCOMPARE(on.tables.KB.changed(3), "");
        QVERIFY(!on.tables.KB.table.TableChanged);
    }

    // kb-double-update
    void theNextUpdatesWriteShifted()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        fillTables(on.tables);
        on.transfer.UpdateDevice(on.table);
        for (const int shift : {1, 2}) {
            on.port.forgetWritten();
            on.transfer.UpdateDevice(on.table);
            const QByteArrayList commands = reader::kIdentification + keyboardWrites(shift);
            QCOMPARE(lines(on.port.commands()), commands);
        }
        // Row 2 writes 082 and 083, row 75 writes 114 and 115 in the first of them.
        QCOMPARE(keyboardWrites(1).at(1), QByteArray("/rawsend WPW082=") + valueAt(0x081).c_str());
        QCOMPARE(keyboardWrites(1).last(), QByteArray("/rawsend WPW115=") + valueAt(0x114).c_str());
    }

    void theNextRetrieveReadsShifted()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        reader::Script script;
        script.silent = {"/rawxact WPV115"}; // there is no such parameter
        on.port.setScript(script);
        on.transfer.UpdateDevice(on.table);
        on.port.forgetWritten();
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QByteArrayList commands = reader::kIdentification + QByteArrayList{asking(0x080)};
        for (int address = 0x082; address <= 0x115; ++address) {
            commands.append(asking(address));
        }
        QCOMPARE(lines(on.port.commands()), commands);
        QCOMPARE(on.tables.KB.value(2), valueAt(0x082) + "-" + valueAt(0x083));
        QCOMPARE(on.tables.KB.value(74), valueAt(0x112) + "-" + valueAt(0x113));
        QCOMPARE(on.tables.KB.value(75), "00-2C");
    }

    void aResetRepairsTheAddresses()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        on.transfer.UpdateDevice(on.table);
        on.tables.tables.InitGrids();
        on.port.forgetWritten();
        fillTables(on.tables);
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(lines(on.port.commands()), reader::kIdentification + keyboardWrites(0));
    }

    void onlyTheRowsThatWereSentAreAdvanced()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        on.pump.atTick(kTicksOfIdentification + 3 + 6 + 1, [&] { on.link.UserAbort = true; });
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(on.tables.KB.address(2), "082");
        QCOMPARE(on.tables.KB.address(3), "084"); // the row of the abort
        QCOMPARE(on.tables.KB.address(4), "085-086");
    }

    // --- odd tables

    void rowsWithoutAnAddressAreSkipped_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("commands");
        QTest::newRow("Configuration") << 0 << 31 - 1;
        QTest::newRow("Keyboard Language") << 1 << 154 - 2;
    }
    void rowsWithoutAnAddressAreSkipped()
    {
        QFETCH(int, tab);
        QFETCH(int, commands);
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(tab);
        on.port.setScript(reader::Script());
        PlainTable& table = tab == 0 ? on.tables.CFG : on.tables.KB;
        table.address(3).clear();
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(on.port.commands().size(), std::size_t(commands));
        QCOMPARE(linesWith(on.port.commands(), {"/rawsend WPW="}), QByteArrayList{});
        QCOMPARE(table.address(3), "");
        QCOMPARE(linesWith(on.log, {"progress 3/"}).size(), 1);
    }

    void aTableOf255RowsEnds()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        PlainTable& table = on.tables.CFG;
        table.table.setRowCount(256);
        for (int row = 1; row <= 255; ++row) {
            table.table.SetGridItem(row, reader::address(0x200 + row), "5A", "");
        }
        table.table.NumParms = 255;
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(on.port.commands().size(), std::size_t{5 + 255});
        QCOMPARE(lines(on.port.commands()).back(), QByteArray("/rawsend WPW2FF=5A"));
    }

    // --- endings

    void thePortDoesNotOpen()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.openError = platform::SystemError{.number = 2, .description = "No such file or directory"};
        on.boxes.expect(platform::BoxAnswer::Ok);
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(on.boxes.lastText(), "Could not open COM5, No such file or directory");
        QCOMPARE(linesWith(on.log, {"Exit", "EnableButtons", "Hide_All", "progress"}),
                 (QByteArrayList{"EnableButtons false", "EnableButtons true"}));
        QCOMPARE(lines(on.log).first(), QByteArray("EnableButtons false"));
        QCOMPARE(lines(on.log).last(), QByteArray("EnableButtons true"));
        QCOMPARE(on.port.written(), "");
    }

    void anAbortInTheMiddle()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.pump.atTick(kTicksOfIdentification + 3 * 4 + 2, [&] { on.link.UserAbort = true; });
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(on.pump.ticks(), kTicksOfIdentification + 14);
        QCOMPARE(lines(on.port.commands()).mid(5),
                 (QByteArrayList{"/rawsend WPW013=95", "/rawsend WPW014=63", "/rawsend WPW015=40", "/rawsend WPW016=21",
                                 "/rawsend WPW017=2B"}));
        QVERIFY(on.window.buttonsEnabled);
        QCOMPARE(on.window.progress, "5/27");
        QCOMPARE(on.window.exitCaption, "Exit");
        QVERIFY(!on.port.PortOpen());
    }

    // A pair is finished, though without waiting.
    // kb-pair-after-abort
    void anAbortBetweenTheBytesOfAPair()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        on.pump.atTick(kTicksOfIdentification + 3 + 6 + 1, [&] { on.link.UserAbort = true; });
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(on.pump.ticks(), kTicksOfIdentification + 10);
        QCOMPARE(lines(on.port.commands()).mid(5),
                 (QByteArrayList{"/rawsend WPW080=00", "/rawsend WPW081=00", "/rawsend WPW082=00", "/rawsend WPW083=20",
                                 "/rawsend WPW084=03"}));
    }

    // kb-update-unconfirmed
    void silenceDoesNotMatter()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.transfer.UpdateDevice(on.table); // nobody answers anything
        QCOMPARE(on.port.commands().size(), std::size_t{4 + 26});
        QCOMPARE(on.pump.ticks(), 90);
        QVERIFY(!on.link.UserAbort);
    }

    void closingInTheMiddle()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.pump.atTick(kTicksOfIdentification + 2, [&] { on.operations.setClosing(true); });
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(on.pump.ticks(), kTicksOfIdentification + 2);
        QCOMPARE(lines(on.port.commands()).mid(5), (QByteArrayList{"/rawsend WPW013=95"}));
        QVERIFY(!on.port.PortOpen());
        QCOMPARE(on.window.exitCaption, "Exit");
    }

    void closingWhileThePortIsBeingOpened_data()
    {
        QTest::addColumn<int>("tab");
        QTest::newRow("Configuration") << 0;
        QTest::newRow("Keyboard Language") << 1;
    }
    void closingWhileThePortIsBeingOpened()
    {
        QFETCH(int, tab);
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(tab);
        on.port.setScript(reader::Script());
        on.pump.atTick(4, [&] { on.operations.setClosing(true); });
        on.transfer.UpdateDevice(on.table);
        QCOMPARE(on.pump.ticks(), 4);
        QCOMPARE(linesWith(on.port.commands(), {"/rawsend"}), QByteArrayList{});
        QCOMPARE(linesWith(on.log, {"Hide_All", "progress 0"}), QByteArrayList{});
        QVERIFY(!on.port.PortOpen());
        QVERIFY(on.window.buttonsEnabled);
        QCOMPARE(on.window.exitCaption, "Exit");
    }

    void theConnectionIsLost()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.pump.atTick(kTicksOfIdentification + 3 * 2 + 1, [&] { on.port.loseConnection(); });
        QVERIFY(on.operations.run([&] { on.transfer.UpdateDevice(on.table); }));
        QCOMPARE(on.pump.ticks(), kTicksOfIdentification + 7);
        QCOMPARE(lines(on.port.commands()).mid(5),
                 (QByteArrayList{"/rawsend WPW013=95", "/rawsend WPW014=63", "/rawsend WPW015=40"}));
        QCOMPARE(on.port.undelivered(), "");
        QVERIFY(on.link.connectionLost);
        QVERIFY(!on.port.PortOpen());
        QVERIFY(on.boxes.shown.empty());
        QCOMPARE(on.tables.CFG.grid.row(), 4); // it stops where it was

        on.link.UserAbort = false; // as the next press and the window do
        on.link.connectionLost = false;
        on.port.forgetWritten();
        QVERIFY(on.operations.run([&] { on.transfer.UpdateDevice(on.table); }));
        QCOMPARE(on.port.commands().size(), std::size_t{31});
    }
};

static const testsupport::RunnableTest<UpdateDeviceTest> kRunnable;
#include "UpdateDeviceTest.moc"
