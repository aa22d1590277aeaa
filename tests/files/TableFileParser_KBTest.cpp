#include "files/TableFileParser.h"
#include "tests/files/RowTexts.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <string>

using namespace std::string_literals;
using files::parseTableFile_KB;
using files::TableFile;

class TableFileParser_KBTest final : public QObject
{
    Q_OBJECT

private slots:
    void line_data()
    {
        QTest::addColumn<std::string>("line");
        QTest::addColumn<QByteArrayList>("rows");
        const QByteArrayList none;
        const QByteArrayList empty{"||"};
        QTest::newRow("pair") << "083,10,1E ;a A"s << QByteArrayList{"083-084|10-1E|a A"};
        QTest::newRow("pair across a hundred") << "0FF,12,34 ;x"s << QByteArrayList{"0FF-100|12-34|x"};
        QTest::newRow("identification row") << "081,04,09 ;id"s << QByteArrayList{"081-082|04-09|id"};
        QTest::newRow("080 with notes, no second comma")
            << "080,00 ;Keyboard flags"s << QByteArrayList{"080|00|Keyboard flags"};
        QTest::newRow("080 without notes") << "080,01"s << QByteArrayList{"080|01|"};
        QTest::newRow("pair without notes") << "083,10,1E"s << QByteArrayList{"083-084|10-1E|"};

        // Which lines add a row.
        QTest::newRow("empty") << ""s << none;
        QTest::newRow("blanks only are not empty") << "   "s << empty;
        QTest::newRow("a word") << "Second"s << empty;
        QTest::newRow("a comma alone") << ","s << empty;
        QTest::newRow("too short for an address") << "080,1"s << empty;
        QTest::newRow("second comma behind the semicolon") << "080,00 ;Keyboard, flags"s << none;
        QTest::newRow("both commas behind the semicolon") << "abc;d,e,f"s << none;
        QTest::newRow("the only comma behind the semicolon") << "abc;d,e"s << none;
        QTest::newRow("no comma at all") << "x;y"s << QByteArrayList{"||y"};
        QTest::newRow("too short, with notes") << "08,;y"s << QByteArrayList{"||y"};
        QTest::newRow("semicolon without notes") << "083,10,1E ;"s << none;
        QTest::newRow("semicolon without notes or comma") << "x;"s << none;
        QTest::newRow("comment") << ";083,10,1E ;x"s << none;
        QTest::newRow("notes of one blank") << "083,10,1E ; "s << QByteArrayList{"083-084|10-1E| "};

        // What a row holds.
        QTest::newRow("eight characters are no pair") << "083,10,1"s << QByteArrayList{"083|10|"};
        QTest::newRow("nine characters are a pair") << "083,10,1E"s << QByteArrayList{"083-084|10-1E|"};
        QTest::newRow("comma as last character") << "083,10  ,"s << QByteArrayList{"083-084|10- ,|"};
        QTest::newRow("first comma as last character") << "083 10123,"s << QByteArrayList{"083|10|"};
        QTest::newRow("commas anywhere will do") << ",,3410567"s << QByteArrayList{",,3-001|10-67|"};
        QTest::newRow("text behind the pair is lost") << "083,10,1E lost ;x"s << QByteArrayList{"083-084|10-1E|x"};
        QTest::newRow("the first semicolon starts the notes")
            << "0C1,00,27 ;3B, USA KB key -> ; "s << QByteArrayList{"0C1-0C2|00-27|3B, USA KB key -> ; "};
        QTest::newRow("semicolon inside the pair") << "083,10,;E"s << QByteArrayList{"083-084|10-;E|E"};
        QTest::newRow("the first address keeps its case, the second is upper")
            << "0ab,cd,ef ;x"s << QByteArrayList{"0ab-0AC|cd-ef|x"};
        QTest::newRow("after the last address comes the first") << "FFF,12,34 ;x"s << QByteArrayList{"FFF-000|12-34|x"};
        QTest::newRow("not hex") << "xyz,12,34 ;x"s << QByteArrayList{"xyz-001|12-34|x"};
        QTest::newRow("NUL bytes") << "0\0003,\0000,1E ;\0"s
                                   << QByteArrayList{QByteArray::fromStdString("0\0003-001|\0000-1E|\0"s)};
        QTest::newRow("upper half is kept") << "083,10,1E ;\xE9\x8D"s << QByteArrayList{"083-084|10-1E|\xE9\x8D"};
    }
    void line()
    {
        QFETCH(std::string, line);
        QFETCH(QByteArrayList, rows);
        TableFile table;
        files::ParseLine_KB(line, table);
        QCOMPARE(rowTexts(table.rows), rows);
    }

