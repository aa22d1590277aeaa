#include "files/KeyboardLayouts.h"
#include "tables/Parameters.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SourceFile.h"
#include "text/AnsiText.h"

#include <QFile>
#include <QSet>
#include <QTest>

#include <cstdint>
#include <string>
#include <string_view>

namespace {

// The key of one sentinel and what it types on a layout. Scan codes are the make codes that the reader stores.
struct Key
{
    std::uint8_t scanCode;
    bool shift;
    char32_t character;
};

struct Layout
{
    const char* id;
    const char* name;
    Key track1Start; // "%" on a US keyboard
    Key track2Start; // ";"
    Key track3Start; // "+"
    Key trackEnd;    // "?"
};

constexpr bool kPlain = false;
constexpr bool kShift = true;

// The reader presses the keys of a US keyboard, so a sentinel comes out as whatever the same key with the same shift
// state types on the layout in use. Each layout was worked out from its published key table: the caption of key 06
// (digit row, fifth from the left), 27 (right of L), 0D (left of Backspace) and 35 (left of the right Shift key) was
// looked up, and of these the shifted character taken, for key 27 the plain one. The captions are quoted over each
// layout, plain before shifted. A dead key types nothing until the next key; it stands in the list with the character
// that comes out when a blank follows.
const Layout kLayouts[] = {
    // Danish: 06 = 5 %, 27 = æ Æ, 0D = ´ ` (both dead), 35 = - _
    {"0406", "Danish", {0x06, kShift, U'%'}, {0x27, kPlain, U'æ'}, {0x0D, kShift, U'`'}, {0x35, kShift, U'_'}},
    // German, T1 arrangement: 06 = 5 %, 27 = ö Ö, 0D = ´ ` (both dead), 35 = - _
    {"0407", "German", {0x06, kShift, U'%'}, {0x27, kPlain, U'ö'}, {0x0D, kShift, U'`'}, {0x35, kShift, U'_'}},
    // United States: 06 = 5 %, 27 = ; :, 0D = = +, 35 = / ?
    {"0409", "English", {0x06, kShift, U'%'}, {0x27, kPlain, U';'}, {0x0D, kShift, U'+'}, {0x35, kShift, U'?'}},
    // Spanish: 06 = 5 %, 27 = ñ Ñ, 0D = ¡ ¿, 35 = - _ (one layout under the IDs of both sort orders)
    {"040A", "Spanish", {0x06, kShift, U'%'}, {0x27, kPlain, U'ñ'}, {0x0D, kShift, U'¿'}, {0x35, kShift, U'_'}},
    // Finnish: the Swedish keys, 06 = 5 %, 27 = ö Ö, 0D = ´ ` (both dead), 35 = - _
    {"040B", "Finnish", {0x06, kShift, U'%'}, {0x27, kPlain, U'ö'}, {0x0D, kShift, U'`'}, {0x35, kShift, U'_'}},
    // French, AZERTY with shifted digits: 06 = ( 5, 27 = m M, 0D = = +, 35 = ! §
    {"040C", "French", {0x06, kShift, U'5'}, {0x27, kPlain, U'm'}, {0x0D, kShift, U'+'}, {0x35, kShift, U'§'}},
    // Hungarian: 06 = 5 %, 27 = é É, 0D = ó Ó, 35 = - _
    {"040E", "Hungarian", {0x06, kShift, U'%'}, {0x27, kPlain, U'é'}, {0x0D, kShift, U'Ó'}, {0x35, kShift, U'_'}},
    // Icelandic: 06 = 5 %, 27 = æ Æ, 0D = - _ (the hyphen stands up there), 35 = þ Þ
    {"040F", "Icelandic", {0x06, kShift, U'%'}, {0x27, kPlain, U'æ'}, {0x0D, kShift, U'_'}, {0x35, kShift, U'Þ'}},
    // Italian: 06 = 5 %, 27 = ò ç, 0D = ì ^ (not dead), 35 = - _
    {"0410", "Italian", {0x06, kShift, U'%'}, {0x27, kPlain, U'ò'}, {0x0D, kShift, U'^'}, {0x35, kShift, U'_'}},
    // Dutch: 06 = 5 %, 27 = + ±, 0D = ° ~ (the tilde dead), 35 = - =
    {"0413", "Dutch", {0x06, kShift, U'%'}, {0x27, kPlain, U'+'}, {0x0D, kShift, U'~'}, {0x35, kShift, U'='}},
    // Norwegian: 06 = 5 %, 27 = ø Ø, 0D = \ ` (the grave dead), 35 = - _
    {"0414", "Norwegian", {0x06, kShift, U'%'}, {0x27, kPlain, U'ø'}, {0x0D, kShift, U'`'}, {0x35, kShift, U'_'}},
    // Polish (Programmers): the US keys, Polish letters stand with AltGr
    {"0415", "Polish", {0x06, kShift, U'%'}, {0x27, kPlain, U';'}, {0x0D, kShift, U'+'}, {0x35, kShift, U'?'}},
    // Brazilian ABNT: 06 = 5 %, 27 = ç Ç, 0D = = +, 35 = ; : (its / ? is an extra key, 73)
    {"0416", "Portuguese", {0x06, kShift, U'%'}, {0x27, kPlain, U'ç'}, {0x0D, kShift, U'+'}, {0x35, kShift, U':'}},
    // Swedish: 06 = 5 %, 27 = ö Ö, 0D = ´ ` (both dead), 35 = - _
    {"041D", "Swedish", {0x06, kShift, U'%'}, {0x27, kPlain, U'ö'}, {0x0D, kShift, U'`'}, {0x35, kShift, U'_'}},
    // Swiss German: 06 = 5 %, 27 = ö é, 0D = ^ ` (both dead), 35 = - _
    {"0807", "Swiss German", {0x06, kShift, U'%'}, {0x27, kPlain, U'ö'}, {0x0D, kShift, U'`'}, {0x35, kShift, U'_'}},
    // United Kingdom: differs from US in other keys only, 06 = 5 %, 27 = ; :, 0D = = +, 35 = / ?
    {"0809", "English", {0x06, kShift, U'%'}, {0x27, kPlain, U';'}, {0x0D, kShift, U'+'}, {0x35, kShift, U'?'}},
    // Latin American: 06 = 5 %, 27 = ñ Ñ, 0D = ¿ ¡ (the other way round than in Spain), 35 = - _
    {"080A", "Spanish", {0x06, kShift, U'%'}, {0x27, kPlain, U'ñ'}, {0x0D, kShift, U'¡'}, {0x35, kShift, U'_'}},
    // Belgian French, AZERTY: 06 = ( 5, 27 = m M, 0D = - _, 35 = = +
    {"080C", "Belgian French", {0x06, kShift, U'5'}, {0x27, kPlain, U'm'}, {0x0D, kShift, U'_'}, {0x35, kShift, U'+'}},
    // Belgian Dutch, the point layout: the Belgian French keys but for the number pad's
    {"0813", "Belgian Dutch", {0x06, kShift, U'5'}, {0x27, kPlain, U'm'}, {0x0D, kShift, U'_'}, {0x35, kShift, U'+'}},
    // Portuguese of Portugal: 06 = 5 %, 27 = ç Ç, 0D = « », 35 = - _
    {"0816", "Portuguese", {0x06, kShift, U'%'}, {0x27, kPlain, U'ç'}, {0x0D, kShift, U'»'}, {0x35, kShift, U'_'}},
    // Spanish, modern sort: as under 040A
    {"0C0A", "Spanish", {0x06, kShift, U'%'}, {0x27, kPlain, U'ñ'}, {0x0D, kShift, U'¿'}, {0x35, kShift, U'_'}},
    // Canadian French: 06 = 5 %, 27 = ; :, 0D = = +, 35 = é É
    {"1009", "Canadian French", {0x06, kShift, U'%'}, {0x27, kPlain, U';'}, {0x0D, kShift, U'+'}, {0x35, kShift, U'É'}},
    // Swiss French: 06 = 5 %, 27 = é ö (Swiss German the other way round), 0D = ^ ` (both dead), 35 = - _
    {"100C", "Swiss French", {0x06, kShift, U'%'}, {0x27, kPlain, U'é'}, {0x0D, kShift, U'`'}, {0x35, kShift, U'_'}},
    // Irish: the United Kingdom keys
    {"1809", "Irish", {0x06, kShift, U'%'}, {0x27, kPlain, U';'}, {0x0D, kShift, U'+'}, {0x35, kShift, U'?'}},
};

// The value that the reader's factory table holds for the key of a character, "80-06" for Shift and scan code 06.
QByteArray readerKey(char character)
{
    const QByteArray code = QByteArray(1, character).toHex().toUpper();
    for (const tables::Parameter& row : tables::parameters_KB()) {
        if (QByteArray(row.notes.data(), static_cast<qsizetype>(row.notes.size())).startsWith(code + ", ")) {
            return {row.value.data(), static_cast<qsizetype>(row.value.size())};
        }
    }
    return {};
}

QByteArray tableText(const Key& key)
{
    return (key.shift ? "80-" : "00-") + QByteArray(1, static_cast<char>(key.scanCode)).toHex().toUpper();
}

std::string ansi(const Key& key)
{
    return {static_cast<char>(text::unicodeToAnsi(key.character))};
}

} // namespace

