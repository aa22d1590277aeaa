#pragma once

#include "platform/qt/QtPrinter.h"
#include "tests/report/SummaryBench.h"
#include "tests/support/PrintedPdf.h"

#include <QPushButton>

#include <algorithm>
#include <cmath>
#include <utility>

// A report printed the way the user does, and its rows read back from the paper.
namespace printedreport {

inline constexpr qreal kMarginPoints = 36;

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
inline void printFromWindow(const QByteArray& report, platform::Printer& printer)
{
    summarybench::Bench bench;
    const report::SummaryServices others = bench.services();
    report::frmSummary window({.printer = printer,
                               .dialogs = others.dialogs,
                               .windowOrder = others.windowOrder,
                               .saveFile = others.saveFile,
                               .restorePlacement = others.restorePlacement,
                               .savePlacement = others.savePlacement,
                               .programFolder = others.programFolder});
    window.open();
    window.showReport(QStringLiteral("Configuration Summary"), report.toStdString());
    window.findChild<QPushButton*>(QStringLiteral("btnPrint"))->click();
}

// The width of a character, told by the longest word.
[[nodiscard]] inline qreal columnWidth(const testsupport::PdfPage& page)
{
    testsupport::PdfWord longest;
    for (const testsupport::PdfWord& word : page.words) {
        if (word.text.size() > longest.text.size()) {
            longest = word;
        }
    }
    return longest.box.width() / static_cast<qreal>(longest.text.size());
}

// From row to row, told by the two rows that stand closest.
[[nodiscard]] inline qreal rowHeight(const testsupport::PdfPage& page)
{
    qreal closest = page.paper.height();
    qreal last = page.words.first().box.top();
    for (const testsupport::PdfWord& word : page.words) {
        if (word.box.top() > last + 1) {
            closest = std::min(closest, word.box.top() - last);
            last = word.box.top();
        }
    }
    return closest;
}

// The rows of a page as text, its empty rows included, each word in the column in which it is printed.
[[nodiscard]] inline QStringList rowsOf(const testsupport::PdfPage& page, qreal firstRow)
{
    QStringList rows;
    for (const testsupport::PdfWord& word : page.words) {
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
[[nodiscard]] inline QStringList expectedRows(const QByteArray& report)
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

} // namespace printedreport
