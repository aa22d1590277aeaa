#include "tables/Parameters.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

#include <array>
#include <string>
#include <vector>

using namespace tables;

namespace {

struct ConfigurationRow
{
    const char* address;
    const char* value;
    const char* notes;
};

// Every row as the reader's manual lists it.
constexpr std::array<ConfigurationRow, 27> kConfiguration = {{
    {"001", "00", "Parameter ID and Mod Flag (Read only)"},
    {"013", "95", "Track enables / ID Flag"},
    {"014", "63", "Track data send flags"},
    {"015", "40", "Start Sentinel Character for Track 2 - 7 Bit"},
    {"016", "21", "Start Sentinel Character for Track 3 - CADL"},
    {"017", "2B", "Start Sentinel Character for Track 3 - ISO/ABA"},
    {"018", "23", "Start Sentinel Character for Track 3 - AAMVA"},
    {"019", "26", "Start Sentinel Character for Track 3 - 7 Bit"},
    {"01A", "12", "Char Output Delay [Enter as decimal] (x512 uS)"},
    {"01B", "32", "Special Char Delay [Enter as decimal] (x512 uS)"},
    {"01C", "00", "Pre Card Data code (hex value sent)"},
    {"01D", "00", "Pre Card Data char (Scan codes sent)"},
    {"01E", "00", "Post Card Data char (Scan codes sent)"},
    {"01F", "00", "Post Card Data code (hex value sent)"},
    {"020", "00", "Pre Track char (Scan codes sent)"},
    {"021", "00", "Post Track char (Scan codes sent)"},
    {"022", "0D", "Terminating Char + per track/per card flag"},
    {"023", "00", "Pre response data code value (hex value sent)"},
    {"024", "57", "Command Prefix Character"},
    {"025", "0D", "Post response data char value (scan codes)"},
    {"026", "00", "Post response data code (hex values sent)"},
    {"027", "4D", "Command prefix"},
    {"028", "57", "Device ID"},
    {"029", "0D", "Command Terminator"},
    {"02A", "00", "Hardware Track mapping [map tracks 1 2 3 to:]"},
    {"02C", "00", "Table ID Number (to identify config parameters)"},
    {"02D", "00", "Table Version Number (to identify config parameters)"},
}};

struct KeyRow
{
    const char* address;
    const char* value;
    unsigned code; // of the character that the reader types with this key
};

// The rows behind 080 and 081-082.
constexpr std::array<KeyRow, 73> kKeys = {{
    {"083-084", "20-03", 0x00}, {"085-086", "20-2B", 0x1C}, {"087-088", "20-1B", 0x1D}, {"089-08A", "A0-07", 0x1E},
    {"08B-08C", "A0-0C", 0x1F}, {"08D-08E", "80-02", 0x21}, {"08F-090", "80-28", 0x22}, {"091-092", "80-04", 0x23},
    {"093-094", "80-05", 0x24}, {"095-096", "80-06", 0x25}, {"097-098", "80-08", 0x26}, {"099-09A", "00-28", 0x27},
    {"09B-09C", "80-0A", 0x28}, {"09D-09E", "80-0B", 0x29}, {"09F-0A0", "80-09", 0x2A}, {"0A1-0A2", "80-0D", 0x2B},
    {"0A3-0A4", "00-33", 0x2C}, {"0A5-0A6", "00-0C", 0x2D}, {"0A7-0A8", "00-34", 0x2E}, {"0A9-0AA", "00-35", 0x2F},
    {"0AB-0AC", "00-0B", 0x30}, {"0AD-0AE", "00-02", 0x31}, {"0AF-0B0", "00-03", 0x32}, {"0B1-0B2", "00-04", 0x33},
    {"0B3-0B4", "00-05", 0x34}, {"0B5-0B6", "00-06", 0x35}, {"0B7-0B8", "00-07", 0x36}, {"0B9-0BA", "00-08", 0x37},
    {"0BB-0BC", "00-09", 0x38}, {"0BD-0BE", "00-0A", 0x39}, {"0BF-0C0", "80-27", 0x3A}, {"0C1-0C2", "00-27", 0x3B},
    {"0C3-0C4", "80-33", 0x3C}, {"0C5-0C6", "00-0D", 0x3D}, {"0C7-0C8", "80-34", 0x3E}, {"0C9-0CA", "80-35", 0x3F},
    {"0CB-0CC", "80-03", 0x40}, {"0CD-0CE", "00-1A", 0x5B}, {"0CF-0D0", "00-2B", 0x5C}, {"0D1-0D2", "00-1B", 0x5D},
    {"0D3-0D4", "80-07", 0x5E}, {"0D5-0D6", "80-0C", 0x5F}, {"0D7-0D8", "00-29", 0x60}, {"0D9-0DA", "80-1A", 0x7B},
    {"0DB-0DC", "80-2B", 0x7C}, {"0DD-0DE", "80-1B", 0x7D}, {"0DF-0E0", "80-29", 0x7E}, {"0E1-0E2", "00-1E", 0x61},
    {"0E3-0E4", "00-30", 0x62}, {"0E5-0E6", "00-2E", 0x63}, {"0E7-0E8", "00-20", 0x64}, {"0E9-0EA", "00-12", 0x65},
    {"0EB-0EC", "00-21", 0x66}, {"0ED-0EE", "00-22", 0x67}, {"0EF-0F0", "00-23", 0x68}, {"0F1-0F2", "00-17", 0x69},
    {"0F3-0F4", "00-24", 0x6A}, {"0F5-0F6", "00-25", 0x6B}, {"0F7-0F8", "00-26", 0x6C}, {"0F9-0FA", "00-32", 0x6D},
    {"0FB-0FC", "00-31", 0x6E}, {"0FD-0FE", "00-18", 0x6F}, {"0FF-100", "00-19", 0x70}, {"101-102", "00-10", 0x71},
    {"103-104", "00-13", 0x72}, {"105-106", "00-1F", 0x73}, {"107-108", "00-14", 0x74}, {"109-10A", "00-16", 0x75},
    {"10B-10C", "00-2F", 0x76}, {"10D-10E", "00-11", 0x77}, {"10F-110", "00-2D", 0x78}, {"111-112", "00-15", 0x79},
    {"113-114", "00-2C", 0x7A},
}};

std::string bytesOf(const std::vector<int>& codes)
{
    std::string text;
    for (const int code : codes) {
        text += static_cast<char>(code);
    }
    return text;
}

std::string firstAddress(std::string_view address)
{
    return std::string(address.substr(0, address.find('-')));
}

std::string lastAddress(std::string_view address)
{
    const std::size_t dash = address.find('-');
    return std::string(dash == std::string_view::npos ? address : address.substr(dash + 1));
}

unsigned numberOf(const std::string& hex)
{
    return static_cast<unsigned>(std::stoul(hex, nullptr, 16));
}

std::string_view notesAt(std::string_view address)
{
    for (const Parameter& row : parameters_KB()) {
        if (row.address == address) {
            return row.notes;
        }
    }
    return {};
}

} // namespace