// The list of layouts that ships beside the program.
class LanguagesTxtTest final : public QObject
{
    Q_OBJECT

    QByteArray m_list;

private slots:
    void initTestCase()
    {
        QFile file(testsupport::sourceFile("files/Languages.txt"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        m_list = file.readAll();
        QVERIFY(!m_list.isEmpty());
    }

    void layout_data()
    {
        QTest::addColumn<const Layout*>("layout");
        for (const Layout& layout : kLayouts) {
            QTest::newRow(layout.id) << &layout;
        }
    }
    void layout()
    {
        QFETCH(const Layout*, layout);
        files::KeyboardLanguage language;
        language.layoutFlag = true;
        const auto caption = files::readLayoutList(m_list.toStdString(), layout->id, language);
        QVERIFY(caption.has_value());
        QCOMPARE(*caption, std::string(layout->name) + " (Code: " + layout->id + ")");
        QCOMPARE(language.name, layout->name);
        QCOMPARE(language.layoutFlag, false);
        QCOMPARE(language.Track1Start, ansi(layout->track1Start));
        QCOMPARE(language.Track2Start, ansi(layout->track2Start));
        QCOMPARE(language.Track3Start, ansi(layout->track3Start));
        QCOMPARE(language.TrackEnd, ansi(layout->trackEnd));
    }

    // The expectations above are about the very keys that the reader presses.
    void keysAreTheReaders_data() { layout_data(); }
    void keysAreTheReaders()
    {
        QFETCH(const Layout*, layout);
        QCOMPARE(tableText(layout->track1Start), readerKey('%'));
        QCOMPARE(tableText(layout->track2Start), readerKey(';'));
        QCOMPARE(tableText(layout->track3Start), readerKey('+'));
        QCOMPARE(tableText(layout->trackEnd), readerKey('?'));
    }

    void everyLineIsOneOfTheseLayouts()
    {
        QVERIFY(m_list.endsWith("\r\n"));
        QCOMPARE(m_list.count('\n'), m_list.count("\r\n"));
        QCOMPARE(m_list.count('\r'), m_list.count("\r\n"));
        QList<QByteArray> lines = m_list.split('\n');
        lines.removeLast();
        QSet<QByteArray> ids;
        for (const QByteArray& line : lines) {
            ids.insert(line.left(4));
        }
        QSet<QByteArray> expected;
        for (const Layout& layout : kLayouts) {
            expected.insert(layout.id);
        }
        QCOMPARE(ids, expected);
        QCOMPARE(lines.size(), ids.size());
    }

    void theCommonLayoutsAreThere()
    {
        for (const char* id : {"0409", "0407", "040C", "0410", "0809", "0C0A", "041D", "0406", "0414", "040B", "0816",
                               "0416", "080C", "0413"}) {
            files::KeyboardLanguage language;
            QVERIFY2(files::readLayoutList(m_list.toStdString(), id, language).has_value(), id);
        }
    }

    // A name without its blank and remark would lose a letter.
    void everyNameHasARemark()
    {
        QList<QByteArray> lines = m_list.split('\n');
        lines.removeLast();
        for (const QByteArray& line : lines) {
            QVERIFY2(line.contains(" (") && line.endsWith(")\r"), line.constData());
        }
    }
};

static const testsupport::RunnableTest<LanguagesTxtTest> kRunnable;
#include "LanguagesTxtTest.moc"
