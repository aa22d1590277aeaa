#include "tests/support/EditorWindow.h"
#include "tests/support/RunnableTest.h"

#include <algorithm>

using testsupport::EditorWindow;

namespace {

constexpr auto kPage = EditorWindow::KeyboardLanguagePage;

QString text(const char* ascii)
{
    return QLatin1String(ascii);
}

// Every control of the editor but the title.
QStringList shownControls(EditorWindow& w)
{
    QStringList shown;
    for (const char* name : {"frmA1_KB", "frmA23_KB", "frmE_KB", "frmS_KB", "frmShiftFlagA1_KB", "frmShiftFlagA2_KB",
                             "frmShiftFlagA3_KB", "frmShiftFlagA4_KB", "lblScanCode_KB", "txtHexEntry_KB",
                             "txtHexEntry2_KB", "lblHexEntry_KB", "txtDecEntry_KB"}) {
        if (!w.control(name)->isHidden()) {
            shown << text(name);
        }
    }
    return shown;
}

const char* const kFlagControls = "frmA1_KB frmA23_KB frmE_KB frmS_KB";
const char* const kIdControls = "txtHexEntry2_KB lblHexEntry_KB";
const char* const kPairControls = "frmShiftFlagA1_KB frmShiftFlagA2_KB frmShiftFlagA3_KB frmShiftFlagA4_KB "
                                  "lblScanCode_KB txtHexEntry_KB lblHexEntry_KB";

class KeyboardLanguageEditorTest final : public QObject
{
    Q_OBJECT

private slots:
    void everyRowHasItsControls()
    {
        EditorWindow w;
        w.showPage(kPage);
        for (int row = 1; row <= 75; ++row) {
            w.grdKB->setRow(row);
            const char* expected = row == 1 ? kFlagControls : row == 2 ? kIdControls : kPairControls;
            QCOMPARE(shownControls(w).join(QLatin1Char(' ')), text(expected));
            QVERIFY(w.label("lblEditTitle_KB")->isVisible());
            QCOMPARE(int{w.session.EditState}, 3);
            QCOMPARE(w.grdKB->col(), 1);
            QCOMPARE(w.session.CurrentAddress, w.KB.table().cell(row, tables::kAddressColumn));
        }
    }

    void addressesOfAFile_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("panel");
        QTest::newRow("empty") << QString() << QString() << text("<past end of list> ") << QString();
        QTest::newRow("blank") << text("  ") << QString() << text("<past end of list> ") << QString();
        QTest::newRow("below") << text("07E-07F") << QString() << text("<07E-07F> note") << QString();
        QTest::newRow("082") << text("082") << QString() << text("<082> note") << QString();
        QTest::newRow("beyond") << text("114-115") << QString() << text("<114-115> note") << QString();
        QTest::newRow("081 alone") << text("081") << text(kIdControls) << text("<081> note")
                                   << text("value in binary is 0101 0110 - 0111 1000");
        QTest::newRow("last pair") << text("113") << text(kPairControls) << text("<113> note")
                                   << text("value in binary is 0101 0110 - 0111 1000");
    }
    void addressesOfAFile()
    {
        QFETCH(QString, address);
        QFETCH(QString, shown);
        QFETCH(QString, title);
        QFETCH(QString, panel);
        EditorWindow w;
        w.showPage(kPage);
        w.replaceRow(kPage, 4, address, text("56-78"), text("note"));
        w.grdKB->setRow(4);
        QCOMPARE(shownControls(w).join(QLatin1Char(' ')), shown);
        QCOMPARE(w.label("lblEditTitle_KB")->text(), title);
        QCOMPARE(w.panel1, panel);
        QCOMPARE(int{w.session.EditState}, 3);
    }

    void titlesAreNeverCutOrTrimmed()
    {
        EditorWindow w;
        w.openKb(text("0C3-0C4"), text("80-33"));
        QCOMPARE(w.label("lblEditTitle_KB")->text(), text("<0C3-0C4> 3C, USA KB key -> < "));
        w.openKb(text("09B-09C"), text("80-0A"));
        QCOMPARE(w.label("lblEditTitle_KB")->text(), text("<09B-09C> 28, USA KB key -> ( "));
        QCOMPARE(w.label("lblEditTitle_KB")->textFormat(), Qt::PlainText);
    }

