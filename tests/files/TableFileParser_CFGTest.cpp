#include "files/TableFileParser.h"
#include "tests/files/RowTexts.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <string>

using namespace std::string_literals;
using files::parseTableFile_CFG;
using files::TableFile;

class TableFileParser_CFGTest final : public QObject
{
    Q_OBJECT

private slots:
    // kb-comment-changes
    void comment_data()
    {
        QTest::addColumn<std::string>("file");
        QTest::addColumn<std::string>("comment");
        QTest::newRow("empty file") << ""s
                                    << ""s;
        QTest::newRow("empty comment") << "Comments,\r\n"s
                                       << ""s;
        QTest::newRow("two lines") << "Comments,a\x8D\x8A\x62\r\n"s
                                   << "a\r\nb"s;
        QTest::newRow("no line end") << "Comments,a"s
                                     << "a"s;
        QTest::newRow("a comma ends it") << "Comments,one, two, three\r\n"s
                                         << "one"s;
        QTest::newRow("comma right at the start") << "Comments,,x\r\n"s
                                                  << ""s;
        QTest::newRow("quotes do not hold it together") << "Comments,\"q,r\"\r\n"s
                                                        << "\"q"s;
        QTest::newRow("blanks are kept") << "Comments,  a  \r\n"s
                                         << "  a  "s;
        QTest::newRow("the key is not looked at") << "anything,a\r\n"s
                                                  << "a"s;
        QTest::newRow("no key") << ",a\r\n"s
                                << "a"s;
        QTest::newRow("no comma") << "Comments\r\n01A,12 ;x\r\n"s
                                  << ""s;
        QTest::newRow("empty first line, the second is no comment") << "\r\nComments,a\r\n"s
                                                                    << ""s;
        QTest::newRow("a semicolon in it") << "Comments,a;b\r\n"s
                                           << "a;b"s;
        QTest::newRow("first line that looks like a further comment line") << ";a,b\r\n"s
                                                                           << "b"s;
        QTest::newRow("LF alone ends the first line") << "Comments,a\n;b\n"s
                                                      << "ab\r\n"s;
        QTest::newRow("CR alone ends the first line") << "Comments,a\r;b\r"s
                                                      << "ab\r\n"s;
        QTest::newRow("raw control characters are kept") << "Comments,\t\0\x1F\r\n"s
                                                         << "\t\0\x1F"s;
        QTest::newRow("marked NUL, tab and line feed") << "Comments,\x80\x89\x8A\r\n"s
                                                       << "\0\t\n"s;
        QTest::newRow("euro, S and Z with caron read as controls") << "Comments,\x80\x8A\x8E\r\n"s
                                                                   << "\0\n\x0E"s;
        QTest::newRow("accented letter and no-break space read 128 below") << "Comments,\xE9\xA0\xFF\r\n"s
                                                                           << "i \x7F"s;
        QTest::newRow("127 is kept") << "Comments,\x7F\r\n"s
                                     << "\x7F"s;
        QTest::newRow("AC reads as a comma and ends nothing") << "Comments,a\xAC\x62\r\n"s
                                                              << "a,b"s;
        QTest::newRow("255 characters") << "Comments," + std::string(255, 'x') + "\r\n" << std::string(255, 'x');
        QTest::newRow("256 characters") << "Comments," + std::string(256, 'x') + "\r\n"
                                        << ""s;
        QTest::newRow("a line break counts as two") << "Comments," + std::string(254, 'x') + "\x8D\x8A\r\n"
                                                    << ""s;
        QTest::newRow("512 characters") << "Comments," + std::string(512, 'x') + "\r\n"
                                        << ""s;
        QTest::newRow("only what stands before the comma counts")
            << "Comments," + std::string(255, 'x') + "," + std::string(255, 'y') + "\r\n"
            << std::string(255, 'x');
        QTest::newRow("a later comment line stands straight behind it") << "Comments,a\r\n;more\r\n"s
                                                                        << "amore\r\n"s;
        QTest::newRow("two later lines") << "Comments,a\x8D\x8A\r\n;b\r\n013,95 ;x\r\n;c\r\n"s
                                         << "a\r\nb\r\nc\r\n"s;
        QTest::newRow("a later line keeps the upper half") << "Comments,\r\n;\xE9\x8D\r\n"s
                                                           << "\xE9\x8D\r\n"s;
        QTest::newRow("a lone semicolon is an empty line") << "Comments,a\r\n;\r\n"s
                                                           << "a\r\n"s;
        QTest::newRow("a later line behind one that is too long")
            << "Comments," + std::string(256, 'x') + "\r\n;more\r\n"
            << "more\r\n"s;
    }
    void comment()
    {
        QFETCH(std::string, file);
        QFETCH(std::string, comment);
        QCOMPARE(parseTableFile_CFG(file).comment, comment);
    }

