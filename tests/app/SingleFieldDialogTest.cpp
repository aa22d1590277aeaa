// The dialog for a single setting: its keys, its boxes and what its buttons do.

#include "app/dialogs/dlgSingleField.h"
#include "platform/qt/ColumnFont.h"
#include "tests/device/ReaderScript.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RecordingWindowOrder.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGroupBox>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QTest>

using namespace testsupport;
using platform::BoxAnswer;

namespace {

// The dialog, open, over a reader that answers everything.
struct Dialog : DeviceLink
{
    Dialog()
    {
        link.PortNumber = 5;
        port.setScript(reader::Script());
        dialog.showInFront();
        if (!QTest::qWaitForWindowActive(&dialog)) {
            qFatal("the dialog did not become active");
        }
    }

    [[nodiscard]] QLineEdit* box(const char* name) { return dialog.findChild<QLineEdit*>(QLatin1String(name)); }
    [[nodiscard]] QPushButton* button(const char* name) { return dialog.findChild<QPushButton*>(QLatin1String(name)); }
    void click(const char* name) { QTest::mouseClick(button(name), Qt::LeftButton); }
    void type(const char* boxName, const char* text)
    {
        box(boxName)->setFocus();
        box(boxName)->clear();
        QTest::keyClicks(box(boxName), QLatin1String(text));
    }
    // All that was sent besides the identification.
    [[nodiscard]] QByteArrayList sent() const
    {
        return linesWith(port.commands(), {"/rawsend", "/rawxact WPV0", "/rawxact WPV1"});
    }

    RecordingWindowOrder order;
    device::SingleSetting setting{link, operations, protocol, connection, tables.tables, loggedBoxes};
    app::dlgSingleField dialog{setting, order, nullptr};
};

void boxNames()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("address") << QByteArray("txtSingleAddress");
    QTest::newRow("value") << QByteArray("txtSingleValue");
}

} // namespace

class SingleFieldDialogTest final : public QObject
{
    Q_OBJECT

private slots:
    void itShowsWhatItIsFor()
    {
        Dialog d;
        QCOMPARE(d.dialog.windowTitle(), "Change Single Field");
        QCOMPARE(d.button("btnGetCurrentSingle")->text(), "Get current value");
        QCOMPARE(d.button("btnUpdateSingleField")->text(), "Update the Teslin");
        QCOMPARE(d.button("OKButton")->text(), "&Done");
        QStringList labels;
        for (const QLabel* label : d.dialog.findChildren<QLabel*>()) {
            labels << label->text();
            QCOMPARE(label->textFormat(), Qt::PlainText);
        }
        QVERIFY(labels.contains("Address"));
        QVERIFY(labels.contains("Data"));
        const auto* frame = d.dialog.findChild<QGroupBox*>();
        QCOMPARE(frame->title(), "Instructions");
        QCOMPARE(frame->findChild<QLabel*>()->text(),
                 "Type in the address and new value (both in HEX), then click \"Update\". Click \"Get current value\" "
                 "to retrieve the value from the address.  Click \"Done\" to exit");
        // Or what has columns where that has none.
        const QString family = platform::columnFont(QStringLiteral("Courier New")).family();
        QCOMPARE(d.box("txtSingleAddress")->font().family(), family);
        QCOMPARE(d.box("txtSingleValue")->font().family(), family);
        QVERIFY(!d.dialog.isModal());
    }

    void itStartsWithZerosAndTheAddressReadyToBeTyped()
    {
        Dialog d;
        QCOMPARE(d.box("txtSingleAddress")->text(), "000");
        QCOMPARE(d.box("txtSingleValue")->text(), "00");
        QTRY_VERIFY(d.box("txtSingleAddress")->hasFocus());
        QTest::keyClicks(d.box("txtSingleAddress"), "01a");
        QCOMPARE(d.box("txtSingleAddress")->text(), "01A");
    }

    void itStaysAboveOtherWindows()
    {
        Dialog d;
        QCOMPARE(d.order.calls, QStringList({"dlgSingleField -1 3 hidden"}));
        QVERIFY(d.dialog.AlwaysOnTop());
        d.dialog.setProperty("AlwaysOnTop", false);
        QCOMPARE(d.order.calls.last(), "dlgSingleField -2 3 visible");
        QVERIFY(!d.dialog.AlwaysOnTop());
        d.dialog.setAlwaysOnTop(true);
        QCOMPARE(d.order.calls.last(), "dlgSingleField -1 3 visible");
        QCOMPARE(d.dialog.property("AlwaysOnTop").toBool(), true);
    }