    // ---- 080 ----

    void keyboardFlags()
    {
        EditorWindow w;
        w.openKb(text("080"), text("F1"));
        QCOMPARE(w.selected("radP080A1_KB"), 1);
        QCOMPARE(w.selected("radP080A23_KB"), 3);
        QCOMPARE(w.selected("radP080E_KB"), 1);
        QCOMPARE(w.selected("radP080S_KB"), 1);
        QCOMPARE(w.panel1, text("value in binary is 1111 0001"));
        w.click("radP080E_KB", 0);
        QCOMPARE(w.valueKb(text("080")), text("F0"));
        QCOMPARE(w.markKb(text("080")), text("XXX"));
        QCOMPARE(w.panel1, text("value in binary is 1111 0000"));
        QCOMPARE(w.tabCaption[kPage], text("Keyboard Language *"));
        QCOMPARE(w.grdKB->col(), 2);
    }

    void bitsWithoutControlSurvive()
    {
        EditorWindow w;
        w.openKb(text("080"), text("0E"));
        for (const char* array : {"radP080E_KB", "radP080A1_KB", "radP080A23_KB", "radP080S_KB"}) {
            w.click(array, 1);
            w.click(array, 0);
        }
        QCOMPARE(w.valueKb(text("080")), text("0E"));
    }

    void flagsThatAreNotHexSelectTheFirstOptions()
    {
        EditorWindow w;
        w.openKb(text("080"), text("zz"));
        for (const char* array : {"radP080E_KB", "radP080A1_KB", "radP080A23_KB", "radP080S_KB"}) {
            QCOMPARE(w.selected(array), 0);
        }
    }

    // ---- the pairs ----

    void shiftFlags()
    {
        EditorWindow w;
        w.openKb(text("083-084"), text("90-1E"));
        QCOMPARE(w.selected("radShiftA1_KB"), 1);
        QCOMPARE(w.selected("radShiftA2_KB"), 0);
        QCOMPARE(w.selected("radShiftA3_KB"), 0);
        QCOMPARE(w.selected("radShiftA4_KB"), 1);
        QCOMPARE(w.box("txtHexEntry_KB")->text(), text("1E"));
        QCOMPARE(w.panel1, text("value in binary is 1001 0000 - 0001 1110"));
        w.click("radShiftA4_KB", 0);
        QCOMPARE(w.valueKb(text("083-084")), text("10-1E"));
        QCOMPARE(w.panel1, text("value in binary is 0001 0000 - 0001 1110"));
        QCOMPARE(w.markKb(text("083-084")), text("XXX"));
        QCOMPARE(w.grdKB->col(), 2);
    }

    void eachShiftFlagAlone()
    {
        EditorWindow w;
        const QList<std::pair<const char*, const char*>> flags = {{"radShiftA1_KB", "10-00"},
                                                                  {"radShiftA2_KB", "20-00"},
                                                                  {"radShiftA3_KB", "40-00"},
                                                                  {"radShiftA4_KB", "80-00"}};
        for (const auto& [array, value] : flags) {
            w.openKb(text("083-084"), text(value));
            for (const auto& [other, unused] : flags) {
                QCOMPARE(w.selected(other), other == array ? 1 : 0);
            }
            w.openKb(text("083-084"), text("00-00"));
            w.click(array, 1);
            QCOMPARE(w.valueKb(text("083-084")), text(value));
        }
    }

    void aTypedScanCodeKeepsTwoDigits()
    {
        EditorWindow w;
        w.openKb(text("083-084"), text("10-1E"));
        QTest::mouseClick(w.box("txtHexEntry_KB"), Qt::LeftButton);
        QTest::keyClicks(w.box("txtHexEntry_KB"), text("0"));
        QCOMPARE(w.valueKb(text("083-084")), text("10-00"));
        QTest::keyClicks(w.box("txtHexEntry_KB"), text("b"));
        QCOMPARE(w.box("txtHexEntry_KB")->text(), text("0B"));
        QCOMPARE(w.valueKb(text("083-084")), text("10-0B"));
        QCOMPARE(w.panel1, text("value in binary is 0001 0000 - 0000 1011"));
        QCOMPARE(w.markKb(text("083-084")), text("XXX"));
        w.box("txtHexEntry_KB")->setText(text("123"));
        QCOMPARE(w.valueKb(text("083-084")), text("10-23"));
    }

