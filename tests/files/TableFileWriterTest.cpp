#include "files/TableFileWriter.h"
#include "tests/files/RowTexts.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <string>
#include <vector>

using namespace std::string_literals;
using files::writeTableFile_CFG;
using files::writeTableFile_KB;
using tables::ParamRow;

class TableFileWriterTest final : public QObject
{
    Q_OBJECT

private slots:
    void configurationComment_data()
    {
        QTest::addColumn<std::string>("comment");
        QTest::addColumn<std::string>("file");
        QTest::newRow("empty") << ""s
                               << "Comments,\r\n"s;
        QTest::newRow("one line") << "Front desk"s
                                  << "Comments,Front desk\r\n"s;
        QTest::newRow("two lines") << "a\r\nb"s
                                   << "Comments,a\x8D\x8A\x62\r\n"s;
        QTest::newRow("LF alone") << "a\nb"s
                                  << "Comments,a\x8A\x62\r\n"s;
        QTest::newRow("tab, NUL and the last control character") << "\t\0\x1F "s
                                                                 << "Comments,\x89\x80\x9F \r\n"s;
        QTest::newRow("commas and quotes as they are") << R"("q,r";)"s
                                                       << "Comments,\"q,r\";\r\n"s;
        QTest::newRow("upper half and DEL as they are") << "\x7F\x80\x8D\xE9"s
                                                        << "Comments,\x7F\x80\x8D\xE9\r\n"s;
        QTest::newRow("longer than can be read back")
            << std::string(300, 'x') << "Comments,"s + std::string(300, 'x') + "\r\n";
    }
    void configurationComment()
    {
        QFETCH(std::string, comment);
        QFETCH(std::string, file);
        QCOMPARE(writeTableFile_CFG(comment, {}), file);
    }

    void configurationFile()
    {
        const std::vector<ParamRow> rows = {
            dataRow("001", "0F", "notes text"),
            dataRow("013", "95", ""),
            dataRow("01A", "12", " [Enter, as decimal]; (x512 uS) "),
            dataRow("", "", ""),
            dataRow("02a", "5", "\xE9"),
        };
        QCOMPARE(writeTableFile_CFG("Two\r\nlines", rows), "Comments,Two\x8D\x8Alines\r\n"
                                                           "001,0F ;notes text\r\n"
                                                           "013,95 ;\r\n"
                                                           "01A,12 ; [Enter, as decimal]; (x512 uS) \r\n"
                                                           ", ;\r\n"
                                                           "02a,5 ;\xE9\r\n");
    }

    void keyboardComment_data()
    {
        QTest::addColumn<std::string>("comment");
        QTest::addColumn<std::string>("file");
        QTest::newRow("empty") << ""s
                               << ""s;
        QTest::newRow("one line") << "a"s
                                  << ";a\n\r\n"s;
        QTest::newRow("two lines") << "a\r\nb"s
                                   << ";a\r\n\r\nb\n\r\n"s;
        QTest::newRow("ends in a line break") << "a\r\n"s
                                              << ";a\r\n\r\n\n\r\n"s;
        QTest::newRow("empty line inside") << "a\r\n\r\nb"s
                                           << ";a\r\n\r\n\r\n\r\nb\n\r\n"s;
        QTest::newRow("LF alone") << "a\nb"s
                                  << ";a\r\n\r\nb\n\r\n"s;
        QTest::newRow("CR alone is dropped") << "a\rb"s
                                             << ";ab\n\r\n"s;
        QTest::newRow("nothing but a CR") << "\r"s
                                          << ";\n\r\n"s;
        QTest::newRow("every other character as it is") << "\t\0;,\x8D\xE9"s
                                                        << ";\t\0;,\x8D\xE9\n\r\n"s;
    }
    void keyboardComment()
    {
        QFETCH(std::string, comment);
        QFETCH(std::string, file);
        QCOMPARE(writeTableFile_KB(comment, {}), file);
    }

    void keyboardRow_data()
    {
        QTest::addColumn<std::string>("address");
        QTest::addColumn<std::string>("value");
        QTest::addColumn<std::string>("notes");
        QTest::addColumn<std::string>("file");
        QTest::newRow("080 without notes, an empty line follows") << "080"s
                                                                  << "01"s
                                                                  << ""s
                                                                  << "080,01\r\n\r\n"s;
        QTest::newRow("080 with notes") << "080"s
                                        << "00"s
                                        << "Keyboard flags"s
                                        << "080,00 ;Keyboard flags\r\n"s;
        QTest::newRow("pair") << "083-084"s
                              << "10-1E"s
                              << "a A"s
                              << "083,10,1E ;a A\r\n"s;
        QTest::newRow("pair without notes") << "083-084"s
                                            << "10-1E"s
                                            << ""s
                                            << "083,10,1E\r\n\r\n"s;
        QTest::newRow("identification row") << "081-082"s
                                            << "04-09"s
                                            << "Keyboard ID Bytes"s
                                            << "081,04,09 ;Keyboard ID Bytes\r\n"s;
        QTest::newRow("notes that are a blank") << "080"s
                                                << "01"s
                                                << " "s
                                                << "080,01 ; \r\n"s;
        QTest::newRow("empty row") << ""s
                                   << ""s
                                   << ""s
                                   << ",\r\n\r\n"s;
        QTest::newRow("empty row with notes") << ""s
                                              << ""s
                                              << "y"s
                                              << ", ;y\r\n"s;
        QTest::newRow("pair whose value is blank") << "083-084"s
                                                   << " "s
                                                   << "n"s
                                                   << "083-084,  ;n\r\n"s;
        QTest::newRow("value of three characters") << "083-084"s
                                                   << "ABC"s
                                                   << "n"s
                                                   << "083,AB,BC ;n\r\n"s;
        QTest::newRow("short address with a pair value") << "8"s
                                                         << "10-1E"s
                                                         << "n"s
                                                         << "8,10,1E ;n\r\n"s;
    }
    void keyboardRow()
    {
        QFETCH(std::string, address);
        QFETCH(std::string, value);
        QFETCH(std::string, notes);
        QFETCH(std::string, file);
        const std::vector<ParamRow> rows = {dataRow(address, value, notes)};
        QCOMPARE(writeTableFile_KB("", rows), file);
    }

    void keyboardFile()
    {
        const std::vector<ParamRow> rows = {
            dataRow("080", "01", ""),
            dataRow("081-082", "04-09", "Keyboard ID Bytes"),
            dataRow("0C1-0C2", "00-27", "3B, USA KB key -> ; "),
        };
        QCOMPARE(writeTableFile_KB("First\r\nSecond", rows), ";First\r\n"
                                                             "\r\n"
                                                             "Second\n"
                                                             "\r\n"
                                                             "080,01\r\n"
                                                             "\r\n"
                                                             "081,04,09 ;Keyboard ID Bytes\r\n"
                                                             "0C1,00,27 ;3B, USA KB key -> ; \r\n");
    }

    void changedMarksAreNotWritten()
    {
        std::vector<ParamRow> rows = {dataRow("080", "01", "n")};
        rows.front().changed = "XXX";
        QCOMPARE(writeTableFile_KB("", rows), "080,01 ;n\r\n");
        QCOMPARE(writeTableFile_CFG("", rows), "Comments,\r\n080,01 ;n\r\n");
    }
};

static const testsupport::RunnableTest<TableFileWriterTest> kRunnable;
#include "TableFileWriterTest.moc"
