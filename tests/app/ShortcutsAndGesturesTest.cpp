#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QAction>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QSet>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>

using namespace testsupport;

// What a hand on the keyboard or the mouse can do to the main window, and what it cannot do by accident.
class ShortcutsAndGesturesTest final : public QObject
{
    Q_OBJECT

    static QKeySequence shortcutOf(const MainWindowFixture& f, const char* action)
    {
        return f.find<QAction>(action)->shortcut();
    }

private slots:
    void shortcutsStandInTheMenus()
    {
        MainWindowFixture f;
        f.start();
        const std::vector<std::pair<const char*, const char*>> shortcuts = {
            {"mnuOpen_CFG", "Ctrl+O"},      {"mnuSave_CFG", "Ctrl+S"}, {"mnuSaveAs_CFG", "Ctrl+Shift+S"},
            {"mnuOpen_KB", "Ctrl+Shift+O"}, {"mnuSave_KB", "Ctrl+L"},  {"mnuSaveAs_KB", "Ctrl+Shift+L"},
            {"mnuExit", "Ctrl+Q"},          {"mnuEditSingle", "F2"},   {"mnuRead", "F1"},
            {"KEY_RETRIEVE", "F5"},         {"KEY_UPDATE", "F6"},      {"KEY_SUMMARY", "F7"}};
        QSet<QString> seen;
        for (const auto& [action, keys] : shortcuts) {
            QCOMPARE(shortcutOf(f, action).toString(), QLatin1String(keys));
            QVERIFY2(!seen.contains(QLatin1String(keys)), keys);
            seen.insert(QLatin1String(keys));
            QVERIFY(f.find<QAction>(action)->isShortcutVisibleInContextMenu());
        }
        // What throws a table away or ends the program has none.
        for (const char* action : {"KEY_DEFAULT", "KEY_EXIT"}) {
            QVERIFY2(shortcutOf(f, action).isEmpty(), action);
        }
    }

