#include "tests/report/ConfigurationReport.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using golden::lines;
using scripted::Rows;

using namespace configuration;

class ConfigurationSummaryTest final : public QObject
{
    Q_OBJECT

private slots:
    void wholeReport_data()
    {
        QTest::addColumn<Rows>("rows");
        const Rows defaults = scripted::defaults_CFG();
        QTest::newRow("configuration-defaults") << defaults;
        QTest::newRow("configuration-all-zero") << scripted::filledWith(defaults, "00");
        QTest::newRow("configuration-all-ff") << scripted::filledWith(defaults, "FF");
        QTest::newRow("configuration-three-rows") << Rows{{"001", "85"}, {"013", "6E"}, {"014", "1C"}};
        // No blank, short, long or wrong cell is touched on its way into the dump.
        QTest::newRow("configuration-odd-cells")
            << Rows{{"001", "ZZ"},   {"013", "1G"},  {"014", "123"}, {"015", "041"}, {"016", "g1"},   {"017", "7e"},
                    {"018", " 2A"},  {"019", "2A "}, {"01A", "ff"},  {"01B", ""},    {"01C", "0x1F"}, {"01D", ""},
                    {"01E", "0G"},   {"01F", "fg"},  {"020", " "},   {"021", "100"}, {"022", "8d"},   {"023", "1FF"},
                    {"024", "&h41"}, {"025", "-5"},  {"026", "A"},   {"027", "4d"},  {"028", "57h"},  {"029", "d"},
                    {"02A", "2 "},   {"02C", ""},    {"02D", "XXXX"}};
    }
    void wholeReport()
    {
        QFETCH(Rows, rows);
        QCOMPARE(lines(summary(rows)), lines(golden::report(QTest::currentDataTag())));
    }

    void emptyTableStillPrintsEveryLine()
    {
        const QByteArray expected = golden::withLines(
            golden::report("configuration-all-zero"),
            {{kDump000, "000 - **  ** ** ** ** ** ** - ** ** ** ** ** ** ** ** "},
             {"010 - ** ** ** 00 00 00 00 00 - 00 00 00 00 00 00 00 00 ", "010 - ** ** **      -         "},
             {"020 - 00 00 00 00 00 00 00 00 - 00 00 00 ** 00 00 ** ** ", "020 -         -    **   ** ** "}});
        QCOMPARE(lines(summary({})), lines(expected));
    }

    void everyLineShowsItsOwnAddress()
    {
        const QByteArray expected = changedGolden(
            {{"                     [001] Parameter ID#: 00 (unmodified)",
              "                     [001] Parameter ID#: 0A (modified)"},
             {" Parameter ID Table: [02C] Table ID#:    00h", " Parameter ID Table: [02C] Table ID#:    A1h"},
             {"                     [02D] Table Ver. #: 00h", "                     [02D] Table Ver. #: A2h"},
             {"                     [022] Terminating Char:      0Dh",
              "                     [022] Terminating Char:      77h"},
             {"                     [024] Prefix Char:           'W'",
              "                     [024] Prefix Char:           'y'"},
             {"                     [027] Prefix:                'M'",
              "                     [027] Prefix:                '|'"},
             {"                     [028] Device ID:             'W'",
              "                     [028] Device ID:             '}'"},
             {"                     [029] Terminator:            0Dh",
              "                     [029] Terminator:            7Eh"},
             {"       PreCard Data: [01C] Code:      0Dh", "       PreCard Data: [01C] Code:      7Eh"},
             {"                     [01D] Character: (n/u)", "                     [01D] Character: 72h"},
             {"      PostCard Data: [01E] Character: (n/u)", "      PostCard Data: [01E] Character: 73h"},
             {"                     [01F] Code:      (n/u)", "                     [01F] Code:      74h"},
             {"   Character Delays: [01A] Output:         9.2 milliseconds",
              "   Character Delays: [01A] Output:         5.1 milliseconds"},
             {"                     [01B] Special:       25.6 milliseconds",
              "                     [01B] Special:       10.2 milliseconds"},
             {"   PreResponse Data: [023] Code Value: (n/u)", "   PreResponse Data: [023] Code Value: 78h"},
             {"  PostResponse Data: [025] Char Value: 0Dh", "  PostResponse Data: [025] Char Value: 7Ah"},
             {"                     [026] Code:       (n/u)", "                     [026] Code:       7Bh"},
             {" PreTrack Character: [020]             (n/u)", " PreTrack Character: [020]             75h"},
             {"PostTrack Character: [021]             (n/u)", "PostTrack Character: [021]             76h"},
             {"                     [02A] Map to Track 2      [015] '@' (7-bit)",
              "                     [02A] Map to Track 2      [015] 'a' (7-bit)"},
             {"                     [02A] Map to Track 3      [016] '!' (CA DL)",
              "                     [02A] Map to Track 3      [016] 'b' (CA DL)"},
             {"                                               [017] '+' (ISO/ABA)",
              "                                               [017] 'c' (ISO/ABA)"},
             {"                                               [018] '#' (AAMVA)",
              "                                               [018] 'd' (AAMVA)"},
             {"                                               [019] '&' (7-bit)",
              "                                               [019] 'e' (7-bit)"},
             {kDump000, "000 - ** 8A ** ** ** ** ** ** - ** ** ** ** ** ** ** ** "},
             {kDump010, "010 - ** ** ** 95 63 61 62 63 - 64 65 0A 14 71 72 73 74 "},
             {kDump020, "020 - 75 76 77 78 79 7A 7B 7C - 7D 7E 00 ** A1 A2 ** ** "}});
        QCOMPARE(lines(changedSummary({{"001", "8A"}, {"015", "61"}, {"016", "62"}, {"017", "63"}, {"018", "64"},
                                       {"019", "65"}, {"01A", "0A"}, {"01B", "14"}, {"01C", "71"}, {"01D", "72"},
                                       {"01E", "73"}, {"01F", "74"}, {"020", "75"}, {"021", "76"}, {"022", "77"},
                                       {"023", "78"}, {"024", "79"}, {"025", "7A"}, {"026", "7B"}, {"027", "7C"},
                                       {"028", "7D"}, {"029", "7E"}, {"02C", "A1"}, {"02D", "A2"}})),
                 lines(expected));
    }

