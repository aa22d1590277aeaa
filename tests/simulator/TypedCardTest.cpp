#include "simulator/TypedCard.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace simulator;

namespace {

const QByteArray kTrack1 = "%B0000000000000000^SAMPLE/BANK B             ^99120000000000000000?";
const QByteArray kTrack2 = ";0000000000000000=99120000000000000000?";
const QByteArray kTrack3 = "+010000000000000000==0000000000000000000000000000000000=0=0000=00000000?";

} // namespace

// What the simulated reader types goes by its parameters.
class TypedCardTest final : public QObject
{
    Q_OBJECT

private slots:
    // The factory values: all tracks, sentinels, and Enter behind the card.
    void fromTheFactory_data()
    {
        QTest::addColumn<QByteArray>("card");
        QTest::addColumn<QByteArray>("typed");
        QTest::newRow("credit") << QByteArray("credit")
                                << QByteArray("%B0000000000000000^SAMPLE/CARD A             ^99120000000000000000?"
                                              ";0000000000000000=99120000000000000000?\r");
        QTest::newRow("bank") << QByteArray("bank") << kTrack1 + kTrack2 + kTrack3 + "\r";
        QTest::newRow("licence") << QByteArray("licence")
                                 << QByteArray(
                                        "%ZZNOWHERE^SAMPLE$LICENCE$C^1 EXAMPLE STREET^?"
                                        ";00000000000000000=991219000101=?"
                                        "#!00000      D               1000000BRNBLU                              ?\r");
        QTest::newRow("seven-bit") << QByteArray("seven-bit")
                                   << QByteArray("%SAMPLE SEVEN BIT CARD?"
                                                 "@TRACK TWO: 7 BITS (A CHARACTER)?"
                                                 "&TRACK THREE, #$'*-./0123456789<=>[]_?\r");
    }
    void fromTheFactory()
    {
        QFETCH(QByteArray, card);
        QTEST(typed(card, {}), "typed");
    }

    void asTheParametersSay_data()
    {
        QTest::addColumn<QByteArray>("settings"); // ADDRESS=VALUE, blanks between
        QTest::addColumn<QByteArray>("typed");
        const auto row = [](const char* name, const char* settings, const QByteArray& typed) {
            QTest::newRow(name) << QByteArray(settings) << typed;
        };
        const QByteArray all = kTrack1 + kTrack2 + kTrack3;
        row("tab behind the card", "022=09", all + "\t");
        row("enter behind each track", "022=8D", kTrack1 + "\r" + kTrack2 + "\r" + kTrack3 + "\r");
        row("no terminator", "022=00", all);
        row("no character behind each track", "022=80", all);
        row("track 2 disabled", "013=91", kTrack1 + kTrack3 + "\r");
        row("track 1 disabled", "013=94", kTrack2 + kTrack3 + "\r");
        row("all disabled", "013=80 01C=41 01F=42", "");
        row("track 3 required", "013=A5", all + "\r");
        row("a setting without meaning", "013=9D", all + "\r");
        row("no start sentinels", "014=23", all.mid(1, kTrack1.size() - 1) + kTrack2.mid(1) + kTrack3.mid(1) + "\r");
        row("no end sentinels", "014=43", kTrack1.chopped(1) + kTrack2.chopped(1) + kTrack3.chopped(1) + "\r");
        row("lower case", "014=67", kTrack1.toLower() + kTrack2 + kTrack3 + "\r");
        row("keypad", "014=6B", all + "\r"); // other keys, the same characters
        row("another sentinel of track 3", "017=2A", kTrack1 + kTrack2 + "*" + kTrack3.mid(1) + "\r");
        row("a sentinel of another format", "015=2A 016=2A 018=2A 019=2A", all + "\r");
        row("before the card", "01C=41 01D=42", "AB" + all + "\r");
        row("behind the card", "01E=43 01F=44", all + "CD\r");
        row("round each track", "020=28 021=29", "(" + kTrack1 + ")(" + kTrack2 + ")(" + kTrack3 + ")\r");
        row("round each track, with terminator", "021=29 022=89", kTrack1 + ")\t" + kTrack2 + ")\t" + kTrack3 + ")\t");
        row("mapping 1", "02A=01", kTrack3 + kTrack2 + kTrack1 + "\r");
        row("mapping 4", "02A=04", kTrack3 + kTrack1 + kTrack2 + "\r");
        row("mapping 5", "02A=05", kTrack2 + kTrack3 + kTrack1 + "\r");
        row("a mapping without meaning", "02A=07", all + "\r");
        row("mapped and disabled", "02A=01 013=94", kTrack2 + kTrack1 + "\r"); // what is reported as track 1
        row("parameters of answers to commands", "023=41 024=41 025=41 026=41 027=41 028=41 029=41", all + "\r");
    }
    void asTheParametersSay()
    {
        QFETCH(QByteArray, settings);
        QTEST(typed("bank", settings), "typed");
    }

