#include "tests/report/ConfigurationReport.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <array>

using golden::LineChange;
using golden::lines;
using namespace configuration;

class ConfigurationWordsTest final : public QObject
{
    Q_OBJECT

private slots:
    void modifiedFlagIsNoPartOfTheParameterId_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("words");
        QTest::newRow("85") << QByteArray("85") << QByteArray("05 (modified)");
        QTest::newRow("05") << QByteArray("05") << QByteArray("05 (unmodified)");
        QTest::newRow("80") << QByteArray("80") << QByteArray("00 (modified)");
        QTest::newRow("7F") << QByteArray("7F") << QByteArray("7F (unmodified)");
    }
    void modifiedFlagIsNoPartOfTheParameterId()
    {
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, words);
        QCOMPARE(
            lines(changedSummary({{"001", value.toStdString()}})),
            lines(changedGolden({{"                     [001] Parameter ID#: 00 (unmodified)",
                                  "                     [001] Parameter ID#: " + words},
                                 {kDump000, "000 - ** " + value + " ** ** ** ** ** ** - ** ** ** ** ** ** ** ** "}})));
    }

    void terminatingCharacter_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("when");
        QTest::addColumn<QByteArray>("code");
        QTest::newRow("00") << QByteArray("00") << QByteArray("after each card data") << QByteArray("00h");
        QTest::newRow("7F") << QByteArray("7F") << QByteArray("after each card data") << QByteArray("7Fh");
        QTest::newRow("80") << QByteArray("80") << QByteArray("after each track") << QByteArray("00h");
        QTest::newRow("8D") << QByteArray("8D") << QByteArray("after each track") << QByteArray("0Dh");
    }
    void terminatingCharacter()
    {
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, when);
        QFETCH(QByteArray, code);
        QCOMPARE(
            lines(changedSummary({{"022", value.toStdString()}})),
            lines(changedGolden({{"     Command values: [022] Send Terminating Char: after each card data",
                                  "     Command values: [022] Send Terminating Char: " + when},
                                 {"                     [022] Terminating Char:      0Dh",
                                  "                     [022] Terminating Char:      " + code},
                                 {kDump020, "020 - 00 00 " + value + " 00 57 0D 00 4D - 57 0D 00 ** 00 00 ** ** "}})));
    }

    void characterDelay_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("milliseconds");
        QTest::newRow("none") << QByteArray("00") << QByteArray("       0.0");
        QTest::newRow("0.512 ms") << QByteArray("01") << QByteArray("       0.5");
        QTest::newRow("1.024 ms") << QByteArray("02") << QByteArray("       1.0");
        QTest::newRow("1.536 ms") << QByteArray("03") << QByteArray("       1.5");
        QTest::newRow("9.728 ms") << QByteArray("13") << QByteArray("       9.7");
        QTest::newRow("10.24 ms") << QByteArray("14") << QByteArray("      10.2");
        QTest::newRow("64 ms") << QByteArray("7D") << QByteArray("      64.0");
        QTest::newRow("99.84 ms") << QByteArray("C3") << QByteArray("      99.8");
        QTest::newRow("100.352 ms") << QByteArray("C4") << QByteArray("     100.4");
        QTest::newRow("130.56 ms") << QByteArray("FF") << QByteArray("     130.6");
    }
    void characterDelay()
    {
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, milliseconds);
        const QByteArray expected = changedGolden(
            {{"   Character Delays: [01A] Output:         9.2 milliseconds",
              "   Character Delays: [01A] Output:  " + milliseconds + " milliseconds"},
             {"                     [01B] Special:       25.6 milliseconds",
              "                     [01B] Special: " + milliseconds + " milliseconds"},
             {kDump010, "010 - ** ** ** 95 63 40 21 2B - 23 26 " + value + " " + value + " 00 00 00 00 "}});
        QCOMPARE(lines(changedSummary({{"01A", value.toStdString()}, {"01B", value.toStdString()}})), lines(expected));
    }

    void everyDelayRoundsToOneDecimal()
    {
        for (int units = 0; units <= 0xFF; ++units) {
            const QByteArray value = twoDigits(units);
            const QByteArray milliseconds = QByteArray::number(units * 512 / 1000.0, 'f', 1).rightJustified(10);
            QVERIFY2(changedSummary({{"01A", value.toStdString()}})
                         .contains("[01A] Output:  " + milliseconds + " milliseconds\r\n"),
                     value.constData());
        }
    }

    void dataSendFlags_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<QList<LineChange>>("changes");
        const QByteArray keys = "                     [014] Send numbers as ";
        const std::array<QByteArray, 2> numbers{keys + "Top Of Keyboard", keys + "Numeric Keypad"};
        const std::array<QByteArray, 2> start{"                     [014] Don't send Start Sentinel with each track",
                                              "                     [014] Send Start Sentinel with each track"};
        const std::array<QByteArray, 2> end{"                     [014] Don't send End Sentinel with each track",
                                            "                     [014] Send End Sentinel with each track"};
        const std::array<QByteArray, 2> lrc{"                     [014] Don't send LRC with each track",
                                            "                     [014] Send LRC with each track"};
        const std::array<QByteArray, 2> letters{"                     [014] Send data as Uppercase",
                                                "                     [014] Send data as Lowercase"};
        const auto add = [&](int value, size_t keypad, size_t ss, size_t es, size_t check, size_t lower) {
            QTest::addRow("%02X", static_cast<unsigned>(value)) << value
                                                                << QList<LineChange>{{numbers[0], numbers[keypad]},
                                                                                     {start[1], start[ss]},
                                                                                     {end[1], end[es]},
                                                                                     {lrc[0], lrc[check]},
                                                                                     {letters[0], letters[lower]}};
        };
        add(0x00, 0, 0, 0, 0, 0);
        add(0x08, 1, 0, 0, 0, 0);
        add(0x40, 0, 1, 0, 0, 0);
        add(0x20, 0, 0, 1, 0, 0);
        add(0x10, 0, 0, 0, 1, 0);
        add(0x04, 0, 0, 0, 0, 1);
        add(0x7C, 1, 1, 1, 1, 1);
        add(0x58, 1, 1, 0, 1, 0);
        add(0x83, 0, 0, 0, 0, 0); // the bits that the report does not tell
        add(0xFF, 1, 1, 1, 1, 1);
    }
    void dataSendFlags()
    {
        QFETCH(int, value);
        QFETCH(QList<LineChange>, changes);
        changes.append({kDump010, "010 - ** ** ** 95 " + twoDigits(value) + " 40 21 2B - 23 26 12 32 00 00 00 00 "});
        QCOMPARE(lines(changedSummary({{"014", twoDigits(value).toStdString()}})), lines(changedGolden(changes)));
    }

    void trackStates_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<QList<LineChange>>("changes");
        const std::array<QByteArray, 2> cards{"Track Configuration: [013] reads ISO/ABA cards",
                                              "Track Configuration: [013] reads AAMVA/CADL/ISO/ABA cards"};
        const std::array<QByteArray, 4> track1{
            "            Track 1: [013] Disabled        ", "            Track 1: [013] Enabled         ",
            "            Track 1: [013] Enabled/Required", "            Track 1: [013] unknown         "};
        // The word for the unknown state of track 2 is one blank shorter than its neighbours.
        const std::array<QByteArray, 4> track2{"            Track 2: [013] Disabled            Start Sentinel:",
                                               "            Track 2: [013] Enabled             Start Sentinel:",
                                               "            Track 2: [013] Enabled/Required    Start Sentinel:",
                                               "            Track 2: [013] unknown            Start Sentinel:"};
        const std::array<QByteArray, 4> track3{"            Track 3: [013] Disabled            Start Sentinels:",
                                               "            Track 3: [013] Enabled             Start Sentinels:",
                                               "            Track 3: [013] Enabled/Required    Start Sentinels:",
                                               "            Track 3: [013] unknown             Start Sentinels:"};
        for (unsigned value = 0; value <= 0xFF; ++value) {
            QTest::addRow("%02X", value) << static_cast<int>(value)
                                         << QList<LineChange>{{cards[1], cards[value / 0x80]},
                                                              {track1[1], track1[value % 4]},
                                                              {track2[1], track2[value / 4 % 4]},
                                                              {track3[1], track3[value / 0x10 % 4]}};
        }
    }
    void trackStates()
    {
        QFETCH(int, value);
        QFETCH(QList<LineChange>, changes);
        changes.append({kDump010, "010 - ** ** ** " + twoDigits(value) + " 63 40 21 2B - 23 26 12 32 00 00 00 00 "});
        QCOMPARE(lines(changedSummary({{"013", twoDigits(value).toStdString()}})), lines(changedGolden(changes)));
    }

    void trackMapping_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("track1");
        QTest::addColumn<QByteArray>("track2");
        QTest::addColumn<QByteArray>("track3");
        QTest::newRow("0") << QByteArray("00") << QByteArray("1") << QByteArray("2") << QByteArray("3");
        QTest::newRow("1") << QByteArray("01") << QByteArray("3") << QByteArray("2") << QByteArray("1");
        QTest::newRow("2") << QByteArray("02") << QByteArray("2") << QByteArray("1") << QByteArray("3");
        QTest::newRow("3") << QByteArray("03") << QByteArray("1") << QByteArray("3") << QByteArray("2");
        QTest::newRow("4") << QByteArray("04") << QByteArray("2") << QByteArray("3") << QByteArray("1");
        QTest::newRow("5") << QByteArray("05") << QByteArray("3") << QByteArray("1") << QByteArray("2");
        QTest::newRow("6 leaves no digit") << QByteArray("06") << QByteArray() << QByteArray() << QByteArray();
        QTest::newRow("7 leaves no digit") << QByteArray("07") << QByteArray() << QByteArray() << QByteArray();
        QTest::newRow("only the low three bits count")
            << QByteArray("FC") << QByteArray("2") << QByteArray("3") << QByteArray("1");
    }
    void trackMapping()
    {
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, track1);
        QFETCH(QByteArray, track2);
        QFETCH(QByteArray, track3);
        QCOMPARE(
            lines(changedSummary({{"02A", value.toStdString()}})),
            lines(changedGolden(
                {{"                     [02A] Map to Track 1", "                     [02A] Map to Track " + track1},
                 {"                     [02A] Map to Track 2      [015] '@' (7-bit)",
                  "                     [02A] Map to Track " + track2 + "      [015] '@' (7-bit)"},
                 {"                     [02A] Map to Track 3      [016] '!' (CA DL)",
                  "                     [02A] Map to Track " + track3 + "      [016] '!' (CA DL)"},
                 {kDump020, "020 - 00 00 0D 00 57 0D 00 4D - 57 0D " + value + " ** 00 00 ** ** "}})));
    }

    void everyCharacterStandsBetweenItsQuotes_data()
    {
        QTest::addColumn<int>("code");
        for (int code = 0; code <= 0xFF; ++code) {
            QTest::addRow("%02X", static_cast<unsigned>(code)) << code;
        }
    }
    void everyCharacterStandsBetweenItsQuotes()
    {
        QFETCH(int, code);
        const QByteArray c(1, static_cast<char>(code));
        const QByteArray v = twoDigits(code);
        const std::string value = v.toStdString();
        const QByteArray expected = changedGolden(
            {{"                     [024] Prefix Char:           'W'",
              "                     [024] Prefix Char:           '" + c + "'"},
             {"                     [027] Prefix:                'M'",
              "                     [027] Prefix:                '" + c + "'"},
             {"                     [028] Device ID:             'W'",
              "                     [028] Device ID:             '" + c + "'"},
             {"                     [02A] Map to Track 2      [015] '@' (7-bit)",
              "                     [02A] Map to Track 2      [015] '" + c + "' (7-bit)"},
             {"                     [02A] Map to Track 3      [016] '!' (CA DL)",
              "                     [02A] Map to Track 3      [016] '" + c + "' (CA DL)"},
             {"                                               [017] '+' (ISO/ABA)",
              "                                               [017] '" + c + "' (ISO/ABA)"},
             {"                                               [018] '#' (AAMVA)",
              "                                               [018] '" + c + "' (AAMVA)"},
             {"                                               [019] '&' (7-bit)",
              "                                               [019] '" + c + "' (7-bit)"},
             {kDump010, "010 - ** ** ** 95 63 " + v + " " + v + " " + v + " - " + v + " " + v + " 12 32 00 00 00 00 "},
             {kDump020, "020 - 00 00 0D 00 " + v + " 0D 00 " + v + " - " + v + " 0D 00 ** 00 00 ** ** "}});
        QCOMPARE(lines(changedSummary({{"015", value},
                                       {"016", value},
                                       {"017", value},
                                       {"018", value},
                                       {"019", value},
                                       {"024", value},
                                       {"027", value},
                                       {"028", value}})),
                 lines(expected));
    }
};

static const testsupport::RunnableTest<ConfigurationWordsTest> kRunnable;
#include "ConfigurationWordsTest.moc"
