#include "device/Commands.h"
#include "device/Replies.h"
#include "device/ReplyPeriod.h"
#include "files/TableFileParser.h"
#include "platform/ProfileText.h"
#include "simulator/ParameterMemory.h"
#include "tables/BitFields.h"
#include "tables/EditorTexts.h"
#include "tables/Parameters.h"
#include "tests/documents/Document.h"
#include "tests/support/RunnableTest.h"
#include "text/HexText.h"

#include "tests/support/SourceFile.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

using namespace documents;

namespace {

const QRegularExpression kAddress(QStringLiteral("(?<![\\w,.])(?:0[0-9A-F]{2}|1[01][0-9A-F])(?![\\w,.]?[\\w])"));
// What three digits are told to be no parameter of the reader.
const QStringList kNoParameters = {"002", "012", "02B", "115", "01a"};

// Words with digits that say nothing of the program's numbers.
const QStringList kOtherWords = {
    "Debian 12",
    "X11",
    "COM5",
    "Shift Flag A1",
    "in step 4",
    "in step 7",
    "at step 4",
    "tracks 1 and 2",
    "row 1 of",
    "3 for a track", // what no option stands for
    "After typing 300",
    "3 is written, then 30. Then",
    "and 30 stays",
    "because it is 00",
    "box writes 00",
    "text for 00",
    "counts as 00",
    "for 2 seconds", // what a port may take for a command
};

// A number in the documents: words round it, and the number as the program has it.
struct Told
{
    QString words; // with the number
    QString number;
};

QString text(int number)
{
    return QString::number(number);
}

int rowsOf(const std::span<const tables::Parameter>& rows)
{
    return static_cast<int>(rows.size());
}

int pairsOf(const std::span<const tables::Parameter>& rows)
{
    return static_cast<int>(std::ranges::count_if(
        rows, [](const tables::Parameter& row) { return row.address.size() > 3 && row.address != "081-082"; }));
}

// Seconds of a Retrieve: the commands of the identification and one for each byte, three ticks each.
QString secondsOf(int bytes)
{
    constexpr int kIdentification = 5;
    return text(
        static_cast<int>(std::lround((kIdentification + bytes) * 3 * device::ReplyPeriod::kTickMilliseconds / 1000.0)));
}

QString defaultOf(std::string_view address)
{
    for (const auto& rows : {tables::parameters_CFG(), tables::parameters_KB()}) {
        for (const tables::Parameter& row : rows) {
            if (row.address == address) {
                return QString::fromStdString(std::string(row.value));
            }
        }
    }
    return {};
}

// The longest comment that comes back from a file of the Configuration table.
QString longestComment()
{
    for (int length = 200; length < 300; ++length) {
        const std::string file = "Comments," + std::string(static_cast<std::size_t>(length + 1), 'a') + "\r\n";
        if (files::parseTableFile_CFG(file).comment.empty()) {
            return text(length);
        }
    }
    return {};
}

// Loading a file of more rows keeps this many.
QString mostRows()
{
    std::string file = "Comments,\r\n";
    for (int row = 0; row < 400; ++row) {
        file += "013,95 ;x\r\n";
    }
    return text(static_cast<int>(files::parseTableFile_CFG(file).rows.size()));
}

// What an expression finds in a source.
QString inSource(const QString& name, const QString& expression)
{
    const QRegularExpression find(expression, QRegularExpression::MultilineOption);
    return find.match(readSource(name)).captured(1);
}

QString highestDelay()
{
    int counts = 0;
    while (tables::isLegalDelay(counts + 1)) {
        ++counts;
    }
    return text(counts);
}

QString highestPort()
{
    int highest = 0;
    for (int port = 1; port < 1000; ++port) {
        if (device::replies::portNumber("COM" + std::to_string(port))) {
            highest = port;
        }
    }
    return text(highest);
}

QString hex(int byte)
{
    return QString::fromStdString(text::hexTwoDigits(static_cast<std::uint8_t>(byte)));
}

QString withTerminatorFlag(int byte)
{
    return hex(tables::withOption(tables::fields::radSendTermAfter, static_cast<std::uint8_t>(byte), 1));
}

std::vector<Told> toldNumbers()
{
    const auto rows_CFG = tables::parameters_CFG();
    const auto rows_KB = tables::parameters_KB();
    const int bytes_KB = 1 + 2 * (rowsOf(rows_KB) - 1);
    return {
        {"The table has 27 rows:", text(rowsOf(rows_CFG))},
        {"It has 75 rows:", text(rowsOf(rows_KB))},
        {"and 73 pairs from", text(pairsOf(rows_KB))},
        {"count the rows (27 and 75)", text(rowsOf(rows_CFG))},
        {"count the rows (27 and 75)", text(rowsOf(rows_KB))},
        {"takes about 5 seconds", secondsOf(rowsOf(rows_CFG))},
        {"Keyboard Language table about 23.", secondsOf(bytes_KB)},
        {"This takes about 23 seconds", secondsOf(bytes_KB)},
        {"the first 15 bytes of it", text(static_cast<int>(std::string(device::commands::kGetPortName).size()) + 1)},
        {"more than 255 characters nothing", longestComment()},
        {"more than 255 characters does not", longestComment()},
        {"at most 255 characters. The end", longestComment()},
        {"at most 255 characters.", longestComment()},
        {"Rows after the 255th", mostRows()},
        {"at most 39 characters", text(static_cast<int>(platform::kProfileBufferSize) - 1)},
        {"0409 is English", "0409"}, // the list of layouts, below
        {"the code 64, which is", hex('d')},
        {"So 0D is Enter", defaultOf("022")},
        {"8D is Enter after each track", withTerminatorFlag(0x0D)},
        {"you type 09 (Tab)", hex('\t')},
        {"shows 89. Both", withTerminatorFlag(0x09)},
        {"the box shows 89, too", withTerminatorFlag(0x09)},
        {"so 8D is Enter", withTerminatorFlag(0x0D)},
        {"The value 00-20 means", defaultOf("0E7-0E8")},
        {"key number 20. That", defaultOf("0E7-0E8").mid(3)},
        {"now reads 00-21.", "00-21"}, // what the job types
        {"still reads 00-21.", "00-21"},
        {"and type 21. The row", "21"},
        {"the row 014 reads 67.", hex(text::hexByte(defaultOf("014").toStdString()) | 0x04)}, // with lower case
        {"the row reads 67.", hex(text::hexByte(defaultOf("014").toStdString()) | 0x04)},
        {"to 20 (hexadecimal)", "20"},
        {"and type 20.", "20"},
        {"shows 20, and", "20"},
        {"comes after 3 seconds", inSource("scripts/swipe-card", "^seconds=(\\d+)$")},
        {"at most 65,535 characters",
         inSource("files/TableDocument.cpp", "kLongestComment = ([\\d']+);").replace(u'\'', u',')},
        {"a decimal number from 0 to 255", highestDelay()},
        {"hexadecimal number from 00 to FF", hex(std::numeric_limits<std::uint8_t>::max())},
        {"makes the byte 00.",
         QString::fromStdString(std::string(tables::fields::radSendTermAfter.options[2].wholeValue))},
        {"from 1 to 256", highestPort()},
        {"A value of 80 or more", hex(tables::fields::radSendTermAfter.mask)},
        {"then puts 0D.", defaultOf("022")},
        {"a character below 20", hex(' ')},
        {"| 80 ", hex(tables::fields::radShiftA4.mask)},
        {"| 40 ", hex(tables::fields::radShiftA3.mask)},
        {"| 20 ", hex(tables::fields::radShiftA2.mask)},
        {"| 10 ", hex(tables::fields::radShiftA1.mask)},
        {"With 00 the editor", defaultOf("080")},
        {"mapping of 6 or 7", text(static_cast<int>(tables::fields::radTrkMap.options.size()))},
        {"the exclamation mark, 80-02,", defaultOf("08D-08E")},
        {"as \"?\" (3F)", hex('?')},
        {"30 (hexadecimal 1E)", hex(30)},
    };
}

// Whether the words have this number, not as a part of a longer one.
bool hasNumber(const QString& words, const QString& number)
{
    const QRegularExpression whole("(?<!\\w)" + QRegularExpression::escape(number) + "(?![0-9A-F])");
    return whole.match(words).hasMatch();
}

} // namespace

