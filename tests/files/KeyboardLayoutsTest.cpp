#include "files/KeyboardLayouts.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <optional>
#include <string>
#include <string_view>

using namespace std::string_literals;
using files::KeyboardLanguage;
using files::readLayoutList;

namespace {

// What an earlier look-up has left behind; a test sees from it what the next one touches.
KeyboardLanguage earlier()
{
    return {
        .Track1Start = "1", .Track2Start = "2", .Track3Start = "3", .TrackEnd = "E", .name = "Old", .layoutFlag = true};
}

} // namespace

class KeyboardLayoutsTest final : public QObject
{
    Q_OBJECT

private slots:
    void oneLine_data()
    {
        QTest::addColumn<std::string>("list");
        QTest::addColumn<std::string>("name");
        QTest::addColumn<std::string>("caption");
        QTest::addColumn<bool>("flag");
        QTest::newRow("remark cut, then the blank before it") << "0409%;+? English (US)\r\n"s
                                                              << "English"s
                                                              << "English (Code: 0409)"s << false;
        QTest::newRow("without remark the last letter goes") << "0409%;+? English\r\n"s
                                                             << "Englis"s
                                                             << "Englis (Code: 0409)"s << false;
        QTest::newRow("trailing blank instead of a remark") << "0409%;+? English \r\n"s
                                                            << "English"s
                                                            << "English (Code: 0409)"s << false;
        QTest::newRow("LF alone ends the line") << "0409%;+? English\n"s
                                                << "Englis"s
                                                << "Englis (Code: 0409)"s << false;
        QTest::newRow("CR alone ends the line") << "0409%;+? English\r"s
                                                << "Englis"s
                                                << "Englis (Code: 0409)"s << false;
        QTest::newRow("last line without end") << "0409%;+? English"s
                                               << "Englis"s
                                               << "Englis (Code: 0409)"s << false;
        QTest::newRow("no blank before the remark") << "0409%;+? English(US)\r\n"s
                                                    << "Englis"s
                                                    << "Englis (Code: 0409)"s << false;
        QTest::newRow("the first bracket counts") << "0409%;+? English (US) (2) x\r\n"s
                                                  << "English"s
                                                  << "English (Code: 0409)"s << false;
        QTest::newRow("nothing before the remark") << "0409%;+? (US)\r\n"s
                                                   << ""s
                                                   << " (Code: 0409)"s << false;
        QTest::newRow("ten characters") << "0409%;+? E\r\n"s
                                        << ""s
                                        << " (Code: 0409)"s << false;
        QTest::newRow("flag set") << "0409%;+?XEnglish (US)\r\n"s
                                  << "English"s
                                  << "English (Code: 0409)"s << true;
        QTest::newRow("a zero sets the flag") << "0409%;+?0English (US)\r\n"s
                                              << "English"s
                                              << "English (Code: 0409)"s << true;
        QTest::newRow("a tab sets the flag") << "0409%;+?\tEnglish (US)\r\n"s
                                             << "English"s
                                             << "English (Code: 0409)"s << true;
        QTest::newRow("NUL in the name") << "0409%;+? E\0n (US)\r\n"s
                                         << "E\0n"s
                                         << "E\0n (Code: 0409)"s << false;
        QTest::newRow("name in the upper half of the code page") << "0409%;+? Espa\xF1ol (x)\r\n"s
                                                                 << "Espa\xF1ol"s
                                                                 << "Espa\xF1ol (Code: 0409)"s << false;
    }
    void oneLine()
    {
        QFETCH(std::string, list);
        QFETCH(std::string, name);
        QFETCH(std::string, caption);
        QFETCH(bool, flag);
        KeyboardLanguage language = earlier();
        language.layoutFlag = !flag;
        const std::optional<std::string> newCaption = readLayoutList(list, "0409", language);
        QVERIFY(newCaption.has_value());
        QCOMPARE(*newCaption, caption);
        QCOMPARE(language.name, name);
        QCOMPARE(language.layoutFlag, flag);
        QCOMPARE(language.Track1Start, "%");
        QCOMPARE(language.Track2Start, ";");
        QCOMPARE(language.Track3Start, "+");
        QCOMPARE(language.TrackEnd, "?");
    }

    void noListLeavesAllButTheName()
    {
        KeyboardLanguage language = earlier();
        QVERIFY(!readLayoutList(std::nullopt, "0409", language).has_value());
        QCOMPARE(language.name, "Unknown");
        QCOMPARE(language.Track1Start, "1");
        QCOMPARE(language.Track2Start, "2");
        QCOMPARE(language.Track3Start, "3");
        QCOMPARE(language.TrackEnd, "E");
        QCOMPARE(language.layoutFlag, true);
    }

