// The keys that the entry boxes take, and what comes in by other ways.

#include "tests/support/EditorWindow.h"
#include "tests/support/RunnableTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QValidator>

using testsupport::EditorWindow;

namespace {

QString text(const char* ascii)
{
    return QLatin1String(ascii);
}

// Writes down the keys that a box leaves to the window around it.
class KeyRecorder final : public QObject
{
public:
    bool eventFilter([[maybe_unused]] QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) {
            keys << static_cast<QKeyEvent*>(event)->key();
        }
        return false;
    }
    QList<int> keys;
};

class EntryBoxTest final : public QObject
{
    Q_OBJECT

private:
    // Opens the row that shows a box, empties the box and gives it the focus.
    static QLineEdit* openBox(EditorWindow& w, const QByteArray& name)
    {
        if (name == "txtHexEntry") {
            w.openCfg(text("01C"), text("00"));
        } else if (name == "txtDecEntry") {
            w.openCfg(text("01A"), text("00"));
        } else if (name == "txtCharEntry") {
            w.openCfg(text("015"), text("40"));
        } else if (name == "txtHexEntry2_KB") {
            w.openKb(text("081-082"), text("00-00"));
        } else {
            w.openKb(text("083-084"), text("00-00"));
        }
        QLineEdit* box = w.box(name.constData());
        box->setFocus();
        box->clear();
        return box;
    }

    static void boxes(bool withDecimal)
    {
        QTest::addColumn<QByteArray>("name");
        for (const char* name : {"txtHexEntry", "txtHexEntry_KB", "txtHexEntry2_KB"}) {
            QTest::newRow(name) << QByteArray(name);
        }
        if (withDecimal) {
            QTest::newRow("txtDecEntry") << QByteArray("txtDecEntry");
        }
    }

private slots:
    void hexKeys_data() { boxes(false); }
    void hexKeys()
    {
        QFETCH(QByteArray, name);
        EditorWindow w;
        QLineEdit* box = openBox(w, name);
        QTest::keyClicks(box, text("g0G-1 a.z"));
        QCOMPARE(box->text(), text("01A"));
        box->clear();
        QTest::keyClicks(box, text("0123456789abcdefABCDEF"));
        QCOMPARE(box->text(), text("0123456789ABCDEFABCDEF"));
    }

    void decimalKeys()
    {
        EditorWindow w;
        QLineEdit* box = openBox(w, "txtDecEntry");
        QTest::keyClicks(box, text("1a.2-F,3 "));
        QCOMPARE(box->text(), text("123"));
        QTest::keyClicks(box, text("4567890"));
        QCOMPARE(box->text(), text("1234567890"));
    }

    void backspaceDeleteAndArrowsEdit_data() { boxes(true); }
    void backspaceDeleteAndArrowsEdit()
    {
        QFETCH(QByteArray, name);
        EditorWindow w;
        QLineEdit* box = openBox(w, name);
        QTest::keyClicks(box, text("1234"));
        QTest::keyClick(box, Qt::Key_Backspace);
        QCOMPARE(box->text(), text("123"));
        QTest::keyClick(box, Qt::Key_Home);
        QTest::keyClick(box, Qt::Key_Right);
        QTest::keyClick(box, Qt::Key_Delete);
        QCOMPARE(box->text(), text("13"));
        QTest::keyClick(box, Qt::Key_Left);
        QTest::keyClicks(box, text("9"));
        QCOMPARE(box->text(), text("913"));
    }

    // kb-swallowed-keys
    void controlLettersAreSwallowed_data() { boxes(true); }
    void controlLettersAreSwallowed()
    {
        QFETCH(QByteArray, name);
        EditorWindow w;
        QLineEdit* box = openBox(w, name);
        QTest::keyClicks(box, text("12"));
        QGuiApplication::clipboard()->setText(text("77"));
        for (const Qt::Key key : {Qt::Key_V, Qt::Key_X, Qt::Key_A, Qt::Key_Z}) {
            QTest::keyClick(box, key, Qt::ControlModifier);
        }
        QTest::keyClick(box, Qt::Key_Insert, Qt::ShiftModifier);
        QCOMPARE(box->text(), text("12"));
        QVERIFY(!box->hasSelectedText());
    }