// The numbers in the documents are the program's.
class NumbersTest final : public QObject
{
    Q_OBJECT

private slots:
    void everyNumberIsThePrograms()
    {
        QString all;
        for (const QString& name : userDocuments()) {
            all += Document(readSource(name)).prose().join(u'\n') + u'\n';
        }
        for (const Told& told : toldNumbers()) {
            QVERIFY2(all.contains(told.words), qPrintable("no document says: " + told.words));
            QVERIFY2(!told.number.isEmpty() && hasNumber(told.words, told.number),
                     qPrintable(told.words + " - the program has " + told.number));
        }
    }

    // Three digits are an address of the reader, or one of the few that are told to be none.
    void everyAddressIsTheReaders()
    {
        const simulator::ParameterMemory reader;
        int seen = 0;
        for (const QString& name : userDocuments()) {
            for (const QString& line : Document(readSource(name)).prose()) {
                for (auto found = kAddress.globalMatch(line); found.hasNext(); ++seen) {
                    const QString each = found.next().captured();
                    QVERIFY2(reader.value(each.toStdString()).has_value() || kNoParameters.contains(each),
                             qPrintable(name + ": " + each + " in: " + line));
                }
            }
        }
        QVERIFY(seen > 40);
    }

    // No number stands in the documents that nothing is said of here.
    void noNumberIsLeftOut_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString& name : userDocuments()) {
            QTest::newRow(qPrintable(name)) << name;
        }
    }
    void noNumberIsLeftOut()
    {
        QFETCH(QString, name);
        QCOMPARE(unexplained(Document(readSource(name))).join(u'\n'), "");
    }

    void aNumberThatIsNotExplainedIsFound()
    {
        QCOMPARE(unexplained(Document("It has 75 rows: and 013.")), QStringList());
        QCOMPARE(unexplained(Document("It has 76 rows: and 013.")).size(), 1);
        QCOMPARE(unexplained(Document("See \"COM5\" and `x5`.")), QStringList());
    }

    void theCodeOfALayout()
    {
        QVERIFY(readSource("docs/guide.md").contains("0409 is English (US)"));
        QFile list(testsupport::sourceFile("files/Languages.txt"));
        QVERIFY(list.open(QIODevice::ReadOnly));
        QVERIFY(list.readAll().contains("0409%;+? English (US)"));
    }

private:
    // Lines with digits that are neither an address, nor told, nor a text or a piece of code.
    static QStringList unexplained(const Document& document)
    {
        static const QRegularExpression quoted(QStringLiteral("\"[^\"]*\""));
        static const QRegularExpression key(QStringLiteral("\\bF1?[0-9]\\b"));
        static const QRegularExpression digit(QStringLiteral("[0-9]"));
        QStringList lines;
        for (QString line : document.prose()) {
            const QString whole = line;
            for (const Told& told : toldNumbers()) {
                line.remove(told.words);
            }
            for (const QString& words : kOtherWords) {
                line.remove(words);
            }
            line.remove(quoted).remove(kAddress).remove(key);
            for (const QString& none : kNoParameters) {
                line.remove(none);
            }
            if (line.contains(digit)) {
                lines.append(line.simplified());
            }
        }
        return lines;
    }
};

static const testsupport::RunnableTest<NumbersTest> kRunnable;
#include "NumbersTest.moc"
