#include "tests/device/ReaderScript.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

using namespace testsupport;
using reader::asking;
using reader::kTicksOfIdentification;
using reader::valueAt;

namespace {

using Texts = std::vector<std::string>;

} // namespace

// Readings that end before their last row: silence, abort, closing, a lost connection.
class RetrieveEndsTest final : public QObject
{
    Q_OBJECT

private slots:
    // Every earlier row is fresh, the silent one as it was, every later one untouched.
    // kb-silent-stop
    void aSilentConfigurationRow()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        reader::Script script;
        script.silent = {"/rawxact WPV018"};
        on.port.setScript(script);
        Texts expected = on.tables.CFG.values();
        QByteArrayList commands = reader::kIdentification;
        for (std::size_t row = 1; row <= 7; ++row) {
            const int address = reader::configurationAddresses().at(row - 1);
            commands.append(asking(address));
            if (row < 7) {
                expected.at(row - 1) = valueAt(address);
            }
        }
        on.tables.CFG.mark(7);
        on.tables.CFG.mark(8);
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(lines(on.port.commands()), commands);
        QCOMPARE(on.pump.ticks(), kTicksOfIdentification + 6 * 3 + 8);
        QCOMPARE(on.tables.CFG.values(), expected);
        QCOMPARE(on.tables.CFG.value(7), "23");
        // The mark of the silent row goes all the same.
        Texts marks(27, "");
        std::fill_n(marks.begin(), 7, " ");
        marks.at(7) = "XXX";
        QCOMPARE(on.tables.CFG.changedMarks(), marks);
        QVERIFY(on.link.UserAbort);
        QVERIFY(on.boxes.shown.empty());
        QCOMPARE(on.tables.CFG.grid.row(), 1);
        QCOMPARE(on.tables.CFG.tabCaption, "Configuration");
        const QByteArrayList calls = linesWithout(on.log, {"send", "recv", "P1"});
        QCOMPARE(calls.mid(calls.indexOf("port: output /rawxact WPV018\\n") + 1),
                 (QByteArrayList{"EnableButtons true", "port: close", "Copyright: ", "Driver: ", "Exit: Exit"}));
        QCOMPARE(on.window.progress, "6/27"); // the silent row was not read
    }

    // Once the run has failed nothing is waited for, but the second half is still asked.
    void aSilentPair_data()
    {
        QTest::addColumn<QByteArray>("silent");
        QTest::addColumn<int>("ticks");
        QTest::newRow("first half") << QByteArray("083") << 3 + 6 + 8;
        QTest::newRow("second half") << QByteArray("084") << 3 + 6 + 3 + 8;
    }
    void aSilentPair()
    {
        QFETCH(QByteArray, silent);
        QFETCH(int, ticks);
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        reader::Script script;
        script.silent = {"/rawxact WPV" + silent.toStdString()};
        on.port.setScript(script);
        on.tables.KB.mark(3);
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(lines(on.port.commands()), reader::kIdentification + (QByteArrayList{
                                                                          "/rawxact WPV080",
                                                                          "/rawxact WPV081",
                                                                          "/rawxact WPV082",
                                                                          "/rawxact WPV083",
                                                                          "/rawxact WPV084",
                                                                      }));
        QCOMPARE(on.pump.ticks(), kTicksOfIdentification + ticks);
        QCOMPARE(on.tables.KB.value(2), valueAt(0x081) + "-" + valueAt(0x082));
        QCOMPARE(on.tables.KB.value(3), "20-03");
        QCOMPARE(on.tables.KB.value(4), "20-2B");
        QCOMPARE(on.tables.KB.changed(3), " ");
        QCOMPARE(on.tables.KB.changed(4), "");
        QCOMPARE(on.tables.KB.tabCaption, "Keyboard Language");
    }

    void theLastRowIsSilent()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        reader::Script script;
        script.silent = {"/rawxact WPV114"};
        on.port.setScript(script);
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.tables.KB.value(75), "00-2C");
        QCOMPARE(on.tables.KB.value(74), valueAt(0x111) + "-" + valueAt(0x112));
        QCOMPARE(on.pump.ticks(), 462 + 5);
    }

    // An empty value comes back where the table takes one; the other one keeps its blank.
    void anEmptyValueIsRestored_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QByteArray>("restored");
        QTest::newRow("Configuration") << 0 << QByteArray();
        QTest::newRow("Keyboard Language") << 1 << QByteArray(" ");
    }
    void anEmptyValueIsRestored()
    {
        QFETCH(int, tab);
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(tab);
        reader::Script script;
        script.silent = {"/rawxact WPV001", "/rawxact WPV080"};
        on.port.setScript(script);
        PlainTable& table = tab == 0 ? on.tables.CFG : on.tables.KB;
        table.setValue(1, "");
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QTEST(QByteArray::fromStdString(table.value(1)), "restored");
    }

    // On the wire a value of one character is no reply at all.
    void aReplyOfOneCharacterIsSilence()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        reader::Script script;
        script.other["/rawxact WPV013"] = {{parameterReply("013", "9")}};
        on.port.setScript(script);
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.pump.ticks(), kTicksOfIdentification + 3 + 8);
        QCOMPARE(on.tables.CFG.value(1), valueAt(0x001));
        QCOMPARE(on.tables.CFG.value(2), "95");
        QVERIFY(on.link.UserAbort);
    }

    // Should one get through by other means, it is not written, and the run goes on.
    void aResponseOfOneCharacterIsNotWritten()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        reader::Script script;
        script.silent = {"/rawxact WPV013"};
        on.port.setScript(script);
        on.pump.atTick(kTicksOfIdentification + 3 + 2, [&] { on.link.LastResponse = "9"; });
        (void)on.transfer.btnRetrieveParms_Click(on.table);
        QVERIFY(!on.link.UserAbort);
        QCOMPARE(on.port.commands().size(), std::size_t{32});
        QCOMPARE(on.pump.ticks(), 96);
        QCOMPARE(on.tables.CFG.value(2), " ");
        QCOMPARE(on.tables.CFG.changed(2), " ");
        QCOMPARE(on.tables.CFG.value(3), valueAt(0x014));
    }

    void aSecondResponseOfOneCharacterIsNotWritten()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        reader::Script script;
        script.silent = {"/rawxact WPV084"};
        on.port.setScript(script);
        on.pump.atTick(kTicksOfIdentification + 3 + 6 + 3 + 2, [&] { on.link.LastResponse = "9"; });
        (void)on.transfer.btnRetrieveParms_Click(on.table);
        QVERIFY(!on.link.UserAbort);
        QCOMPARE(on.port.commands().size(), std::size_t{154});
        QCOMPARE(on.tables.KB.value(3), valueAt(0x083));
        QCOMPARE(on.tables.KB.value(4), valueAt(0x085) + "-" + valueAt(0x086));
    }

    // --- the user

    void anAbortInTheMiddle()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.pump.atTick(kTicksOfIdentification + 3 * 10 + 1, [&] { on.link.UserAbort = true; });
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.pump.ticks(), kTicksOfIdentification + 31);
        QCOMPARE(on.port.commands().size(), std::size_t{5 + 11});
        QCOMPARE(on.tables.CFG.value(10), valueAt(0x01B));
        QCOMPARE(on.tables.CFG.value(11), "00");
        QCOMPARE(on.tables.CFG.value(12), "00");
        QVERIFY(!on.port.PortOpen());
        QVERIFY(on.window.buttonsEnabled);
        QCOMPARE(on.window.exitCaption, "Exit");
        QVERIFY(on.link.UserAbort); // the next toolbar press clears it
    }

    // The row's own reply came before the press; its old value comes back all the same.
    void anAbortRightAfterTheReply()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.pump.atTick(kTicksOfIdentification + 3 + 2, [&] {
            QCOMPARE(on.link.LastResponse, valueAt(0x013));
            on.link.UserAbort = true;
        });
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.tables.CFG.value(2), "95");
        QCOMPARE(on.tables.CFG.value(1), valueAt(0x001));
    }

    void anAbortInTheLastRow()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.pump.atTick(96, [&] { on.link.UserAbort = true; });
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.pump.ticks(), 96);
        QCOMPARE(on.tables.CFG.value(27), "00");
        QCOMPARE(on.tables.CFG.value(26), valueAt(0x02C));
    }

    // Between the bytes of a pair the row's old value comes back whole.
    void anAbortBetweenTheBytesOfAPair()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        std::string meanwhile;
        on.pump.atTick(kTicksOfIdentification + 3 + 6 + 3 + 1, [&] {
            meanwhile = on.tables.KB.value(3);
            on.link.UserAbort = true;
        });
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(meanwhile, valueAt(0x083));
        QCOMPARE(on.tables.KB.value(3), "20-03");
        QCOMPARE(on.tables.KB.value(4), "20-2B");
        QCOMPARE(lines(on.port.commands()).back(), QByteArray("/rawxact WPV084"));
        QCOMPARE(on.pump.ticks(), kTicksOfIdentification + 13);
    }

    // An abort that nobody took back: everything goes out without a wait, nothing is read.
    void anOldAbortEndsTheRunInItsFirstRow()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.link.UserAbort = true;
        on.port.setScript(reader::Script());
        const Texts before = on.tables.CFG.values();
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.pump.ticks(), 0);
        QCOMPARE(lines(on.port.commands()).back(), QByteArray("/rawxact WPV001"));
        QCOMPARE(on.tables.CFG.values(), before);
    }

    void closingInTheMiddle()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(1);
        on.port.setScript(reader::Script());
        on.pump.atTick(kTicksOfIdentification + 3 + 6 + 3 + 1, [&] { on.operations.setClosing(true); });
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.pump.ticks(), kTicksOfIdentification + 13);
        QCOMPARE(on.tables.KB.value(3), "20-03");
        QCOMPARE(on.tables.KB.value(4), "20-2B");
        QVERIFY(!on.port.PortOpen());
        QCOMPARE(on.window.exitCaption, "Exit");
    }

    void closingWhileThePortIsBeingOpened()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        on.port.setScript(reader::Script());
        on.pump.atTick(4, [&] { on.operations.setClosing(true); });
        const Texts before = on.tables.CFG.values();
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.pump.ticks(), 4);
        QCOMPARE(linesWith(on.log, {"CheckForUnsavedData", "progress"}), QByteArrayList{});
        QCOMPARE(linesWith(on.port.commands(), {"/rawxact WPV001"}), QByteArrayList{});
        QCOMPARE(on.tables.CFG.values(), before);
        QVERIFY(!on.port.PortOpen());
        QCOMPARE(on.window.exitCaption, "Exit");
    }

    // --- the line

    void theConnectionIsLost_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("tick");
        QTest::addColumn<int>("row");
        QTest::newRow("Configuration") << 0 << kTicksOfIdentification + 3 + 2 << 2;
        QTest::newRow("Configuration, its reply here already") << 0 << kTicksOfIdentification + 6 << 2;
        QTest::newRow("Configuration, a row on") << 0 << kTicksOfIdentification + 7 << 3;
        QTest::newRow("Keyboard Language, first byte") << 1 << kTicksOfIdentification + 3 + 6 + 1 << 3;
        QTest::newRow("Keyboard Language, second byte") << 1 << kTicksOfIdentification + 3 + 6 + 3 + 1 << 3;
    }
    void theConnectionIsLost()
    {
        QFETCH(int, tab);
        QFETCH(int, tick);
        QFETCH(int, row);
        DeviceLink on;
        on.link.PortNumber = 5;
        on.chooseTab(tab);
        on.port.setScript(reader::Script());
        PlainTable& table = tab == 0 ? on.tables.CFG : on.tables.KB;
        const Texts before = table.values();
        on.pump.atTick(tick, [&] { on.port.loseConnection(); });
        bool complete = true;
        QVERIFY(on.operations.run([&] { complete = on.transfer.btnRetrieveParms_Click(on.table); }));
        QVERIFY(!complete);
        QCOMPARE(on.pump.ticks(), tick);
        QVERIFY(on.link.connectionLost);
        QVERIFY(on.link.UserAbort);
        QVERIFY(!on.port.PortOpen());
        QVERIFY(on.boxes.shown.empty());
        QVERIFY(on.window.buttonsEnabled);
        QCOMPARE(on.window.exitCaption, "Exit");
        // The rows before the one that was lost are fresh, it and the rest are as they were.
        for (std::size_t i = static_cast<std::size_t>(row - 1); i < before.size(); ++i) {
            QCOMPARE(table.values().at(i), before.at(i));
        }
        QVERIFY(table.value(row - 1) != before.at(static_cast<std::size_t>(row - 2)));
        QVERIFY(table.value(row - 1) != " ");

        // The next press opens afresh and reads everything.
        on.link.UserAbort = false; // as the next press and the window do
        on.link.connectionLost = false;
        on.port.forgetWritten();
        QVERIFY(on.operations.run([&] { complete = on.transfer.btnRetrieveParms_Click(on.table); }));
        QVERIFY(complete);
        QCOMPARE(on.port.commands().size(), std::size_t(tab == 0 ? 32 : 154));
    }

    // A late reply of the identification comes as an event and passes for the first row's value.
    // kb-late-answer
    void aLateIdentificationMayBecomeAValue()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        reader::Script script;
        script.other["/rawxact WPV082"] = {{parameterReply("082", "C7"), 4}};
        script.silent = {"/rawxact WPV001"};
        on.port.setScript(script);
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.tables.CFG.value(1), "C7");
        QCOMPARE(on.tables.CFG.value(2), valueAt(0x013));
    }

    // The box is modal and time goes on behind it: the row that waits has timed out when it is closed.
    void aBlankLineEndsTheRun()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        reader::Script script;
        script.other["/rawxact WPV014"] = {{"\n", 3}};
        on.port.setScript(script);
        on.boxes.expect(platform::BoxAnswer::Ok, [&] { on.pump.pass(20); });
        QVERIFY(!on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.boxes.lastText(), "No data read");
        QCOMPARE(on.tables.CFG.value(2), valueAt(0x013));
        QCOMPARE(on.tables.CFG.value(3), "63");
        QVERIFY(on.link.UserAbort);
    }

    void repliesInPiecesLateAndTwoAtOnce()
    {
        DeviceLink on;
        on.link.PortNumber = 5;
        reader::Script script;
        const std::string first = parameterReply("001", "AB");
        for (const char c : first) {
            script.other["/rawxact WPV001"].push_back({std::string(1, c)});
        }
        script.other["/rawxact WPV013"] = {{parameterReply("013", "CD"), 7}}; // in the eighth tick it would be too late
        script.other["/rawxact WPV014"] = {{"/rawsend WPW014=63 ok\n" + parameterReply("014", "EF")}};
        script.other["/rawxact WPV015"] = {{"/rawxact WPV015 reply 00: 12\r"}};
        on.port.setScript(script);
        QVERIFY(on.transfer.btnRetrieveParms_Click(on.table));
        QCOMPARE(on.tables.CFG.value(1), "AB");
        QCOMPARE(on.tables.CFG.value(2), "CD");
        QCOMPARE(on.tables.CFG.value(3), "EF");
        QCOMPARE(on.tables.CFG.value(4), "12");
        QCOMPARE(on.tables.CFG.value(5), valueAt(0x016));
        QCOMPARE(on.pump.ticks(), 96 + 4);
    }
};

static const testsupport::RunnableTest<RetrieveEndsTest> kRunnable;
#include "RetrieveEndsTest.moc"
