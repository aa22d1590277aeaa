// Reading and writing one parameter by its address: what goes over the wire, and what becomes of the tables.

#include "device/SingleSetting.h"
#include "tests/device/ReaderScript.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

using namespace testsupport;
using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

namespace {

// The link with a reader that answers everything and whose port is known.
struct Setting : DeviceLink
{
    Setting()
    {
        link.PortNumber = 5;
        port.setScript(reader::Script());
        tables.CFG.onEditData = [this] { log.emplace_back("EditData_CFG"); };
        tables.KB.onEditData = [this] { log.emplace_back("EditData_KB"); };
    }

    // All that was sent besides the identification.
    [[nodiscard]] QByteArrayList sent() const
    {
        QByteArrayList all = lines(port.commands());
        for (const QByteArray& known : reader::kIdentification) {
            all.removeOne(known);
        }
        return all;
    }
    // The tables' rows that differ from the factory defaults, as "address=value", marked ones with a star.
    [[nodiscard]] QByteArrayList changedRows() const
    {
        const PlainTables factory;
        return changedRows(tables.CFG, factory.CFG) + changedRows(tables.KB, factory.KB);
    }

    device::SingleSetting setting{link, operations, protocol, connection, tables.tables, loggedBoxes};

private:
    static QByteArrayList changedRows(const PlainTable& now, const PlainTable& before)
    {
        QByteArrayList rows;
        for (int row = 1; row < now.table.rowCount(); ++row) {
            const bool marked = now.changed(row) == "XXX";
            if (marked || now.value(row) != before.value(row)) {
                rows.append(QByteArray::fromStdString(now.table.cell(row, tables::kAddressColumn) + "=" +
                                                      now.value(row) + (marked ? "*" : "")));
            }
        }
        return rows;
    }
};

QByteArray boxText(const TestMessageBoxes& boxes)
{
    return QByteArray::fromStdString(boxes.lastText());
}

} // namespace