    void comment_data()
    {
        QTest::addColumn<std::string>("file");
        QTest::addColumn<std::string>("comment");
        QTest::addColumn<QByteArrayList>("rows");
        const QByteArrayList none;
        QTest::newRow("empty file") << ""s
                                    << ""s << none;
        QTest::newRow("one line as it is written") << ";a\n\r\n"s
                                                   << "a\r\n"s << none;
        QTest::newRow("the second line as it is written adds an empty row") << ";a\r\n\r\nb\n\r\n"s
                                                                            << "a\r\n"s << QByteArrayList{"||"};
        QTest::newRow("a second line that looks like a row is one") << ";a\r\n\r\n083,11,22\n\r\n"s
                                                                    << "a\r\n"s << QByteArrayList{"083-084|11-22|"};
        QTest::newRow("a second line with a semicolon") << ";a\r\n\r\nb;c\n\r\n"s
                                                        << "a\r\n"s << QByteArrayList{"||c"};
        QTest::newRow("two marked lines") << ";a\r\n;b\r\n"s
                                          << "a\r\nb\r\n"s << none;
        QTest::newRow("nothing is turned back") << ";\xE9\x8D\x80\r\n"s
                                                << "\xE9\x8D\x80\r\n"s << none;
        QTest::newRow("a lone semicolon") << ";"s
                                          << "\r\n"s << none;
        QTest::newRow("commas and more semicolons") << ";a,b;c,\r\n"s
                                                    << "a,b;c,\r\n"s << none;
        QTest::newRow("longer than 255") << ";" + std::string(1000, 'x') + "\r\n"
                                         << std::string(1000, 'x') + "\r\n"
                                         << none;
        QTest::newRow("behind the rows") << "080,01\r\n;a\r\n"s
                                         << "a\r\n"s << QByteArrayList{"080|01|"};
        QTest::newRow("the first line is nothing special") << "Comments,a\r\n"s
                                                           << ""s << QByteArrayList{"Com|en|"};
    }
    void comment()
    {
        QFETCH(std::string, file);
        QFETCH(std::string, comment);
        QFETCH(QByteArrayList, rows);
        const TableFile table = parseTableFile_KB(file);
        QCOMPARE(table.comment, comment);
        QCOMPARE(rowTexts(table.rows), rows);
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
        const QByteArrayList lines{";First", "", "080,01", "",         "081,04,09 ;Keyboard ID Bytes",
                                   ",",      "", ";more",  "083,10,1E"};
        const TableFile table = parseTableFile_KB(lines.join(lineEnd).toStdString());
        QCOMPARE(table.comment, "First\r\nmore\r\n");
        QCOMPARE(rowTexts(table.rows),
                 (QByteArrayList{"080|01|", "081-082|04-09|Keyboard ID Bytes", "||", "083-084|10-1E|"}));
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
        std::string file;
        for (int line = 1; line <= lines; ++line) {
            file += "083,10,1E ;row " + std::to_string(line) + "\r\n";
        }
        const TableFile table = parseTableFile_KB(file + ";kept\r\n");
        QCOMPARE(table.rows.size(), static_cast<std::size_t>(rows));
        QCOMPARE(table.rows.front().notes, "row 1");
        QCOMPARE(table.rows.back().notes, "row " + std::to_string(rows));
        QCOMPARE(table.comment, "kept\r\n");
    }

    void emptyRowsCountToo()
    {
        const TableFile table = parseTableFile_KB(std::string(1000, 'x').append("\r\n") + "080,01\r\n");
        QCOMPARE(rowTexts(table.rows), (QByteArrayList{"||", "080|01|"}));
        std::string words;
        for (int line = 0; line < 300; ++line) {
            words += "word\r\n";
        }
        QCOMPARE(parseTableFile_KB(words + "080,01\r\n").rows.size(), std::size_t{255});
        QCOMPARE(parseTableFile_KB(words + "080,01\r\n").rows.back().address, "");
    }
};

static const testsupport::RunnableTest<TableFileParser_KBTest> kRunnable;
#include "TableFileParser_KBTest.moc"
