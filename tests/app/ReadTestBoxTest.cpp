#include "tests/app/ReadTestFixture.h"
#include "tests/support/RunnableTest.h"

#include <QMenu>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace testsupport;
using app::kConfigurationTab;
using app::kKeyboardLanguageTab;
using app::kReadTestTab;

namespace {

// Counts the keys that a widget gets.
class KeyCounter final : public QObject
{
public:
    int keys = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        keys += event->type() == QEvent::KeyPress ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

// The box of the read test as a text box: what it keeps for itself, what it shows, and when it takes the keyboard.
class ReadTestBoxTest final : public QObject
{
    Q_OBJECT

private slots:
    // Keys that a text box has no use for go to its parents, as a rule: to the tabs, which move, and the window.
    void uselessKeysEndInTheBox_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        const auto row = [](const char* what, int key, Qt::KeyboardModifiers modifiers = {}) {
            QTest::newRow(what) << key << modifiers;
        };
        row("F9", Qt::Key_F9);
        row("Insert", Qt::Key_Insert);
        row("Pause", Qt::Key_Pause);
        row("Back", Qt::Key_Back);
        row("Caps Lock", Qt::Key_CapsLock);
        row("Ctrl+F4", Qt::Key_F4, Qt::ControlModifier);
        row("Alt+Right", Qt::Key_Right, Qt::AltModifier);
        row("Escape without a character", Qt::Key_Escape);
    }
    void uselessKeysEndInTheBox()
    {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        KeyCounter above;
        desk.box().parentWidget()->installEventFilter(&above);
        KeyCounter inTheBox;
        desk.box().installEventFilter(&inTheBox);
        desk.press(key, modifiers, {});
        QCOMPARE(inTheBox.keys, 1);
        QCOMPARE(above.keys, 0);
        QCOMPARE(desk.typed(), "");
    }

    // There is nothing to be undone: what the reader typed is a record.
    void nothingIsUndone()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        desk.type("abc");
        QTRY_COMPARE(desk.typed(), "abc");
        desk.press(Qt::Key_Z, Qt::ControlModifier, {}); // where the system has no character for it
        QCoreApplication::processEvents();
        QCOMPARE(desk.typed(), "abc");
        QVERIFY(!desk.box().document()->isUndoAvailable());
        desk.press(Qt::Key_Z, Qt::ControlModifier, u"\x1A"_s); // where it has one it is a key of the reader
        desk.pause();
        QTRY_COMPARE(desk.typed(), "abc\nRaw Data: abc<SUB>");
    }

    void newTextIsScrolledIntoView()
    {
        ReadTestFixture desk;
        QVERIFY(desk.startInTest());
        QScrollBar* const bar = desk.box().verticalScrollBar();
        for (int line = 0; line < 100; ++line) {
            desk.type("a\r");
        }
        QTRY_VERIFY(bar->maximum() > 10);
        QTRY_COMPARE(bar->value(), bar->maximum());
        // Also when the user has scrolled back meanwhile.
        bar->setValue(0);
        desk.type("b");
        QTRY_COMPARE(bar->value(), bar->maximum());
        bar->setValue(0);
        desk.pause(); // the raw block
        QTRY_COMPARE(bar->value(), bar->maximum());
    }

    // The user goes elsewhere while the reader is being set: a box that nobody sees does not take the keyboard.
    void aHiddenBoxDoesNotTakeTheKeyboard()
    {
        ReadTestFixture desk;
        QVERIFY(desk.start());
        bool wasHidden = false;
        bool hadFocus = true;
        desk.f.reader.onOutput = [&](int count) {
            if (count == 2) {
                desk.f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
                desk.f.find<QWidget>("grdKB")->setFocus();
            } else if (count == 11) {
                wasHidden = !desk.box().isVisible();
                hadFocus = desk.hasFocus();
            }
        };
        desk.clickTab(kReadTestTab);
        QVERIFY(wasHidden);
        QVERIFY(!hadFocus);
    }
};

static const testsupport::RunnableTest<ReadTestBoxTest> kRunnable;
#include "ReadTestBoxTest.moc"