class SingleSettingTest final : public QObject
{
    Q_OBJECT

private slots:
    void theAddressDecidesTheHalf_data()
    {
        QTest::addColumn<QByteArray>("oldValue");
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("newValue");
        const auto row = [](const char* oldValue, const char* address, const char* value, const char* newValue) {
            QTest::addRow("%s %s=%s", oldValue, address, value)
                << QByteArray(oldValue) << QByteArray(address) << QByteArray(value) << QByteArray(newValue);
        };
        row("20-03", "083", "04", "04-03");
        row("20-03", "084", "04", "20-04");
        row("00-00", "081", "12", "12-00");
        row("00-00", "082", "12", "00-12");
        row("20-03", "0FF", "1A", "1A-03");
        row("20-03", "100", "1A", "20-1A");
        row("20-03", "10A", "1A", "20-1A");
        row("20-03", "113", "1A", "1A-03");
        row("20-03", "114", "1A", "20-1A");
        row("00", "080", "7F", "7F");
        row("00", "083", "7F", "7F");      // a row of one byte, whatever its address
        row("20-03", "83", "04", "04-03"); // typed short
        row("20-03", "", "04", "20-04");   // no number reads as 0
        row("20-03", "083", "", "-03");
        row("20-03", "084", "", "20-");
        row("2003", "083", "04", "04003"); // as a file may hold it
        row("2003", "084", "04", "20004");
    }
    void theAddressDecidesTheHalf()
    {
        QFETCH(QByteArray, oldValue);
        QFETCH(QByteArray, address);
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, newValue);
        QCOMPARE(device::rowValueWith(oldValue.toStdString(), address.toStdString(), value.toStdString()),
                 newValue.toStdString());
    }

    void anUpdateIsSentAndChangesTheTable_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QByteArray>("row");
        QTest::addColumn<QByteArray>("text");
        const auto row = [](const char* address, const char* value, const char* command, const char* changed,
                            const char* text) {
            QTest::newRow(address) << QByteArray(address) << QByteArray(value) << QByteArray(command)
                                   << QByteArray(changed) << QByteArray(text);
        };
        row("013", "95", "/rawsend WPW013=95", "013=95*", "Updated Configuration table with 013=95");
        row("02D", "01", "/rawsend WPW02D=01", "02D=01*", "Updated Configuration table with 02D=01");
        row("080", "03", "/rawsend WPW080=03", "080=03*", "Updated Keyboard Language table with 080=03");
        row("081", "04", "/rawsend WPW081=04", "081-082=04-00*", "Updated Keyboard Language table with 081=04");
        row("082", "09", "/rawsend WPW082=09", "081-082=00-09*", "Updated Keyboard Language table with 082=09");
        row("083", "A1", "/rawsend WPW083=A1", "083-084=A1-03*", "Updated Keyboard Language table with 083=A1");
        row("084", "A1", "/rawsend WPW084=A1", "083-084=20-A1*", "Updated Keyboard Language table with 084=A1");
        // Too short to be an address of its own: the row whose address contains it.
        row("8", "7F", "/rawsend WPW8=7F", "080=7F*", "Updated Keyboard Language table with 8=7F");
    }
    void anUpdateIsSentAndChangesTheTable()
    {
        QFETCH(QByteArray, address);
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, command);
        QFETCH(QByteArray, row);
        QFETCH(QByteArray, text);
        Setting on;
        on.boxes.expect(BoxAnswer::Ok);
        on.setting.update(address.toStdString(), value.toStdString());
        QCOMPARE(on.sent(), QByteArrayList{command});
        QCOMPARE(on.changedRows(), QByteArrayList{row});
        QCOMPARE(on.boxes.shown.size(), std::size_t{1});
        QCOMPARE(boxText(on.boxes), text);
        QCOMPARE(on.boxes.shown[0].title, "");
        QCOMPARE(on.boxes.shown[0].icon, BoxIcon::Information);
        QCOMPARE(on.boxes.shown[0].buttons, BoxButtons::Ok);
        QVERIFY(!on.port.PortOpen());
    }

    void anUpdateOutsideTheTablesIsOnlySent_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::newRow("the reader's own") << QByteArray("001");
        QTest::newRow("before the first") << QByteArray("012");
        QTest::newRow("the gap") << QByteArray("02B");
        QTest::newRow("after the last") << QByteArray("115");
        QTest::newRow("far away") << QByteArray("FFF");
        QTest::newRow("too long") << QByteArray("0833");
        QTest::newRow("empty") << QByteArray("");
    }
    void anUpdateOutsideTheTablesIsOnlySent()
    {
        QFETCH(QByteArray, address);
        Setting on;
        on.setting.update(address.toStdString(), "5A");
        QCOMPARE(on.sent(), QByteArrayList{"/rawsend WPW" + address + "=5A"});
        QCOMPARE(on.changedRows(), QByteArrayList());
        QVERIFY(on.boxes.shown.empty());
        QVERIFY(!on.port.PortOpen());
    }

    void theReaderComesFirstThenTheTableThenTheEditorThenTheBox()
    {
        Setting on;
        on.boxes.expect(BoxAnswer::Ok, [&] {
            QCOMPARE(on.tables.KB.value(3), "20-A1");
            QCOMPARE(on.tables.KB.changed(3), "XXX");
            QVERIFY(on.tables.KB.table.TableChanged);
            QCOMPARE(on.tables.KB.tabCaption, "Keyboard Language *");
        });
        on.chooseTab(1);
        on.setting.update("084", "A1");
        // The editor comes twice: when the row becomes the current one, still with its old value, and afterwards.
        QCOMPARE(linesWith(on.log, {"port: open", "port: close", "port: output /rawsend", "EditData", "box"}),
                 QByteArrayList({"port: open", "port: output /rawsend WPW084=A1\\n", "port: close", "EditData_KB",
                                 "EditData_KB", "box: Updated Keyboard Language table with 084=A1"}));
        QVERIFY(!on.tables.CFG.table.TableChanged);
    }

    void theConfigurationEditorIsTheOneRefreshed()
    {
        Setting on;
        on.boxes.expect(BoxAnswer::Ok);
        on.setting.update("01A", "20");
        QCOMPARE(linesWith(on.log, {"EditData"}), (QByteArrayList{"EditData_CFG", "EditData_CFG"}));
        QCOMPARE(on.tables.CFG.tabCaption, "Configuration *");
        QVERIFY(!on.tables.KB.table.TableChanged);
    }

    // Only one editor has its controls at a time.
    void theEditorOfTheTableInEffectComesBack()
    {
        Setting on;
        on.boxes.expect(BoxAnswer::Ok);
        on.setting.update("084", "A1");
        QCOMPARE(linesWith(on.log, {"EditData"}), (QByteArrayList{"EditData_KB", "EditData_KB", "EditData_CFG"}));
        on.log.clear();
        on.tables.session.tableInEffect = std::nullopt; // in the read test no editor does
        on.boxes.expect(BoxAnswer::Ok);
        on.setting.update("084", "A2");
        QCOMPARE(linesWith(on.log, {"EditData"}), QByteArrayList{"EditData_KB"});
    }

    // After a whole Keyboard Language table was written its index holds the second addresses alone.
    void theFirstAddressOfAPairIsNotFoundAfterTheTableWasWritten()
    {
        Setting on;
        on.chooseTab(1);
        on.transfer.UpdateDevice(on.table);
        on.port.forgetWritten();
        on.setting.update("083", "A1");
        QCOMPARE(on.sent(), QByteArrayList{"/rawsend WPW083=A1"});
        QCOMPARE(on.changedRows(), QByteArrayList());
        on.boxes.expect(BoxAnswer::Ok);
        on.setting.update("084", "A1");
        QCOMPARE(on.changedRows(), QByteArrayList{"083-084=20-A1*"});
    }

    // The driver confirms nothing, so an update cannot know; the table follows what the user wanted.
    // kb-single-in-any-case
    void anUpdateChangesTheTableEvenWithoutALink()
    {
        Setting on;
        on.port.openError = platform::SystemError{.number = 2, .description = "No such file or directory"};
        on.boxes.expect(BoxAnswer::Ok);
        on.boxes.expect(BoxAnswer::Ok);
        on.setting.update("013", "95");
        QVERIFY(on.port.written().empty());
        QCOMPARE(on.changedRows(), QByteArrayList{"013=95*"});
        QCOMPARE(on.boxes.shown[0].text, "Could not open COM5, No such file or directory");
        QCOMPARE(on.boxes.shown[1].text, "Updated Configuration table with 013=95");
    }

    // The reader may have been taken away in the middle of the command: nothing is told that may not be true.
    void aLostConnectionEndsAnUpdate_data()
    {
        QTest::addColumn<int>("tick");
        QTest::addColumn<int>("commands");
        QTest::newRow("in the identification") << 2 << 1;
        QTest::newRow("behind the command") << 17 << 6;
    }
    void aLostConnectionEndsAnUpdate()
    {
        QFETCH(int, tick);
        QFETCH(int, commands);
        Setting on;
        on.pump.atTick(tick, [&] { on.port.loseConnection(); });
        on.setting.update("013", "95");
        QCOMPARE(static_cast<int>(on.port.commands().size()), commands);
        QCOMPARE(on.pump.ticks(), tick);
        QVERIFY(on.link.connectionLost);
        QVERIFY(!on.port.PortOpen());
        QCOMPARE(on.changedRows(), QByteArrayList());
        QVERIFY(!on.tables.CFG.table.TableChanged);
        QVERIFY(on.boxes.shown.empty());
        QCOMPARE(linesWith(on.log, {"EditData"}), QByteArrayList());
    }

    void readsWhatTheReaderHolds()
    {
        Setting on;
        QCOMPARE(on.setting.read("01A"), reader::valueAt(0x1A));
        QCOMPARE(on.sent(), QByteArrayList{"/rawxact WPV01A"});
        QCOMPARE(on.setting.read("FFF"), reader::valueAt(0xFFF)); // no table needs to know the address
        QVERIFY(!on.port.PortOpen());
        QCOMPARE(on.changedRows(), QByteArrayList());
        QVERIFY(on.boxes.shown.empty());
    }

    void readsALongerReplyWhole()
    {
        Setting on;
        reader::Script script;
        script.other["/rawxact WPV01A"] = {{parameterReply("01A", "5A5B")}};
        on.port.setScript(script);
        QCOMPARE(on.setting.read("01A"), std::string("5A5B"));
    }

    void silenceReadsNothing()
    {
        Setting on;
        on.link.LastResponse = "77"; // of another address
        reader::Script script;
        script.silent = {"/rawxact WPV01A"};
        script.other["/rawxact WPV01B"] = {{parameterReply("01B", "5A"), 1}};
        on.port.setScript(script);
        QCOMPARE(on.setting.read("01A"), std::nullopt);
        QVERIFY(!on.port.PortOpen());
        QVERIFY(on.link.UserAbort);
        // The abort stays until the next toolbar press: nothing is waited for any more, whoever answers.
        script.silent = {"/rawxact WPV081", "/rawxact WPV082"};
        on.port.setScript(script);
        on.pump.restart();
        QCOMPARE(on.setting.read("01B"), std::nullopt);
        QCOMPARE(on.pump.ticks(), 0);
    }

    // The last reply is of another address: without a link there is nothing to show.
    void aFailedOpenReadsNothing()
    {
        Setting on;
        on.link.LastResponse = "77";
        on.port.openError = platform::SystemError{.number = 2, .description = "No such file or directory"};
        on.boxes.expect(BoxAnswer::Ok);
        QCOMPARE(on.setting.read("01A"), std::nullopt);
        QVERIFY(on.port.written().empty());
    }

    void bothAreIgnoredWhileAnotherOperationRuns()
    {
        Setting on;
        QVERIFY(on.operations.run([&] {
            QCOMPARE(on.setting.read("01A"), std::nullopt);
            on.setting.update("013", "95");
        }));
        QVERIFY(on.port.written().empty());
        QVERIFY(on.log.empty());
        QCOMPARE(on.changedRows(), QByteArrayList());
    }

    void eachIsAnOperationOfItsOwn()
    {
        Setting on;
        bool wasRunning = false;
        on.boxes.expect(BoxAnswer::Ok, [&] { wasRunning = on.operations.isRunning(); });
        on.setting.update("013", "95");
        QVERIFY(wasRunning);
        QVERIFY(!on.operations.isRunning());
        on.pump.restart();
        on.pump.atTick(2, [&] { wasRunning = on.operations.isRunning(); });
        wasRunning = false;
        QVERIFY(on.setting.read("013").has_value());
        QVERIFY(wasRunning);
        QVERIFY(!on.operations.isRunning());
    }
};

static const testsupport::RunnableTest<SingleSettingTest> kRunnable;
#include "SingleSettingTest.moc"
