#include "files/KeyboardLayouts.h"
#include "files/TableFileParser.h"
#include "tests/files/RowTexts.h"
#include "tests/support/RunnableTest.h"

#include <QElapsedTimer>
#include <QTest>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

using namespace std::string_literals;
using files::TableFile;

namespace {

constexpr std::size_t kMegabyte = std::size_t{1024} * 1024;
constexpr std::size_t kHugeFile = 50 * kMegabyte;

// A reader whose time is proportional to the file's length takes a few tenths of a second for these files in a release
// build. The limit leaves room for a sanitizer build on a busy machine; time that grows with the square of the length
// would be many minutes for 5 MB already.
constexpr qint64 kLimitMs = 60000;

std::string repeated(std::string_view text, std::size_t length)
{
    std::string bytes(text);
    while (bytes.size() < length) {
        bytes += bytes;
    }
    bytes.resize(length);
    return bytes;
}

// Bytes of every value in no order, the same on every run.
std::string binary(std::size_t length)
{
    std::string bytes(length, '\0');
    std::uint32_t state = 12345;
    for (char& byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

} // namespace

// Files that no Teslin program wrote: the readers take every one of them, and in time.
class HostileFilesTest final : public QObject
{
    Q_OBJECT

private slots:
    void huge_data()
    {
        QTest::addColumn<std::string>("unit");
        QTest::addColumn<int>("megabytes");
        QTest::addColumn<int>("rows_CFG");
        QTest::addColumn<int>("rows_KB");
        QTest::newRow("one line") << "x"s << 50 << 0 << 1;
        QTest::newRow("one line of commas and semicolons") << ",;"s << 5 << 0 << 0;
        QTest::newRow("one comment line") << ";"s << 5 << 0 << 0;
        QTest::newRow("NUL bytes") << "\0"s << 50 << 0 << 1;
        QTest::newRow("rows") << "083,10,1E ;a A\r\n"s << 50 << 255 << 255;
        QTest::newRow("lines of 1 MB") << "083,10,1E ;" + std::string(kMegabyte, 'x') + "\r\n" << 50 << 49 << 50;
        QTest::newRow("LF alone") << "\n"s << 5 << 0 << 0;
        QTest::newRow("CR alone") << "\r"s << 5 << 0 << 0;
        QTest::newRow("CR LF") << "\r\n"s << 5 << 0 << 0;
        QTest::newRow("LF CR") << "\n\r"s << 5 << 0 << 0;
        QTest::newRow("lines of one letter") << "x\n"s << 5 << 0 << 255;
        QTest::newRow("comment lines") << ";comment\r\n"s << 5 << 0 << 0;
        QTest::newRow("empty comment lines") << ";\n"s << 5 << 0 << 0;
    }
    void huge()
    {
        QFETCH(std::string, unit);
        QFETCH(int, megabytes);
        QFETCH(int, rows_CFG);
        QFETCH(int, rows_KB);
        const std::string file = repeated(unit, static_cast<std::size_t>(megabytes) * kMegabyte);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(files::parseTableFile_CFG(file).rows.size(), static_cast<std::size_t>(rows_CFG));
        QVERIFY(timer.restart() < kLimitMs);
        QCOMPARE(files::parseTableFile_KB(file).rows.size(), static_cast<std::size_t>(rows_KB));
        QVERIFY(timer.restart() < kLimitMs);
        files::KeyboardLanguage language;
        QVERIFY(!files::readLayoutList(file, "0409", language).has_value());
        QVERIFY(timer.elapsed() < kLimitMs);
    }

    void hugeBinary()
    {
        const std::string file = binary(kHugeFile);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(files::parseTableFile_CFG(file).rows.size(), std::size_t{255});
        QVERIFY(timer.restart() < kLimitMs);
        QCOMPARE(files::parseTableFile_KB(file).rows.size(), std::size_t{255});
        QVERIFY(timer.restart() < kLimitMs);
        files::KeyboardLanguage language;
        QVERIFY(!files::readLayoutList(file, "none", language).has_value());
        QVERIFY(timer.elapsed() < kLimitMs);
    }

    void hugeLayoutListOfOneId()
    {
        constexpr std::string_view kLine = "0409%;+? English (US)\r\n";
        const std::string list = repeated(kLine, kHugeFile / kLine.size() * kLine.size());
        files::KeyboardLanguage language;
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(files::readLayoutList(list, "0409", language).value_or("none"), "English (Code: 0409)");
        QVERIFY(timer.elapsed() < kLimitMs);
        QCOMPARE(language.Track1Start, "%");
    }

    void lineOfOneMegabyte()
    {
        const std::string notes(kMegabyte, 'n');
        const TableFile configuration =
            files::parseTableFile_CFG("Comments,a\r\n01A,12 ;" + notes + "\r\n01B,32 ;x\r\n");
        QCOMPARE(configuration.rows.size(), std::size_t{2});
        QVERIFY(configuration.rows.front().notes == notes);
        QCOMPARE(configuration.rows.back().notes, "x");
        const TableFile language =
            files::parseTableFile_KB("083,10,1E ;" + notes + "\r\n;" + notes + "\r\n085,00,2B\r\n");
        QCOMPARE(language.rows.size(), std::size_t{2});
        QVERIFY(language.rows.front().notes == notes);
        QCOMPARE(language.rows.back().address, "085-086");
        QVERIFY(language.comment == notes + "\r\n");
        files::KeyboardLanguage layout;
        const auto caption = files::readLayoutList("0409%;+? " + notes + "\r\n", "0409", layout);
        QVERIFY(caption.has_value());
        QCOMPARE(layout.name.size(), notes.size() - 1);
    }

    void firstLineOfOneMegabyte()
    {
        const TableFile table =
            files::parseTableFile_CFG("Comments," + std::string(kMegabyte, 'c') + "\r\n01A,12 ;x\r\n");
        QCOMPARE(table.comment, "");
        QCOMPARE(rowTexts(table.rows), (QByteArrayList{"01A|12|x"}));
    }

    void nulBytesAreCharacters()
    {
        const TableFile configuration = files::parseTableFile_CFG("\0\0,a\0b\r\n\0\0\0,\0\0 ;\0x\r\n"s);
        QCOMPARE(configuration.comment, "a\0b"s);
        QCOMPARE(configuration.rows.size(), std::size_t{1});
        QCOMPARE(configuration.rows.front().address, "\0\0\0"s);
        QCOMPARE(configuration.rows.front().value, "\0\0"s);
        QCOMPARE(configuration.rows.front().notes, "\0x"s);
        const TableFile language = files::parseTableFile_KB(";\0\r\n\0\r\n083,10,1E ;\0"s);
        QCOMPARE(language.comment, "\0\r\n"s);
        QCOMPARE(rowTexts(language.rows), (QByteArrayList{"||", QByteArray::fromStdString("083-084|10-1E|\0"s)}));
    }
};

static const testsupport::RunnableTest<HostileFilesTest> kRunnable;
#include "HostileFilesTest.moc"
