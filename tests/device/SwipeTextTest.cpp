#include "device/SwipeText.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

#include <optional>
#include <string>
#include <string_view>

using device::SentinelSets;
using device::SwipeText;

namespace {

SentinelSets unitedStates()
{
    return {.Track1Start = "%", .Track2Start = ";", .Track3Start = "+", .TrackEnd = "?"};
}

SentinelSets german()
{
    return {.Track1Start = "%", .Track2Start = "\xF6", .Track3Start = "`", .TrackEnd = "_"};
}

SentinelSets french()
{
    return {.Track1Start = "5", .Track2Start = "m", .Track3Start = "+", .TrackEnd = "\xA7"};
}

// As a list with several lines for one layout gives them.
SentinelSets collected()
{
    return {.Track1Start = "%5", .Track2Start = ";@", .Track3Start = "+#&!", .TrackEnd = "?_"};
}

// What the box shows for these keystrokes.
std::string typeAll(SwipeText& swipe, std::string_view keys, const SentinelSets& sets)
{
    std::string shown;
    for (const char key : keys) {
        const SwipeText::Typed typed = swipe.keyPress(key, sets);
        shown += typed.heading;
        shown += typed.shown;
    }
    return shown;
}

QByteArray bytes(const std::string& text)
{
    return QByteArray::fromStdString(text);
}

} // namespace

Q_DECLARE_METATYPE(SentinelSets)

