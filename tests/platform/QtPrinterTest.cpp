#include "platform/qt/QtPrinter.h"
#include "tests/support/PrintedPdf.h"
#include "tests/support/RunnableTest.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLineEdit>
#include <QPrintDialog>
#include <QRadioButton>
#include <QScopeGuard>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cmath>

using platform::Printer;
using platform::QtPrinter;
using testsupport::PdfPage;
using testsupport::PdfWord;

namespace {

// Prints into a PDF file without the dialog.
void printTo(QtPrinter& printer, const QString& file, QPageSize::PageSizeId paper = QPageSize::A4)
{
    QVERIFY(printer.setFontName("Courier New"));
    printer.device().setOutputFormat(QPrinter::PdfFormat);
    printer.device().setPageSize(QPageSize(paper));
    printer.device().setOutputFileName(file);
}

bool printDocument(QtPrinter& printer, const std::vector<std::string>& lines)
{
    if (!printer.beginDocument("A Document")) {
        return false;
    }
    for (const std::string& line : lines) {
        if (!printer.printLine(line)) {
            return false;
        }
    }
    return printer.endDocument();
}

std::vector<std::string> numberedLines(int count)
{
    std::vector<std::string> lines;
    for (int line = 0; line < count; ++line) {
        lines.push_back(std::to_string(1000 + line));
    }
    return lines;
}

QStringList textOf(const QList<PdfPage>& pages)
{
    QStringList texts;
    for (const PdfPage& page : pages) {
        for (const PdfWord& word : page.words) {
            texts.append(word.text);
        }
    }
    return texts;
}

// Does something with the print dialog when it is up, and cancels it if it is still open afterwards.
template <typename Action>
void whenOpen(Action action)
{
    QTimer::singleShot(0, qApp, [action] {
        QWidget* box = QApplication::activeModalWidget();
        QVERIFY(box != nullptr);
        const auto closing = qScopeGuard([box] { box->close(); });
        auto* dialog = qobject_cast<QPrintDialog*>(box);
        QVERIFY(dialog != nullptr);
        action(*dialog);
    });
}

} // namespace

class QtPrinterTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The printers of the machine that tests are no part of the test.
        qputenv("CUPS_SERVER", "/nowhere");
    }

    void cancelledDialogGivesNoCopies()
    {
        QtPrinter printer;
        QVERIFY(printer.setFontName("Courier New"));
        int looks = 0;
        whenOpen([&](QPrintDialog& dialog) {
            ++looks;
            dialog.reject();
        });
        QCOMPARE(printer.askForCopies(), std::nullopt);
        QCOMPARE(looks, 1);
    }

    void dialogPrintsToAFile()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("chosen.pdf"));
        QtPrinter printer;
        QVERIFY(printer.setFontName("Courier New"));
        whenOpen([&](QPrintDialog& dialog) {
            auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("filename"));
            QVERIFY(name != nullptr);
            name->setText(file);
            dialog.accept();
        });
        QCOMPARE(printer.askForCopies(), 1);
        QVERIFY(!QFile::exists(file));
        QVERIFY(printDocument(printer, {"the only line"}));
        QCOMPARE(textOf(testsupport::pdfPages(file)).join(QLatin1Char(' ')), QStringLiteral("the only line"));
    }

    // The caller makes the copies, so the device has to forget them: three copies must not become nine.
    void copiesAreTakenOverFromTheDevice()
    {
        const QTemporaryDir folder;
        QtPrinter printer;
        printTo(printer, folder.filePath(QStringLiteral("copies.pdf")));
        for (const int copies : {3, 1, 99}) {
            whenOpen([&](QPrintDialog& dialog) {
                auto* box = dialog.findChild<QSpinBox*>(QStringLiteral("copies"));
                QVERIFY(box != nullptr);
                QCOMPARE(box->value(), 1);
                box->setValue(copies);
                dialog.accept();
            });
            QCOMPARE(printer.askForCopies(), copies);
            QCOMPARE(printer.device().copyCount(), 1);
        }
    }

    void printsTheChosenPages_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<bool>("reversed");
        QTest::addColumn<QList<int>>("pages");
        QTest::newRow("all") << 0 << 0 << false << QList<int>{1, 2, 3};
        QTest::newRow("reversed") << 0 << 0 << true << QList<int>{3, 2, 1};
        QTest::newRow("one") << 2 << 2 << false << QList<int>{2};
        QTest::newRow("the last") << 2 << 9 << true << QList<int>{3, 2};
        QTest::newRow("none") << 4 << 5 << false << QList<int>();
    }
    void printsTheChosenPages()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(bool, reversed);
        QFETCH(QList<int>, pages);
        const QTemporaryDir folder;
        const QString wholeFile = folder.filePath(QStringLiteral("whole.pdf"));
        QtPrinter printer;
        printTo(printer, wholeFile);
        QVERIFY(printDocument(printer, numberedLines(200)));
        const QList<PdfPage> whole = testsupport::pdfPages(wholeFile);
        QCOMPARE(whole.size(), 3);
        const QString file = folder.filePath(QStringLiteral("range.pdf"));
        printer.device().setOutputFileName(file);
        whenOpen([&](QPrintDialog& dialog) {
            if (from > 0) {
                dialog.findChild<QRadioButton*>(QStringLiteral("printRange"))->setChecked(true);
                dialog.findChild<QSpinBox*>(QStringLiteral("to"))->setValue(to);
                dialog.findChild<QSpinBox*>(QStringLiteral("from"))->setValue(from);
            }
            dialog.findChild<QCheckBox*>(QStringLiteral("reverse"))->setChecked(reversed);
            dialog.accept();
        });
        QCOMPARE(printer.askForCopies(), 1);
        QVERIFY(printDocument(printer, numberedLines(200)));
        const QList<PdfPage> printed = QFile::exists(file) ? testsupport::pdfPages(file) : QList<PdfPage>();
        QList<PdfPage> expected;
        for (const int page : pages) {
            expected.append(whole[page - 1]);
        }
        QCOMPARE(printed.size(), expected.size());
        QCOMPARE(textOf(printed), textOf(expected));
    }

    void fullColumnsFitThePaper_data()
    {
        QTest::addColumn<int>("paper");
        QTest::newRow("A4") << int(QPageSize::A4);
        QTest::newRow("Letter") << int(QPageSize::Letter);
        QTest::newRow("A5") << int(QPageSize::A5);
    }
    void fullColumnsFitThePaper()
    {
        QFETCH(int, paper);
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("columns.pdf"));
        QtPrinter printer;
        printTo(printer, file, static_cast<QPageSize::PageSizeId>(paper));
        QVERIFY(printDocument(printer, {std::string(Printer::kColumns, 'W'), "W"}));
        const QList<PdfPage> pages = testsupport::pdfPages(file);
        QCOMPARE(pages.size(), 1);
        QCOMPARE(pages[0].words.size(), 2);
        QCOMPARE(pages[0].words[0].text, QString(Printer::kColumns, QLatin1Char('W')));
        const QRectF line = pages[0].words[0].box;
        const qreal half = 36;
        QVERIFY(line.left() >= half - 0.5 && line.right() <= pages[0].paper.width() - half + 0.5);
        QVERIFY(line.width() > (pages[0].paper.width() - 2 * half) * 0.95); // and is no smaller than it need be
        // The line is as wide as its characters: the size fits, nothing had to be squeezed.
        QVERIFY(std::abs(line.width() - Printer::kColumns * pages[0].words[1].box.width()) < 1);
    }

    void longerLinesAreNotCut()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("long.pdf"));
        QtPrinter printer;
        printTo(printer, file);
        const std::string longLine = std::string(15, ' ') + std::string(254, 'x') + '!';
        QVERIFY(printDocument(printer, {longLine, "next"}));
        const QList<PdfPage> pages = testsupport::pdfPages(file);
        QCOMPARE(textOf(pages),
                 QStringList({QString(254, QLatin1Char('x')) + QLatin1Char('!'), QStringLiteral("next")}));
        QVERIFY(pages[0].words[0].box.right() <= pages[0].paper.width() - 35.5);
        QVERIFY(std::abs(pages[0].words[1].box.height() - pages[0].words[0].box.height()) < 0.01); // narrower only
    }

    void pagesBreakByTheHeightOfThePaper()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("pages.pdf"));
        QtPrinter printer;
        printTo(printer, file);
        QVERIFY(printDocument(printer, numberedLines(200)));
        QStringList expected;
        for (int line = 0; line < 200; ++line) {
            expected.append(QString::number(1000 + line));
        }
        const QList<PdfPage> pages = testsupport::pdfPages(file);
        QCOMPARE(textOf(pages), expected); // none lost, none twice
        QCOMPARE(pages.size(), 3);
        QCOMPARE(pages[0].words.size(), pages[1].words.size());
        for (const PdfPage& page : pages) {
            QVERIFY(page.words.first().box.top() >= 35.5);
            QVERIFY(page.words.last().box.bottom() <= page.paper.height() - 35.5);
        }
        // Not a line less than fits.
        QVERIFY(pages[0].words.last().box.bottom() + pages[0].words.last().box.height() > pages[0].paper.height() - 36);
    }

    void everyByteIsPrinted()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("bytes.pdf"));
        QtPrinter printer;
        printTo(printer, file);
        std::vector<std::string> lines;
        for (int byte = 0; byte < 64; ++byte) {
            lines.push_back({static_cast<char>(byte), 'm', static_cast<char>(byte)});
        }
        QVERIFY(printDocument(printer, lines));
        const QString text = textOf(testsupport::pdfPages(file)).join(QLatin1Char(' '));
        QCOMPARE(text.count(QLatin1Char('m')), 64); // no control character breaks or ends a line
        QVERIFY(text.contains(QStringLiteral("5m5")));
    }

    void givesTheJobItsName()
    {
        const QTemporaryDir folder;
        QtPrinter printer;
        printTo(printer, folder.filePath(QStringLiteral("name.pdf")));
        QVERIFY(printDocument(printer, {"line"}));
        QCOMPARE(printer.device().docName(), QStringLiteral("A Document"));
    }

    void abortedDocumentLeavesNothing()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("aborted.pdf"));
        QtPrinter printer;
        printTo(printer, file);
        QVERIFY(printer.beginDocument("A Document"));
        QVERIFY(printer.printLine("a line"));
        printer.abortDocument();
        QVERIFY(!printer.printLine("a line"));
        QVERIFY(!printer.endDocument());
        QVERIFY(!QFile::exists(file));
        QVERIFY(printDocument(printer, {"the next document"})); // which holds nothing of the last one
        QCOMPARE(textOf(testsupport::pdfPages(file)).join(QLatin1Char(' ')), QStringLiteral("the next document"));
    }

    void printerErrorIsTold()
    {
        const QTemporaryDir folder;
        QtPrinter printer;
        printTo(printer, folder.filePath(QStringLiteral("no such folder/file.pdf")));
        QTest::ignoreMessage(QtWarningMsg, "QPainter::begin(): Returned false");
        QVERIFY(!printDocument(printer, {"line"}));
    }
};

static const testsupport::RunnableTest<QtPrinterTest> kRunnable;
#include "QtPrinterTest.moc"