    // Keys that type through AltGr come with Ctrl and Alt on some systems.
    void altGrCharactersAreFiltered_data() { boxes(true); }
    void altGrCharactersAreFiltered()
    {
        QFETCH(QByteArray, name);
        EditorWindow w;
        QLineEdit* box = openBox(w, name);
        QTest::sendKeyEvent(QTest::Click, box, Qt::Key_Q, text("@"), Qt::ControlModifier | Qt::AltModifier);
        QTest::sendKeyEvent(QTest::Click, box, Qt::Key_E, QString(QChar(0x20AC)), Qt::GroupSwitchModifier);
        QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, QString::fromUtf8("\U0001F600"), Qt::NoModifier);
        QCOMPARE(box->text(), QString());
    }

    void keysThatLeaveTheBoxPass_data() { boxes(true); }
    void keysThatLeaveTheBoxPass()
    {
        QFETCH(QByteArray, name);
        EditorWindow w;
        QLineEdit* box = openBox(w, name);
        KeyRecorder left;
        box->parentWidget()->installEventFilter(&left);
        for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_F5}) {
            QTest::keyClick(box, key);
        }
        QTest::keyClick(box, Qt::Key_F, Qt::AltModifier);
        QTest::keyClicks(box, text("z"));
        QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
        const QList<int> expected = {Qt::Key_Escape, Qt::Key_Return, Qt::Key_F5,
                                     Qt::Key_Alt,    Qt::Key_F,      Qt::Key_Control};
        QCOMPARE(left.keys, expected);
        QCOMPARE(box->text(), QString());
        QTest::keyClick(box, Qt::Key_Tab);
        QVERIFY(!box->hasFocus());
    }

    // The filter is one of keys: what the program sets and the menu pastes is not held back.
    void otherWaysAreFree_data() { boxes(true); }
    void otherWaysAreFree()
    {
        QFETCH(QByteArray, name);
        EditorWindow w;
        QLineEdit* box = openBox(w, name);
        box->setText(text("no number"));
        QCOMPARE(box->text(), text("no number"));
        box->clear();
        QGuiApplication::clipboard()->setText(text("pasted"));
        box->paste();
        QCOMPARE(box->text(), text("pasted"));
        QVERIFY(box->validator() == nullptr);
        QCOMPARE(box->inputMask(), QString());
        QCOMPARE(box->maxLength(), 32767);
        QVERIFY(!box->testAttribute(Qt::WA_InputMethodEnabled));
    }

    void theCharacterBoxTakesEveryCharacter()
    {
        EditorWindow w;
        QLineEdit* box = openBox(w, "txtCharEntry");
        QTest::keyClicks(box, text(";z "));
        QCOMPARE(box->text(), text(";z "));
        QCOMPARE(w.valueCfg(text("015")), text("3B"));
        QVERIFY(box->testAttribute(Qt::WA_InputMethodEnabled));
        QCOMPARE(box->maxLength(), 32767);
    }

    void clickingIntoABoxSelectsItsValue()
    {
        EditorWindow w;
        w.openCfg(text("015"), text("40"));
        QLineEdit* box = w.box("txtCharEntry");
        QTest::mouseClick(box, Qt::LeftButton);
        QCOMPARE(box->selectedText(), text("@"));
        // A second click only places the cursor.
        QTest::mouseClick(box, Qt::LeftButton);
        QVERIFY(!box->hasSelectedText());
    }
};

} // namespace

static const testsupport::RunnableTest<EntryBoxTest> kRunnable;
#include "EntryBoxTest.moc"