    void choosingItAgainKeepsWhatWasTyped()
    {
        Dialog d;
        d.type("txtSingleAddress", "01A");
        d.type("txtSingleValue", "2F");
        d.dialog.showInFront();
        QCOMPARE(d.box("txtSingleAddress")->text(), "01A");
        QCOMPARE(d.box("txtSingleValue")->text(), "2F");
        d.click("OKButton");
        QVERIFY(!d.dialog.isVisible());
        d.dialog.showInFront();
        QVERIFY(d.dialog.isVisible());
        QCOMPARE(d.box("txtSingleAddress")->text(), "000");
        QCOMPARE(d.box("txtSingleValue")->text(), "00");
        QTRY_VERIFY(d.box("txtSingleAddress")->hasFocus());
    }

    // --- Keys ---

    void hexKeysPassAndOthersAreSwallowed_data() { boxNames(); }
    void hexKeysPassAndOthersAreSwallowed()
    {
        QFETCH(QByteArray, name);
        Dialog d;
        d.type(name, "a");
        QCOMPARE(d.box(name)->text(), "A");
        d.type(name, "g1G-2 .zZ+");
        QCOMPARE(d.box(name)->text(), "12");
        d.type(name, "0123456789abcdefABCDEF");
        QCOMPARE(d.box(name)->text(), "0123456789ABCDEFABCDEF");
        QTest::keyClick(d.box(name), Qt::Key_Backspace);
        QCOMPARE(d.box(name)->text(), "0123456789ABCDEFABCDE");
    }