class ParametersTest final : public QObject
{
    Q_OBJECT

private slots:
    void configurationRowsAreExact()
    {
        const auto rows = parameters_CFG();
        QCOMPARE(rows.size(), kConfiguration.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            QCOMPARE(rows[i].address, std::string_view(kConfiguration[i].address));
            QCOMPARE(rows[i].value, std::string_view(kConfiguration[i].value));
            QCOMPARE(rows[i].notes, std::string_view(kConfiguration[i].notes));
        }
    }

    void configurationAddressesRunFrom013To02DWithout02B()
    {
        std::vector<unsigned> expected{0x001};
        for (unsigned address = 0x013; address <= 0x02D; ++address) {
            if (address != 0x02B) {
                expected.push_back(address);
            }
        }
        std::vector<unsigned> addresses;
        for (const Parameter& row : parameters_CFG()) {
            addresses.push_back(numberOf(std::string(row.address)));
        }
        QCOMPARE(addresses, expected);
    }

    void keyboardRowsAreExact()
    {
        const auto rows = parameters_KB();
        QCOMPARE(rows.size(), std::size_t{75});
        QCOMPARE(rows[0].address, std::string_view("080"));
        QCOMPARE(rows[0].value, std::string_view("00"));
        QCOMPARE(rows[0].notes, std::string_view("Keyboard flags"));
        QCOMPARE(rows[1].address, std::string_view("081-082"));
        QCOMPARE(rows[1].value, std::string_view("00-00"));
        QCOMPARE(rows[1].notes, std::string_view("Keyboard ID Bytes"));
        for (std::size_t i = 0; i < kKeys.size(); ++i) {
            QCOMPARE(rows[i + 2].address, std::string_view(kKeys[i].address));
            QCOMPARE(rows[i + 2].value, std::string_view(kKeys[i].value));
        }
    }

