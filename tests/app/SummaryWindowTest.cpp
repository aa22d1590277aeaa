#include "platform/ReplaceFile.h"
#include "platform/qt/VisibleText.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTimer>

using namespace testsupport;
using app::kKeyboardLanguageTab;

// The Summary button on the real window: which report, of which values, and how waiting for its window ends.
class SummaryWindowTest final : public QObject
{
    Q_OBJECT

    static QWidget* summaryWindow()
    {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == "frmSummary") {
                return window;
            }
        }
        return nullptr;
    }
    static std::string report()
    {
        return platform::fromVisible(
            summaryWindow()->findChild<QPlainTextEdit*>(QStringLiteral("txtSummary"))->document()->toRawText());
    }
    // Presses Summary and runs `meanwhile` while its window is open; the press returns when it was closed.
    static void withSummary(const MainWindowFixture& f, const std::function<void()>& meanwhile)
    {
        bool ran = false;
        QTimer::singleShot(0, f.window.get(), [&] {
            ran = true;
            meanwhile();
        });
        f.press("KEY_SUMMARY");
        QVERIFY(ran);
    }
    static void pressDone()
    {
        QTest::mouseClick(summaryWindow()->findChild<QPushButton*>(QStringLiteral("btnDone")), Qt::LeftButton);
    }

private slots:
    void configurationTabGivesItsReport()
    {
        MainWindowFixture f;
        f.start();
        f.window->link().state().FirmwareVersion = "3.07";
        f.window->paramTables().PutTableEntry_CFG("02D", "5A", 2);
        f.find<QPlainTextEdit>("txtComments_CFG")->setPlainText(QStringLiteral("till 4\nback door"));
        std::string text;
        QString caption;
        withSummary(f, [&] {
            text = report();
            caption = summaryWindow()->windowTitle();
            pressDone();
        });
        QCOMPARE(caption, "Configuration Summary");
        QVERIFY(text.starts_with(std::string(54 - 19, ' ') + "Brennic Teslin 3.07" +
                                 "03/09/2024\r\n"
                                 "Configuration table\r\n"));
        QVERIFY(text.find("[02D] Table Ver. #: 5Ah\r\n") != std::string::npos);
        QVERIFY(text.find("till 4\r\nback door\r\n") != std::string::npos);
        QVERIFY(!summaryWindow()->isVisible());
        QVERIFY(f.reader.commands.isEmpty());
    }

    void keyboardTabGivesItsReport()
    {
        MainWindowFixture f;
        f.start();
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
        std::string text;
        withSummary(f, [&] {
            text = report();
            pressDone();
        });
        QVERIFY(text.find("Keyboard Language table\r\n\r\n\r\n     Keyboard Flags: [080] * ") != std::string::npos);
        QVERIFY(text.find("[083][084] 20 / 03       uses: [AltGr] \r\n") != std::string::npos);
    }

    void eachReportHasTheCommentOfItsTable()
    {
        MainWindowFixture f;
        f.start();
        f.find<QPlainTextEdit>("txtComments_CFG")->setPlainText(QStringLiteral("till four"));
        f.find<QPlainTextEdit>("txtComments_KB")->setPlainText(QStringLiteral("laid out for Bern"));
        for (const int tab : {0, int{kKeyboardLanguageTab}}) {
            f.find<QTabWidget>("SSTab1")->setCurrentIndex(tab);
            std::string text;
            withSummary(f, [&] {
                text = report();
                pressDone();
            });
            QCOMPARE(text.find("till four") != std::string::npos, tab == 0);
            QCOMPARE(text.find("laid out for Bern") != std::string::npos, tab != 0);
        }
    }

    // Kept behaviour: after an Update the address list holds second addresses only.
    void keyboardReportAfterAnUpdateLacksTheOddAddresses()
    {
        MainWindowFixture f;
        f.start();
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
        f.press("KEY_UPDATE");
        std::string text;
        withSummary(f, [&] {
            text = report();
            pressDone();
        });
        QVERIFY(text.find("[083][084]  /        uses: no shift flags\r\n") != std::string::npos);
    }

    void savedFileIsTheShownTextAndOneLineEnd()
    {
        MainWindowFixture f;
        f.start();
        // Every byte as a sentinel, four at a time would do; the ends of the code page and the control characters do.
        f.window->paramTables().PutTableEntry_CFG("015", "00", 2);
        f.window->paramTables().PutTableEntry_CFG("016", "0D", 2);
        f.window->paramTables().PutTableEntry_CFG("017", "A0", 2);
        f.window->paramTables().PutTableEntry_CFG("018", "81", 2);
        f.window->paramTables().PutTableEntry_CFG("019", "FF", 2);
        const std::filesystem::path file = platform::toPath(f.folder.filePath(QStringLiteral("report.txt")));
        f.dialogs.expect(TestFileDialogs::Kind::Save, file);
        std::string text;
        withSummary(f, [&] {
            text = report();
            QTest::mouseClick(summaryWindow()->findChild<QPushButton*>(QStringLiteral("btnSave")), Qt::LeftButton);
            pressDone();
        });
        const auto saved = platform::readFile(file);
        QVERIFY(bool(saved));
        QCOMPARE(QByteArray::fromStdString(saved.value()), QByteArray::fromStdString(text + "\r\n"));
        QVERIFY(text.find(std::string("[015] '\0' (7-bit)", 17)) != std::string::npos);
        QCOMPARE(f.dialogs.shown[0].setup.name.string(), "*.txt");
        QCOMPARE(f.dialogs.shown[0].setup.filter, "Teslin Summary (*.txt)");
        QVERIFY(f.boxes.shown.empty());
    }

    void closingTheMainWindowEndsTheWait()
    {
        MainWindowFixture f;
        f.start();
        QSignalSpy unloaded(f.window.get(), &app::frmMain::unloaded);
        withSummary(f, [&] { QVERIFY(f.window->close()); });
        QCOMPARE(unloaded.count(), 1);
        QVERIFY(!summaryWindow()->isVisible());
    }

    void pressingSummaryAgainShowsTheOtherTable()
    {
        MainWindowFixture f;
        f.start();
        QString second;
        withSummary(f, [&] {
            f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
            f.press("KEY_SUMMARY");
            second = summaryWindow()->windowTitle();
            pressDone();
        });
        QCOMPARE(second, "Keyboard Language Summary");
        QVERIFY(!summaryWindow()->isVisible());
    }

    void mainWindowStaysUsableMeanwhile()
    {
        MainWindowFixture f;
        f.start();
        withSummary(f, [&] {
            f.press("KEY_RETRIEVE");
            QCOMPARE(f.reader.commands.size(), 32);
            pressDone();
        });
    }

    void placementOfTheSummaryIsKept()
    {
        MainWindowFixture f;
        f.start();
        withSummary(f, [&] {
            summaryWindow()->resize(500, 400);
            pressDone();
        });
        const platform::ProfileStrings settings(f.settingsFile());
        QVERIFY(QString::fromStdString(settings.get("Select_Window_frmSummary", "Settings")).endsWith(",500,400"));
    }
};

static const testsupport::RunnableTest<SummaryWindowTest> kRunnable;
#include "SummaryWindowTest.moc"
