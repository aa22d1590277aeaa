#include "report/ui/SummaryBox.h"
#include "tests/report/GoldenReport.h"
#include "tests/report/PrintedReport.h"
#include "tests/support/RunnableTest.h"

#include <QAbstractTextDocumentLayout>
#include <QFontDatabase>
#include <QFontInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

using namespace printedreport;

namespace {

// What becomes of the font that the report asks for on a desktop with certain fonts.
struct Desktop
{
    const char* fonts;
    const char* installed; // a family that the desktop has, or the test would not be of it
    const char* asked;
    const char* shown;
};

constexpr std::array<Desktop, 5> kDesktops = {{
    {"dejavu", "DejaVu Sans Mono", "Courier New", "DejaVu Sans Mono"},
    {"urw", "Nimbus Mono PS", "Courier New", "DejaVu Sans Mono"},
    {"noto", "Noto Sans Mono", "Courier New", "Noto Sans Mono"},
    {"liberation", "Liberation Mono", "Courier New", "Liberation Mono"},
    // Here any font takes its place, and the program has to find another.
    {"bare", "DejaVu Sans Mono", "DejaVu Sans Mono", "DejaVu Sans Mono"},
}};

void addReports()
{
    QTest::addColumn<QByteArray>("report");
    for (const char* name : {"configuration-defaults", "keyboard-defaults"}) {
        QTest::newRow(name) << golden::report(name);
    }
}

QStringList withoutEmptyRows(QStringList rows)
{
    rows.removeAll(QString());
    return rows;
}

} // namespace

// The reports have columns on screen and on paper, whatever fonts a desktop has. Run once for each of several: with the
// fonts of that desktop, whose name is in TESLIN_FONTS.
class ReportColumnsTest final : public QObject
{
    Q_OBJECT

private slots:
    void theFontIsTheOneAskedForWhereItHasColumns()
    {
        const QByteArray fonts = qEnvironmentVariableIsSet("TESLIN_FONTS") ? qgetenv("TESLIN_FONTS") : "dejavu";
        const auto* const desktop =
            std::ranges::find_if(kDesktops, [&](const Desktop& known) { return fonts == known.fonts; });
        QVERIFY(desktop != kDesktops.end());
        QVERIFY2(QFontDatabase::families().contains(QLatin1String(desktop->installed)), "the fonts are not installed");
        const report::SummaryBox box;
        QCOMPARE(box.font().family(), desktop->asked);
        QCOMPARE(QFontInfo(box.font()).family(), desktop->shown);
        QCOMPARE(box.font().pointSize(), 12);
    }

    void everyCharacterStandsInItsColumnOnScreen_data() { addReports(); }
    void everyCharacterStandsInItsColumnOnScreen()
    {
        QFETCH(QByteArray, report);
        report::SummaryBox box;
        box.resize(1000, 10000); // all of it
        box.setText(report.toStdString());
        box.show();
        qreal width = 0;
        int looks = 0;
        for (QTextBlock line = box.document()->begin(); line.isValid(); line = line.next()) {
            (void)box.document()->documentLayout()->blockBoundingRect(line); // it is laid out when somebody asks
            const QTextLine text = line.layout()->lineAt(0);
            for (int column = 0; column < line.length() - 1; ++column, ++looks) {
                const qreal left = text.cursorToX(column) - text.cursorToX(0);
                const qreal right = text.cursorToX(column + 1) - text.cursorToX(0);
                width = width == 0 ? right - left : width;
                QVERIFY2(width > 0 && std::abs(right - (column + 1) * width) < width / 4, qPrintable(line.text()));
            }
        }
        QVERIFY(looks > 2000);
    }

    void everyWordStandsInItsColumnOnPaper_data() { addReports(); }
    void everyWordStandsInItsColumnOnPaper()
    {
        QFETCH(QByteArray, report);
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("report.pdf"));
        PdfPrinter printer(file, QPageSize::A4);
        printFromWindow(report, printer);
        const QList<testsupport::PdfPage> pages = testsupport::pdfPages(file);
        QVERIFY2(!pages.isEmpty(), "no PDF file, or pdftotext (poppler-utils) is missing");
        QStringList rows;
        for (const testsupport::PdfPage& page : pages) {
            rows += rowsOf(page, page.words.first().box.top());
        }
        QCOMPARE(withoutEmptyRows(rows), withoutEmptyRows(expectedRows(report)));
    }
};

static const testsupport::RunnableTest<ReportColumnsTest> kRunnable;
#include "ReportColumnsTest.moc"
