#include "report/KeyboardLanguageSummary.h"
#include "tests/report/GoldenReport.h"
#include "tests/report/ScriptedTable.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <array>

using golden::LineChange;
using golden::lines;
using scripted::Rows;

namespace {

constexpr std::chrono::year_month_day kDay{std::chrono::year{2024}, std::chrono::month{3}, std::chrono::day{7}};

QByteArray summary(const Rows& rows, const report::SummaryFacts& facts = {.date = kDay})
{
    return QByteArray::fromStdString(report::summary_KB(scripted::keyboardTable(rows), facts));
}

constexpr auto kDump080 = "080 - 00 00 00 20 03 20 2B 20 - 1B A0 07 A0 0C 80 02 80 ";

// The report of the defaults with some values changed.
QByteArray changedSummary(const Rows& values)
{
    return summary(scripted::withValues(scripted::defaults_KB(), values));
}

QByteArray changedGolden(const QList<LineChange>& changes)
{
    return golden::withLines(golden::report("keyboard-defaults"), changes);
}

// An update of the reader leaves every pair row known by its second address.
Rows afterUpdate(Rows rows)
{
    for (scripted::Row& row : rows) {
        row.address = row.address.substr(row.address.size() - 3);
    }
    return rows;
}

} // namespace

class KeyboardLanguageSummaryTest final : public QObject
{
    Q_OBJECT

private slots:
    void wholeReport_data()
    {
        QTest::addColumn<Rows>("rows");
        const Rows defaults = scripted::defaults_KB();
        QTest::newRow("keyboard-defaults") << defaults;
        QTest::newRow("keyboard-all-zero") << scripted::filledWith(defaults, "00");
        QTest::newRow("keyboard-all-ff") << scripted::filledWith(defaults, "FF");
        QTest::newRow("keyboard-three-rows") << Rows{{"080", "31"}, {"081-082", "04-09"}, {"083-084", "D1-3A"}};
        QTest::newRow("keyboard-after-update") << afterUpdate(defaults);
    }
    void wholeReport()
    {
        QFETCH(Rows, rows);
        QCOMPARE(lines(summary(rows)), lines(golden::report(QTest::currentDataTag())));
    }

    void heading_data()
    {
        QTest::addColumn<QByteArray>("firmwareVersion");
        QTest::addColumn<QByteArray>("heading");
        QTest::newRow("no firmware version keeps the blank before the date")
            << QByteArray("") << QByteArray("                                       Brennic Teslin 12/31/1999");
        QTest::newRow("no blank between firmware version and date")
            << QByteArray("A1.02") << QByteArray("                                  Brennic Teslin A1.0212/31/1999");
        QTest::newRow("a long title pushes the date to the right")
            << QByteArray("1234567890123456789012345678901234567890ABC")
            << QByteArray("Brennic Teslin 1234567890123456789012345678901234567890ABC12/31/1999");
        QTest::newRow("a firmware version that ends in a line end breaks the line")
            << QByteArray("A1.02\r\n")
            << QByteArray("                                Brennic Teslin A1.02\r\n12/31/1999");
    }
    void heading()
    {
        QFETCH(QByteArray, firmwareVersion);
        QFETCH(QByteArray, heading);
        const std::chrono::year_month_day date{std::chrono::year{1999}, std::chrono::month{12}, std::chrono::day{31}};
        QCOMPARE(
            lines(summary(scripted::defaults_KB(), {.firmwareVersion = firmwareVersion.toStdString(), .date = date})),
            lines(changedGolden({{"                                       Brennic Teslin 03/07/2024", heading}})));
    }

