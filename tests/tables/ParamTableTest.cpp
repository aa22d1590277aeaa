#include "tables/ParamTable.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

#include <string>
#include <vector>

using namespace tables;

namespace {

// Lays down `count` rows with the addresses 100, 101, ...
void fill(ParamTable& table, int count)
{
    table.setRowCount(count + 1);
    for (int row = 1; row <= count; ++row) {
        const std::string address = QByteArray::number(0x100 + row - 1, 16).toUpper().toStdString();
        table.SetGridItem(row, address, "00", "");
    }
    table.NumParms = static_cast<std::uint8_t>(count);
}

void fillWithDefaults(ParamTable& table)
{
    int row = 0;
    table.setRowCount(static_cast<int>(table.kind().defaults.size()) + 1);
    for (const Parameter& entry : table.kind().defaults) {
        table.SetGridItem(++row, entry.address, entry.value, entry.notes);
    }
    table.NumParms = static_cast<std::uint8_t>(row);
}

// Writes down what it is told, and how many rows the table has at that moment.
class RecordingListener final : public TableListener
{
public:
    explicit RecordingListener(const ParamTable& table)
        : m_table(table)
    {}

    void cellChanged(int row, int column) override
    {
        told.push_back("cell " + std::to_string(row) + "," + std::to_string(column) + "=" + m_table.cell(row, column));
    }
    void rowCountAboutToChange(int newCount) override
    {
        told.push_back("from " + std::to_string(m_table.rowCount()) + " to " + std::to_string(newCount));
    }
    void rowCountChanged() override { told.push_back("now " + std::to_string(m_table.rowCount())); }

    std::vector<std::string> told;

private:
    const ParamTable& m_table;
};

} // namespace

class ParamTableTest final : public QObject
{
    Q_OBJECT

private slots:
    void kindsDifferAsTheProgramNeeds()
    {
        const TableKind& cfg = configurationKind();
        QCOMPARE(cfg.caption, std::string_view("Configuration"));
        QVERIFY(cfg.match == AddressMatch::Exact);
        QVERIFY(!cfg.ignoresEmptyValues);
        QVERIFY(!cfg.resetRestoresCaption);
        QCOMPARE(cfg.firstEditableRow, 2);
        QCOMPARE(cfg.defaults.size(), std::size_t{27});

        const TableKind& kb = keyboardLanguageKind();
        QCOMPARE(kb.caption, std::string_view("Keyboard Language"));
        QVERIFY(kb.match == AddressMatch::Containment);
        QVERIFY(kb.ignoresEmptyValues);
        QVERIFY(kb.resetRestoresCaption);
        QCOMPARE(kb.firstEditableRow, 1);
        QCOMPARE(kb.defaults.size(), std::size_t{75});
    }

    void newTableHasAHeaderAndOneEmptyRow()
    {
        const ParamTable table(configurationKind());
        QCOMPARE(table.rowCount(), 2);
        const std::vector<std::string> header = {table.cell(0, 0), table.cell(0, 1), table.cell(0, 2),
                                                 table.cell(0, 3)};
        QCOMPARE(header, (std::vector<std::string>{"Changed", "Adr", "Hex", "Notes"}));
        for (int column = 0; column < kColumnCount; ++column) {
            QCOMPARE(table.cell(1, column), "");
        }
        QCOMPARE(int{table.NumParms}, 0);
        QCOMPARE(int{table.LastRow}, 99);
        QVERIFY(!table.TableChanged);
    }

    void flatIndexIsRowTimesFourPlusColumn()
    {
        const ParamTable table(configurationKind());
        QCOMPARE(faIndex(table, 0, 0), 0);
        QCOMPARE(faIndex(table, 0, 3), 3);
        QCOMPARE(faIndex(table, 1, 0), 4);
        QCOMPARE(faIndex(table, 27, 2), 110);
        QCOMPARE(faIndex(table, 255, 3), 1023);
    }