    void shortcutsAct()
    {
        MainWindowFixture f;
        f.start();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        f.find<QWidget>("grdCFG")->setFocus();
        f.dialogs.expect(TestFileDialogs::Kind::Open, {});
        QTest::keyClick(f.window.get(), Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
        f.dialogs.expect(TestFileDialogs::Kind::Save, {});
        QTest::keyClick(f.window.get(), Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(f.dialogs.shown.size(), std::size_t{2});
        QCOMPARE(f.find<QTabWidget>("SSTab1")->currentIndex(), int{app::kKeyboardLanguageTab});
    }

    void escapeStopsATransferAndNothingElse()
    {
        MainWindowFixture f;
        f.start();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        QTest::keyClick(f.window.get(), Qt::Key_Escape);
        QVERIFY(f.window->isVisible());
        // On the second of 27 rows.
        auto* exit = f.find<QAction>("KEY_EXIT");
        bool wasAbort = false;
        f.reader.answers = [&](const std::string& command) {
            if (command.find("WPV013") != std::string::npos) {
                QMetaObject::invokeMethod(
                    f.window.get(),
                    [&] {
                        wasAbort = exit->text() == QLatin1String("Abort");
                        QTest::keyClick(f.window.get(), Qt::Key_Escape);
                    },
                    Qt::QueuedConnection);
            }
            return f.model.answerTo(command);
        };
        f.press("KEY_RETRIEVE");
        QVERIFY(wasAbort);
        QVERIFY(f.reader.commands.back().contains("WPV01"));
        QVERIFY2(f.reader.commands.size() < 10, f.reader.commands.join(' ').constData());
        QCOMPARE(exit->text(), QStringLiteral("Exit"));
        QVERIFY(exit->shortcut().isEmpty());
        QVERIFY(f.window->isVisible());
    }

    void tabReachesEveryToolbarButtonAndBothEnds()
    {
        MainWindowFixture f;
        f.start();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        f.find<QWidget>("grdCFG")->setFocus();
        QSet<QString> reached;
        for (int i = 0; i < 40; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            reached.insert(QApplication::focusWidget()->objectName());
        }
        for (const char* control : {"KEY_RETRIEVE", "KEY_UPDATE", "KEY_LOAD", "KEY_SAVE", "KEY_DEFAULT", "KEY_SUMMARY",
                                    "KEY_EXIT", "grdCFG", "txtComments_CFG", "btnNotes", "qt_tabwidget_tabbar"}) {
            QVERIFY2(reached.contains(QLatin1String(control)), control);
        }
    }

    void controlTabChangesTheTab_data()
    {
        QTest::addColumn<QString>("holder");
        for (const char* holder :
             {"grdCFG", "txtHexEntry", "txtComments_CFG", "btnNotes", "KEY_SAVE", "KEY_EXIT", "qt_tabwidget_tabbar"}) {
            QTest::newRow(holder) << holder;
        }
    }
    void controlTabChangesTheTab()
    {
        QFETCH(QString, holder);
        MainWindowFixture f;
        f.start();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        f.window->paramTables().CFG.grid().setRow(11);
        auto* tabs = f.find<QTabWidget>("SSTab1");
        const auto focus = [&] {
            auto* widget = f.window->findChild<QWidget*>(holder);
            widget->setFocus();
            return widget->hasFocus();
        };
        QVERIFY(focus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(tabs->currentIndex(), 1);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(tabs->currentIndex(), 0);
        QCOMPARE(f.find<QPlainTextEdit>("txtComments_CFG")->toPlainText(), "");
        QVERIFY(focus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(tabs->currentIndex(), int{app::kReadTestTab});
        QVERIFY(f.reader.commands.contains("/rawsend \\xA2"));
    }

    // There every key is the reader's, whatever has the keyboard.
    void controlTabStaysInTheReadTest()
    {
        MainWindowFixture f;
        f.start();
        auto* tabs = f.find<QTabWidget>("SSTab1");
        tabs->setCurrentIndex(app::kReadTestTab);
        f.reader.commands.clear();
        f.window->activateWindow(); // the please-wait window had the keyboard
        QTRY_COMPARE(QApplication::activeWindow(), f.window.get());
        for (const char* holder : {"txtReadTest", "qt_tabwidget_tabbar", "KEY_EXIT"}) {
            f.find<QWidget>(holder)->setFocus();
            QVERIFY2(f.find<QWidget>(holder)->hasFocus(), holder);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
            QCOMPARE(tabs->currentIndex(), int{app::kReadTestTab});
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
            QCOMPARE(tabs->currentIndex(), int{app::kReadTestTab});
        }
        QVERIFY(f.reader.commands.isEmpty());
    }

    void enterAsksWhatADoubleClickAsks_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("question");
        QTest::newRow("a setting") << 0 << 2 << "Do you want to send this parameter? ( 013=95)";
        QTest::newRow("a pair") << 1 << 3 << "Do you want to send these parameters? ( 083=20 and 084=03 )";
        QTest::newRow("the read-only row") << 0 << 1 << "";
    }
    void enterAsksWhatADoubleClickAsks()
    {
        QFETCH(int, tab);
        QFETCH(int, row);
        QFETCH(QString, question);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
            MainWindowFixture f;
            f.start();
            f.find<QTabWidget>("SSTab1")->setCurrentIndex(tab);
            auto* grid = f.find<tables::ParamGrid>(tab == 0 ? "grdCFG" : "grdKB");
            grid->setRow(row);
            if (!question.isEmpty()) {
                f.boxes.expect(platform::BoxAnswer::No);
            }
            QTest::keyClick(grid, key, key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
            QCOMPARE(QString::fromStdString(f.boxes.lastText()), question);
            QVERIFY(f.reader.commands.isEmpty());
        }
    }

    void nothingIsSortedEditedOrHiddenByAccident()
    {
        MainWindowFixture f;
        f.start();
        for (const char* name : {"grdCFG", "grdKB"}) {
            auto* grid = f.find<QTableView>(name);
            f.find<QTabWidget>("SSTab1")->setCurrentIndex(name == QByteArrayView("grdKB"));
            const QString first = grid->model()->index(0, 1).data().toString();
            QTest::mouseClick(grid->horizontalHeader()->viewport(), Qt::LeftButton, {}, {100, 5});
            QVERIFY(!grid->isSortingEnabled());
            QCOMPARE(grid->model()->index(0, 1).data().toString(), first);
            QVERIFY(!grid->horizontalHeader()->sectionsMovable());
            QCOMPARE(grid->editTriggers(), QAbstractItemView::NoEditTriggers);
            for (const Qt::Key key : {Qt::Key_5, Qt::Key_Space}) {
                QTest::keyClick(grid, key);
                QCOMPARE(grid->findChildren<QLineEdit*>().size(), 0);
            }
            QVERIFY(!grid->model()->index(0, 2).flags().testFlag(Qt::ItemIsEditable));
        }
        auto* toolbar = f.find<QToolBar>("Toolbar1");
        QVERIFY(!toolbar->isMovable() && !toolbar->isFloatable());
        for (QWidget* target : {static_cast<QWidget*>(toolbar), static_cast<QWidget*>(f.window.get())}) {
            QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, target->mapToGlobal(QPoint(5, 5)));
            QApplication::sendEvent(target, &event);
            QCOMPARE(QApplication::activePopupWidget(), nullptr);
        }
        QVERIFY(toolbar->isVisible());
    }

    void everyButtonHasRoomInTheSmallestWindow()
    {
        MainWindowFixture f;
        f.start();
        f.window->resize(f.window->minimumSizeHint());
        QCoreApplication::processEvents();
        for (const char* key :
             {"KEY_RETRIEVE", "KEY_UPDATE", "KEY_LOAD", "KEY_SAVE", "KEY_DEFAULT", "KEY_SUMMARY", "KEY_EXIT"}) {
            QVERIFY2(f.find<QToolButton>(key)->isVisible(), key);
        }
        const auto* picture = f.find<QLabel>("imgProduct");
        QVERIFY(!picture->geometry().intersects(f.find<QToolButton>("KEY_EXIT")->geometry()) || !picture->isVisible());
    }
};

static const testsupport::RunnableTest<ShortcutsAndGesturesTest> kRunnable;
#include "ShortcutsAndGesturesTest.moc"
