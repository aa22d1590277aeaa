#include "report/ui/frmSummary.h"
#include "tests/report/SummaryBench.h"
#include "tests/support/RunnableTest.h"

#include <QApplication>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cstdlib>
#include <fstream>

using report::frmSummary;
using report::SummaryBox;
using summarybench::Bench;
using summarybench::placementOf;
using testsupport::TestFileDialogs;
using testsupport::TestPrinter;

namespace {

using Lines = std::vector<std::string>;

const std::string kReport = "one\r\n\r\n  three\r\n";
const std::string kMargin(15, ' ');
const Lines kPrinted = {kMargin + "one", kMargin, kMargin + "  three"};

QByteArray bytes(const std::string& text)
{
    return QByteArray::fromStdString(text);
}

std::string fileContent(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The window, open, with a report in it.
class OpenWindow final
{
public:
    explicit OpenWindow(Bench& bench, const std::string& report = kReport)
        : window(bench.services())
    {
        window.open();
        window.showReport(QStringLiteral("Keyboard Language Summary"), report);
    }

    [[nodiscard]] QPushButton& button(const char* name) const
    {
        return *window.findChild<QPushButton*>(QLatin1String(name));
    }
    [[nodiscard]] SummaryBox& box() const { return *window.findChild<SummaryBox*>(QStringLiteral("txtSummary")); }

    frmSummary window;
};

} // namespace

class frmSummaryTest final : public QObject
{
    Q_OBJECT

private slots:
    void controls()
    {
        Bench bench;
        const frmSummary window(bench.services());
        QCOMPARE(window.objectName(), QStringLiteral("frmSummary"));
        QCOMPARE(window.windowTitle(), QStringLiteral("Configuration Summary"));
        QVERIFY(window.isWindow());
        QVERIFY(!window.isModal());
        QVERIFY(!window.isVisible());
        const QList<QPair<QString, QString>> captions = {
            {QStringLiteral("btnPrint"), QStringLiteral("&Print Summary")},
            {QStringLiteral("btnSave"), QStringLiteral("&Save  Summary to file")},
            {QStringLiteral("btnDone"), QStringLiteral("&Done")},
        };
        const auto buttons = window.findChildren<QPushButton*>();
        QCOMPARE(buttons.size(), captions.size());
        for (qsizetype i = 0; i < captions.size(); ++i) {
            QCOMPARE(buttons[i]->objectName(), captions[i].first);
            QCOMPARE(buttons[i]->text(), captions[i].second);
        }
        QCOMPARE(window.findChildren<SummaryBox*>(QStringLiteral("txtSummary")).size(), 1);
    }

    void showsAReport()
    {
        Bench bench;
        OpenWindow open(bench, "first\r\n");
        QVERIFY(QTest::qWaitForWindowActive(&open.window));
        open.window.showReport(QStringLiteral("Configuration Summary"), kReport);
        QCOMPARE(open.window.windowTitle(), QStringLiteral("Configuration Summary"));
        QCOMPARE(bytes(open.box().text()), bytes(kReport));
        QVERIFY(open.box().textCursor().atEnd());
        QVERIFY(open.box().hasFocus());
    }

    void printsIfThePrinterHasTheFont()
    {
        Bench bench;
        bench.printer.hasFont = false;
        OpenWindow open(bench);
        QVERIFY(!open.button("btnPrint").isEnabled());
        QCOMPARE(bytes(open.box().text()), bytes(kReport));
        QVERIFY(open.button("btnSave").isEnabled());
        bench.printer.hasFont = true;
        open.window.showReport(QStringLiteral("Configuration Summary"), kReport);
        QVERIFY(open.button("btnPrint").isEnabled());
        QCOMPARE(bench.printer.fonts, Lines({"Courier New", "Courier New"}));
    }