    void comment_data()
    {
        QTest::addColumn<QByteArray>("comment");
        QTest::addColumn<QByteArray>("shown");
        QTest::newRow("none leaves two empty lines") << QByteArray() << QByteArray("\r\n");
        QTest::newRow("one line, and no empty line after it")
            << QByteArray("Blue reader") << QByteArray("\r\nBlue reader");
        QTest::newRow("several lines") << QByteArray("Blue reader\r\nat the door\r\n\r\nspare")
                                       << QByteArray("\r\nBlue reader\r\nat the door\r\n\r\nspare");
        QTest::newRow("a loaded comment ends in a line end, which leaves an empty line")
            << QByteArray("Blue reader\r\n") << QByteArray("\r\nBlue reader\r\n");
        QTest::newRow("a blank is text") << QByteArray(" ") << QByteArray("\r\n ");
        QTest::newRow("any byte") << QByteArray("a\0b\rc\nd\te\x80\xFF", 11)
                                  << QByteArray("\r\na\0b\rc\nd\te\x80\xFF", 13);
    }
    void comment()
    {
        QFETCH(QByteArray, comment);
        QFETCH(QByteArray, shown);
        QCOMPARE(lines(summary(scripted::defaults_KB(), {.comment = comment.toStdString(), .date = kDay})),
                 lines(changedGolden({{"Keyboard Language table\r\n\r\n", "Keyboard Language table\r\n" + shown}})));
    }