    void keyboardAddressesAreContiguous()
    {
        unsigned next = 0x080;
        for (const Parameter& row : parameters_KB()) {
            QCOMPARE(numberOf(firstAddress(row.address)), next);
            next = numberOf(lastAddress(row.address)) + 1;
            const unsigned length = row.address == "080" ? 1 : 2;
            QCOMPARE(next, numberOf(firstAddress(row.address)) + length);
        }
        QCOMPARE(next, 0x115U);
    }

    void charactersComeInTheReadersOrder()
    {
        std::vector<unsigned> expected{0x00};
        const std::vector<std::pair<unsigned, unsigned>> runs = {
            {0x1C, 0x1F}, {0x21, 0x40}, {0x5B, 0x60}, {0x7B, 0x7E}, {0x61, 0x7A}};
        for (const auto& [first, last] : runs) {
            for (unsigned code = first; code <= last; ++code) {
                expected.push_back(code);
            }
        }
        std::vector<unsigned> codes;
        for (const Parameter& row : parameters_KB().subspan(2)) {
            codes.push_back(numberOf(std::string(row.notes.substr(0, 2))));
        }
        QCOMPARE(codes, expected);
    }

    void notesOfControlCodesAreTheCodeAlone()
    {
        const std::vector<std::string_view> expected = {"00", "1C", "1D", "1E", "1F"};
        for (std::size_t i = 0; i < expected.size(); ++i) {
            QCOMPARE(parameters_KB()[i + 2].notes, expected[i]);
        }
    }

    void notesOfPrintableCharactersNameTheKeyAndEndInABlank()
    {
        constexpr std::size_t kFirstPrintable = 7;
        for (std::size_t i = kFirstPrintable; i < parameters_KB().size(); ++i) {
            const unsigned code = kKeys[i - 2].code;
            const std::string digits = QByteArray::number(code, 16).toUpper().toStdString();
            const std::string expected = digits + ", USA KB key -> " + static_cast<char>(code) + " ";
            QCOMPARE(parameters_KB()[i].notes, std::string_view(expected));
            QCOMPARE(expected.size(), std::size_t{20});
        }
    }

    // The characters that table files and source text give a meaning of their own, spelled out code by code.
    void notesOfSeparatorsHoldTheRightCharacterCodes_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<int>("firstDigit");
        QTest::addColumn<int>("secondDigit");
        QTest::addColumn<int>("character");
        QTest::newRow("exclamation mark, row 8") << QByteArray("08D-08E") << 0x32 << 0x31 << 33;
        QTest::newRow("double quote, row 9") << QByteArray("08F-090") << 0x32 << 0x32 << 34;
        QTest::newRow("comma, row 19") << QByteArray("0A3-0A4") << 0x32 << 0x43 << 44;
        QTest::newRow("semicolon, row 34") << QByteArray("0C1-0C2") << 0x33 << 0x42 << 59;
        QTest::newRow("less than, row 35") << QByteArray("0C3-0C4") << 0x33 << 0x43 << 60;
        QTest::newRow("backslash, row 41") << QByteArray("0CF-0D0") << 0x35 << 0x43 << 92;
        QTest::newRow("back quote, row 45") << QByteArray("0D7-0D8") << 0x36 << 0x30 << 96;
        QTest::newRow("bar, row 47") << QByteArray("0DB-0DC") << 0x37 << 0x43 << 124;
        QTest::newRow("tilde, row 49") << QByteArray("0DF-0E0") << 0x37 << 0x45 << 126;
        QTest::newRow("z, row 75") << QByteArray("113-114") << 0x37 << 0x41 << 122;
    }
    void notesOfSeparatorsHoldTheRightCharacterCodes()
    {
        QFETCH(QByteArray, address);
        QFETCH(int, firstDigit);
        QFETCH(int, secondDigit);
        QFETCH(int, character);
        // "xx, USA KB key -> c "
        const std::string expected = bytesOf({firstDigit, secondDigit, 44,  32,  85, 83, 65, 32, 75,        66,
                                              32,         107,         101, 121, 32, 45, 62, 32, character, 32});
        QCOMPARE(notesAt(address.toStdString()), std::string_view(expected));
    }
};

static const testsupport::RunnableTest<ParametersTest> kRunnable;
#include "ParametersTest.moc"
