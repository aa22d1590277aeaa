#include "platform/qt/QtPrinter.h"
#include "tests/report/GoldenReport.h"
#include "tests/report/SummaryBench.h"
#include "tests/support/PrintedPdf.h"
#include "tests/support/RunnableTest.h"

#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <utility>

using testsupport::PdfPage;
using testsupport::PdfWord;

namespace {

constexpr qreal kMarginPoints = 36;

// A real printer, but for its dialog: it is asked for one copy on the given paper, into a PDF file.
class PdfPrinter final : public platform::Printer
{
public:
    PdfPrinter(QString file, QPageSize::PageSizeId paper)
        : m_file(std::move(file))
        , m_paper(paper)
    {}

    bool setFontName(std::string_view family) override { return m_printer.setFontName(family); }
    std::optional<int> askForCopies() override
    {
        m_printer.device().setOutputFormat(QPrinter::PdfFormat);
        m_printer.device().setOutputFileName(m_file);
        m_printer.device().setPageSize(QPageSize(m_paper));
        return 1;
    }
    bool beginDocument(std::string_view name) override { return m_printer.beginDocument(name); }
    bool printLine(std::string_view line) override { return m_printer.printLine(line); }
    bool endDocument() override { return m_printer.endDocument(); }
    void abortDocument() override { m_printer.abortDocument(); }

private:
    platform::QtPrinter m_printer;
    QString m_file;
    QPageSize::PageSizeId m_paper;
};

// Prints the way the user does: from the window that shows the report.
void printFromWindow(const QByteArray& report, platform::Printer& printer)
{
    summarybench::Bench bench;
    const report::SummaryServices others = bench.services();
    report::frmSummary window({.printer = printer,
                               .dialogs = others.dialogs,
                               .placements = others.placements,
                               .saveFile = others.saveFile,
                               .programFolder = others.programFolder});
    window.open();
    window.showReport(QStringLiteral("Configuration Summary"), report.toStdString());
    window.findChild<QPushButton*>(QStringLiteral("btnPrint"))->click();
}

// The width of a character, told by the longest word.
qreal columnWidth(const PdfPage& page)
{
    PdfWord longest;
    for (const PdfWord& word : page.words) {
        if (word.text.size() > longest.text.size()) {
            longest = word;
        }
    }
    return longest.box.width() / static_cast<qreal>(longest.text.size());
}

// From row to row, told by the two rows that stand closest.
qreal rowHeight(const PdfPage& page)
{
    qreal closest = page.paper.height();
    qreal last = page.words.first().box.top();
    for (const PdfWord& word : page.words) {
        if (word.box.top() > last + 1) {
            closest = std::min(closest, word.box.top() - last);
            last = word.box.top();
        }
    }
    return closest;
}

// The rows of a page as text, its empty rows included, each word in the column in which it is printed.
QStringList rowsOf(const PdfPage& page, qreal firstRow)
{
    QStringList rows;
    for (const PdfWord& word : page.words) {
        const qsizetype row = std::lround((word.box.top() - firstRow) / rowHeight(page));
        const qsizetype column = std::lround((word.box.left() - kMarginPoints) / columnWidth(page));
        while (rows.size() <= row) {
            rows.append(QString());
        }
        rows[row] = rows[row].leftJustified(column) + word.text;
    }
    return rows;
}

// The lines that a report should print as, without what no paper shows: blanks at the end of a line.
QStringList expectedRows(const QByteArray& report)
{
    QStringList rows;
    for (const QByteArray& line : report.left(report.size() - 2).split('\n')) {
        QByteArray row = QByteArray(15, ' ') + line;
        while (row.endsWith(' ') || row.endsWith('\r')) {
            row.chop(1);
        }
        rows.append(QString::fromLatin1(row));
    }
    return rows;
}

} // namespace