    void keyboardFlags_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QList<LineChange>>("changes");
        const std::array<QByteArray, 2> codes{"     Keyboard Flags: [080] * Use table stored in parameter area",
                                              "     Keyboard Flags: [080] * Use internal US keyboad scancodes"};
        const std::array<QByteArray, 2> characters{"                           * Uses OEM, ALT + ASCII Code",
                                                   "                           * Uses ANSI, ALT + '0' + ASCII Code"};
        const std::array<QByteArray, 4> altCodes{"                           * Uses No Alt Codes",
                                                 "                           * Uses Alt only if no scan codes in table",
                                                 "                           * Uses Alt for all but fixed keys",
                                                 "                           * Uses Alt for all keys"};
        const std::array<QByteArray, 2> locks{"                           * Keyboard uses Shift Lock",
                                              "                           * Keyboard uses Caps Lock"};
        const auto add = [&](const char* value, size_t internal, size_t ansi, size_t alt, size_t caps) {
            QTest::newRow(value) << QByteArray(value)
                                 << QList<LineChange>{{codes[0], codes[internal]},
                                                      {characters[0], characters[ansi]},
                                                      {altCodes[0], altCodes[alt]},
                                                      {locks[0], locks[caps]}};
        };
        add("00", 0, 0, 0, 0);
        add("01", 1, 0, 0, 0);
        add("10", 0, 1, 0, 0);
        add("11", 1, 1, 0, 0);
        add("20", 0, 0, 1, 0);
        add("21", 1, 0, 1, 0);
        add("30", 0, 1, 1, 0);
        add("31", 1, 1, 1, 0);
        add("40", 0, 0, 2, 0);
        add("41", 1, 0, 2, 0);
        add("50", 0, 1, 2, 0);
        add("51", 1, 1, 2, 0);
        add("60", 0, 0, 3, 0);
        add("61", 1, 0, 3, 0);
        add("70", 0, 1, 3, 0);
        add("71", 1, 1, 3, 0);
        add("80", 0, 0, 0, 1);
        add("81", 1, 0, 0, 1);
        add("90", 0, 1, 0, 1);
        add("91", 1, 1, 0, 1);
        add("A0", 0, 0, 1, 1);
        add("A1", 1, 0, 1, 1);
        add("B0", 0, 1, 1, 1);
        add("B1", 1, 1, 1, 1);
        add("C0", 0, 0, 2, 1);
        add("C1", 1, 0, 2, 1);
        add("D0", 0, 1, 2, 1);
        add("D1", 1, 1, 2, 1);
        add("E0", 0, 0, 3, 1);
        add("E1", 1, 0, 3, 1);
        add("F0", 0, 1, 3, 1);
        add("F1", 1, 1, 3, 1);
        add("0E", 0, 0, 0, 0); // the bits that the report does not tell
    }
    void keyboardFlags()
    {
        QFETCH(QByteArray, value);
        QFETCH(QList<LineChange>, changes);
        changes.append({kDump080, "080 - " + value + " 00 00 20 03 20 2B 20 - 1B A0 07 A0 0C 80 02 80 "});
        QCOMPARE(lines(changedSummary({{"080", value.toStdString()}})), lines(changedGolden(changes)));
    }

    // kb-opposite-words
    void shiftWordsOfAKey_data()
    {
        QTest::addColumn<QByteArray>("flags");
        QTest::addColumn<QByteArray>("words");
        QTest::newRow("00") << QByteArray("00") << QByteArray("no shift flags");
        QTest::newRow("0F") << QByteArray("0F") << QByteArray("no shift flags");
        QTest::newRow("10") << QByteArray("10") << QByteArray("[Shift]");
        QTest::newRow("1F") << QByteArray("1F") << QByteArray("[Shift]");
        QTest::newRow("20") << QByteArray("20") << QByteArray("[AltGr] ");
        QTest::newRow("30") << QByteArray("30") << QByteArray("[AltGr] [Shift]");
        QTest::newRow("40") << QByteArray("40") << QByteArray("[Ctrl] ");
        QTest::newRow("50") << QByteArray("50") << QByteArray("[Ctrl] [Shift]");
        QTest::newRow("60") << QByteArray("60") << QByteArray("[Ctrl] [AltGr] ");
        QTest::newRow("70") << QByteArray("70") << QByteArray("[Ctrl] [AltGr] [Shift]");
        QTest::newRow("7F") << QByteArray("7F") << QByteArray("[Ctrl] [AltGr] [Shift]");
        QTest::newRow("80") << QByteArray("80") << QByteArray("[Caps Lock] ");
        QTest::newRow("90") << QByteArray("90") << QByteArray("[Caps Lock] [Shift]");
        QTest::newRow("A0") << QByteArray("A0") << QByteArray("[Caps Lock] [AltGr] ");
        QTest::newRow("B0") << QByteArray("B0") << QByteArray("[Caps Lock] [AltGr] [Shift]");
        QTest::newRow("C0") << QByteArray("C0") << QByteArray("[Caps Lock] [Ctrl] ");
        QTest::newRow("D0") << QByteArray("D0") << QByteArray("[Caps Lock] [Ctrl] [Shift]");
        QTest::newRow("E0") << QByteArray("E0") << QByteArray("[Caps Lock] [Ctrl] [AltGr] ");
        QTest::newRow("F0") << QByteArray("F0") << QByteArray("[Caps Lock] [Ctrl] [AltGr] [Shift]");
    }
    void shiftWordsOfAKey()
    {
        QFETCH(QByteArray, flags);
        QFETCH(QByteArray, words);
        QCOMPARE(
            lines(changedSummary({{"083-084", flags.toStdString() + "-03"}})),
            lines(changedGolden({{"                     [083][084] 20 / 03       uses: [AltGr] ",
                                  "                     [083][084] " + flags + " / 03       uses: " + words},
                                 {kDump080, "080 - 00 00 00 " + flags + " 03 20 2B 20 - 1B A0 07 A0 0C 80 02 80 "}})));
    }

    void lastKeyIsThePair113And114()
    {
        QCOMPARE(lines(changedSummary({{"113-114", "4C-5D"}})),
                 lines(changedGolden({{"                     [113][114] 00 / 2C       uses: no shift flags",
                                       "                     [113][114] 4C / 5D       uses: [Ctrl] "},
                                      {"110 - 2D 00 15 00 2C ** ** ** - ** ** ** ** ** ** ** ** ",
                                       "110 - 2D 00 15 4C 5D ** ** ** - ** ** ** ** ** ** ** ** "}})));
    }

    void keyboardIdJoinsTheTwoBytes()
    {
        QCOMPARE(lines(changedSummary({{"081-082", "04-0C"}})),
                 lines(changedGolden({{"                     [081][082] Keyboard ID#: 0000",
                                       "                     [081][082] Keyboard ID#: 040C"},
                                      {kDump080, "080 - 00 04 0C 20 03 20 2B 20 - 1B A0 07 A0 0C 80 02 80 "}})));
    }

    void oddCellsShowTheirFirstAndLastTwoCharacters()
    {
        QCOMPARE(lines(changedSummary({{"080", "0F1"},
                                       {"081-082", "4-9"},
                                       {"083-084", ""},
                                       {"085-086", "5"},
                                       {"087-088", " "},
                                       {"089-08A", "ZZ-YY"},
                                       {"08B-08C", "1G-0C"},
                                       {"08D-08E", "F0"},
                                       {"08F-090", "80-28-99"},
                                       {"091-092", "123-45"},
                                       {"093-094", "a0-0b"},
                                       {"095-096", "9 -06"}})),
                 lines(changedGolden(
                     {{"     Keyboard Flags: [080] * Use table stored in parameter area",
                       "     Keyboard Flags: [080] * Use internal US keyboad scancodes"},
                      {"                           * Uses OEM, ALT + ASCII Code",
                       "                           * Uses ANSI, ALT + '0' + ASCII Code"},
                      {"                           * Uses No Alt Codes",
                       "                           * Uses Alt for all keys"},
                      {"                           * Keyboard uses Shift Lock",
                       "                           * Keyboard uses Caps Lock"},
                      {"                     [081][082] Keyboard ID#: 0000",
                       "                     [081][082] Keyboard ID#: 4--9"},
                      {"                     [083][084] 20 / 03       uses: [AltGr] ",
                       "                     [083][084]  /        uses: no shift flags"},
                      {"                     [085][086] 20 / 2B       uses: [AltGr] ",
                       "                     [085][086] 5 / 5       uses: no shift flags"},
                      {"                     [087][088] 20 / 1B       uses: [AltGr] ",
                       "                     [087][088]   /         uses: no shift flags"},
                      {"                     [089][08A] A0 / 07       uses: [Caps Lock] [AltGr] ",
                       "                     [089][08A] ZZ / YY       uses: no shift flags"},
                      {"                     [08B][08C] A0 / 0C       uses: [Caps Lock] [AltGr] ",
                       "                     [08B][08C] 1G / 0C       uses: no shift flags"},
                      {"                     [08D][08E] 80 / 02       uses: [Caps Lock] ",
                       "                     [08D][08E] F0 / F0       uses: [Caps Lock] [Ctrl] [AltGr] [Shift]"},
                      {"                     [08F][090] 80 / 28       uses: [Caps Lock] ",
                       "                     [08F][090] 80 / 99       uses: [Caps Lock] "},
                      {"                     [091][092] 80 / 04       uses: [Caps Lock] ",
                       "                     [091][092] 12 / 45       uses: [Shift]"},
                      {"                     [093][094] 80 / 05       uses: [Caps Lock] ",
                       "                     [093][094] a0 / 0b       uses: [Caps Lock] [AltGr] "},
                      {"                     [095][096] 80 / 06       uses: [Caps Lock] ",
                       "                     [095][096] 9  / 06       uses: no shift flags"},
                      {kDump080, "080 - 0F1 4- -9   5 5   -   ZZ YY 1G 0C F0 F0 80 "},
                      {"090 - 28 80 04 80 05 80 06 80 - 08 00 28 80 0A 80 0B 80 ",
                       "090 - 99 12 45 a0 0b 9  06 80 - 08 00 28 80 0A 80 0B 80 "}})));
    }

    void flagsThatAreNotHexReadAsZero()
    {
        QCOMPARE(lines(changedSummary({{"080", "ZZ"}})),
                 lines(changedGolden({{kDump080, "080 - ZZ 00 00 20 03 20 2B 20 - 1B A0 07 A0 0C 80 02 80 "}})));
    }

    void rowsBeyondTheReportAreNotShown()
    {
        Rows rows = scripted::defaults_KB();
        rows.push_back({"115-116", "99-99"});
        rows.push_back({"11F-120", "99-99"});
        QCOMPARE(lines(summary(rows)), lines(golden::report("keyboard-defaults")));
    }

    void emptyLineStandsBetweenTheDumpAndItsTitle()
    {
        QVERIFY(
            summary(scripted::defaults_KB()).contains("\r\n\r\nParameter table (all values in hex):\r\n\r\n080 - 00 "));
    }

    void reportEndsInAnEmptyLine()
    {
        const QByteArray report = summary(scripted::defaults_KB());
        QVERIFY(report.endsWith("\r\n* \"**\" in the table above indicates a parameter that's not defined\r\n\r\n"));
    }
};

static const testsupport::RunnableTest<KeyboardLanguageSummaryTest> kRunnable;
#include "KeyboardLanguageSummaryTest.moc"
