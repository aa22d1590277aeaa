#include "platform/qt/PathText.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QAction>
#include <QDialog>
#include <QPlainTextEdit>
#include <QTabBar>

using namespace testsupport;
using app::kConfigurationTab;
using app::kKeyboardLanguageTab;
using app::kReadTestTab;
using platform::BoxAnswer;

namespace {

const QByteArray kTable_CFG = "Comments,\r\n001,00 ;identification\r\n01C,11 ;pre card\r\n";
const QByteArray kTable_KB = "080,01 ;flags\r\n083,10,1E ;a\r\n";

// A window in which a box of a field editor has the keyboard, on either table.
class Desk : public MainWindowFixture
{
public:
    [[nodiscard]] bool startInEditor(int tab)
    {
        start();
        find<QTabWidget>("SSTab1")->setCurrentIndex(tab);
        return activate() && focusEditor(tab);
    }
    [[nodiscard]] bool focusEditor(int tab)
    {
        const bool onConfiguration = tab == kConfigurationTab;
        window->paramTables().CFG.grid().setRow(onConfiguration ? 11 : 1);
        window->paramTables().KB.grid().setRow(onConfiguration ? 1 : 3);
        auto* box = find<QLineEdit>(onConfiguration ? "txtHexEntry" : "txtHexEntry_KB");
        box->setFocus();
        return box->hasFocus();
    }
    [[nodiscard]] bool activate()
    {
        window->activateWindow();
        return QTest::qWaitFor([this] { return QApplication::activeWindow() == window.get(); });
    }
    [[nodiscard]] QString holder() const
    {
        const QWidget* widget = QApplication::focusWidget();
        return widget == nullptr ? QStringLiteral("nobody") : widget->objectName();
    }
    [[nodiscard]] std::filesystem::path makeFile(const char* name, const QByteArray& bytes)
    {
        QFile file(folder.filePath(QLatin1String(name)));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? platform::toPath(file.fileName())
                                                                                    : std::filesystem::path();
    }
    void strike(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
    }
};

} // namespace

// Where the keyboard is when what had it goes away. On the toolbar the next blank, a usual sentinel, would start a
// transfer over the table or end the program.
class KeyboardFocusTest final : public QObject
{
    Q_OBJECT

    static const char* gridOf(int tab) { return tab == kConfigurationTab ? "grdCFG" : "grdKB"; }

    static void tables()
    {
        QTest::addColumn<int>("tab");
        QTest::newRow("Configuration") << int{kConfigurationTab};
        QTest::newRow("Keyboard Language") << int{kKeyboardLanguageTab};
    }

    // A blank on the grid does nothing.
    static void verifyBlankIsHarmless(Desk& f)
    {
        f.reader.commands.clear();
        f.strike(Qt::Key_Space);
        QVERIFY(f.window->isVisible());
        QVERIFY(f.reader.commands.isEmpty());
        QVERIFY(f.boxes.verifyAllUsed());
    }

private slots:
    void afterAFileAction_data() { tables(); }
    void afterAFileAction()
    {
        QFETCH(int, tab);
        const bool onConfiguration = tab == kConfigurationTab;
        Desk f;
        QVERIFY(f.startInEditor(tab));
        const auto file = f.makeFile(onConfiguration ? "a.tlc" : "a.txt", onConfiguration ? kTable_CFG : kTable_KB);
        QVERIFY(!file.empty());
        f.dialogs.expect(TestFileDialogs::Kind::Open, file);
        f.strike(Qt::Key_O, onConfiguration ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(f.dialogs.verifyAllUsed());
        QCOMPARE(f.holder(), QLatin1String(gridOf(tab)));
        verifyBlankIsHarmless(f);

        f.window->paramTables().CFG.grid().setRow(onConfiguration ? 2 : 1);
        f.window->paramTables().KB.grid().setRow(onConfiguration ? 1 : 2);
        auto* box = f.find<QLineEdit>(onConfiguration ? "txtHexEntry" : "txtHexEntry_KB");
        box->setFocus();
        QVERIFY(box->hasFocus());
        f.strike(onConfiguration ? Qt::Key_S : Qt::Key_L, Qt::ControlModifier); // to the file just loaded
        QCOMPARE(f.holder(), QLatin1String(gridOf(tab)));
        verifyBlankIsHarmless(f);

        box->setFocus();
        f.dialogs.expect(TestFileDialogs::Kind::Save,
                         platform::toPath(f.folder.filePath(QStringLiteral("b.") + (onConfiguration ? "tlc" : "txt"))));
        f.press("KEY_SAVE");
        QCOMPARE(f.holder(), QLatin1String(gridOf(tab)));
        verifyBlankIsHarmless(f);
    }

    void afterAReset_data() { tables(); }
    void afterAReset()
    {
        QFETCH(int, tab);
        Desk f;
        QVERIFY(f.startInEditor(tab));
        f.press("KEY_DEFAULT");
        QCOMPARE(f.holder(), QLatin1String(gridOf(tab)));
        verifyBlankIsHarmless(f);
    }

    void duringAndAfterATransfer_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("key");
        QTest::newRow("Configuration, Retrieve") << int{kConfigurationTab} << int{Qt::Key_F5};
        QTest::newRow("Configuration, Update") << int{kConfigurationTab} << int{Qt::Key_F6};
        QTest::newRow("Keyboard Language, Retrieve") << int{kKeyboardLanguageTab} << int{Qt::Key_F5};
        QTest::newRow("Keyboard Language, Update") << int{kKeyboardLanguageTab} << int{Qt::Key_F6};
    }
    void duringAndAfterATransfer()
    {
        QFETCH(int, tab);
        QFETCH(int, key);
        Desk f;
        QVERIFY(f.startInEditor(tab));
        QSet<QString> holders;
        f.reader.onOutput = [&](int count) {
            if (count > 5) { // the rows; before them the box still stands
                holders.insert(f.window->focusWidget()->objectName());
            }
        };
        f.strike(key);
        QVERIFY(f.reader.commands.size() > 20);
        QCOMPARE(holders, QSet<QString>{QLatin1String(gridOf(tab))});
        QVERIFY(f.activate());
        QCOMPARE(f.holder(), QLatin1String(gridOf(tab)));
        f.reader.onOutput = {};
        verifyBlankIsHarmless(f);
    }

