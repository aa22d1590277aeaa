#include "simulator/TypedCard.h"
#include "tests/app/ReadTestFixture.h"
#include "tests/support/RunnableTest.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QShortcut>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleFactory>

using namespace Qt::StringLiterals;
using namespace testsupport;
using app::kReadTestTab;

// What the reader types belongs to the box of the read test, whatever it types and however fast.
class ReadTestKeyboardTest final : public QObject
{
    Q_OBJECT

private slots:
    // The user has clicked another tab while the test was being entered: the keyboard is there.
    void aTestThatIsHiddenMeanwhileTakesTheKeyboardFromNobody()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        QStringList holders;
        desk.f.reader.onOutput = [&](int count) {
            if (count == 3) {
                desk.f.find<QTabWidget>("SSTab1")->setCurrentIndex(app::kConfigurationTab);
                desk.f.find<QWidget>("grdCFG")->setFocus();
            }
            if (count == 11) { // the first mode command: the box has been asked to take the keyboard
                const QWidget* const holder = desk.f.window->focusWidget();
                holders << (holder == nullptr ? QStringLiteral("nobody") : holder->objectName());
            }
        };
        desk.clickTab(app::kReadTestTab);
        QCOMPARE(holders, QStringList{QStringLiteral("grdCFG")});
    }

    // Each key comes after the letters x and y.
    void aKey_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("raw");
        const auto row = [](const char* what, int key, Qt::KeyboardModifiers modifiers, const QString& text,
                            const QString& shown,
                            const QString& raw) { QTest::newRow(what) << key << modifiers << text << shown << raw; };
        const auto nothing = [](const char* what, int key, Qt::KeyboardModifiers modifiers = {},
                                const QString& text = {}) {
            QTest::newRow(what) << key << modifiers << text << "xy"
                                << "xy";
        };
        row("letter", Qt::Key_A, {}, "a", "xya", "xya");
        row("capital letter", Qt::Key_A, Qt::ShiftModifier, "A", "xyA", "xyA");
        row("digit of the keypad", Qt::Key_7, Qt::KeypadModifier, "7", "xy7", "xy7");
        row("blank", Qt::Key_Space, {}, " ", u"xy\u2022"_s, u"xy\u2022"_s);
        row("Enter", Qt::Key_Return, {}, "\r", "xy\n", "xy<CR>");
        row("Enter of the keypad", Qt::Key_Enter, Qt::KeypadModifier, "\r", "xy\n", "xy<CR>");
        row("Tab", Qt::Key_Tab, {}, "\t", "xy\t", "xy<HT>");
        row("Shift+Tab", Qt::Key_Backtab, Qt::ShiftModifier, "\t", "xy\t", "xy<HT>");
        row("Shift+Tab without a character", Qt::Key_Backtab, Qt::ShiftModifier, "", "xy\t", "xy<HT>");
        row("Ctrl+Tab", Qt::Key_Tab, Qt::ControlModifier, "\t", "xy\t", "xy<HT>");
        row("Ctrl+Tab without a character", Qt::Key_Tab, Qt::ControlModifier, "", "xy\t", "xy<HT>");
        row("Ctrl+Shift+Tab", Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, "", "xy\t", "xy<HT>");
        row("Escape", Qt::Key_Escape, {}, "\x1B", "xy", "xy<ESC>");
        row("Backspace", Qt::Key_Backspace, {}, "\b", "x", "xy<BS>");
        nothing("Delete", Qt::Key_Delete, {}, "\x7F");
        nothing("Delete of the keypad", Qt::Key_Delete, Qt::KeypadModifier, "\x7F");
        nothing("Left", Qt::Key_Left);
        nothing("Right", Qt::Key_Right);
        nothing("Up", Qt::Key_Up);
        nothing("Down", Qt::Key_Down);
        nothing("Home", Qt::Key_Home);
        nothing("End", Qt::Key_End);
        nothing("Page up", Qt::Key_PageUp);
        nothing("Page down", Qt::Key_PageDown);
        nothing("Insert", Qt::Key_Insert);
        nothing("F1", Qt::Key_F1);
        nothing("F10", Qt::Key_F10);
        nothing("Shift alone", Qt::Key_Shift);
        nothing("Ctrl alone", Qt::Key_Control);
        nothing("Alt alone", Qt::Key_Alt);
        nothing("AltGr alone", Qt::Key_AltGr);
        nothing("a dead key", Qt::Key_Dead_Acute);
        row("AltGr as a shift of its own", Qt::Key_E, Qt::GroupSwitchModifier, u"\u20AC"_s, u"xy\u20AC"_s,
            u"xy\u20AC"_s);
        row("AltGr as Ctrl+Alt", Qt::Key_Q, Qt::ControlModifier | Qt::AltModifier, "@", "xy@", "xy@");
        row("AltGr and shift", Qt::Key_Z, Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier, "{", "xy{", "xy{");
        nothing("Ctrl+Alt without a character", Qt::Key_E, Qt::ControlModifier | Qt::AltModifier);
        nothing("Alt+F", Qt::Key_F, Qt::AltModifier, "f");
        nothing("Alt+T", Qt::Key_T, Qt::AltModifier, "t");
        nothing("Alt+Enter", Qt::Key_Return, Qt::AltModifier, "\r");
        nothing("Alt+digit", Qt::Key_6, Qt::AltModifier | Qt::KeypadModifier, "6");
        nothing("Alt+Left", Qt::Key_Left, Qt::AltModifier);
        row("a character that was composed with Alt", 0, {}, u"\u00E4"_s, u"xy\u00E4"_s, u"xy\u00E4"_s);
        row("Ctrl+A", Qt::Key_A, Qt::ControlModifier, "\x01", "xy", "xy<SOH>");
        row("Ctrl+C", Qt::Key_C, Qt::ControlModifier, "\x03", "xy", "xy<ETX>");
        row("Ctrl+H", Qt::Key_H, Qt::ControlModifier, "\b", "x", "xy<BS>");
        row("Ctrl+J", Qt::Key_J, Qt::ControlModifier, "\n", "xy", "xy<LF>");
        row("Ctrl+M", Qt::Key_M, Qt::ControlModifier, "\r", "xy\n", "xy<CR>");
        row("Ctrl+V", Qt::Key_V, Qt::ControlModifier, "\x16", "xy", "xy<SYN>");
        row("Ctrl+X", Qt::Key_X, Qt::ControlModifier, "\x18", "xy", "xy<CAN>");
        row("Ctrl+Z", Qt::Key_Z, Qt::ControlModifier, "\x1A", "xy", "xy<SUB>");
        row("upper half", Qt::Key_Odiaeresis, {}, u"\u00F6"_s, u"xy\u00F6"_s, u"xy\u00F6"_s);
        row("upper half, with shift", Qt::Key_ydiaeresis, Qt::ShiftModifier, u"\u0178"_s, u"xy\u0178"_s, u"xy\u0178"_s);
        row("outside the code page", Qt::Key_unknown, {}, u"\u03A9"_s, "xy?", "xy?");
        row("a name for a control character", Qt::Key_Less, {}, "<CR>", "xy<CR>", "xy<CR>");
    }
    void aKey()
    {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(QString, text);
        QFETCH(QString, shown);
        QFETCH(QString, raw);
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        QGuiApplication::clipboard()->setText("pasted");
        desk.type("xy");
        desk.press(key, modifiers, text);
        QTRY_COMPARE(desk.typed(), shown);
        desk.pause();
        QTRY_COMPARE(desk.typed(), shown + "\nRaw Data: " + raw);
        QVERIFY(desk.hasFocus());
        QCOMPARE(desk.f.find<QTabWidget>("SSTab1")->currentIndex(), int{kReadTestTab});
        QVERIFY(QApplication::activePopupWidget() == nullptr);
        QCOMPARE(desk.f.reader.commands, QByteArrayList{});
        QCOMPARE(QGuiApplication::clipboard()->text(), "pasted");
    }

    // Characters go to the end, wherever the user has put the caret or the selection.
    void theCaretIsElsewhere_data()
    {
        QTest::addColumn<bool>("selects");
        QTest::newRow("caret") << false;
        QTest::newRow("selection") << true;
    }
    void theCaretIsElsewhere()
    {
        QFETCH(bool, selects);
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.type("xy");
        QTRY_COMPARE(desk.typed(), "xy");
        const auto away = [&] {
            if (selects) {
                desk.box().selectAll();
            } else {
                desk.press(Qt::Key_Left, {}, {});
                desk.press(Qt::Key_Up, {}, {});
                QCOMPARE(desk.box().textCursor().blockNumber(), 0);
            }
        };
        away();
        desk.type("z");
        QTRY_COMPARE(desk.typed(), "xyz");
        away();
        desk.press(Qt::Key_Backspace, {}, "\b");
        QTRY_COMPARE(desk.typed(), "xy");
        away();
        desk.press(Qt::Key_Return, {}, "\r");
        desk.pause();
        QTRY_COMPARE(desk.typed(), "xy\n\nRaw Data: xyz<BS><CR>");
    }

    void theUserCanDelete()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.type("xyz");
        desk.press(Qt::Key_Left, {}, {});
        desk.press(Qt::Key_Delete, {}, "\x7F");
        QTRY_COMPARE(desk.typed(), "xy");
        desk.pause();
        QTRY_COMPARE(desk.typed(), "xy\nRaw Data: xyz");
    }

    // A dead key and the letter behind it come as one composed text.
    void composedCharacters()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.type("x");
        const auto compose = [&](const QString& preedit, const QString& commit) {
            QInputMethodEvent event(preedit, {});
            event.setCommitString(commit);
            QCoreApplication::sendEvent(QGuiApplication::focusObject(), &event);
        };
        compose(u"\u00B4"_s, {});
        QCoreApplication::processEvents();
        QCOMPARE(desk.typed(), "x");
        compose({}, u"\u00E9"_s);
        compose({}, u"\u00F1 \u03A9"_s);
        desk.type("y");
        QTRY_COMPARE(desk.typed(), u"x\u00E9\u00F1\u2022?y"_s);
        desk.pause();
        QTRY_COMPARE(desk.typed(), u"x\u00E9\u00F1\u2022?y\nRaw Data: x\u00E9\u00F1\u2022?y"_s);
    }

    void autoRepeat()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        QWindow* const handle = desk.f.window->windowHandle();
        qt_handleKeyEvent(handle, QEvent::KeyPress, Qt::Key_A, {}, "a");
        for (int i = 0; i < 5; ++i) {
            qt_handleKeyEvent(handle, QEvent::KeyPress, Qt::Key_A, {}, "a", true);
        }
        // Several repeats in one event.
        qt_handleKeyEvent(handle, QEvent::KeyPress, Qt::Key_A, {}, "aaa", true, 3);
        qt_handleKeyEvent(handle, QEvent::KeyRelease, Qt::Key_A, {}, "a");
        desk.pause();
        QTRY_COMPARE(desk.typed(), "aaaaaaaaa\nRaw Data: aaaaaaaaa");
    }

    // Keys that mean something to the window, first with the focus elsewhere: there they do act.
    void shortcutsAndMenuLetters()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        QShortcut letter(Qt::Key_Q, desk.f.window.get());
        QShortcut combination(QKeySequence(QStringLiteral("Ctrl+D")), desk.f.window.get());
        QSignalSpy letters(&letter, &QShortcut::activated);
        QSignalSpy combinations(&combination, &QShortcut::activated);
        QMenu* const file = desk.f.find<QMenu>("mnuFile");
        const auto pressAll = [&] {
            desk.press(Qt::Key_Q, {}, "q");
            desk.press(Qt::Key_D, Qt::ControlModifier, "\x04");
            desk.press(Qt::Key_F, Qt::AltModifier, "f");
        };
        desk.f.find<QWidget>("grdCFG")->setFocus();
        pressAll();
        QCOMPARE(letters.count(), 1);
        QCOMPARE(combinations.count(), 1);
        QTRY_VERIFY(file->isVisible());
        file->close();

        QVERIFY(desk.enter());
        pressAll();
        desk.pause();
        QTRY_COMPARE(desk.typed(), "q\nRaw Data: q<EOT>");
        QCOMPARE(letters.count(), 1);
        QCOMPARE(combinations.count(), 1);
        QVERIFY(!file->isVisible());
        QVERIFY(desk.hasFocus());
    }

    // The program's own shortcuts: each would open a box, a dialog or a window here.
    // kb-all-keys
    void shortcutsOfTheProgram()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        QVERIFY(desk.enter());
        for (const Qt::Key key : {Qt::Key_F1, Qt::Key_F2, Qt::Key_F5, Qt::Key_F7}) {
            desk.press(key, {}, "");
        }
        desk.press(Qt::Key_O, Qt::ControlModifier, "\x0F");
        desk.press(Qt::Key_S, Qt::ControlModifier, "\x13");
        desk.press(Qt::Key_Q, Qt::ControlModifier, "\x11");
        desk.pause();
        QTRY_COMPARE(desk.typed(), "\nRaw Data: <SI><DC3><DC1>");
        QVERIFY(desk.hasFocus());
        QVERIFY(desk.f.window->isVisible());
        QVERIFY(desk.f.dialogs.shown.empty());
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            QVERIFY2(!window->isVisible() || window == desk.f.window.get(), qPrintable(window->objectName()));
        }
    }

    // Where the system has it so, Alt by itself moves the keyboard into the menu bar.
    void altByItself()
    {
        const QString usual = QApplication::style()->name();
        QApplication::setStyle(QStyleFactory::create(u"windows"_s));
        ReadTestFixture desk;
        QVERIFY(desk.start());
        desk.f.find<QWidget>("grdCFG")->setFocus();
        desk.press(Qt::Key_Alt, {}, {});
        QVERIFY(desk.f.window->menuBar()->hasFocus());
        desk.press(Qt::Key_Alt, {}, {});
        QVERIFY(!desk.f.window->menuBar()->hasFocus());

        QVERIFY(desk.enter());
        desk.press(Qt::Key_Alt, {}, {});
        QVERIFY(desk.hasFocus());
        desk.type("z");
        QTRY_COMPARE(desk.typed(), "z");
        QApplication::setStyle(usual);
    }

    // The system sends it for the menu key.
    void theMenuKey()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {10, 10}, desk.box().mapToGlobal(QPoint(10, 10)));
        QApplication::sendEvent(&desk.box(), &menuKey);
        QVERIFY(QApplication::activePopupWidget() == nullptr);
        desk.type("z");
        QTRY_COMPARE(desk.typed(), "z");
    }

    void aCard()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.type("%B12^DOE/JO A^9?;12=9?+0;1?\r");
        QTRY_COMPARE(desk.typed(), u"\n\nTrack1: %B12^DOE/JO\u2022A^9?\n\nTrack2: ;12=9?\n\nTrack3: +0;1?\n"_s);
        desk.pause();
        QTRY_COMPARE(desk.typed(), u"\n\nTrack1: %B12^DOE/JO\u2022A^9?\n\nTrack2: ;12=9?\n\nTrack3: +0;1?\n"
                                   "\nRaw Data: %B12^DOE/JO\u2022A^9?;12=9?+0;1?<CR>"_s);
        desk.pass(50);
        QCoreApplication::processEvents();
        QCOMPARE(desk.typed().count("Raw Data"), 1);
    }

    void everySampleCardArrivesWhole()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        for (const simulator::SampleCard& card : simulator::sampleCards()) {
            const QString keys = QString::fromStdString(simulator::typedCard(card, desk.f.model.memory()));
            QTest::mouseClick(desk.f.find<QPushButton>("cmdClearReadDisplay"), Qt::LeftButton);
            desk.type(keys);
            desk.pause();
            QString raw = keys;
            raw.replace(u' ', u'\u2022').replace(u'\r', "<CR>"_L1);
            QTRY_VERIFY(desk.typed().startsWith(u"\n\nTrack1: %"_s));
            QCOMPARE(desk.typed().section(u'\n', -1), "Raw Data: " + raw);
        }
    }

    // The reader's own layout says which keys are sentinels.
    void aCardOnAnotherLayout()
    {
        ReadTestFixture desk;
        QVERIFY(desk.f.model.memory().store("082", "07")); // 0407, German
        QVERIFY(desk.startInTest());
        desk.type(u"%1_\u00F62_`3_"_s);
        QTRY_COMPARE(desk.typed(), u"\n\nTrack1: %1_\n\nTrack2: \u00F62_\n\nTrack3: `3_"_s);
    }

    void withoutAListOfLayoutsThereAreNoHeadings()
    {
        ReadTestFixture desk;
        QVERIFY(QFile::remove(desk.f.folder.filePath("Languages.txt")));
        QVERIFY(desk.startInTest());
        desk.type("%1?;2?");
        QTRY_COMPARE(desk.typed(), "%1?;2?");
    }

    // All at once, as fast as the program takes them.
    void aBurst()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        const QString keys = burst();
        QCOMPARE(keys.size(), 400);
        desk.type(keys);
        QTRY_COMPARE(desk.typed(), keys);
        desk.pause();
        QTRY_COMPARE(desk.typed(), keys + "\nRaw Data: " + keys);
        QVERIFY(desk.hasFocus());
        // The window is alive.
        QTest::mouseClick(desk.f.find<QPushButton>("cmdClearReadDisplay"), Qt::LeftButton);
        QTRY_VERIFY(desk.isClear());
    }

    // Key by key from the event loop, where the timer and the painting have their turns, too.
    void aStreamOfKeys()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        const QString keys = burst();
        QSignalSpy changes(desk.box().document(), &QTextDocument::contentsChange);
        qsizetype next = 0;
        QTimer reader;
        connect(&reader, &QTimer::timeout, this, [&] {
            desk.type(keys.at(next));
            if (++next == keys.size()) {
                reader.stop();
            }
        });
        reader.start(0);
        desk.withTicks([&] { QTRY_COMPARE(desk.typed(), keys + "\nRaw Data: " + keys); });
        QVERIFY(changes.count() > 10); // it was seen to grow
    }

    // What came in one go is laid out in one go: else a line would take the square of its length.
    void aVeryLongLine()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        QSignalSpy changes(desk.box().document(), &QTextDocument::contentsChange);
        const QString keys = burst().repeated(25);
        QCOMPARE(keys.size(), 10'000);
        desk.type(keys);
        QTRY_COMPARE(desk.typed(), keys);
        QVERIFY2(changes.count() <= 2, qPrintable(QString::number(changes.count())));
        QVERIFY(desk.box().textCursor().atEnd());
    }

    void backspacesInABurst()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.type("ab");
        QTRY_COMPARE(desk.typed(), "ab");
        desk.type("cd");
        for (int i = 0; i < 3; ++i) {
            desk.press(Qt::Key_Backspace, {}, "\b");
        }
        desk.type("e");
        QTRY_COMPARE(desk.typed(), "ae");
        desk.pause();
        QTRY_COMPARE(desk.typed(), "ae\nRaw Data: abcd<BS><BS><BS>e");
    }

    void theClearButtonLeavesTheKeyboardWhereItIs()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.type(";12");
        QTRY_COMPARE(desk.typed(), "\n\nTrack2: ;12");
        QTest::mouseClick(desk.f.find<QPushButton>("cmdClearReadDisplay"), Qt::LeftButton);
        QTRY_VERIFY(desk.isClear());
        QVERIFY(desk.hasFocus());
        // Only the display is cleared: the track is still open, and its characters are in the raw block.
        desk.type("%3?");
        desk.pause();
        QTRY_COMPARE(desk.typed(), "%3?\nRaw Data: ;12%3?");
    }

    // A burst and a click: what was typed before the click goes.
    void clearingWhatIsNotYetShown()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.type("abc");
        QTest::mouseClick(desk.f.find<QPushButton>("cmdClearReadDisplay"), Qt::LeftButton);
        desk.type("d");
        QTRY_COMPARE(desk.typed(), "d");
    }

private:
    static QString burst()
    {
        QString keys;
        for (int i = 0; i < 400; ++i) {
            keys += QChar(u'A' + i % 26 + (i / 26 % 2) * 32);
        }
        return keys;
    }
};

static const testsupport::RunnableTest<ReadTestKeyboardTest> kRunnable;
#include "ReadTestKeyboardTest.moc"