class PrintedReportTest final : public QObject
{
    Q_OBJECT

private slots:
    void everyLineIsOnPaper_data()
    {
        QTest::addColumn<QByteArray>("report");
        QTest::addColumn<int>("paper");
        QTest::addColumn<QSizeF>("points");
        QTest::addColumn<int>("pages");
        for (const auto& [name, pages] : {std::pair("configuration-defaults", 1), std::pair("keyboard-defaults", 2),
                                          std::pair("keyboard-all-ff", 2)}) {
            const QByteArray report = golden::report(name);
            QTest::addRow("%s on A4", name) << report << int(QPageSize::A4) << QSizeF(595, 842) << pages;
            QTest::addRow("%s on Letter", name) << report << int(QPageSize::Letter) << QSizeF(612, 792) << pages;
        }
    }
    void everyLineIsOnPaper()
    {
        QFETCH(QByteArray, report);
        QFETCH(int, paper);
        QFETCH(QSizeF, points);
        QFETCH(int, pages);
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("report.pdf"));
        PdfPrinter printer(file, static_cast<QPageSize::PageSizeId>(paper));
        printFromWindow(report, printer);

        const QList<PdfPage> printed = testsupport::pdfPages(file);
        QVERIFY2(!printed.isEmpty(), "no PDF file, or pdftotext (poppler-utils) is missing");
        QCOMPARE(printed.size(), pages);
        const qreal height = rowHeight(printed.first());
        const auto rowsOnPage = static_cast<qsizetype>((points.height() - 2 * kMarginPoints) / height);
        const qreal firstRow = printed.first().words.first().box.top();
        QVERIFY(firstRow > kMarginPoints - 1 && firstRow < kMarginPoints + height / 2);
        QStringList rows;
        for (const PdfPage& page : printed) {
            QCOMPARE(page.paper, points);
            while (rows.size() % rowsOnPage != 0) { // empty rows at the foot of the page before
                rows.append(QString());
            }
            rows += rowsOf(page, firstRow);
        }
        QStringList expected = expectedRows(report);
        while (expected.last().isEmpty()) {
            expected.removeLast();
        }
        QCOMPARE(rows, expected);

        // Read as running text it is the same report.
        const auto words = [](const QStringList& lines) { return lines.join(QLatin1Char('\n')).simplified(); };
        QCOMPARE(words(testsupport::pdfLines(file)), words(expected));
    }

    void nothingIsCutAtTheEdges_data() { everyLineIsOnPaper_data(); }
    void nothingIsCutAtTheEdges()
    {
        QFETCH(QByteArray, report);
        QFETCH(int, paper);
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("report.pdf"));
        PdfPrinter printer(file, static_cast<QPageSize::PageSizeId>(paper));
        printFromWindow(report, printer);

        constexpr int kDotsPerInch = 144; // two dots a point
        const QList<PdfPage> printed = testsupport::pdfPages(file);
        QVERIFY2(!printed.isEmpty(), "no PDF file, or pdftotext (poppler-utils) is missing");
        for (int page = 0; page < printed.size(); ++page) {
            const QImage picture = testsupport::pdfPicture(file, page, kDotsPerInch);
            QVERIFY2(!picture.isNull(), "no picture of the page, or pdftoppm (poppler-utils) is missing");
            QRectF words;
            for (const PdfWord& word : printed[page].words) {
                words |= word.box;
            }
            const QRectF ink(testsupport::inkOf(picture));
            const int margin = static_cast<int>(2 * kMarginPoints);
            QVERIFY(QRectF(picture.rect().adjusted(margin, margin, -margin, -margin)).contains(ink));
            // The picture shows the words to their last letter, and only them: half a letter of difference at most.
            const qreal halfLetter = columnWidth(printed[page]);
            QVERIFY(std::abs(ink.right() - 2 * words.right()) < halfLetter);
            QVERIFY(std::abs(ink.left() - 2 * words.left()) < halfLetter);
        }
    }
};

static const testsupport::RunnableTest<PrintedReportTest> kRunnable;
#include "PrintedReportTest.moc"
