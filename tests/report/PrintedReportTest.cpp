#include "tests/report/PrintedReport.h"
#include "tests/report/GoldenReport.h"
#include "tests/support/RunnableTest.h"

#include <QTemporaryDir>
#include <QTest>

using namespace printedreport;
using testsupport::PdfPage;
using testsupport::PdfWord;

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