    // kb-summary-details
    void heading_data()
    {
        QTest::addColumn<QByteArray>("firmwareVersion");
        QTest::addColumn<QByteArray>("heading");
        QTest::newRow("no firmware version keeps the blank before the date")
            << QByteArray("") << QByteArray("                                       Brennic Teslin 03/07/2024");
        QTest::newRow("no blank between firmware version and date")
            << QByteArray("A1.02") << QByteArray("                                  Brennic Teslin A1.0203/07/2024");
        QTest::newRow("one blank left of 53 characters")
            << QByteArray("12345678901234567890123456789012345678")
            << QByteArray(" Brennic Teslin 1234567890123456789012345678901234567803/07/2024");
        QTest::newRow("54 characters fill the field")
            << QByteArray("123456789012345678901234567890123456789")
            << QByteArray("Brennic Teslin 12345678901234567890123456789012345678903/07/2024");
        QTest::newRow("a longer title pushes the date to the right")
            << QByteArray("1234567890123456789012345678901234567890ABC")
            << QByteArray("Brennic Teslin 1234567890123456789012345678901234567890ABC03/07/2024");
        QTest::newRow("a firmware version that ends in a line end breaks the line")
            << QByteArray("A1.02\r\n")
            << QByteArray("                                Brennic Teslin A1.02\r\n03/07/2024");
    }
    void heading()
    {
        QFETCH(QByteArray, firmwareVersion);
        QFETCH(QByteArray, heading);
        QCOMPARE(
            lines(summary(scripted::defaults_CFG(), {.firmwareVersion = firmwareVersion.toStdString(), .date = kDay})),
            lines(changedGolden({{"                                       Brennic Teslin 03/07/2024", heading}})));
    }

    void dateIsMonthDayYear_data()
    {
        QTest::addColumn<int>("year");
        QTest::addColumn<int>("month");
        QTest::addColumn<int>("day");
        QTest::addColumn<QByteArray>("heading");
        QTest::newRow("one digit each") << 2025 << 1 << 9
                                        << QByteArray(
                                               "                                       Brennic Teslin 01/09/2025");
        QTest::newRow("two digits each") << 1999 << 12 << 31
                                         << QByteArray(
                                                "                                       Brennic Teslin 12/31/1999");
        QTest::newRow("leap day") << 2000 << 2 << 29
                                  << QByteArray("                                       Brennic Teslin 02/29/2000");
        QTest::newRow("ten and ten") << 2010 << 10 << 10
                                     << QByteArray("                                       Brennic Teslin 10/10/2010");
    }
    void dateIsMonthDayYear()
    {
        QFETCH(int, year);
        QFETCH(int, month);
        QFETCH(int, day);
        QFETCH(QByteArray, heading);
        const std::chrono::year_month_day date{std::chrono::year{year},
                                               std::chrono::month(static_cast<unsigned>(month)),
                                               std::chrono::day(static_cast<unsigned>(day))};
        QCOMPARE(lines(summary(scripted::defaults_CFG(), {.date = date})),
                 lines(changedGolden({{"                                       Brennic Teslin 03/07/2024", heading}})));
    }

