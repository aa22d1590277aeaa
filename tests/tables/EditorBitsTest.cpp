// Every bit field of both editors, with every byte a row can hold and every option clicked. What each option means is
// written down here a second time, apart from the product's own description.

#include "tests/support/EditorWindow.h"
#include "tests/support/RunnableTest.h"

#include <functional>

using testsupport::EditorWindow;

namespace {

struct Array
{
    const char* name;
    unsigned mask;
    std::vector<unsigned> settings; // the masked bits under each index
};

struct Row
{
    EditorWindow::Page page;
    const char* address;
    std::vector<Array> arrays;
};

QString hex(unsigned byte)
{
    return QString::number(byte, 16).rightJustified(2, QLatin1Char('0')).toUpper();
}

// Rows of whole bytes edited by option arrays; 022 has rules of its own and its own test.
const std::vector<Row> kRows = {
    {EditorWindow::ConfigurationPage,
     "013",
     {{"radTk1", 0x03, {0x00, 0x01, 0x02}},
      {"radTk2", 0x0C, {0x00, 0x04, 0x08}},
      {"radTk3", 0x30, {0x00, 0x10, 0x20}},
      {"radID", 0x80, {0x00, 0x80}}}},
    {EditorWindow::ConfigurationPage, "014", {{"radSendEr", 0x03, {0x00, 0x01, 0x03}}}},
    {EditorWindow::ConfigurationPage, "02A", {{"radTrkMap", 0x07, {0, 1, 2, 3, 4, 5}}}},
    {EditorWindow::ConfigurationPage,
     "080",
     {{"radP080A1_CFG", 0x10, {0x00, 0x10}},
      {"radP080A23_CFG", 0x60, {0x00, 0x20, 0x40, 0x60}},
      {"radP080E_CFG", 0x01, {0x00, 0x01}},
      {"radP080S_CFG", 0x80, {0x00, 0x80}}}},
    {EditorWindow::KeyboardLanguagePage,
     "080",
     {{"radP080A1_KB", 0x10, {0x00, 0x10}},
      {"radP080A23_KB", 0x60, {0x00, 0x20, 0x40, 0x60}},
      {"radP080E_KB", 0x01, {0x00, 0x01}},
      {"radP080S_KB", 0x80, {0x00, 0x80}}}},
};

const std::vector<Array> kShiftFlags = {{"radShiftA1_KB", 0x10, {0x00, 0x10}},
                                        {"radShiftA2_KB", 0x20, {0x00, 0x20}},
                                        {"radShiftA3_KB", 0x40, {0x00, 0x40}},
                                        {"radShiftA4_KB", 0x80, {0x00, 0x80}}};

int expectedSelection(const Array& array, unsigned byte)
{
    for (std::size_t index = 0; index < array.settings.size(); ++index) {
        if (array.settings[index] == (byte & array.mask)) {
            return static_cast<int>(index);
        }
    }
    return -1;
}

} // namespace

// Thousands of clicks: painting each would take most of the time.
class UnpaintedWindow final : public EditorWindow
{
public:
    UnpaintedWindow() { setUpdatesEnabled(false); }
};

class EditorBitsTest final : public QObject
{
    Q_OBJECT

private slots:
    void optionsOfWholeBytes_data()
    {
        QTest::addColumn<std::size_t>("which");
        for (std::size_t which = 0; which < kRows.size(); ++which) {
            QTest::addRow("%s on page %d", kRows[which].address, kRows[which].page) << which;
        }
    }
    void optionsOfWholeBytes()
    {
        QFETCH(std::size_t, which);
        const Row& row = kRows[which];
        UnpaintedWindow w;
        if (QLatin1String(row.address) == QLatin1String("080") && row.page == EditorWindow::ConfigurationPage) {
            w.replaceRow(row.page, 5, QStringLiteral("080"), QStringLiteral("00"), QStringLiteral("from a file"));
        }
        w.showPage(row.page);
        for (unsigned byte = 0; byte <= 0xFF; ++byte) {
            w.open(row.page, QLatin1String(row.address), hex(byte));
            for (const Array& array : row.arrays) {
                checkArray(w, row.page, row.address, array, byte, hex);
            }
        }
    }

    void flagsOfPairs()
    {
        UnpaintedWindow w;
        w.showPage(EditorWindow::KeyboardLanguagePage);
        for (unsigned flags = 0; flags <= 0xFF; ++flags) {
            const unsigned scanCode = (flags * 7 + 3) & 0xFF;
            const auto pair = [scanCode](unsigned byte) { return hex(byte) + QLatin1Char('-') + hex(scanCode); };
            w.open(EditorWindow::KeyboardLanguagePage, QStringLiteral("0FF-100"), pair(flags));
            for (const Array& array : kShiftFlags) {
                checkArray(w, EditorWindow::KeyboardLanguagePage, "0FF-100", array, flags, pair);
            }
        }
    }