    void setGridItemWritesThreeCellsAndTheIndex()
    {
        ParamTable table(configurationKind());
        table.setRowCount(4);
        table.setCell(2, kChangedColumn, "XXX");
        table.SetGridItem(2, "0AB", "5C", "a, \"b\"; c ");
        QCOMPARE(table.cell(2, kAddressColumn), "0AB");
        QCOMPARE(table.cell(2, kValueColumn), "5C");
        QCOMPARE(table.cell(2, kNotesColumn), "a, \"b\"; c ");
        QCOMPARE(table.cell(2, kChangedColumn), "XXX");
        QCOMPARE(table.ParmAddr[1], "0AB");
        for (const int row : {1, 3}) {
            for (int column = 0; column < kColumnCount; ++column) {
                QCOMPARE(table.cell(row, column), "");
            }
        }
        QCOMPARE(table.ParmAddr[0], "");
        QCOMPARE(table.ParmAddr[2], "");
    }

    void setGridItemOutsideTheTableDoesNothing()
    {
        ParamTable table(configurationKind());
        table.setRowCount(3);
        for (const int row : {-1, 0, 3, 301, 302, 30000}) {
            table.SetGridItem(row, "0AB", "5C", "notes");
        }
        for (const std::string& address : table.ParmAddr) {
            QCOMPARE(address, "");
        }
        QCOMPARE(table.cell(0, kAddressColumn), "Adr");
        QCOMPARE(table.cell(2, kAddressColumn), "");
    }

    void setGridItemFillsTheIndexToItsEndAndNoFurther()
    {
        ParamTable table(configurationKind());
        table.setRowCount(400);
        table.SetGridItem(301, "0AB", "5C", "last");
        table.SetGridItem(302, "0AC", "5D", "beyond");
        QCOMPARE(table.ParmAddr[300], "0AB");
        QCOMPARE(table.cell(301, kAddressColumn), "0AB");
        QCOMPARE(table.cell(302, kAddressColumn), "");
    }

    void cellsOutsideTheTableAreEmptyAndCannotBeWritten()
    {
        ParamTable table(configurationKind());
        const std::vector<std::pair<int, int>> outside = {{-1, 0}, {2, 0}, {0, -1}, {0, 4}, {1, 4}};
        for (const auto& [row, column] : outside) {
            table.setCell(row, column, "x");
            QCOMPARE(table.cell(row, column), "");
        }
        QCOMPARE(table.cell(0, 0), "Changed");
        QCOMPARE(table.cell(1, 0), "");
    }

    void growingAddsEmptyRowsAndShrinkingForgetsThem()
    {
        ParamTable table(configurationKind());
        fill(table, 3);
        table.setRowCount(2);
        QCOMPARE(table.rowCount(), 2);
        QCOMPARE(table.cell(1, kAddressColumn), "100");
        QCOMPARE(table.cell(2, kAddressColumn), "");
        table.setRowCount(4);
        QCOMPARE(table.rowCount(), 4);
        for (int column = 0; column < kColumnCount; ++column) {
            QCOMPARE(table.cell(2, column), "");
            QCOMPARE(table.cell(3, column), "");
        }
    }

    void theHeaderRowAlwaysStays()
    {
        ParamTable table(configurationKind());
        for (const int count : {1, 0, -5}) {
            table.setRowCount(count);
            QCOMPARE(table.rowCount(), 1);
            QCOMPARE(table.cell(0, kNotesColumn), "Notes");
        }
    }

    void clearToHeaderEmptiesEveryDataCell()
    {
        ParamTable table(configurationKind());
        fill(table, 3);
        table.setCell(3, kChangedColumn, "XXX");
        table.setCell(0, kValueColumn, "spoilt");
        table.clearToHeader();
        QCOMPARE(table.rowCount(), 4);
        QCOMPARE(table.cell(0, kChangedColumn), "Changed");
        QCOMPARE(table.cell(0, kValueColumn), "Hex");
        for (int row = 1; row < 4; ++row) {
            for (int column = 0; column < kColumnCount; ++column) {
                QCOMPARE(table.cell(row, column), "");
            }
        }
    }

