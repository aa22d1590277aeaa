#include "tables/BitFields.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

using namespace tables;

namespace {

// What a choice does to a byte, written down here on its own.
struct Choice
{
    const BitField* field;
    int index;
    unsigned cleared;
    unsigned set;
};

const std::vector<Choice>& choices()
{
    static const std::vector<Choice> all = {
        {&fields::radTk1, 0, 0x03, 0x00},
        {&fields::radTk1, 1, 0x03, 0x01},
        {&fields::radTk1, 2, 0x03, 0x02},
        {&fields::radTk2, 0, 0x0C, 0x00},
        {&fields::radTk2, 1, 0x0C, 0x04},
        {&fields::radTk2, 2, 0x0C, 0x08},
        {&fields::radTk3, 0, 0x30, 0x00},
        {&fields::radTk3, 1, 0x30, 0x10},
        {&fields::radTk3, 2, 0x30, 0x20},
        {&fields::radID, 0, 0x80, 0x00},
        {&fields::radID, 1, 0x80, 0x80},
        {&fields::radSendEr, 0, 0x03, 0x00},
        {&fields::radSendEr, 1, 0x03, 0x01},
        {&fields::radSendEr, 2, 0x03, 0x03},
        {&fields::radTrkMap, 0, 0x07, 0x00},
        {&fields::radTrkMap, 1, 0x07, 0x01},
        {&fields::radTrkMap, 2, 0x07, 0x02},
        {&fields::radTrkMap, 3, 0x07, 0x03},
        {&fields::radTrkMap, 4, 0x07, 0x04},
        {&fields::radTrkMap, 5, 0x07, 0x05},
        {&fields::radSendTermAfter, 0, 0x80, 0},
        {&fields::radSendTermAfter, 1, 0x80, 0x80},
        {&fields::radSendTermAfter, 2, 0xFF, 0x00},
        {&fields::radP080A1, 0, 0x10, 0x00},
        {&fields::radP080A1, 1, 0x10, 0x10},
        {&fields::radP080A23, 0, 0x60, 0x00},
        {&fields::radP080A23, 1, 0x60, 0x20},
        {&fields::radP080A23, 2, 0x60, 0x40},
        {&fields::radP080A23, 3, 0x60, 0x60},
        {&fields::radP080E, 0, 0x01, 0x00},
        {&fields::radP080E, 1, 0x01, 0x01},
        {&fields::radP080S, 0, 0x80, 0x00},
        {&fields::radP080S, 1, 0x80, 0x80},
        {&fields::radShiftA1, 0, 0x10, 0x00},
        {&fields::radShiftA1, 1, 0x10, 0x10},
        {&fields::radShiftA2, 0, 0x20, 0x00},
        {&fields::radShiftA2, 1, 0x20, 0x20},
        {&fields::radShiftA3, 0, 0x40, 0x00},
        {&fields::radShiftA3, 1, 0x40, 0x40},
        {&fields::radShiftA4, 0, 0x80, 0x00},
        {&fields::radShiftA4, 1, 0x80, 0x80},
    };
    return all;
}

} // namespace

Q_DECLARE_METATYPE(const tables::BitField*)

class BitFieldsTest final : public QObject
{
    Q_OBJECT

private slots:
    void aChoiceChangesItsFieldAlone()
    {
        for (const Choice& choice : choices()) {
            for (unsigned byte = 0; byte <= 0xFF; ++byte) {
                const unsigned expected = (byte & ~choice.cleared & 0xFF) | choice.set;
                QCOMPARE(unsigned{withOption(*choice.field, static_cast<std::uint8_t>(byte), choice.index)}, expected);
            }
        }
    }

    void anIndexWithoutOptionChangesNothing()
    {
        QCOMPARE(int{withOption(fields::radTk1, 0x95, 3)}, 0x95);
        QCOMPARE(int{withOption(fields::radTk1, 0x95, -1)}, 0x95);
    }

    void selectedOption_data()
    {
        QTest::addColumn<const BitField*>("field");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("index"); // -1 = none
        const auto add = [](const BitField& field, const char* value, int index) {
            QTest::addRow("%s %s", field.array.data(), value) << &field << QByteArray(value) << index;
        };
        add(fields::radTk1, "95", 1);
        add(fields::radTk2, "95", 1);
        add(fields::radTk3, "95", 1);
        add(fields::radID, "95", 1);
        add(fields::radTk1, "03", -1);
        add(fields::radTk2, "0C", -1);
        add(fields::radTk3, "30", -1);
        add(fields::radTk2, "08", 2);
        add(fields::radTk3, "20", 2);
        add(fields::radSendEr, "63", 2);
        add(fields::radSendEr, "62", -1);
        add(fields::radSendEr, "61", 1);
        add(fields::radSendEr, "60", 0);
        add(fields::radTrkMap, "FD", 5);
        add(fields::radTrkMap, "06", -1);
        add(fields::radTrkMap, "07", -1);
        add(fields::radP080A23, "F1", 3);
        add(fields::radP080A23, "20", 1);
        add(fields::radP080A1, "F1", 1);
        add(fields::radP080E, "F1", 1);
        add(fields::radP080S, "F1", 1);
        add(fields::radSendTermAfter, "0D", 0);
        add(fields::radSendTermAfter, "8D", 1);
        add(fields::radSendTermAfter, "80", 1);
        add(fields::radSendTermAfter, "00", 2);
        // Only the text "00" stands for no terminator, not everything that reads as zero.
        add(fields::radSendTermAfter, "0", 0);
        add(fields::radSendTermAfter, " ", 0);
        add(fields::radSendTermAfter, "000", 0);
        // Text that is not hexadecimal reads as 0.
        add(fields::radTk1, "zz", 0);
        add(fields::radShiftA4, "", 0);
    }
    void selectedOption()
    {
        QFETCH(const BitField*, field);
        QFETCH(QByteArray, value);
        QFETCH(int, index);
        QCOMPARE(tables::selectedOption(*field, value.toStdString()).value_or(-1), index);
    }

    void everyChoiceSelectsItself()
    {
        for (const Choice& choice : choices()) {
            const std::uint8_t byte = withOption(*choice.field, 0x0D, choice.index);
            const QByteArray text = QByteArray::number(byte, 16).rightJustified(2, '0').toUpper();
            QCOMPARE(tables::selectedOption(*choice.field, text.toStdString()).value_or(-1), choice.index);
        }
    }

    void checks()
    {
        const std::initializer_list<std::pair<const BitCheck*, unsigned>> bits = {{&fields::chkSendLC, 0x04U},
                                                                                  {&fields::chkSendNBR, 0x08U},
                                                                                  {&fields::chkSendLRC, 0x10U},
                                                                                  {&fields::chkSendEs, 0x20U},
                                                                                  {&fields::chkSendSS, 0x40U}};
        for (const auto& [check, bit] : bits) {
            for (unsigned value = 0; value <= 0xFF; ++value) {
                const auto byte = static_cast<std::uint8_t>(value);
                QCOMPARE(isSet(*check, byte), (value & bit) != 0);
                QCOMPARE(unsigned{withCheck(*check, byte, true)}, value | bit);
                QCOMPARE(unsigned{withCheck(*check, byte, false)}, value & ~bit & 0xFFU);
            }
        }
    }
};

static const testsupport::RunnableTest<BitFieldsTest> kRunnable;
#include "BitFieldsTest.moc"