    void sendFlagBoxes()
    {
        const std::vector<std::pair<const char*, unsigned>> boxes = {
            {"chkSendLC", 0x04}, {"chkSendNBR", 0x08}, {"chkSendLRC", 0x10}, {"chkSendEs", 0x20}, {"chkSendSS", 0x40}};
        UnpaintedWindow w;
        for (unsigned byte = 0; byte <= 0xFF; ++byte) {
            w.openCfg(QStringLiteral("014"), hex(byte));
            for (const auto& [name, bit] : boxes) {
                QCOMPARE(w.control<QAbstractButton>(name)->isChecked(), (byte & bit) != 0);
                w.click(name);
                QCOMPARE(w.valueCfg(QStringLiteral("014")), hex(byte ^ bit));
                w.click(name);
                QCOMPARE(w.valueCfg(QStringLiteral("014")), hex(byte));
            }
        }
    }

    void terminatorOptions()
    {
        const QString address = QStringLiteral("022");
        UnpaintedWindow w;
        for (unsigned byte = 0; byte <= 0xFF; ++byte) {
            w.openCfg(address, hex(byte));
            QCOMPARE(w.selected("radSendTermAfter"), byte == 0 ? 2 : byte >= 0x80 ? 1 : 0);
            const unsigned terminator = byte == 0 ? 0x0D : byte;
            const unsigned expected[] = {terminator & 0x7F, terminator | 0x80, 0x00};
            for (const int index : {0, 1, 2, 1, 2, 0}) {
                w.CFG.table().setCell(w.grdCFG->row(), tables::kValueColumn, hex(byte).toStdString());
                w.click("radSendTermAfter", index);
                QCOMPARE(w.valueCfg(address), hex(expected[index]));
            }
        }
    }

    void characterBoxes()
    {
        UnpaintedWindow w;
        for (const char* address : {"015", "016", "017", "018", "019", "024", "027", "028"}) {
            for (unsigned byte = 0; byte <= 0xFF; ++byte) {
                w.openCfg(QLatin1String(address), hex(byte));
                const QString character = platform::toQString(std::string(1, static_cast<char>(byte)));
                QCOMPARE(w.box("txtCharEntry")->text(), byte > 31 ? character : QString());
                QCOMPARE(w.valueCfg(QLatin1String(address)), hex(byte));
                if (byte > 31) {
                    w.box("txtCharEntry")->setText(QStringLiteral("~"));
                    w.box("txtCharEntry")->setText(character);
                    QCOMPARE(w.valueCfg(QLatin1String(address)), hex(byte));
                }
            }
        }
    }

    void hexBoxes()
    {
        UnpaintedWindow w;
        for (const char* address :
             {"01C", "01D", "01E", "01F", "020", "021", "023", "025", "026", "029", "02C", "02D"}) {
            for (unsigned byte = 0; byte <= 0xFF; ++byte) {
                w.openCfg(QLatin1String(address), hex(byte));
                QCOMPARE(w.box("txtHexEntry")->text(), hex(byte));
                w.box("txtHexEntry")->setText(hex(byte ^ 0xFF));
                QCOMPARE(w.valueCfg(QLatin1String(address)), hex(byte ^ 0xFF));
            }
        }
    }

    void decimalBoxes()
    {
        UnpaintedWindow w;
        for (const char* address : {"01A", "01B"}) {
            for (unsigned byte = 0; byte <= 0xFF; ++byte) {
                w.openCfg(QLatin1String(address), hex(byte));
                QCOMPARE(w.box("txtDecEntry")->text(), QString::number(byte));
                w.box("txtDecEntry")->setText(QString::number(byte ^ 0xFF));
                QCOMPARE(w.valueCfg(QLatin1String(address)), hex(byte ^ 0xFF));
            }
        }
    }

private:
    // Clicks every option of an array on the open row, each time from the same byte; `written` is how the row's value
    // holds a byte.
    static void checkArray(EditorWindow& w, EditorWindow::Page page, const char* address, const Array& array,
                           unsigned byte, const std::function<QString(unsigned)>& written)
    {
        const QString row = QLatin1String(address);
        QCOMPARE(w.selected(array.name), expectedSelection(array, byte));
        for (std::size_t index = 0; index < array.settings.size(); ++index) {
            tables::ParamTable& table = w.live(page).table();
            table.setCell(w.live(page).grid().row(), tables::kValueColumn, written(byte).toStdString());
            table.setCell(w.live(page).grid().row(), tables::kChangedColumn, " ");
            w.click(array.name, static_cast<int>(index));
            QCOMPARE(w.cell(page, row, tables::kValueColumn), written((byte & ~array.mask) | array.settings[index]));
            QCOMPARE(w.cell(page, row, tables::kChangedColumn), QStringLiteral("XXX"));
            QCOMPARE(w.selected(array.name), static_cast<int>(index));
        }
    }
};

static const testsupport::RunnableTest<EditorBitsTest> kRunnable;
#include "EditorBitsTest.moc"