    // Unlike the Configuration editor's boxes, an empty one stands for 00 here.
    // kb-emptied-box
    void anEmptiedScanCodeIsZero()
    {
        EditorWindow w;
        w.openKb(text("083-084"), text("F5-1E"));
        w.box("txtHexEntry_KB")->clear();
        QCOMPARE(w.valueKb(text("083-084")), text("F5-00"));
        QCOMPARE(w.markKb(text("083-084")), text("XXX"));
    }

    void anEditRepairsAValueThatIsNoPair()
    {
        EditorWindow w;
        w.openKb(text("083-084"), text("7"));
        QCOMPARE(w.box("txtHexEntry_KB")->text(), text("7"));
        w.click("radShiftA4_KB", 1);
        QCOMPARE(w.valueKb(text("083-084")), text("87-07"));
    }

    void clickingTheSelectedOptionMarksTheRow()
    {
        EditorWindow w;
        w.openKb(text("083-084"), text("20-03"));
        w.click("radShiftA2_KB", 1);
        QCOMPARE(w.valueKb(text("083-084")), text("20-03"));
        QCOMPARE(w.markKb(text("083-084")), text("XXX"));
    }

    // After an Update the index holds the second address of every pair: such edits are written but not marked.
    void aPairUnderItsSecondAddressIsWrittenButNotMarked()
    {
        EditorWindow w;
        w.KB.table().ParmAddr[2] = "084";
        w.openKb(text("083-084"), text("20-03"));
        w.click("radShiftA4_KB", 1);
        QCOMPARE(w.valueKb(text("083-084")), text("A0-03"));
        QCOMPARE(w.markKb(text("083-084")), QString());
        QVERIFY(!w.KB.table().TableChanged);
    }

    void aPairEmptiesTheLineOfWordsNextDoor()
    {
        EditorWindow w;
        w.openCfg(text("001"), text("05"));
        w.openKb(text("083-084"), text("20-03"));
        QVERIFY(!w.label("lblDecEntry")->isHidden());
        QCOMPARE(w.label("lblDecEntry")->text(), QString());
        w.openKb(text("080"), text("00"));
        QVERIFY(w.label("lblDecEntry")->isHidden());
        w.openKb(text("083-084"), text("20-03"));
        w.showPage(EditorWindow::ConfigurationPage);
        QCOMPARE(w.session.CurrentAddress, "001");
        QCOMPARE(w.label("lblDecEntry")->text(), text(" ID #:05 (unmodified)  "));
    }

    // ---- 081-082 ----

    void identificationBytes()
    {
        EditorWindow w;
        QCOMPARE(w.box("txtHexEntry2_KB")->text(), text("XXXX"));
        w.openKb(text("081-082"), text("12-AB"));
        QCOMPARE(w.box("txtHexEntry2_KB")->text(), text("12AB"));
        QCOMPARE(w.panel1, text("value in binary is 0001 0010 - 1010 1011"));
        w.box("txtHexEntry2_KB")->setText(text("0F5"));
        w.box("txtHexEntry2_KB")->setText(text("0F5C7"));
        w.box("txtHexEntry2_KB")->clear();
        QCOMPARE(w.valueKb(text("081-082")), text("12-AB"));
        QCOMPARE(w.markKb(text("081-082")), QString());
        QCOMPARE(w.grdKB->col(), 1);
        QTest::keyClicks(w.box("txtHexEntry2_KB"), text("0f5c"));
        QCOMPARE(w.valueKb(text("081-082")), text("0F-5C"));
        QCOMPARE(w.markKb(text("081-082")), text("XXX"));
        QCOMPARE(w.grdKB->col(), 2);
        // The panel still shows the bytes that the row was opened with.
        QCOMPARE(w.panel1, text("value in binary is 0001 0010 - 1010 1011"));
    }

