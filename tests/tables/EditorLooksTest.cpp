// What the editors look like and how they are reached: captions, tool tips, room, the Tab key, the mouse wheel and what
// a screen reader says.

#include "tests/support/EditorWindow.h"
#include "tests/support/RunnableTest.h"

#include <QAccessible>
#include <QApplication>
#include <QGroupBox>
#include <QWheelEvent>

using testsupport::EditorWindow;

namespace {

QString text(const char* ascii)
{
    return QLatin1String(ascii);
}

struct RowToOpen
{
    EditorWindow::Page page;
    const char* address;
    const char* value;
    const char* tabStops; // the controls that Tab visits, in order
};

constexpr auto kCfg = EditorWindow::ConfigurationPage;
constexpr auto kKb = EditorWindow::KeyboardLanguagePage;

// One row of each kind. 080 and 081 come into the Configuration table from a file.
const std::vector<RowToOpen> kRows = {
    {kCfg, "001", "85", ""},
    {kCfg, "013", "95", "radTk1_1 radTk2_1 radTk3_1 radID_1"},
    {kCfg, "014", "63", "chkSendSS chkSendEs chkSendLRC chkSendLC chkSendNBR radSendEr_2"},
    {kCfg, "014", "62", "chkSendSS chkSendEs chkSendLRC chkSendLC chkSendNBR radSendEr_0"},
    {kCfg, "017", "2B", "txtCharEntry"},
    {kCfg, "01A", "12", "txtDecEntry"},
    {kCfg, "01C", "00", "txtHexEntry"},
    {kCfg, "022", "8D", "radSendTermAfter_1 txtHexEntry"},
    {kCfg, "02A", "02", "radTrkMap_2"},
    {kCfg, "080", "F1", "radP080A1_CFG_1 radP080A23_CFG_3 radP080E_CFG_1 radP080S_CFG_1"},
    {kCfg, "081", "3F", ""},
    {kKb, "080", "20", "radP080A1_KB_0 radP080A23_KB_1 radP080E_KB_0 radP080S_KB_0"},
    {kKb, "081-082", "12-34", "txtHexEntry2_KB"},
    {kKb, "083-084", "90-1E", "radShiftA1_KB_1 radShiftA2_KB_0 radShiftA3_KB_0 radShiftA4_KB_1 txtHexEntry_KB"},
};

void addRows()
{
    QTest::addColumn<std::size_t>("which");
    for (std::size_t which = 0; which < kRows.size(); ++which) {
        QTest::addRow("%s %s on page %d", kRows[which].address, kRows[which].value, kRows[which].page) << which;
    }
}

QWidget* openRow(EditorWindow& w, const RowToOpen& row)
{
    w.replaceRow(kCfg, 4, text("080"), text("00"), text("from a file"));
    w.replaceRow(kCfg, 5, text("081"), text("00"), text("from a file"));
    w.showPage(row.page);
    w.open(row.page, text(row.address), text(row.value));
    return row.page == kCfg ? static_cast<QWidget*>(w.editor_CFG) : w.editor_KB;
}

QList<QWidget*> shownControls(const QWidget* editor)
{
    QList<QWidget*> shown;
    for (QWidget* control : editor->findChildren<QWidget*>()) {
        if (control->isVisible() && !control->objectName().isEmpty()) {
            shown << control;
        }
    }
    return shown;
}

bool isInput(const QWidget* control)
{
    return qobject_cast<const QAbstractButton*>(control) != nullptr ||
           qobject_cast<const QLineEdit*>(control) != nullptr;
}

void turnWheel(QWidget* control)
{
    const QPointF place = control->rect().center();
    for (const int step : {120, -120}) {
        QWheelEvent event(place, control->mapToGlobal(place), QPoint(), QPoint(0, step), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(control, &event);
    }
}

class EditorLooksTest final : public QObject
{
    Q_OBJECT

private slots:
    void frameCaptions()
    {
        const QList<std::pair<const char*, const char*>> frames = {
            {"frmTk1", "Track 1"},
            {"frmTk2", "Track 2"},
            {"frmTk3", "Track 3"},
            {"frmReadTypes", "Read cards of type"},
            {"frmSendError", "Send Error Response"},
            {"frmSendFlags", "Send Flags"},
            {"frmSendTerm", "Send Terminating Chartacter:"}, // kb-spelling
            {"frmTrkMap", "Track mapping"},
            {"frmA1_CFG", "KB Flag A1 Values"},
            {"frmA23_CFG", "KB Flag A23 Values"},
            {"frmE_CFG", "KB Flag E Value"},
            {"frmS_CFG", "KB Flag S Value"},
            {"frmA1_KB", "KB Flag A1 Values"},
            {"frmA23_KB", "KB Flag A23 Values"},
            {"frmE_KB", "KB Flag E Value"},
            {"frmS_KB", "KB Flag S Value"},
            {"frmShiftFlagA1_KB", "Shift Flag A1 Values"},
            {"frmShiftFlagA2_KB", "Shift Flag A2 Values"},
            {"frmShiftFlagA3_KB", "Shift Flag A3 Values"},
            {"frmShiftFlagA4_KB", "Shift Flag A4 Values"},
        };
        EditorWindow w;
        for (const auto& [name, caption] : frames) {
            QCOMPARE(w.control<QGroupBox>(name)->title(), text(caption));
        }
        QCOMPARE(w.findChildren<QGroupBox*>().size(), frames.size());
    }

    void captionsAndToolTips_data()
    {
        QTest::addColumn<QByteArray>("control");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("toolTip");
        const auto add = [](const char* control, const char* caption, const char* toolTip = "") {
            QTest::newRow(control) << QByteArray(control) << text(caption) << text(toolTip);
        };
        for (const char* track : {"radTk1", "radTk2", "radTk3"}) {
            const QByteArray name(track);
            const bool third = name == "radTk3";
            add(name + "_0", "Disabled");
            add(name + "_1", "Enabled");
            add(name + "_2", third ? "Required" : "Requried", "Track enabled AND required");
        }
        add("radID_0", "Read only ISO/ABA cards", "ISO/ABA are standard credit/ATM cards");
        add("radID_1", "Read all card types", "Read driver licenses and ISO/ABA card");
        add("radSendEr_0", "Don't send any  data if card error");
        add("radSendEr_1", "Don't send bad track data");
        add("radSendEr_2", "Send 'E' for each bad track");
        add("chkSendEs", "End Sentinel", "Checked = Send End Sentinel for each track else don't");
        add("chkSendLC", "Lower Case", "Checked = Send data as lowercase else uppercase");
        add("chkSendNBR", "Numeric Keypad", "Checked = Send numeric keypad else numbers (top-of-keyboard)");
        add("chkSendLRC", "LRC", "Checked = Send LRC for each track else don't");
        add("chkSendSS", "Start Sentinel", "Checked = Send Start Sentinel for each track else don't");
        add("radSendTermAfter_0", "after the card data");
        add("radSendTermAfter_1", "after each track");
        add("radSendTermAfter_2", "Don't send");
        add("radTrkMap_0", "0 =   1   2   3  ", "don't remap tracks");
        add("radTrkMap_1", "1 =   3   2   1  ", "swap tracks 1 and 3");
        add("radTrkMap_2", "2 =   2   1   3  ", "swap tracks 1 and 2");
        add("radTrkMap_3", "3 =   1   3   2  ", "swap tracks 2 and 3");
        add("radTrkMap_4", "4 =   2   3   1  ", "remap 1 to 2, 2 to 3 and 3 to 1");
        add("radTrkMap_5", "5 =   3   1   2  ", "remap 1 to 3, 2 to 1 and 3 to 2");
        for (const char* suffix : {"_CFG", "_KB"}) {
            const auto name = [suffix](const char* array, int index) {
                return QByteArray(array) + suffix + '_' + QByteArray::number(index);
            };
            add(name("radP080E", 0), "Use internal US keyboard scan codes");
            add(name("radP080E", 1), "Use table stored in parameter area");
            add(name("radP080A1", 0), "ANSI, ALT+0+ASCII Code");
            add(name("radP080A1", 1), "OEM, ALT+ASCII Code");
            add(name("radP080A23", 0), "No Alt Codes");
            add(name("radP080A23", 1), "Alt only if no scan code in table");
            add(name("radP080A23", 2), "Alt for all but fixed keys");
            add(name("radP080A23", 3), "Alt for all keys");
            add(name("radP080S", 0), "Keyboard uses Caps Lock");
            add(name("radP080S", 1), "Keyboard uses Shift Lock");
        }
        add("radShiftA1_KB_0", "non-Alpha or (a-z)");
        add("radShiftA1_KB_1", "key affected by Caps Lock/upper case flag");
        add("radShiftA2_KB_0", "Does not need Ctrl Key");
        add("radShiftA2_KB_1", "Needs Ctrl key");
        add("radShiftA3_KB_0", "Does not need AltGr Key");
        add("radShiftA3_KB_1", "Needs AltGr key");
        add("radShiftA4_KB_0", "Does not need Shift Key");
        add("radShiftA4_KB_1", "Needs Shift key");
    }
    void captionsAndToolTips()
    {
        QFETCH(QByteArray, control);
        QFETCH(QString, caption);
        QFETCH(QString, toolTip);
        EditorWindow w;
        QCOMPARE(w.control<QAbstractButton>(control.constData())->text(), caption);
        QCOMPARE(w.control(control.constData())->toolTip(), toolTip);
    }

    void boxToolTips()
    {
        EditorWindow w;
        QCOMPARE(w.box("txtHexEntry")->toolTip(), text("enter a hex value from 00 to FF"));
        QCOMPARE(w.box("txtCharEntry")->toolTip(), text("enter a single character"));
        QCOMPARE(w.box("txtDecEntry")->toolTip(), text("enter decimal value between 0 and 255"));
        QCOMPARE(w.box("txtHexEntry_KB")->toolTip(), text("enter a hex value from 00 to FF"));
        QCOMPARE(w.box("txtDecEntry_KB")->toolTip(), text("enter decimal value between 0 and 255"));
    }

    // At the least size that the editors ask for, with several sizes of type, nothing is cut and nothing overlaps.
    void everythingHasRoom_data() { addRows(); }
    void everythingHasRoom()
    {
        QFETCH(std::size_t, which);
        const QFont before = QApplication::font();
        for (const int points : {9, 14, 18}) {
            QFont font = before;
            font.setPointSize(points);
            QApplication::setFont(font);
            EditorWindow w;
            QWidget* editor = openRow(w, kRows[which]);
            editor->setFixedSize(editor->minimumSize());
            QTRY_COMPARE(editor->size(), editor->minimumSize());
            QCoreApplication::processEvents(); // frames that were just shown are laid out by an event
            checkRoom(editor);
        }
        QApplication::setFont(before);
    }

    void theDesignedSizeIsEnough()
    {
        const QFont before = QApplication::font();
        QFont font = before;
        font.setPointSize(9);
        QApplication::setFont(font);
        EditorWindow w;
        for (const QWidget* editor : {static_cast<QWidget*>(w.editor_CFG), static_cast<QWidget*>(w.editor_KB)}) {
            QVERIFY(editor->minimumWidth() <= 460);
            QVERIFY(editor->minimumHeight() <= 430);
        }
        QApplication::setFont(before);
    }

    void framesLineUp_data() { addRows(); }
    void framesLineUp()
    {
        QFETCH(std::size_t, which);
        EditorWindow w;
        QWidget* editor = openRow(w, kRows[which]);
        QCoreApplication::processEvents();
        const int left = w.label(kRows[which].page == kCfg ? "lblEditTitle_CFG" : "lblEditTitle_KB")->x();
        int right = -1;
        for (const QGroupBox* frame : editor->findChildren<QGroupBox*>()) {
            if (!frame->isVisible()) {
                continue;
            }
            const QRect place(frame->mapTo(editor, QPoint()), frame->size());
            const bool isInARow = frame->objectName() == text("frmTk2") || frame->objectName() == text("frmTk3");
            const bool endsTheRow = frame->objectName() != text("frmTk1") && frame->objectName() != text("frmTk2");
            QVERIFY(isInARow || place.left() == left);
            QVERIFY(!endsTheRow || right == -1 || place.right() == right);
            right = endsTheRow ? place.right() : right;
        }
    }

    void tabGoesInReadingOrder_data() { addRows(); }
    void tabGoesInReadingOrder()
    {
        QFETCH(std::size_t, which);
        const RowToOpen& row = kRows[which];
        EditorWindow w;
        const QWidget* editor = openRow(w, row);
        QWidget* grid = row.page == kCfg ? w.grdCFG : w.grdKB;
        grid->setFocus();
        QStringList stops;
        for (int count = 0; count < 20; ++count) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            const QWidget* focus = QApplication::focusWidget();
            if (focus == nullptr || !editor->isAncestorOf(focus)) {
                break;
            }
            stops << focus->objectName();
        }
        QCOMPARE(stops.join(QLatin1Char(' ')), text(row.tabStops));
    }

    // The selected option alone is a stop, also after another row was worked on by keyboard.
    void tabFindsTheSelectedOptionOfTheNextRow()
    {
        EditorWindow w;
        w.openCfg(text("02A"), text("05"));
        w.option("radTrkMap", 5)->setFocus(Qt::TabFocusReason);
        w.openCfg(text("02A"), text("01"));
        w.grdCFG->setFocus();
        QTest::keyClick(w.grdCFG, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), text("radTrkMap_1"));
    }

