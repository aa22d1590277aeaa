#include "report/PrintedLines.h"
#include "tests/report/GoldenReport.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using report::PrintEnd;

class PrintedLinesTest final : public QObject
{
    Q_OBJECT

private slots:
    void linesOfAText_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArrayList>("lines");
        QTest::addColumn<PrintEnd>("end");
        const auto row = [](const char* name, const QByteArray& text, const QByteArrayList& lines,
                            PrintEnd end = PrintEnd::Complete) { QTest::newRow(name) << text << lines << end; };

        row("nothing", "", {});
        row("one line", "Blue\r\n", {"               Blue"});
        row("an empty line is the margin alone", "\r\n", {"               "});
        row("empty lines between lines", "a\r\n\r\n\r\nb\r\n",
            {"               a", "               ", "               ", "               b"});
        row("an empty line at the end", "a\r\n\r\n", {"               a", "               "});
        row("blanks are kept", "  a  \r\n", {"                 a  "});
        row("a CR alone stays in its line", "'\r'\r\nb\r\n", {"               '\r'", "               b"});
        row("a LF alone stays in its line", "'\n'\r\nb\r\n", {"               '\n'", "               b"});
        row("LF CR is no line end", "a\n\rb\r\n", {"               a\n\rb"});
        row("a CR before the line end", "a\r\r\n", {"               a\r"});
        row("a NUL is a character", QByteArray("'\0'\r\n", 5), {QByteArray("               '\0'", 18)});

        row("one character without a line end is lost", "a", {});
        row("one character after the last line end is lost", "a\r\nb", {"               a"});
        row("a lone CR at the end is lost", "a\r\n\r", {"               a"});
        row("a lone LF at the end is lost", "a\r\n\n", {"               a"});

        row("no line end at all", "ab", {}, PrintEnd::UnfinishedLine);
        row("a last line of two characters", "a\r\nbc", {"               a"}, PrintEnd::UnfinishedLine);
        row("a last line with half a line end", "a\r\nb\r", {"               a"}, PrintEnd::UnfinishedLine);
        row("a last line ended by LF", "a\r\nb\n", {"               a"}, PrintEnd::UnfinishedLine);
        row("text with LF line ends", "a\nb\n", {}, PrintEnd::UnfinishedLine);
    }
    void linesOfAText()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArrayList, lines);
        QFETCH(PrintEnd, end);

        const report::PrintedLines printed = report::printedLines(text.toStdString());

        QByteArrayList printedTexts;
        for (const std::string& line : printed.lines) {
            printedTexts.append(QByteArray::fromStdString(line));
        }
        QCOMPARE(printedTexts, lines);
        QCOMPARE(printed.end, end);
    }

    void wholeReport_data()
    {
        QTest::addColumn<int>("lineCount");
        QTest::addColumn<QByteArray>("first");
        QTest::addColumn<QByteArray>("last");
        const QByteArray heading = "                                                      Brennic Teslin 03/07/2024";
        QTest::newRow("configuration-defaults")
            << 63 << heading
            << QByteArray("               * (n/u) indicates the value is Not Used because it is set to 00h");
        QTest::newRow("configuration-all-zero")
            << 63 << heading
            << QByteArray("               * (n/u) indicates the value is Not Used because it is set to 00h");
        QTest::newRow("keyboard-defaults") << 105 << heading << QByteArray("               ");
    }
    void wholeReport()
    {
        QFETCH(int, lineCount);
        QFETCH(QByteArray, first);
        QFETCH(QByteArray, last);

        const report::PrintedLines printed =
            report::printedLines(golden::report(QTest::currentDataTag()).toStdString());

        QCOMPARE(printed.end, PrintEnd::Complete);
        QCOMPARE(printed.lines.size(), static_cast<size_t>(lineCount));
        QCOMPARE(QByteArray::fromStdString(printed.lines.front()), first);
        QCOMPARE(QByteArray::fromStdString(printed.lines.back()), last);
    }
};

static const testsupport::RunnableTest<PrintedLinesTest> kRunnable;
#include "PrintedLinesTest.moc"
