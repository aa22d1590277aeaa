#include "cli/Words.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

class WordsTest final : public QObject
{
    Q_OBJECT

private slots:
    void words_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<int>("value");
        QTest::addColumn<QByteArray>("words");
        const auto row = [](const char* address, int value, const char* words) {
            QTest::addRow("%s=%02X", address, value) << QByteArray(address) << value << QByteArray(words);
        };
        row("001", 0x85, "Parameter ID#: 05 (modified)");
        row("013", 0x95,
            "Track Configuration: reads AAMVA/CADL/ISO/ABA cards|Track 1: Enabled|Track 2: Enabled|"
            "Track 3: Enabled");
        row("013", 0x00,
            "Track Configuration: reads ISO/ABA cards|Track 1: Disabled|Track 2: Disabled|"
            "Track 3: Disabled");
        row("014", 0x04,
            "Send numbers as Top Of Keyboard|Don't send Start Sentinel with each track|"
            "Don't send End Sentinel with each track|Don't send LRC with each track|"
            "Send data as Lowercase");
        row("015", 0x40, "'@' (7-bit)");
        row("016", 0x21, "'!' (CA DL)");
        row("019", 0x26, "'&' (7-bit)");
        row("01A", 0xFF, "Character Delays: Output: 130.6 milliseconds");
        row("01C", 0x41, "PreCard Data: Code: 41h");
        row("01C", 0x00, "PreCard Data: Code: (n/u)");
        row("029", 0x0A, "Terminator: 0Ah");
        row("022", 0x8D, "Command values: Send Terminating Char: after each track|Terminating Char: 0Dh");
        row("02A", 0x01, "Map to Track 3|Map to Track 2|Map to Track 1");
        row("080", 0xF1,
            "Keyboard Flags: * Use internal US keyboad scancodes|* Uses ANSI, ALT + '0' + ASCII Code|"
            "* Uses Alt for all keys|* Keyboard uses Caps Lock");
        row("081", 0x04, "Keyboard ID#: 0400");
        row("082", 0x09, "Keyboard ID#: 0009");
        row("083", 0x90, "90 / 03 uses: [Caps Lock] [Shift]");
        row("084", 0x1E, "20 / 1E uses: [AltGr]");
        row("113", 0x00, "00 / 2C uses: no shift flags");
    }
    void words()
    {
        QFETCH(QByteArray, address);
        QFETCH(int, value);
        QFETCH(QByteArray, words);
        const cli::Parameter* const parameter = cli::findParameter(address.toStdString());
        QVERIFY(parameter != nullptr);
        QByteArrayList found;
        for (const std::string& sentence :
             cli::wordsOf(*parameter, {{parameter->address, static_cast<std::uint8_t>(value)}})) {
            found << QByteArray::fromStdString(sentence);
        }
        QCOMPARE(found.join('|'), words);
    }

    // Every parameter that a report shows with a tag has words.
    void allHaveWords()
    {
        int without = 0;
        for (const cli::Parameter& parameter : cli::parameters()) {
            without += cli::wordsOf(parameter, {}).empty() ? 1 : 0;
        }
        QCOMPARE(without, 0);
        QCOMPARE(cli::parameters().size(), std::size_t{176});
    }
};

static const testsupport::RunnableTest<WordsTest> kRunnable;
#include "WordsTest.moc"