    // The buttons are off meanwhile; the one that was pressed hands the keyboard on, and not to "Exit".
    void afterATransferStartedOnTheToolbar_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("Retrieve") << "KEY_RETRIEVE";
        QTest::newRow("Update") << "KEY_UPDATE";
    }
    void afterATransferStartedOnTheToolbar()
    {
        QFETCH(QString, button);
        Desk f;
        f.start();
        QVERIFY(f.activate());
        f.window->findChild<QToolButton*>(button)->setFocus();
        f.strike(Qt::Key_Space);
        QVERIFY(f.reader.commands.size() > 20);
        QVERIFY(f.activate());
        QCOMPARE(f.holder(), "grdCFG");
        verifyBlankIsHarmless(f);
    }

    void theExitButtonKeepsItForTheAbort()
    {
        Desk f;
        f.start();
        QVERIFY(f.activate());
        f.find<QToolButton>("KEY_EXIT")->setFocus();
        f.strike(Qt::Key_F5);
        QCOMPARE(f.window->focusWidget()->objectName(), "KEY_EXIT");
    }

    void afterATabChange()
    {
        Desk f;
        QVERIFY(f.startInEditor(kConfigurationTab));
        auto* tabs = f.find<QTabWidget>("SSTab1");
        const auto click = [&](int tab) {
            QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(tab).center());
        };
        click(kKeyboardLanguageTab);
        QCOMPARE(f.holder(), "grdKB");
        QVERIFY(f.focusEditor(kKeyboardLanguageTab));
        click(kConfigurationTab);
        QCOMPARE(f.holder(), "grdCFG");
        click(kKeyboardLanguageTab); // where a box had it last, that is hidden by now
        QCOMPARE(f.holder(), "grdKB");
        f.find<QWidget>("txtComments_KB")->setFocus();
        click(kReadTestTab);
        QVERIFY(f.activate());
        QCOMPARE(f.holder(), "txtReadTest");
        click(kConfigurationTab);
        QVERIFY(f.activate());
        QCOMPARE(f.holder(), "grdCFG");
        verifyBlankIsHarmless(f);
    }

    void theNotesButtonHandsItToTheReadTest()
    {
        Desk f;
        f.start();
        QVERIFY(f.activate());
        auto* tabs = f.find<QTabWidget>("SSTab1");
        f.find<QWidget>("btnNotes")->setFocus();
        QSet<QString> holders;
        f.reader.onOutput = [&](int) { holders.insert(f.window->focusWidget()->objectName()); };
        QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(kReadTestTab).center());
        QCOMPARE(holders, QSet<QString>{QStringLiteral("txtReadTest")});
    }

    // What is hidden while a box or a dialog is up must not get the keyboard when that goes.
    void whileAnotherWindowHasTheKeyboard()
    {
        Desk f;
        QVERIFY(f.startInEditor(kConfigurationTab));
        {
            QDialog dialog(f.window.get());
            dialog.show();
            dialog.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            f.window->paramTables().PutTableEntry_CFG("01C", "XXX", 0);
            f.boxes.expect(BoxAnswer::No);
            f.window->Toolbar1_ButtonClick(app::ToolbarKey::Default);
            f.table_CFG().TableChanged = false;
        }
        QVERIFY(f.activate());
        QCOMPARE(f.holder(), "grdCFG");
        verifyBlankIsHarmless(f);
    }

    void afterChangingASingleField()
    {
        Desk f;
        QVERIFY(f.startInEditor(kConfigurationTab));
        f.strike(Qt::Key_F2);
        QWidget* dialog = f.find<QWidget>("dlgSingleField");
        dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        f.find<QLineEdit>("txtSingleAddress")->setText(QStringLiteral("01A"));
        f.find<QLineEdit>("txtSingleValue")->setText(QStringLiteral("20"));
        f.boxes.expect(BoxAnswer::Ok);
        QTest::mouseClick(f.find<QPushButton>("btnUpdateSingleField"), Qt::LeftButton);
        dialog->close();
        QVERIFY(f.activate());
        QCOMPARE(f.holder(), "grdCFG");
        f.table_CFG().TableChanged = false;
    }

    void aDialogThatChangesNothingGivesItBack()
    {
        Desk f;
        QVERIFY(f.startInEditor(kConfigurationTab));
        f.find<QAction>("mnuOptions")->trigger();
        QWidget* dialog = f.find<QWidget>("frmOptions");
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        dialog->close();
        QVERIFY(f.activate());
        QCOMPARE(f.holder(), "txtHexEntry");
    }
};

static const testsupport::RunnableTest<KeyboardFocusTest> kRunnable;
#include "KeyboardFocusTest.moc"