class SwipeTextTest final : public QObject
{
    Q_OBJECT

private slots:
    void keystrokes_data()
    {
        QTest::addColumn<SentinelSets>("sets");
        QTest::addColumn<QByteArray>("keys");
        QTest::addColumn<QByteArray>("shown");
        QTest::addColumn<QByteArray>("raw");
        const auto row = [](const char* what, const SentinelSets& sets, const QByteArray& keys, const QByteArray& shown,
                            const QByteArray& raw) { QTest::newRow(what) << sets << keys << shown << raw; };

        const SentinelSets us = unitedStates();
        row("one letter", us, "a", "a", "\r\nRaw Data: a");
        row("no card at all", us, "hello", "hello", "\r\nRaw Data: hello");
        row("track 1", us, "%B1?", "\r\n\r\nTrack1: %B1?", "\r\nRaw Data: %B1?");
        row("track 2", us, ";1=2?", "\r\n\r\nTrack2: ;1=2?", "\r\nRaw Data: ;1=2?");
        row("track 3", us, "+1=2?", "\r\n\r\nTrack3: +1=2?", "\r\nRaw Data: +1=2?");
        row("three tracks", us, "%B1?;2?+3?", "\r\n\r\nTrack1: %B1?\r\n\r\nTrack2: ;2?\r\n\r\nTrack3: +3?",
            "\r\nRaw Data: %B1?;2?+3?");
        row("three tracks, backwards", us, "+3?;2?%1?", "\r\n\r\nTrack3: +3?\r\n\r\nTrack2: ;2?\r\n\r\nTrack1: %1?",
            "\r\nRaw Data: +3?;2?%1?");
        row("one track twice", us, ";2?;2?", "\r\n\r\nTrack2: ;2?\r\n\r\nTrack2: ;2?", "\r\nRaw Data: ;2?;2?");
        row("an empty track", us, "%?;?", "\r\n\r\nTrack1: %?\r\n\r\nTrack2: ;?", "\r\nRaw Data: %?;?");
        row("a start sentinel inside a track", us, "%B;+%1?", "\r\n\r\nTrack1: %B;+%1?", "\r\nRaw Data: %B;+%1?");
        row("a track that does not end", us, ";1;2+3%4", "\r\n\r\nTrack2: ;1;2+3%4", "\r\nRaw Data: ;1;2+3%4");
        row("an end sentinel outside a track", us, "??%1??;2?", "??\r\n\r\nTrack1: %1??\r\n\r\nTrack2: ;2?",
            "\r\nRaw Data: ??%1??;2?");
        row("between the tracks", us, "x%1?y;2?z", "x\r\n\r\nTrack1: %1?y\r\n\r\nTrack2: ;2?z",
            "\r\nRaw Data: x%1?y;2?z");
        row("a line end after each track", us, "%1?\r;2?\r", "\r\n\r\nTrack1: %1?\r\r\n\r\nTrack2: ;2?\r",
            "\r\nRaw Data: %1?<CR>;2?<CR>");
        row("blanks", us, "%A B  C?",
            "\r\n\r\nTrack1: %A\x95"
            "B\x95\x95"
            "C?",
            "\r\nRaw Data: %A\x95"
            "B\x95\x95"
            "C?");
        row("a visible blank that was typed", us, "\x95", "\x95", "\r\nRaw Data: \x95");

        row("no sets at all", {}, "%B1 2?;3?+4?\r",
            "%B1\x95"
            "2?;3?+4?\r",
            "\r\nRaw Data: %B1\x95"
            "2?;3?+4?<CR>");
        row("no end sentinel", {.Track1Start = "%", .Track2Start = ";", .Track3Start = "+", .TrackEnd = ""}, "%1?;2?",
            "\r\n\r\nTrack1: %1?;2?", "\r\nRaw Data: %1?;2?");
        row("track 2 alone is known", {.Track1Start = "", .Track2Start = ";", .Track3Start = "", .TrackEnd = "?"},
            "%1?;2?+3?", "%1?\r\n\r\nTrack2: ;2?+3?", "\r\nRaw Data: %1?;2?+3?");
        row("one character for all tracks",
            {.Track1Start = "*", .Track2Start = "*", .Track3Start = "*", .TrackEnd = "?"}, "*1?*2?",
            "\r\n\r\nTrack1: *1?\r\n\r\nTrack1: *2?", "\r\nRaw Data: *1?*2?");
        row("one character for tracks 2 and 3",
            {.Track1Start = "%", .Track2Start = ";", .Track3Start = ";", .TrackEnd = "?"}, "%1?;2?",
            "\r\n\r\nTrack1: %1?\r\n\r\nTrack2: ;2?", "\r\nRaw Data: %1?;2?");
        row("one character opens and closes",
            {.Track1Start = "%", .Track2Start = "?", .Track3Start = "+", .TrackEnd = "?"}, "?2??3?",
            "\r\n\r\nTrack2: ?2?\r\n\r\nTrack2: ?3?", "\r\nRaw Data: ?2??3?");
        // A blank is compared as what is shown for it.
        row("a blank as a sentinel", {.Track1Start = " ", .Track2Start = ";", .Track3Start = "+", .TrackEnd = "?"},
            " 1?",
            "\x95"
            "1?",
            "\r\nRaw Data: \x95"
            "1?");
        row("a blank as the end sentinel",
            {.Track1Start = "%", .Track2Start = ";", .Track3Start = "+", .TrackEnd = " "}, "%1 ;2",
            "\r\n\r\nTrack1: %1\x95"
            ";2",
            "\r\nRaw Data: %1\x95"
            ";2");
        row("the visible blank as the end sentinel",
            {.Track1Start = "%", .Track2Start = ";", .Track3Start = "+", .TrackEnd = "\x95"}, "%1 ;2",
            "\r\n\r\nTrack1: %1\x95\r\n\r\nTrack2: ;2",
            "\r\nRaw Data: %1\x95"
            ";2");
        row("the visible blank as a sentinel",
            {.Track1Start = "\x95", .Track2Start = ";", .Track3Start = "+", .TrackEnd = "?"}, " 1?",
            "\r\n\r\nTrack1: \x95"
            "1?",
            "\r\nRaw Data: \x95"
            "1?");

        row("German, the US end sentinel in a track", german(),
            "%A?\xF6"
            "1_`2_",
            "\r\n\r\nTrack1: %A?\xF6"
            "1_\r\n\r\nTrack3: `2_",
            "\r\nRaw Data: %A?\xF6"
            "1_`2_");
        row("German, three tracks", german(),
            "%A_\xF6"
            "1_`2_",
            "\r\n\r\nTrack1: %A_\r\n\r\nTrack2: \xF6"
            "1_\r\n\r\nTrack3: `2_",
            "\r\nRaw Data: %A_\xF6"
            "1_`2_");
        row("French", french(), "5A\xA7m1\xA7+2\xA7",
            "\r\n\r\nTrack1: 5A\xA7\r\n\r\nTrack2: m1\xA7\r\n\r\nTrack3: +2\xA7", "\r\nRaw Data: 5A\xA7m1\xA7+2\xA7");
        row("French, track 1 and upper case", french(), "M1\xA7", "M1\xA7", "\r\nRaw Data: M1\xA7");
        row("several sentinels for each track", collected(), "%1_@2?!3_5;4?&6?",
            "\r\n\r\nTrack1: %1_\r\n\r\nTrack2: @2?\r\n\r\nTrack3: !3_\r\n\r\nTrack1: 5;4?\r\n\r\nTrack3: &6?",
            "\r\nRaw Data: %1_@2?!3_5;4?&6?");

        row("control characters", us, "\x01\t\n\x1B\x1F", "\x01\t\n\x1B\x1F", "\r\nRaw Data: <SOH><HT><LF><ESC><US>");
        row("backspace", us, "ab\bc", "ab\bc", "\r\nRaw Data: ab<BS>c");
        row("delete has no name", us, "\x7F", "\x7F", "\r\nRaw Data: \x7F");
        row("NUL has no name", us, QByteArray("a\0b", 3), QByteArray("a\0b", 3), QByteArray("\r\nRaw Data: a\0b", 15));
        row("a control character as a sentinel",
            {.Track1Start = "\x02", .Track2Start = ";", .Track3Start = "+", .TrackEnd = "\x03"},
            "\x02"
            "1?\x03;",
            "\r\n\r\nTrack1: \x02"
            "1?\x03\r\n\r\nTrack2: ;",
            "\r\nRaw Data: <STX>1?<ETX>;");
        row("names in the data stay as they are", us, "<CR>", "<CR>", "\r\nRaw Data: <CR>");
    }
    void keystrokes()
    {
        QFETCH(SentinelSets, sets);
        QFETCH(QByteArray, keys);
        SwipeText swipe;
        QTEST(bytes(typeAll(swipe, keys.toStdString(), sets)), "shown");
        const std::optional<std::string> raw = swipe.takeRawBlock();
        QVERIFY(raw);
        QTEST(bytes(*raw), "raw");
    }