    void aCardThatLacksARequiredTrack_data()
    {
        QTest::addColumn<QByteArray>("flags");
        QTest::addColumn<QByteArray>("typed");
        const QByteArray both = "%B0000000000000000^SAMPLE/CARD A             ^99120000000000000000?" + kTrack2;
        QTest::newRow("nothing") << QByteArray("014=60") << QByteArray();
        QTest::newRow("not the bad track") << QByteArray("014=61") << both + "\r";
        QTest::newRow("a setting without meaning") << QByteArray("014=62") << both + "\r";
        QTest::newRow("the letter E") << QByteArray("014=63") << both + "E\r";
    }
    void aCardThatLacksARequiredTrack()
    {
        QFETCH(QByteArray, flags);
        QTEST(typed("credit", "013=A5 " + flags), "typed");
    }

    void aLicenceIsReadOnlyWithAllCardTypes()
    {
        QCOMPARE(typed("licence", "013=15"), QByteArray());
        QVERIFY(typed("licence", "013=95").startsWith("%ZZNOWHERE"));
        QCOMPARE(typed("bank", "013=15"), kTrack1 + kTrack2 + kTrack3 + "\r");
    }

    // Worked out by hand. Track 2: ";" is 11, "?" is 15; of the digits 1, 2 and "=" (13) between them the sum by
    // "exclusive or" is 11 ^ 1 ^ 2 ^ 13 ^ 15 = 10, which is ":".
    void theCheckCharacter()
    {
        const SampleCard digits{.name = "a", .meaning = "", .tracks = {{2, TrackFormat::Track2Iso, "12="}}};
        const SampleCard letters{.name = "a", .meaning = "", .tracks = {{1, TrackFormat::Track1, "AB"}}};
        ParameterMemory memory;
        QVERIFY(memory.store("014", "73"));
        QCOMPARE(typedCard(digits, memory), std::string(";12=?:\r"));
        // "%" is 5, "A" 33, "B" 34, "?" 31: 5 ^ 33 ^ 34 ^ 31 = 25, which is "9".
        QCOMPARE(typedCard(letters, memory), std::string("%AB?9\r"));
    }

private:
    static QByteArray typed(const QByteArray& card, const QByteArray& settings)
    {
        ParameterMemory memory;
        for (const QByteArray& setting : settings.split(' ')) {
            if (!setting.isEmpty() && !memory.store(setting.left(3).toStdString(), setting.mid(4).toStdString())) {
                qFatal("no such parameter: %s", setting.constData());
            }
        }
        const SampleCard* const found = findSampleCard(card.toStdString());
        return found == nullptr ? QByteArray("no such card") : QByteArray::fromStdString(typedCard(*found, memory));
    }
};

static const testsupport::RunnableTest<TypedCardTest> kRunnable;
#include "TypedCardTest.moc"