    void configurationLookup_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<int>("row"); // 0: not found
        QTest::newRow("first row") << QByteArray("001") << 1;
        QTest::newRow("01A") << QByteArray("01A") << 9;
        QTest::newRow("behind the gap") << QByteArray("02C") << 26;
        QTest::newRow("last row") << QByteArray("02D") << 27;
        QTest::newRow("the gap") << QByteArray("02B") << 0;
        QTest::newRow("before the second row") << QByteArray("012") << 0;
        QTest::newRow("behind the last row") << QByteArray("02E") << 0;
        QTest::newRow("lower case") << QByteArray("01a") << 0;
        QTest::newRow("part of an address") << QByteArray("01") << 0;
        QTest::newRow("without the leading zero") << QByteArray("1A") << 0;
        QTest::newRow("longer than an address") << QByteArray("01A ") << 0;
    }
    void configurationLookup()
    {
        QFETCH(QByteArray, address);
        QFETCH(int, row);
        ParamTable table(configurationKind());
        fillWithDefaults(table);
        const ParamTable::Lookup found = table.find(address.toStdString());
        QCOMPARE(found.row.value_or(0), row);
        // Nothing found: the walk has gone one entry past the last row's.
        QCOMPARE(found.index, row != 0 ? row - 1 : 28);
    }

    void keyboardLookup_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<int>("row"); // 0: not found
        QTest::newRow("single address") << QByteArray("080") << 1;
        QTest::newRow("whole pair") << QByteArray("081-082") << 2;
        QTest::newRow("first of a pair") << QByteArray("083") << 3;
        QTest::newRow("second of a pair") << QByteArray("084") << 3;
        QTest::newRow("across 0FF") << QByteArray("100") << 65;
        QTest::newRow("last of all") << QByteArray("114") << 75;
        QTest::newRow("part: the first row that contains it") << QByteArray("8") << 1;
        QTest::newRow("part across the dash") << QByteArray("1-0") << 2;
        QTest::newRow("upper case") << QByteArray("08A") << 6;
        QTest::newRow("lower case") << QByteArray("08a") << 0;
        QTest::newRow("behind the last row") << QByteArray("115") << 0;
        QTest::newRow("two rows") << QByteArray("084-085") << 0;
        QTest::newRow("longer than the pair") << QByteArray("083-084 ") << 0;
    }
    void keyboardLookup()
    {
        QFETCH(QByteArray, address);
        QFETCH(int, row);
        ParamTable table(keyboardLanguageKind());
        fillWithDefaults(table);
        const ParamTable::Lookup found = table.find(address.toStdString());
        QCOMPARE(found.row.value_or(0), row);
        QCOMPARE(found.index, row != 0 ? row - 1 : 76);
    }

    void lookupSearchesTheIndexAndNotTheCells()
    {
        ParamTable table(configurationKind());
        fill(table, 3);
        table.setCell(2, kAddressColumn, "ABC");
        QVERIFY(!table.find("ABC").row);
        QCOMPARE(table.find("101").row.value_or(0), 2);
        table.ParmAddr[2] = "ABC";
        QCOMPARE(table.find("ABC").row.value_or(0), 3);
    }

    // kb-address-twice
    void lookupTakesTheFirstOfEqualAddresses()
    {
        ParamTable table(configurationKind());
        fill(table, 3);
        table.ParmAddr[2] = "101";
        QCOMPARE(table.find("101").row.value_or(0), 2);
    }

    // A shorter table was laid down over a longer one: the index still holds the longer one's tail.
    void staleAddressesOfRowsThatAreGoneAreNotFound()
    {
        ParamTable table(configurationKind());
        fill(table, 10);
        fill(table, 5);
        QCOMPARE(table.ParmAddr[5], "105");
        QCOMPARE(table.find("104").row.value_or(0), 5);
        for (const char* address : {"105", "106", "107"}) {
            QVERIFY2(!table.find(address).row, address);
        }
        QCOMPARE(table.find("105").index, 5);
        QCOMPARE(table.find("106").index, 6);
        QCOMPARE(table.find("107").index, 6);
    }

    void lookupReachesTwoEntriesBeyondTheRowsAndNoFurther()
    {
        ParamTable table(configurationKind());
        fill(table, 10);
        table.NumParms = 5;
        QCOMPARE(table.find("105").row.value_or(0), 6);
        QCOMPARE(table.find("106").row.value_or(0), 7);
        QVERIFY(!table.find("107").row);
        QCOMPARE(table.find("107").index, 6);
    }

    void forgottenAddressesAreNotFound()
    {
        ParamTable table(configurationKind());
        fill(table, 10);
        table.forgetAddressesFrom(5);
        QCOMPARE(table.ParmAddr[4], "104");
        for (std::size_t i = 5; i < table.ParmAddr.size(); ++i) {
            QCOMPARE(table.ParmAddr[i], "");
        }
        QVERIFY(!table.find("105").row);
        QCOMPARE(table.find("104").row.value_or(0), 5);
        table.forgetAddressesFrom(1000);
        QCOMPARE(table.find("104").row.value_or(0), 5);
        table.forgetAddressesFrom(-1);
        QVERIFY(!table.find("100").row);
    }

    void holds255Rows()
    {
        ParamTable table(configurationKind());
        fill(table, 255);
        QCOMPARE(table.rowCount(), 256);
        QCOMPARE(int{table.NumParms}, 255);
        QCOMPARE(table.find("100").row.value_or(0), 1);
        QCOMPARE(table.find("1FE").row.value_or(0), 255);
        const ParamTable::Lookup missing = table.find("1FF");
        QVERIFY(!missing.row);
        QCOMPARE(missing.index, 256);
    }

    void emptyTableFindsNothing()
    {
        ParamTable table(configurationKind());
        table.setRowCount(1);
        const ParamTable::Lookup missing = table.find("001");
        QVERIFY(!missing.row);
        QCOMPARE(missing.index, 1);
    }

    void listenerHearsOfCellsAfterTheyChanged()
    {
        ParamTable table(configurationKind());
        table.setRowCount(3);
        RecordingListener listener(table);
        table.setListener(&listener);
        table.setCell(1, kValueColumn, "5C");
        table.setCell(9, kValueColumn, "5C");
        QCOMPARE(listener.told, (std::vector<std::string>{"cell 1,2=5C"}));
        listener.told.clear();
        table.SetGridItem(2, "0AB", "07", "n");
        QCOMPARE(listener.told, (std::vector<std::string>{"cell 2,1=0AB", "cell 2,2=07", "cell 2,3=n"}));
        table.setListener(nullptr);
        table.setCell(1, kValueColumn, "5D");
        QCOMPARE(listener.told.size(), std::size_t{3});
    }

    void listenerHearsOfRowsBeforeAndAfter()
    {
        ParamTable table(configurationKind());
        RecordingListener listener(table);
        table.setListener(&listener);
        table.setRowCount(5);
        table.setRowCount(5);
        table.setRowCount(3);
        QCOMPARE(listener.told, (std::vector<std::string>{"from 2 to 5", "now 5", "from 5 to 3", "now 3"}));
    }

    void listenerHearsOfEveryClearedCell()
    {
        ParamTable table(configurationKind());
        RecordingListener listener(table);
        table.setListener(&listener);
        table.clearToHeader();
        QCOMPARE(listener.told,
                 (std::vector<std::string>{"cell 0,0=Changed", "cell 0,1=Adr", "cell 0,2=Hex", "cell 0,3=Notes",
                                           "cell 1,0=", "cell 1,1=", "cell 1,2=", "cell 1,3="}));
    }
};

static const testsupport::RunnableTest<ParamTableTest> kRunnable;
#include "ParamTableTest.moc"