    // Whatever is typed is shown as it is, in both halves of the code page, but for the blank.
    void everyCharacterOutsideATrack()
    {
        for (int code = 0; code < 256; ++code) {
            SwipeText swipe;
            const SwipeText::Typed typed = swipe.keyPress(static_cast<char>(code), {});
            QCOMPARE(typed.heading, "");
            QCOMPARE(int{static_cast<unsigned char>(typed.shown)}, code == 32 ? 149 : code);
        }
    }

    void theUpperHalfComesBackInTheRawBlock()
    {
        std::string upper;
        for (int code = 128; code < 256; ++code) {
            upper += static_cast<char>(code);
        }
        SwipeText swipe;
        QCOMPARE(typeAll(swipe, upper, unitedStates()), upper);
        QCOMPARE(swipe.takeRawBlock().value(), "\r\nRaw Data: " + upper);
    }

    void everyControlCharacterHasItsName()
    {
        std::string controls;
        for (char code = 1; code < 32; ++code) {
            controls += code;
        }
        SwipeText swipe;
        QCOMPARE(typeAll(swipe, controls, unitedStates()), controls);
        QCOMPARE(swipe.takeRawBlock().value(),
                 "\r\nRaw Data: <SOH><STX><ETX><EOT><ENQ><ACK><BEL><BS><HT><LF><VT><FF><CR><SO><SI><DLE><DC1><DC2><DC3>"
                 "<DC4><NAK><SYN><ETB><CAN><EM><SUB><ESC><FS><GS><RS><US>");
    }

    void thereIsOneRawBlockForEachPause()
    {
        SwipeText swipe;
        QVERIFY(!swipe.takeRawBlock());
        (void)swipe.keyPress('a', {});
        QCOMPARE(swipe.takeRawBlock().value(), "\r\nRaw Data: a");
        QVERIFY(!swipe.takeRawBlock());
        (void)swipe.keyPress('b', {});
        (void)swipe.keyPress('c', {});
        QCOMPARE(swipe.takeRawBlock().value(), "\r\nRaw Data: bc");
        QVERIFY(!swipe.takeRawBlock());
    }

    // kb-open-track
    void aTrackStaysOpenOverAPause()
    {
        SwipeText swipe;
        QCOMPARE(typeAll(swipe, "%12", unitedStates()), "\r\n\r\nTrack1: %12");
        QCOMPARE(swipe.takeRawBlock().value(), "\r\nRaw Data: %12");
        QCOMPARE(typeAll(swipe, ";34?;5?", unitedStates()), ";34?\r\n\r\nTrack2: ;5?");
        QCOMPARE(swipe.takeRawBlock().value(), "\r\nRaw Data: ;34?;5?");
    }

    void emptyingTheRawBufferLeavesTheTrackOpen()
    {
        SwipeText swipe;
        (void)typeAll(swipe, "%12", unitedStates());
        swipe.emptyRawBuffer();
        QCOMPARE(typeAll(swipe, ";3?", unitedStates()), ";3?");
        QCOMPARE(swipe.takeRawBlock().value(), "\r\nRaw Data: ;3?");
    }

    // The layout may be another one when the next card comes; a track that is open is closed by the sets of the moment.
    void theSetsAreThoseOfTheMoment()
    {
        SwipeText swipe;
        QCOMPARE(typeAll(swipe, "%1", unitedStates()), "\r\n\r\nTrack1: %1");
        QCOMPARE(typeAll(swipe,
                         "?_\xF6"
                         "2_",
                         german()),
                 "?_\r\n\r\nTrack2: \xF6"
                 "2_");
    }
};

static const testsupport::RunnableTest<SwipeTextTest> kRunnable;
#include "SwipeTextTest.moc"