    // kb-no-headings
    void noMatch_data()
    {
        QTest::addColumn<std::string>("list");
        QTest::addColumn<std::string>("id");
        QTest::newRow("empty list") << ""s
                                    << "0409"s;
        QTest::newRow("other ID") << "0407%\xF6`_ German (Germany)\r\n"s
                                  << "0409"s;
        QTest::newRow("exactly nine characters") << "0409%;+? \r\n"s
                                                 << "0409"s;
        QTest::newRow("nine characters and a CR before the end") << "0409%;+? \r\r\n"s
                                                                 << "0409"s;
        QTest::newRow("nine characters, LF alone") << "0409%;+? \n"s
                                                   << "0409"s;
        QTest::newRow("shorter than an ID") << "040\r\n"s
                                            << "040"s;
        QTest::newRow("hex digits in the other case") << "0c0a%\xF1\xBF_ Spanish (Spain)\r\n"s
                                                      << "0C0A"s;
        QTest::newRow("ID not at the line's start") << " 0409%;+? English (US)\r\n"s
                                                    << "0409"s;
        QTest::newRow("ID of two digits") << "0409%;+? English (US)\r\n"s
                                          << "04"s;
        QTest::newRow("longer ID") << "04091;+? English (US)\r\n"s
                                   << "04091"s;
        QTest::newRow("empty ID") << "0409%;+? English (US)\r\n"s
                                  << ""s;
    }
    void noMatch()
    {
        QFETCH(std::string, list);
        QFETCH(std::string, id);
        KeyboardLanguage language = earlier();
        QVERIFY(!readLayoutList(list, id, language).has_value());
        QCOMPARE(language.Track1Start, "");
        QCOMPARE(language.Track2Start, "");
        QCOMPARE(language.Track3Start, "");
        QCOMPARE(language.TrackEnd, "");
        QCOMPARE(language.name, "Old");
        QCOMPARE(language.layoutFlag, true);
    }

    void linesOfOneIdCollect()
    {
        const std::string list = "0409%;+?XEnglish (US)\r\n"
                                 "0407ABCDXGerman (Germany)\r\n"
                                 "0409%:+/ English International (US)\r\n"
                                 "\r\n"
                                 "0409%;\xA7? Later English (US)\r\n"
                                 "040C5m+\xA7XFrench (France)\r\n";
        KeyboardLanguage language = earlier();
        const std::optional<std::string> caption = readLayoutList(list, "0409", language);
        QCOMPARE(language.Track1Start, "%");
        QCOMPARE(language.Track2Start, ";:");
        QCOMPARE(language.Track3Start, "+\xA7");
        QCOMPARE(language.TrackEnd, "?/");
        QCOMPARE(language.name, "Later English");
        QCOMPARE(language.layoutFlag, false);
        QCOMPARE(caption.value_or("none"), "Later English (Code: 0409)");
    }

    void aBlankIsASentinelLikeAnyOther()
    {
        KeyboardLanguage language;
        const auto caption = readLayoutList("0409    xName (r)\r\n0409%;+?xName (r)\r\n", "0409", language);
        QVERIFY(caption.has_value());
        QCOMPARE(language.Track1Start, " %");
        QCOMPARE(language.Track2Start, " ;");
        QCOMPARE(language.Track3Start, " +");
        QCOMPARE(language.TrackEnd, " ?");
    }

    // A two-byte encoding would shift every position behind the first accented letter by one.
    void everyByteIsOneCharacter()
    {
        KeyboardLanguage language;
        const auto caption = readLayoutList("0407%\xF6\x80\xFF \xC3\xA4 (r)\r\n", "0407", language);
        QCOMPARE(language.Track1Start, "%");
        QCOMPARE(language.Track2Start, "\xF6");
        QCOMPARE(language.Track3Start, "\x80");
        QCOMPARE(language.TrackEnd, "\xFF");
        QCOMPARE(language.name, "\xC3\xA4");
        QCOMPARE(caption.value_or("none"), "\xC3\xA4 (Code: 0407)");
    }

    void aMisplacedNulIsACharacter()
    {
        KeyboardLanguage language;
        const auto caption = readLayoutList("0409\0;+? English (US)\r\n"s, "0409", language);
        QVERIFY(caption.has_value());
        QCOMPARE(language.Track1Start, "\0"s);
        QCOMPARE(language.Track2Start, ";");
        QCOMPARE(language.name, "English");
    }
};

static const testsupport::RunnableTest<KeyboardLayoutsTest> kRunnable;
#include "KeyboardLayoutsTest.moc"