    void everythingWorksWithoutAMouse()
    {
        Bench bench;
        OpenWindow open(bench);
        QVERIFY(QTest::qWaitForWindowActive(&open.window));
        for (const char* next : {"btnPrint", "btnSave", "btnDone"}) {
            QTest::keyClick(open.window.focusWidget(), Qt::Key_Tab);
            QCOMPARE(open.window.focusWidget()->objectName(), QLatin1String(next));
        }
        QCOMPARE(bytes(open.box().text()), bytes(kReport)); // Tab left the box and the report alone
        // A button shows itself pressed for a moment before it acts on its access key.
        QSignalSpy printing(&open.button("btnPrint"), &QPushButton::clicked);
        bench.printer.expectDialog(std::nullopt);
        QTest::keyClick(open.window.windowHandle(), Qt::Key_P, Qt::AltModifier);
        QTRY_COMPARE(printing.count(), 1);
        bench.dialogs.expect(TestFileDialogs::Kind::Save, {});
        QTest::keyClick(open.window.windowHandle(), Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(bench.dialogs.shown.size(), std::size_t(1));
        QTest::keyClick(open.window.windowHandle(), Qt::Key_D, Qt::AltModifier);
        QTRY_VERIFY(!open.window.isVisible());

        open.window.open();
        QVERIFY(QTest::qWaitForWindowActive(&open.window));
        open.button("btnDone").setFocus();
        QTest::keyClick(open.window.windowHandle(), Qt::Key_Return);
        QTRY_VERIFY(!open.window.isVisible());
    }

    // Placement

    void opensWhereItStood()
    {
        Bench bench;
        bench.placements.stored = QRect(31, 47, 611, 402);
        OpenWindow open(bench);
        QCOMPARE(placementOf(open.window), QRect(31, 47, 611, 402));
        // Showing it is a resize, so it is saved at once: only after it was loaded, or the loaded one would be lost.
        QVERIFY(bench.placements.asked.size() >= 2);
        QCOMPARE(bench.placements.asked.first(), QStringLiteral("restore frmSummary"));
        QCOMPARE(bench.placements.saved, QRect(31, 47, 611, 402));
        QCOMPARE(bench.placements.asked.count(QStringLiteral("restore frmSummary")), 1);
    }

    void opensAsDesigned()
    {
        Bench bench;
        OpenWindow open(bench);
        const QRect screen = open.window.screen()->availableGeometry();
        QVERIFY(screen.contains(open.window.frameGeometry()));
        // All columns of the widest report show, as far as the screen is wide enough.
        const int columns = open.box().fontMetrics().horizontalAdvance(QString(86, QLatin1Char('0')));
        QVERIFY(open.box().viewport()->width() >= columns || open.window.width() > screen.width() - 40);
        QVERIFY(open.box().viewport()->height() >= 24 * open.box().fontMetrics().lineSpacing());
    }

    void resizingIsSavedAndMovingIsNot()
    {
        Bench bench;
        bench.placements.stored = QRect(31, 47, 611, 402);
        OpenWindow open(bench);
        bench.placements.asked.clear();
        open.window.move(10, 20);
        QCoreApplication::processEvents();
        QCOMPARE(bench.placements.asked, QStringList());
        QCOMPARE(bench.placements.saved, QRect(31, 47, 611, 402));
        open.window.resize(500, 300);
        QTRY_COMPARE(bench.placements.saved, QRect(10, 20, 500, 300));
        open.window.setWindowState(Qt::WindowMaximized);
        QTRY_COMPARE(bench.placements.savedState, Qt::WindowStates(Qt::WindowMaximized));
        open.window.setWindowState(Qt::WindowMinimized);
        QTRY_COMPARE(bench.placements.savedState, Qt::WindowStates(Qt::WindowMinimized));
        open.window.setWindowState(Qt::WindowNoState);
        QTRY_COMPARE(bench.placements.savedState, Qt::WindowStates(Qt::WindowNoState));
    }

    void everyOpeningLoadsThePlacement()
    {
        Bench bench;
        bench.placements.stored = QRect(31, 47, 611, 402);
        OpenWindow open(bench);
        open.window.resize(555, 333);
        open.window.move(100, 100);
        open.window.open(); // it is open already
        QCOMPARE(placementOf(open.window), QRect(100, 100, 555, 333));
        open.window.close();
        bench.placements.stored = QRect(60, 70, 500, 400);
        open.window.open();
        QCOMPARE(placementOf(open.window), QRect(60, 70, 500, 400));
    }

    void opensNormalAfterItWasClosedMaximised()
    {
        Bench bench;
        bench.placements.stored = QRect(31, 47, 611, 402);
        OpenWindow open(bench);
        open.window.setWindowState(Qt::WindowMaximized);
        open.window.close();
        open.window.open();
        QCOMPARE(open.window.windowState(), Qt::WindowStates(Qt::WindowNoState));
        QTRY_COMPARE(placementOf(open.window), QRect(31, 47, 611, 402));
    }

    // Nothing is saved before the placement was loaded, or the loaded one would be lost.
    void nothingIsSavedWhileItIsHidden()
    {
        Bench bench;
        bench.placements.stored = QRect(31, 47, 611, 402);
        OpenWindow open(bench);
        open.window.setWindowState(Qt::WindowMaximized);
        open.window.close();
        bench.placements.asked.clear();
        open.window.open();
        QVERIFY(!bench.placements.asked.isEmpty());
        QCOMPARE(bench.placements.asked.first(), QStringLiteral("restore frmSummary"));
        open.window.close();
        bench.placements.asked.clear();
        open.window.resize(400, 300);
        open.window.setWindowState(Qt::WindowMaximized);
        QCOMPARE(bench.placements.asked, QStringList());
    }

    void controlsKeepTheirProportionWhenTheWindowIsResized()
    {
        Bench bench;
        bench.placements.stored = QRect(0, 0, 500, 600);
        OpenWindow open(bench);
        open.window.resize(900, 1100);
        QTRY_COMPARE(open.window.size(), QSize(900, 1100));
        const QSize box = open.box().size();
        const QSize button = open.button("btnDone").size();
        for (const double factor : {1.5, 2.0, 0.9}) {
            const int above = open.window.height() - open.box().height() - open.button("btnDone").height();
            const QSize size(900, static_cast<int>((box.height() + button.height()) * factor) + above);
            open.window.resize(size);
            QTRY_COMPARE(open.window.size(), size);
            QVERIFY(std::abs(open.box().height() - box.height() * factor) <= 2);
            for (const char* name : {"btnPrint", "btnSave", "btnDone"}) {
                QVERIFY(std::abs(open.button(name).height() - button.height() * factor) <= 2);
            }
        }
        const int width = open.button("btnDone").width();
        open.window.resize(1800, 1100);
        QTRY_VERIFY(open.button("btnDone").width() > width * 19 / 10);
        for (const char* name : {"btnPrint", "btnSave"}) {
            QVERIFY(std::abs(open.button(name).width() - open.button("btnDone").width()) <= 1);
        }
    }

    void noCaptionIsCutInASmallWindow()
    {
        Bench bench;
        OpenWindow open(bench);
        open.window.resize(10, 10);
        QTRY_COMPARE(open.window.size(), open.window.minimumSizeHint());
        for (const char* name : {"btnPrint", "btnSave", "btnDone"}) {
            const QPushButton& button = open.button(name);
            QVERIFY(button.width() >= button.minimumSizeHint().width());
            QVERIFY(button.height() >= button.minimumSizeHint().height());
        }
    }

    // Its text

    void theEndOfTheReportIsInView()
    {
        Bench bench;
        OpenWindow open(bench);
        std::string report;
        for (int line = 0; line < 300; ++line) {
            report += "line " + std::to_string(line) + "\r\n";
        }
        open.window.showReport(QStringLiteral("Configuration Summary"), report);
        QVERIFY(open.box().textCursor().atEnd());
        QVERIFY(open.box().viewport()->rect().contains(open.box().cursorRect()));
        QVERIFY(open.box().verticalScrollBar()->value() >= open.box().verticalScrollBar()->maximum() - 1);
    }

    void theTextHasTheFocusAtEveryOpening()
    {
        Bench bench;
        OpenWindow open(bench);
        open.window.showReport(QStringLiteral("Configuration Summary"), "one\r\n");
        QCOMPARE(open.window.focusWidget(), &open.box());
        open.button("btnDone").setFocus();
        open.window.showReport(QStringLiteral("Configuration Summary"), "two\r\n"); // while it is open
        QCOMPARE(open.window.focusWidget(), &open.box());
        open.button("btnSave").setFocus();
        open.window.close();
        open.window.open();
        open.window.showReport(QStringLiteral("Configuration Summary"), "three\r\n");
        QCOMPARE(open.window.focusWidget(), &open.box());
    }

    // Closing

    void closes_data()
    {
        QTest::addColumn<bool>("byDone");
        QTest::newRow("Done") << true;
        QTest::newRow("close box") << false;
    }
    void closes()
    {
        QFETCH(bool, byDone);
        Bench bench;
        OpenWindow open(bench);
        QSignalSpy unloaded(&open.window, &frmSummary::unloaded);
        if (byDone) {
            QTest::mouseClick(&open.button("btnDone"), Qt::LeftButton);
        } else {
            open.window.close();
        }
        QCoreApplication::processEvents();
        QVERIFY(!open.window.isVisible());
        QCOMPARE(unloaded.count(), 1);
        open.window.open();
        QVERIFY(open.window.isVisible());
    }

    void closingDoesNotEndTheProgram()
    {
        Bench bench;
        OpenWindow open(bench);
        constexpr int kStillRunning = 42;
        QTimer::singleShot(0, &open.window, [&open] {
            open.window.close(); // the only window that shows
            QTimer::singleShot(0, qApp, [] { QTimer::singleShot(0, qApp, [] { QApplication::exit(kStillRunning); }); });
        });
        QVERIFY(QApplication::quitOnLastWindowClosed());
        QCOMPARE(QApplication::exec(), kStillRunning);
    }

    void minimisedIsNotClosed()
    {
        Bench bench;
        OpenWindow open(bench);
        QSignalSpy unloaded(&open.window, &frmSummary::unloaded);
        open.window.setWindowState(Qt::WindowMinimized);
        QHideEvent hiddenBySystem;
        QSpontaneKeyEvent::setSpontaneous(&hiddenBySystem);
        qApp->notify(&open.window, &hiddenBySystem);
        QVERIFY(open.window.isVisible());
        QCOMPARE(unloaded.count(), 0);
        open.window.open();
        QVERIFY(!open.window.isMinimized());
        open.window.setWindowState(Qt::WindowMinimized);
        open.window.close();
        QCOMPARE(unloaded.count(), 1);
    }

    // Saving

    void savesWhatTheBoxHolds()
    {
        std::string report;
        for (int byte = 0; byte < 256; ++byte) {
            report += '\'' + std::string(1, static_cast<char>(byte)) + "'\r\n";
        }
        Bench bench;
        OpenWindow open(bench, report);
        QTest::keyClicks(&open.box(), QStringLiteral("typed"));
        bench.dialogs.expect(TestFileDialogs::Kind::Save, "/some/where/summary.txt");
        open.button("btnSave").click();
        QCOMPARE(bench.saved.size(), std::size_t(1));
        QCOMPARE(bench.saved[0].file, std::filesystem::path("/some/where/summary.txt"));
        QCOMPARE(bytes(bench.saved[0].bytes), bytes(report + "typed\r\n"));
        QVERIFY(open.window.isVisible());
    }

    void saveDialog()
    {
        Bench bench;
        OpenWindow open(bench);
        for (int i = 0; i < 2; ++i) { // the second time it starts as the first time
            bench.dialogs.expect(TestFileDialogs::Kind::Save, "/some/where/summary");
            open.button("btnSave").click();
            const platform::FileDialogSetup& setup = bench.dialogs.shown.back().setup;
            QCOMPARE(setup.folder, std::filesystem::path("/the/program"));
            QCOMPARE(setup.name, std::filesystem::path("*.txt"));
            QCOMPARE(bytes(setup.filter), QByteArray("Teslin Summary (*.txt)"));
        }
        QCOMPARE(bench.saved.back().file, std::filesystem::path("/some/where/summary"));
    }

    void savesNothing_data()
    {
        QTest::addColumn<QString>("choice");
        QTest::newRow("cancelled") << QString();
        QTest::newRow("pattern left") << QStringLiteral("/the/program/*.txt");
        QTest::newRow("star in the name") << QStringLiteral("/the/program/my*summary.txt");
    }
    void savesNothing()
    {
        QFETCH(QString, choice);
        Bench bench;
        OpenWindow open(bench);
        bench.dialogs.expect(TestFileDialogs::Kind::Save, choice.toStdU16String());
        open.button("btnSave").click();
        QVERIFY(bench.saved.empty());
        QVERIFY(open.window.isVisible());
    }

    void savesInAFolderWithAStar()
    {
        Bench bench;
        OpenWindow open(bench);
        bench.dialogs.expect(TestFileDialogs::Kind::Save, "/a*b/summary.txt");
        open.button("btnSave").click();
        QCOMPARE(bench.saved.size(), std::size_t(1));
    }

    // kb-summary-replaces
    void replacesAFileWithoutAsking()
    {
        const QTemporaryDir folder;
        const std::filesystem::path file = folder.filePath(QStringLiteral("summary.txt")).toStdU16String();
        std::ofstream(file) << "a much longer text than the summary that takes its place";
        Bench bench;
        report::SummaryServices services = bench.services();
        services.saveFile = [](const std::filesystem::path& path, std::string_view content) {
            return static_cast<bool>(std::ofstream(path, std::ios::binary) << content);
        };
        frmSummary window(services);
        window.open();
        window.showReport(QStringLiteral("Configuration Summary"), kReport);
        bench.dialogs.expect(TestFileDialogs::Kind::Save, file);
        window.findChild<QPushButton*>(QStringLiteral("btnSave"))->click();
        QCOMPARE(bench.dialogs.shown.size(), std::size_t(1));
        QCOMPARE(bytes(fileContent(file)), bytes(kReport + "\r\n"));
    }

    void saysNothingWhenSavingFails()
    {
        Bench bench;
        bench.canSave = false;
        OpenWindow open(bench);
        const auto shownWindows = [] {
            QWidgetList shown = QApplication::topLevelWidgets();
            shown.removeIf([](const QWidget* widget) { return !widget->isVisible(); });
            return shown;
        };
        bench.dialogs.expect(TestFileDialogs::Kind::Save, "/not/writable/summary.txt");
        open.button("btnSave").click();
        QCOMPARE(bench.saved.size(), std::size_t(1));
        QCOMPARE(shownWindows(), QWidgetList{&open.window});
        QVERIFY(open.button("btnSave").isEnabled());
    }

    // Printing

    void printsADocumentACopy()
    {
        Bench bench;
        OpenWindow open(bench);
        bench.printer.expectDialog(3);
        QTest::mouseClick(&open.button("btnPrint"), Qt::LeftButton);
        QCOMPARE(bench.printer.documents.size(), std::size_t(3));
        for (const TestPrinter::Document& document : bench.printer.documents) {
            QCOMPARE(bytes(document.name), QByteArray("Keyboard Language Summary"));
            QCOMPARE(document.lines, kPrinted);
            QCOMPARE(document.end, TestPrinter::End::Printed);
        }
    }

    void printsWhatTheBoxHolds()
    {
        Bench bench;
        OpenWindow open(bench, std::string("'\0' '\r' '\n' '\xA0' '\x8D'\r\n", 21));
        QTest::keyClicks(&open.box(), QStringLiteral("typed"));
        QTest::keyClick(&open.box(), Qt::Key_Return);
        bench.printer.expectDialog(1);
        open.button("btnPrint").click();
        QCOMPARE(bench.printer.documents.size(), std::size_t(1));
        const Lines expected = {kMargin + std::string("'\0' '\r' '\n' '\xA0' '\x8D'", 19), kMargin + "typed"};
        QCOMPARE(bench.printer.documents[0].lines, expected);
    }

    void printsNothingWhenTheDialogIsCancelled()
    {
        Bench bench;
        OpenWindow open(bench);
        bench.printer.expectDialog(std::nullopt);
        open.button("btnPrint").click();
        QVERIFY(bench.printer.documents.empty());
    }

    // kb-last-line
    void givesUpAtAnUnfinishedLine()
    {
        Bench bench;
        OpenWindow open(bench, kReport + "no line end");
        bench.printer.expectDialog(3);
        open.button("btnPrint").click();
        QCOMPARE(bench.printer.documents.size(), std::size_t(1)); // and no further copy
        QCOMPARE(bench.printer.documents[0].lines, kPrinted);
        QCOMPARE(bench.printer.documents[0].end, TestPrinter::End::GivenUp);
    }

    void losesASingleLastCharacter()
    {
        Bench bench;
        OpenWindow open(bench, kReport + "x");
        bench.printer.expectDialog(2);
        open.button("btnPrint").click();
        QCOMPARE(bench.printer.documents.size(), std::size_t(2));
        QCOMPARE(bench.printer.documents[1].lines, kPrinted);
        QCOMPARE(bench.printer.documents[1].end, TestPrinter::End::Printed);
    }

    void stopsAtAPrinterError_data()
    {
        QTest::addColumn<TestPrinter::Failure>("failure");
        QTest::addColumn<std::size_t>("lines");
        QTest::addColumn<TestPrinter::End>("end");
        QTest::newRow("no job") << TestPrinter::Failure::Begin << std::size_t(0) << TestPrinter::End::GivenUp;
        QTest::newRow("in a line") << TestPrinter::Failure::Line << std::size_t(2) << TestPrinter::End::GivenUp;
        QTest::newRow("at the end") << TestPrinter::Failure::End << std::size_t(3) << TestPrinter::End::Printed;
    }
    void stopsAtAPrinterError()
    {
        QFETCH(TestPrinter::Failure, failure);
        QFETCH(std::size_t, lines);
        QFETCH(TestPrinter::End, end);
        Bench bench;
        OpenWindow open(bench);
        bench.printer.fail(failure, 1);
        bench.printer.expectDialog(3);
        open.button("btnPrint").click();
        QCOMPARE(bench.printer.documents.size(), std::size_t(2)); // the third copy is not tried
        QCOMPARE(bench.printer.documents[0].end, TestPrinter::End::Printed);
        QCOMPARE(bench.printer.documents[1].lines.size(), lines);
        QCOMPARE(bench.printer.documents[1].end, end);
        QVERIFY(open.window.isVisible());
    }
};

static const testsupport::RunnableTest<frmSummaryTest> kRunnable;
#include "frmSummaryTest.moc"
