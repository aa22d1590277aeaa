#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QAction>
#include <QDialog>

using namespace testsupport;
using platform::BoxAnswer;

namespace {

constexpr int kIdentificationCommands = 5;

constexpr std::array<const char*, 10> kEntries = {"mnuOpen_CFG", "mnuSave_CFG",  "mnuSaveAs_CFG", "mnuOpen_KB",
                                                  "mnuSave_KB",  "mnuSaveAs_KB", "mnuOptions",    "mnuEditSingle",
                                                  "mnuRead",     "mnuAbout"};

} // namespace

// What can be pressed while the device is in use: what would do nothing is grey.
class BusyWindowTest final : public QObject
{
    Q_OBJECT

    // Does something while the second row is on its way.
    static void during(MainWindowFixture& f, const char* key, const std::function<void()>& work)
    {
        bool done = false;
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 2 && !done) {
                done = true;
                work();
            }
        };
        f.press(key);
        QVERIFY(done);
        f.reader.onOutput = {};
        f.reader.commands.clear();
    }

private slots:
    void menuEntries()
    {
        MainWindowFixture f;
        f.start();
        QStringList enabled;
        const auto look = [&] {
            for (const char* entry : kEntries) {
                if (f.find<QAction>(entry)->isEnabled()) {
                    enabled << QLatin1String(entry);
                }
            }
            if (f.find<QPushButton>("btnNotes")->isEnabled()) {
                enabled << QStringLiteral("btnNotes");
            }
        };
        bool exitWorks = false;
        during(f, "KEY_UPDATE", [&] {
            look();
            exitWorks = f.find<QAction>("mnuExit")->isEnabled() && f.find<QToolButton>("KEY_EXIT")->isEnabled();
        });
        QCOMPARE(enabled, QStringList());
        QVERIFY(exitWorks);
        look();
        QCOMPARE(enabled.size(), static_cast<qsizetype>(kEntries.size()) + 1);
    }

    // A row that is sent by itself and a change of the tab use the device as well.
    void everyOperation()
    {
        MainWindowFixture f;
        f.start();
        bool wasGrey = false;
        f.reader.onOutput = [&](int) { wasGrey = !f.find<QAction>("mnuAbout")->isEnabled(); };
        f.window->paramTables().CFG.grid().setRow(2);
        f.boxes.expect(BoxAnswer::Yes);
        f.editor_CFG().grdCFG_DblClick();
        QVERIFY(wasGrey);
        QVERIFY(f.find<QAction>("mnuAbout")->isEnabled());
        wasGrey = false;
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(app::kReadTestTab);
        QVERIFY(wasGrey);
        QVERIFY(f.find<QAction>("mnuAbout")->isEnabled());
    }

    void theSingleSettingDialogStaysShut()
    {
        MainWindowFixture f;
        f.start();
        during(f, "KEY_UPDATE", [&] {
            QTest::keyClick(f.window.get(), Qt::Key_F2);
            f.window->mnuEditSingle_Click();
        });
        QCOMPARE(f.find<QDialog>("dlgSingleField"), nullptr);
        f.window->mnuEditSingle_Click();
        QVERIFY(f.find<QDialog>("dlgSingleField")->isVisible());
    }

    void theButtonsOfTheSingleSettingDialog()
    {
        MainWindowFixture f;
        f.start();
        f.find<QAction>("mnuEditSingle")->trigger();
        auto* get = f.find<QPushButton>("btnGetCurrentSingle");
        auto* update = f.find<QPushButton>("btnUpdateSingleField");
        bool wereGrey = false;
        during(f, "KEY_UPDATE", [&] {
            wereGrey = !get->isEnabled() && !update->isEnabled() && f.find<QPushButton>("OKButton")->isEnabled();
        });
        QVERIFY(wereGrey);
        QVERIFY(get->isEnabled() && update->isEnabled());
    }

    // A second blank must not press "Done" because the first one is still at work.
    void aPressedButtonKeepsTheKeyboard()
    {
        MainWindowFixture f;
        f.start();
        f.find<QAction>("mnuEditSingle")->trigger();
        auto* dialog = f.find<QDialog>("dlgSingleField");
        auto* get = f.find<QPushButton>("btnGetCurrentSingle");
        dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        f.find<QLineEdit>("txtSingleAddress")->setText(QStringLiteral("01A"));
        get->setFocus();
        bool pressed = false;
        f.reader.onOutput = [&](int count) {
            if (count == 3) {
                pressed = true;
                QWidget* const holder = dialog->focusWidget() == nullptr ? dialog : dialog->focusWidget();
                QTest::keyClick(holder, Qt::Key_Space);
            }
        };
        QTest::keyClick(get, Qt::Key_Space);
        QVERIFY(pressed);
        QVERIFY(dialog->isVisible());
        QCOMPARE(f.find<QLineEdit>("txtSingleValue")->text(), "12");
        QCOMPARE(dialog->focusWidget(), get);
        // Who has gone on meanwhile stays there.
        f.reader.onOutput = [&](int count) {
            if (count > 6) {
                f.find<QLineEdit>("txtSingleValue")->setFocus();
            }
        };
        QTest::keyClick(get, Qt::Key_Space);
        QCOMPARE(dialog->focusWidget(), f.find<QWidget>("txtSingleValue"));
    }

    void theTestsOfTheOptions()
    {
        MainWindowFixture f;
        f.start();
        f.find<QAction>("mnuOptions")->trigger();
        bool wereGrey = false;
        f.reader.onOutput = [&](int) {
            wereGrey =
                !f.find<QPushButton>("btnTestName")->isEnabled() && !f.find<QPushButton>("btnTestPort")->isEnabled();
        };
        f.boxes.expect(BoxAnswer::Ok);
        auto* dialog = f.find<QDialog>("frmOptions");
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        f.find<QPushButton>("btnTestPort")->setFocus();
        QTest::keyClick(f.find<QPushButton>("btnTestPort"), Qt::Key_Space);
        QVERIFY(wereGrey);
        QVERIFY(f.find<QPushButton>("btnTestName")->isEnabled() && f.find<QPushButton>("btnTestPort")->isEnabled());
        QCOMPARE(dialog->focusWidget(), f.find<QWidget>("btnTestPort"));
    }

    void abortTwiceEndsTheTransferAndNotTheProgram()
    {
        MainWindowFixture f;
        f.start();
        during(f, "KEY_RETRIEVE", [&] {
            f.press("KEY_EXIT");
            f.press("KEY_EXIT");
        });
        QVERIFY(f.window->isVisible());
        QCOMPARE(f.find<QToolButton>("KEY_EXIT")->text(), "Exit");
    }
};

static const testsupport::RunnableTest<BusyWindowTest> kRunnable;
#include "BusyWindowTest.moc"