    void identificationTextIsReadForgivingly()
    {
        EditorWindow w;
        w.openKb(text("081-082"), text("00-00"));
        w.box("txtHexEntry2_KB")->setText(text("1Gzz"));
        QCOMPARE(w.valueKb(text("081-082")), text("01-00"));
    }

    // ---- state ----

    void handlersDoNothingWhileATableIsFilled()
    {
        for (const std::uint8_t state : {tables::EditSession::kFilling, tables::EditSession::kLayingOutKeyboard}) {
            EditorWindow w;
            w.openKb(text("083-084"), text("20-03"));
            w.session.EditState = state;
            w.panel1 = text("as it was");
            w.editor_KB->radShiftA1_KB_Click(1);
            w.editor_KB->radP080E_KB_Click(1);
            w.box("txtHexEntry_KB")->setText(text("44"));
            w.box("txtHexEntry2_KB")->setText(text("1234"));
            QCOMPARE(w.valueKb(text("083-084")), text("20-03"));
            QCOMPARE(w.markKb(text("083-084")), QString());
            QCOMPARE(w.panel1, text("as it was"));
        }
    }

    void openingClearsThePanelFirst()
    {
        EditorWindow w;
        w.showPage(kPage);
        w.panelTexts.clear();
        w.openKb(text("080"), text("01"));
        QCOMPARE(w.panelTexts.first(), QString());
        QCOMPARE(w.panelTexts.last(), text("value in binary is 0000 0001"));
    }

    void noRowEverShowsTheDecimalBox()
    {
        EditorWindow w;
        w.showPage(kPage);
        for (int row = 1; row <= 75; ++row) {
            w.grdKB->setRow(row);
            QVERIFY(w.box("txtDecEntry_KB")->isHidden());
        }
    }

    // ---- places ----

    void placesAreMeasuredFromTheTitle()
    {
        EditorWindow w;
        w.showPage(kPage);
        for (const int width : {1000, 1300, 900}) {
            w.resize(width, 560);
            w.openKb(text("080"), text("00"));
            const QRect title = w.label("lblEditTitle_KB")->geometry();
            checkStack(w, {"frmA1_KB", "frmA23_KB", "frmE_KB", "frmS_KB"}, title, 1.5);
            w.openKb(text("083-084"), text("20-03"));
            checkStack(w, {"frmShiftFlagA1_KB", "frmShiftFlagA2_KB", "frmShiftFlagA3_KB", "frmShiftFlagA4_KB"}, title,
                       2.5);
            const QRect frame = w.control("frmShiftFlagA1_KB")->geometry();
            const int column = title.left() + qRound(1.05 * frame.width());
            QVERIFY(std::abs(w.box("txtHexEntry_KB")->x() - column) <= 1);
            QVERIFY(w.label("lblScanCode_KB")->x() > frame.right());
            w.openKb(text("081-082"), text("00-00"));
            QVERIFY(std::abs(w.box("txtHexEntry2_KB")->y() - (title.top() + qRound(2.5 * title.height()))) <= 1);
        }
    }

    void placesFollowAResize()
    {
        EditorWindow w;
        w.openKb(text("083-084"), text("20-03"));
        const int before = w.label("lblHexEntry_KB")->width();
        w.resize(w.width() + 300, w.height());
        QTRY_VERIFY(w.label("lblHexEntry_KB")->width() > before);
        QCOMPARE(w.label("lblEditTitle_KB")->width(), w.editor_KB->width());
    }

private:
    static void checkStack(EditorWindow& w, const QList<const char*>& frames, const QRect& title, double titleHeights)
    {
        double top = title.top() + titleHeights * title.height();
        for (const char* name : frames) {
            const QRect frame = w.control(name)->geometry();
            QVERIFY2(std::abs(frame.top() - top) <= 1, name);
            QCOMPARE(frame.left(), title.left());
            top = frame.top() + 1.01 * frame.height();
        }
    }
};

} // namespace

static const testsupport::RunnableTest<KeyboardLanguageEditorTest> kRunnable;
#include "KeyboardLanguageEditorTest.moc"