    void theWheelChangesNoValue_data() { addRows(); }
    void theWheelChangesNoValue()
    {
        QFETCH(std::size_t, which);
        const RowToOpen& row = kRows[which];
        EditorWindow w;
        const QWidget* editor = openRow(w, row);
        for (QWidget* control : shownControls(editor)) {
            control->setFocus();
            turnWheel(control);
        }
        QCOMPARE(w.cell(row.page, text(row.address), tables::kValueColumn), text(row.value));
        QCOMPARE(w.cell(row.page, text(row.address), tables::kChangedColumn), QString());
    }

    void everyControlHasANameToSay_data() { addRows(); }
    void everyControlHasANameToSay()
    {
        QFETCH(std::size_t, which);
        EditorWindow w;
        for (QWidget* control : shownControls(openRow(w, kRows[which]))) {
            QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(control);
            QVERIFY(spoken != nullptr);
            QVERIFY2(!spoken->text(QAccessible::Name).isEmpty(), qPrintable(control->objectName()));
        }
    }

    void boxesAreBuddiesOfTheirLabels()
    {
        EditorWindow w;
        QCOMPARE(w.label("lblHexEntry")->buddy(), w.box("txtHexEntry"));
        QCOMPARE(w.label("lblDecEntry")->buddy(), w.box("txtDecEntry"));
        QCOMPARE(w.label("lblCharEntry")->buddy(), w.box("txtCharEntry"));
        QCOMPARE(w.label("lblScanCode_KB")->buddy(), w.box("txtHexEntry_KB"));
        w.openKb(text("083-084"), text("20-03"));
        QCOMPARE(w.label("lblHexEntry_KB")->buddy(), w.box("txtHexEntry_KB"));
        w.openKb(text("081-082"), text("00-00"));
        QCOMPARE(w.label("lblHexEntry_KB")->buddy(), w.box("txtHexEntry2_KB"));
    }

private:
    static void checkRoom(const QWidget* editor)
    {
        const QList<QWidget*> controls = shownControls(editor);
        for (QWidget* control : controls) {
            const QRect place(control->mapTo(editor, QPoint()), control->size());
            QVERIFY2(editor->rect().contains(place), qPrintable(control->objectName()));
            const QSize needed = control->minimumSizeHint();
            QVERIFY2(place.width() >= needed.width(), qPrintable(control->objectName()));
            QVERIFY2(place.height() >= needed.height(), qPrintable(control->objectName()));
            for (const QWidget* other : controls) {
                const bool nested = control == other || control->isAncestorOf(other) || other->isAncestorOf(control);
                const QRect otherPlace(other->mapTo(editor, QPoint()), other->size());
                QVERIFY2(nested || !place.intersects(otherPlace),
                         qPrintable(control->objectName() + text(" over ") + other->objectName()));
            }
        }
        QVERIFY(std::any_of(controls.begin(), controls.end(), isInput) || controls.size() == 2);
    }
};

} // namespace

static const testsupport::RunnableTest<EditorLooksTest> kRunnable;
#include "EditorLooksTest.moc"