    void comment_data()
    {
        QTest::addColumn<QByteArray>("comment");
        QTest::addColumn<QByteArray>("shown");
        QTest::newRow("one line, and no empty line after it")
            << QByteArray("Blue reader") << QByteArray("\r\nBlue reader");
        QTest::newRow("several lines") << QByteArray("Blue reader\r\nat the door\r\n\r\nspare")
                                       << QByteArray("\r\nBlue reader\r\nat the door\r\n\r\nspare");
        QTest::newRow("an own line end leaves an empty line")
            << QByteArray("Blue reader\r\n") << QByteArray("\r\nBlue reader\r\n");
        QTest::newRow("a blank is text") << QByteArray(" ") << QByteArray("\r\n ");
        QTest::newRow("any byte") << QByteArray("a\0b\rc\nd\te\x80\xFF", 11)
                                  << QByteArray("\r\na\0b\rc\nd\te\x80\xFF", 13);
    }
    void comment()
    {
        QFETCH(QByteArray, comment);
        QFETCH(QByteArray, shown);
        QCOMPARE(lines(summary(scripted::defaults_CFG(), {.comment = comment.toStdString(), .date = kDay})),
                 lines(changedGolden({{"                     [001] Parameter ID#: 00 (unmodified)\r\n",
                                       "                     [001] Parameter ID#: 00 (unmodified)\r\n" + shown}})));
    }

    void emptyCommentLeavesNoLine()
    {
        QVERIFY(
            summary(scripted::defaults_CFG())
                .contains("[001] Parameter ID#: 00 (unmodified)\r\n\r\n                     [014] Send numbers as "));
    }

    // kb-line-01c
    void preCardCodeShowsTheTerminator()
    {
        // The words beside [01C] tell parameter 029; the dump shows the true 01C.
        QCOMPARE(lines(changedSummary({{"029", "00"}, {"01C", "41"}})),
                 lines(changedGolden(
                     {{"                     [029] Terminator:            0Dh",
                       "                     [029] Terminator:            00h"},
                      {"       PreCard Data: [01C] Code:      0Dh", "       PreCard Data: [01C] Code:      (n/u)"},
                      {kDump010, "010 - ** ** ** 95 63 40 21 2B - 23 26 12 32 41 00 00 00 "},
                      {kDump020, "020 - 00 00 0D 00 57 0D 00 4D - 57 00 00 ** 00 00 ** ** "}})));
    }

    void lowerCaseAddressIsNotFound()
    {
        // A table file may hold an address in lower case; the table then has no row for the one the report asks for.
        Rows rows = scripted::defaults_CFG();
        for (scripted::Row& row : rows) {
            if (row.address == "01A") {
                row.address = "01a";
            }
        }
        QCOMPARE(lines(summary(rows)),
                 lines(changedGolden({{"   Character Delays: [01A] Output:         9.2 milliseconds",
                                       "   Character Delays: [01A] Output:         0.0 milliseconds"},
                                      {kDump010, "010 - ** ** ** 95 63 40 21 2B - 23 26  32 00 00 00 00 "}})));
    }

    void rowsOutsideTheReportAreNotShown()
    {
        Rows rows = scripted::defaults_CFG();
        for (const char* address : {"000", "002", "012", "02B", "02E", "02F", "030", ""}) {
            rows.push_back({address, "99"});
        }
        QCOMPARE(lines(summary(rows)), lines(golden::report("configuration-defaults")));
    }

    void dumpFollowsItsTitleDirectly()
    {
        QVERIFY(
            summary(scripted::defaults_CFG()).contains("\r\n\r\nParameter table (all values in hex):\r\n000 - ** "));
    }

    void reportEndsInOneLineEnd()
    {
        QVERIFY(summary(scripted::defaults_CFG()).endsWith(" because it is set to 00h\r\n"));
    }
};

static const testsupport::RunnableTest<ConfigurationSummaryTest> kRunnable;
#include "ConfigurationSummaryTest.moc"