    void theFiltersWorkOnCodes_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("expected");
        for (int code = 0; code < 256; ++code) {
            const QByteArray passing = "0123456789ABCDEF";
            int expected = 0;
            if (code == 8 || (code > 0 && passing.contains(static_cast<char>(code)))) {
                expected = code;
            } else if (code >= 'a' && code <= 'f') {
                expected = "ABCDEF"[static_cast<unsigned char>(code) - static_cast<unsigned char>('a')];
            }
            QTest::addRow("%d", code) << code << expected;
        }
    }
    void theFiltersWorkOnCodes()
    {
        QFETCH(int, code);
        QFETCH(int, expected);
        Dialog d;
        int KeyAscii = code;
        d.dialog.txtSingleAddress_KeyPress(KeyAscii);
        QCOMPARE(KeyAscii, expected);
        KeyAscii = code;
        d.dialog.txtSingleValue_KeyPress(KeyAscii);
        QCOMPARE(KeyAscii, expected);
    }

    // A dialog would press a button or close.
    void enterAndEscapeStayInTheBoxes_data() { boxNames(); }
    void enterAndEscapeStayInTheBoxes()
    {
        QFETCH(QByteArray, name);
        Dialog d;
        d.type(name, "1A");
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
            QTest::keyClick(d.box(name), key);
        }
        QVERIFY(d.dialog.isVisible());
        QVERIFY(d.box(name)->hasFocus());
        QCOMPARE(d.box(name)->text(), "1A");
        QVERIFY(d.port.commands().empty());
    }

    void noButtonIsPressedByEnterAlone()
    {
        Dialog d;
        for (const char* name : {"btnGetCurrentSingle", "btnUpdateSingleField", "OKButton"}) {
            QVERIFY(!d.button(name)->isDefault());
            QVERIFY(!d.button(name)->autoDefault());
            d.button(name)->setFocus();
            QTest::keyClick(d.button(name), Qt::Key_Return);
        }
        QVERIFY(d.port.commands().empty());
        QVERIFY(d.dialog.isVisible());
    }

    void nothingButKeysComesIn_data() { boxNames(); }
    void nothingButKeysComesIn()
    {
        QFETCH(QByteArray, name);
        Dialog d;
        QLineEdit* box = d.box(name);
        d.type(name, "12");
        QGuiApplication::clipboard()->setText("77");
        if (QGuiApplication::clipboard()->supportsSelection()) {
            QGuiApplication::clipboard()->setText("77", QClipboard::Selection);
        }
        QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(box, Qt::Key_Insert, Qt::ShiftModifier);
        QTest::mouseClick(box, Qt::MiddleButton);
        QCOMPARE(box->text(), "12");

        QContextMenuEvent menu(QContextMenuEvent::Mouse, box->rect().center(), box->mapToGlobal(QPoint()));
        QApplication::sendEvent(box, &menu);
        QVERIFY(QApplication::activePopupWidget() == nullptr);

        QMimeData mime;
        mime.setText("77");
        QDragEnterEvent enter(box->rect().center(), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(box, &enter);
        QVERIFY(!enter.isAccepted());
        QDropEvent drop(box->rect().center(), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(box, &drop);
        QCOMPARE(box->text(), "12");

        QInputMethodEvent composed;
        composed.setCommitString("77");
        QApplication::sendEvent(box, &composed);
        QCOMPARE(box->text(), "12");
    }

    void editingKeysAndTabWork()
    {
        Dialog d;
        d.type("txtSingleAddress", "123");
        QTest::keyClick(d.box("txtSingleAddress"), Qt::Key_Home);
        QTest::keyClick(d.box("txtSingleAddress"), Qt::Key_Delete);
        QTest::keyClick(d.box("txtSingleAddress"), Qt::Key_Right);
        QTest::keyClicks(d.box("txtSingleAddress"), "f");
        QCOMPARE(d.box("txtSingleAddress")->text(), "2F3");
        QStringList order;
        for (int i = 0; i < 5; ++i) {
            order << d.dialog.focusWidget()->objectName();
            QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(order, QStringList({"txtSingleAddress", "txtSingleValue", "btnGetCurrentSingle",
                                     "btnUpdateSingleField", "OKButton"}));
        QVERIFY(d.box("txtSingleAddress")->hasFocus());
    }

    // --- Padding ---

    void leavingABoxPadsIt_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("typed");
        QTest::addColumn<QByteArray>("padded");
        const auto row = [](const char* name, const char* typed, const char* padded) {
            QTest::addRow("%s %s", name, typed) << QByteArray(name) << QByteArray(typed) << QByteArray(padded);
        };
        row("txtSingleAddress", "5", "005");
        row("txtSingleAddress", "", "000");
        row("txtSingleAddress", "1a", "01A");
        row("txtSingleAddress", "01A", "01A");
        row("txtSingleAddress", "12345", "12345");
        row("txtSingleValue", "5", "05");
        row("txtSingleValue", "f", "0F");
        row("txtSingleValue", "", "00");
        row("txtSingleValue", "5A", "5A");
        row("txtSingleValue", "5AB", "5AB");
    }
    void leavingABoxPadsIt()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, typed);
        QFETCH(QByteArray, padded);
        Dialog d;
        d.type(name, typed);
        QCOMPARE(d.box(name)->text(), QString::fromLatin1(typed).toUpper()); // not before
        QTest::keyClick(d.box(name), Qt::Key_Tab);
        QCOMPARE(d.box(name)->text(), QString::fromLatin1(padded));
    }

    // A menu that opens over the dialog takes the focus only for a while.
    void aMenuPadsNothing_data() { boxNames(); }
    void aMenuPadsNothing()
    {
        QFETCH(QByteArray, name);
        Dialog d;
        d.type(name, "5");
        QMenu menu(&d.dialog);
        menu.addAction(QStringLiteral("entry"));
        menu.popup(d.dialog.mapToGlobal(QPoint(5, 5)));
        QTRY_VERIFY(menu.isVisible());
        QFocusEvent covered(QEvent::FocusOut, Qt::PopupFocusReason); // as the system tells the box then
        QCoreApplication::sendEvent(d.box(name), &covered);
        QCOMPARE(d.box(name)->text(), "5");
        menu.close();
        QFocusEvent left(QEvent::FocusOut, Qt::TabFocusReason);
        QCoreApplication::sendEvent(d.box(name), &left);
        QVERIFY(d.box(name)->text().endsWith(QLatin1String("05")));
    }

    void aClickOnAButtonPadsFirst()
    {
        Dialog d;
        d.type("txtSingleAddress", "13");
        d.type("txtSingleValue", "5");
        d.boxes.expect(BoxAnswer::Ok);
        d.click("btnUpdateSingleField");
        QCOMPARE(d.sent().last(), "/rawsend WPW013=05");
        QCOMPARE(d.boxes.lastText(), "Updated Configuration table with 013=05");
    }

    // --- Buttons ---

    void getShowsTheValueOfTheReader()
    {
        Dialog d;
        d.type("txtSingleAddress", "1A");
        d.click("btnGetCurrentSingle");
        QCOMPARE(d.sent().last(), "/rawxact WPV01A");
        QCOMPARE(d.box("txtSingleValue")->text().toStdString(), reader::valueAt(0x1A));
        QVERIFY(!d.port.PortOpen());
    }

    void getWithoutAReplyKeepsTheValue()
    {
        Dialog d;
        reader::Script script;
        script.silent = {"/rawxact WPV01A"};
        d.port.setScript(script);
        d.type("txtSingleAddress", "1A");
        d.type("txtSingleValue", "5");
        d.click("btnGetCurrentSingle");
        QCOMPARE(d.box("txtSingleValue")->text(), "05");
        d.link.LastResponse = "77"; // of another address
        d.port.openError = platform::SystemError{.number = 2, .description = "No such file or directory"};
        d.boxes.expect(BoxAnswer::Ok);
        d.click("btnGetCurrentSingle");
        QCOMPARE(d.box("txtSingleValue")->text(), "05");
    }

    // Both boxes count as they were when the button was pressed.
    void editsDuringAnUpdateDoNotCount()
    {
        Dialog d;
        d.type("txtSingleAddress", "084");
        d.type("txtSingleValue", "A1");
        d.pump.atTick(2, [&] {
            d.box("txtSingleAddress")->setText("013");
            d.box("txtSingleValue")->setText("FF");
        });
        d.boxes.expect(BoxAnswer::Ok);
        d.click("btnUpdateSingleField");
        QCOMPARE(d.sent().last(), "/rawsend WPW084=A1");
        QCOMPARE(d.tables.KB.value(3), "20-A1");
        QCOMPARE(d.tables.CFG.value(2), tables::configurationKind().defaults[1].value);
        QCOMPARE(d.boxes.lastText(), "Updated Keyboard Language table with 084=A1");
    }

    void theReadersOwnAddressIsOnlySent()
    {
        Dialog d;
        d.type("txtSingleAddress", "1");
        d.type("txtSingleValue", "5A");
        const std::string before = d.tables.CFG.value(1);
        d.click("btnUpdateSingleField");
        QCOMPARE(d.sent().last(), "/rawsend WPW001=5A");
        QCOMPARE(d.tables.CFG.value(1), before);
        QVERIFY(!d.tables.CFG.table.TableChanged);
        QVERIFY(d.boxes.shown.empty());
    }

    // kb-single-as-typed
    void tooManyDigitsGoOutAsTheyAre()
    {
        Dialog d;
        d.type("txtSingleAddress", "014");
        d.type("txtSingleValue", "1234");
        d.boxes.expect(BoxAnswer::Ok);
        d.click("btnUpdateSingleField");
        QCOMPARE(d.sent().last(), "/rawsend WPW014=1234");
        QCOMPARE(d.tables.CFG.value(3), "1234");
    }

    void pressesDuringAnOperationAreIgnored()
    {
        Dialog d;
        d.type("txtSingleAddress", "01A");
        QVERIFY(d.operations.run([&] {
            d.click("btnGetCurrentSingle");
            d.click("btnUpdateSingleField");
        }));
        QVERIFY(d.port.commands().empty());
        QCOMPARE(d.box("txtSingleValue")->text(), "00");
    }

    void theKeyboardDoesItAll()
    {
        Dialog d;
        QTest::keyClicks(d.dialog.focusWidget(), "84");
        QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(d.dialog.focusWidget(), "a1");
        QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Tab);
        QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Tab);
        d.boxes.expect(BoxAnswer::Ok);
        QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Space);
        QCOMPARE(d.sent().last(), "/rawsend WPW084=A1");
        QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Backtab);
        QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Space);
        QCOMPARE(d.sent().last(), "/rawxact WPV084");
        QTest::keyClick(d.dialog.focusWidget(), Qt::Key_D, Qt::AltModifier);
        QTRY_VERIFY(!d.dialog.isVisible());
    }
};

static const testsupport::RunnableTest<SingleFieldDialogTest> kRunnable;
#include "SingleFieldDialogTest.moc"
