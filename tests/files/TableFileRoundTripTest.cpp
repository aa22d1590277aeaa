#include "files/TableFileParser.h"
#include "files/TableFileWriter.h"
#include "tables/Parameters.h"
#include "tests/files/RowTexts.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SourceFile.h"

#include <QFile>
#include <QTest>

#include <span>
#include <string>
#include <vector>

using namespace std::string_literals;
using files::TableFile;
using tables::ParamRow;

namespace {

std::vector<ParamRow> rowsOf(std::span<const tables::Parameter> defaults)
{
    std::vector<ParamRow> rows;
    for (const tables::Parameter& row : defaults) {
        rows.push_back(dataRow(std::string(row.address), std::string(row.value), std::string(row.notes)));
    }
    return rows;
}

QByteArray golden(const char* name)
{
    QFile file(testsupport::sourceFile(QStringLiteral("tests/files/") + name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

// Saves and loads as the user knows them: what is written, byte for byte, and what comes back.
class TableFileRoundTripTest final : public QObject
{
    Q_OBJECT

private slots:
    void factoryConfiguration()
    {
        const std::vector<ParamRow> rows = rowsOf(tables::parameters_CFG());
        const QByteArray file = golden("golden/FactoryDefaults.tlc");
        QCOMPARE(file.count("\r\n"), 28);
        QCOMPARE(QByteArray::fromStdString(files::writeTableFile_CFG("", rows)), file);
        const TableFile table = files::parseTableFile_CFG(file.toStdString());
        QCOMPARE(table.comment, "");
        QCOMPARE(table.rows.size(), std::size_t{27});
        QCOMPARE(rowTexts(table.rows), rowTexts(rows));
    }

    void factoryKeyboardLanguage()
    {
        const std::vector<ParamRow> rows = rowsOf(tables::parameters_KB());
        const QByteArray file = golden("golden/FactoryDefaults.txt");
        QCOMPARE(file.count("\r\n"), 75);
        QCOMPARE(QByteArray::fromStdString(files::writeTableFile_KB("", rows)), file);
        const TableFile table = files::parseTableFile_KB(file.toStdString());
        QCOMPARE(table.comment, "");
        QCOMPARE(table.rows.size(), std::size_t{75});
        QCOMPARE(rowTexts(table.rows), rowTexts(rows));
    }

    void configurationComment_data()
    {
        QTest::addColumn<std::string>("typed");
        QTest::addColumn<std::string>("loaded");
        std::string allControls;
        for (char code = 0; code < 32; ++code) {
            allControls += code;
        }
        QTest::newRow("two lines") << "a\r\nb"s
                                   << "a\r\nb"s;
        QTest::newRow("every control character") << allControls << allControls;
        QTest::newRow("cut at the comma") << "Dear all, welcome"s
                                          << "Dear all"s;
        QTest::newRow("accented letters change") << "caf\xE9"s
                                                 << "cafi"s;
        QTest::newRow("255 characters") << std::string(255, 'x') << std::string(255, 'x');
        QTest::newRow("256 characters are lost") << std::string(256, 'x') << ""s;
    }
    void configurationComment()
    {
        QFETCH(std::string, typed);
        QFETCH(std::string, loaded);
        const std::vector<ParamRow> rows = rowsOf(tables::parameters_CFG());
        const TableFile table = files::parseTableFile_CFG(files::writeTableFile_CFG(typed, rows));
        QCOMPARE(table.comment, loaded);
        QCOMPARE(rowTexts(table.rows), rowTexts(rows));
    }

    // Kept as it is: the later lines of a comment come back as rows in front of the table's own.
    // kb-comment-of-lines
    void keyboardComment_data()
    {
        QTest::addColumn<std::string>("typed");
        QTest::addColumn<std::string>("loaded");
        QTest::addColumn<QByteArrayList>("rowsInFront");
        QTest::newRow("one line gains a line break") << "Desk 4"s
                                                     << "Desk 4\r\n"s << QByteArrayList{};
        QTest::newRow("second line") << "Desk 4\r\nmoved"s
                                     << "Desk 4\r\n"s << QByteArrayList{"||"};
        QTest::newRow("third line") << "a\r\nb\r\nc"s
                                    << "a\r\n"s << QByteArrayList{"||", "||"};
        QTest::newRow("second line empty") << "a\r\n\r\nc"s
                                           << "a\r\n"s << QByteArrayList{"||"};
        QTest::newRow("closing line break") << "a\r\n"s
                                            << "a\r\n"s << QByteArrayList{};
        QTest::newRow("second line like a pair") << "a\r\n083,11,22"s
                                                 << "a\r\n"s << QByteArrayList{"083-084|11-22|"};
        QTest::newRow("second line marked by hand") << "a\r\n;b"s
                                                    << "a\r\nb\r\n"s << QByteArrayList{};
    }
    void keyboardComment()
    {
        QFETCH(std::string, typed);
        QFETCH(std::string, loaded);
        QFETCH(QByteArrayList, rowsInFront);
        const std::vector<ParamRow> rows = rowsOf(tables::parameters_KB());
        const TableFile table = files::parseTableFile_KB(files::writeTableFile_KB(typed, rows));
        QCOMPARE(table.comment, loaded);
        QCOMPARE(rowTexts(table.rows), rowsInFront + rowTexts(rows));
    }

    void rowsWithoutNotes()
    {
        const std::vector<ParamRow> rows = {dataRow("080", "01", ""), dataRow("", "", ""),
                                            dataRow("083-084", "10-1E", "")};
        const TableFile table = files::parseTableFile_KB(files::writeTableFile_KB("", rows));
        QCOMPARE(rowTexts(table.rows), rowTexts(rows));
    }

    void fullTables()
    {
        const std::vector<ParamRow> pairs(255, dataRow("083-084", "10-1E", "a A"));
        QCOMPARE(rowTexts(files::parseTableFile_KB(files::writeTableFile_KB("", pairs)).rows), rowTexts(pairs));
        const std::vector<ParamRow> singles(255, dataRow("01A", "12", "x"));
        QCOMPARE(rowTexts(files::parseTableFile_CFG(files::writeTableFile_CFG("", singles)).rows), rowTexts(singles));
    }
};

static const testsupport::RunnableTest<TableFileRoundTripTest> kRunnable;
#include "TableFileRoundTripTest.moc"