    void line_data()
    {
        QTest::addColumn<std::string>("line");
        QTest::addColumn<QByteArrayList>("rows");
        const QByteArrayList none;
        QTest::newRow("row with notes") << "001,0F ;notes text"s << QByteArrayList{"001|0F|notes text"};
        QTest::newRow("row with empty notes") << "013,95 ;"s << QByteArrayList{"013|95|"};
        QTest::newRow("row without a semicolon") << "013,95"s << QByteArrayList{"013|95|"};
        QTest::newRow("five characters") << "01,5"s << none;
        QTest::newRow("five characters with a comma in place") << "013,5"s << none;
        QTest::newRow("empty") << ""s << none;
        QTest::newRow("blanks only") << "          "s << none;
        QTest::newRow("no comma") << "013 95 ;x"s << none;
        QTest::newRow("a comma anywhere will do") << "013 95 ;a,b"s << QByteArrayList{"013|95|a,b"};
        QTest::newRow("positions count, not the comma") << "0013,95 ;x"s << QByteArrayList{"001|,9|x"};
        QTest::newRow("not checked for hex") << "xyz,!? ;x"s << QByteArrayList{"xyz|!?|x"};
        QTest::newRow("case is kept") << "01a,0f ;x"s << QByteArrayList{"01a|0f|x"};
        QTest::newRow("text between value and notes is lost") << "013,95 abc ;x"s << QByteArrayList{"013|95|x"};
        QTest::newRow("the first semicolon starts the notes") << "013,95 ;a;b"s << QByteArrayList{"013|95|a;b"};
        QTest::newRow("semicolon at position 6") << "013,9;x"s << QByteArrayList{"013|9;|x"};
        QTest::newRow("semicolon at position 5 starts no notes") << "013,;5 x"s << QByteArrayList{"013|;5|"};
        QTest::newRow("semicolon at position 5 and a later one") << "013,;5 ;x"s << QByteArrayList{"013|;5|x"};
        QTest::newRow("semicolon at position 2") << "0;3,95"s << QByteArrayList{"0;3|95|"};
        QTest::newRow("blanks around the notes are kept") << "013,95 ;  x "s << QByteArrayList{"013|95|  x "};
        QTest::newRow("NUL bytes") << "0\0001,\00095;\0"s
                                   << QByteArrayList{QByteArray::fromStdString("0\0001|\0009|\0"s)};
        QTest::newRow("upper half is kept") << "013,95 ;\xE9\x8D"s << QByteArrayList{"013|95|\xE9\x8D"};
        QTest::newRow("comment") << ";013,95 ;x"s << none;
    }
    void line()
    {
        QFETCH(std::string, line);
        QFETCH(QByteArrayList, rows);
        TableFile table;
        files::ParseLine_CFG(line, table);
        QCOMPARE(rowTexts(table.rows), rows);
    }

    void lineAppends()
    {
        TableFile table{.comment = "a", .rows = {dataRow("001", "00", "")}};
        files::ParseLine_CFG(";b", table);
        files::ParseLine_CFG("013,95 ;x", table);
        files::ParseLine_CFG("dropped", table);
        QCOMPARE(table.comment, "ab\r\n");
        QCOMPARE(rowTexts(table.rows), (QByteArrayList{"001|00|", "013|95|x"}));
    }

    void file_data()
    {
        QTest::addColumn<QByteArray>("lineEnd");
        QTest::newRow("CR LF") << QByteArray("\r\n");
        QTest::newRow("LF alone") << QByteArray("\n");
        QTest::newRow("CR alone") << QByteArray("\r");
    }
    void file()
    {
        QFETCH(QByteArray, lineEnd);
        const QByteArrayList lines{
            "Comments,Two\x8D\x8Alines", "001,0F ;notes text", "", "013,95 ;", ";more", "01A,12"};
        const TableFile table = parseTableFile_CFG(lines.join(lineEnd).toStdString());
        QCOMPARE(table.comment, "Two\r\nlinesmore\r\n");
        QCOMPARE(rowTexts(table.rows), (QByteArrayList{"001|0F|notes text", "013|95|", "01A|12|"}));
    }

    // kb-other-lines
    void withoutACommentLineTheFirstRowIsTheComment()
    {
        const TableFile table = parseTableFile_CFG("001,00 ;a\r\n013,95 ;b\r\n014,63 ;c\r\n");
        QCOMPARE(table.comment, "00 ;a");
        QCOMPARE(rowTexts(table.rows), (QByteArrayList{"013|95|b", "014|63|c"}));
    }

    void aTooLongCommentKeepsTheRows()
    {
        const TableFile table = parseTableFile_CFG("Comments," + std::string(256, 'x') + "\r\n001,00 ;a\r\n");
        QCOMPARE(table.comment, "");
        QCOMPARE(rowTexts(table.rows), (QByteArrayList{"001|00|a"}));
    }

    void rowsBeyond255AreDropped_data()
    {
        QTest::addColumn<int>("lines");
        QTest::addColumn<int>("rows");
        QTest::newRow("254") << 254 << 254;
        QTest::newRow("255") << 255 << 255;
        QTest::newRow("256") << 256 << 255;
        QTest::newRow("257") << 257 << 255;
        QTest::newRow("10000") << 10000 << 255;
    }
    void rowsBeyond255AreDropped()
    {
        QFETCH(int, lines);
        QFETCH(int, rows);
        std::string file = "Comments,\r\n";
        for (int line = 1; line <= lines; ++line) {
            file += "013,95 ;row " + std::to_string(line) + "\r\n";
        }
        const TableFile table = parseTableFile_CFG(file + ";kept\r\n");
        QCOMPARE(table.rows.size(), static_cast<std::size_t>(rows));
        QCOMPARE(table.rows.front().notes, "row 1");
        QCOMPARE(table.rows.back().notes, "row " + std::to_string(rows));
        QCOMPARE(table.comment, "kept\r\n");
    }
};

static const testsupport::RunnableTest<TableFileParser_CFGTest> kRunnable;
#include "TableFileParser_CFGTest.moc"
