#include "tests/support/EditorWindow.h"
#include "tests/support/RunnableTest.h"

using testsupport::EditorWindow;

namespace {

constexpr auto kPage = EditorWindow::ConfigurationPage;

QString text(const char* ascii)
{
    return QLatin1String(ascii);
}

// Every control of the editor but the title.
const QStringList& controlNames()
{
    static const QStringList names = QStringLiteral("frmTk1 frmTk2 frmTk3 frmReadTypes frmSendFlags frmSendError "
                                                    "frmSendTerm frmTrkMap frmA1_CFG frmA23_CFG frmE_CFG frmS_CFG "
                                                    "txtHexEntry lblHexEntry txtDecEntry lblDecEntry txtCharEntry "
                                                    "lblCharEntry")
                                         .split(QLatin1Char(' '));
    return names;
}

QStringList shownControls(EditorWindow& w)
{
    QStringList shown;
    for (const QString& name : controlNames()) {
        if (!w.control(qPrintable(name))->isHidden()) {
            shown << name;
        }
    }
    return shown;
}

class ConfigurationEditorTest final : public QObject
{
    Q_OBJECT

private slots:
    void everyRowHasItsControls_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("shown");
        const auto add = [](const char* addresses, const char* shown) {
            for (const QString& address : text(addresses).split(QLatin1Char(' '))) {
                QTest::newRow(qPrintable(address)) << address << text(shown);
            }
        };
        add("001 081 082", "lblDecEntry");
        add("013", "frmTk1 frmTk2 frmTk3 frmReadTypes");
        add("014", "frmSendFlags frmSendError");
        add("015 016 017 018 019 024 027 028", "txtCharEntry lblCharEntry");
        add("01A 01B", "txtDecEntry lblDecEntry");
        add("01C 01D 01E 01F 020 021 023 025 026 029 02C 02D", "txtHexEntry lblHexEntry");
        add("022", "frmSendTerm txtHexEntry lblHexEntry");
        add("02A", "frmTrkMap");
        add("080", "frmA1_CFG frmA23_CFG frmE_CFG frmS_CFG");
        add("02B 083 1", "");
    }
    void everyRowHasItsControls()
    {
        QFETCH(QString, address);
        QFETCH(QString, shown);
        EditorWindow w;
        if (w.rowOf(kPage, address) == 0) {
            w.replaceRow(kPage, 7, address, text("F1"), text("from a file"));
        }
        w.openCfg(address, text("F1"));
        QCOMPARE(shownControls(w), shown.split(QLatin1Char(' '), Qt::SkipEmptyParts));
        QVERIFY(w.label("lblEditTitle_CFG")->isVisible());
        for (const QString& name : shownControls(w)) {
            QVERIFY2(w.control(qPrintable(name))->isVisible(), qPrintable(name));
        }
    }

    void openingARowLeavesItReadyForEditing()
    {
        EditorWindow w;
        w.session.EditState = tables::EditSession::kFilling;
        w.grdCFG->setRow(9);
        w.editor_CFG->EditData_CFG();
        QCOMPARE(int{w.session.EditState}, 3);
        QCOMPARE(w.grdCFG->col(), 1);
        QCOMPARE(w.grdCFG->row(), 9);
        QCOMPARE(w.panel1, text("value in binary is 0001 0010"));
        QCOMPARE(w.session.CurrentAddress, "01A");
        QCOMPARE(w.markCfg(text("01A")), QString());
    }

    void titles()
    {
        EditorWindow w;
        QCOMPARE(w.label("lblEditTitle_CFG")->text(), text("<013> Track enables / ID Flag"));
        w.openCfg(text("001"), text("05"));
        QCOMPARE(w.label("lblEditTitle_CFG")->text(), text("<001> Parameter ID and Mod Flag "));
        w.openCfg(text("01A"), text("12"));
        QCOMPARE(w.label("lblEditTitle_CFG")->text(), text("<01A> Char Output Delay [Enter as decimal] "));
        w.replaceRow(kPage, 7, text("pre"), text("00"), text("<b>not markup</b>"));
        w.openCfg(text("pre"), text("41"));
        QCOMPARE(w.label("lblEditTitle_CFG")->text(), text("<past end of list> "));
        QCOMPARE(w.panel1, text("value in binary is 0100 0001"));
    }

    void everyLabelIsPlainTextAndTheTitleHasNoBuddy()
    {
        EditorWindow w;
        const QList<QLabel*> labels = w.findChildren<QLabel*>();
        QVERIFY(labels.size() >= 6);
        for (const QLabel* label : labels) {
            QCOMPARE(label->textFormat(), Qt::PlainText);
        }
        QVERIFY(w.label("lblEditTitle_CFG")->buddy() == nullptr);
        QVERIFY(w.label("lblEditTitle_KB")->buddy() == nullptr);
    }

    void identificationIsReadOnly()
    {
        EditorWindow w;
        w.openCfg(text("001"), text("85"));
        QCOMPARE(w.label("lblDecEntry")->text(), text(" ID #:05 (modified)  "));
        QCOMPARE(w.label("lblDecEntry")->toolTip(), text("This is a Read-Only Value"));
        w.openCfg(text("001"), text("05"));
        QCOMPARE(w.label("lblDecEntry")->text(), text(" ID #:05 (unmodified)  "));
    }

    void trackEnables()
    {
        EditorWindow w;
        QCOMPARE(w.selected("radTk1"), 1);
        QCOMPARE(w.selected("radTk2"), 1);
        QCOMPARE(w.selected("radTk3"), 1);
        QCOMPARE(w.selected("radID"), 1);
        w.click("radTk2", 2);
        QCOMPARE(w.valueCfg(text("013")), text("99"));
        QCOMPARE(w.markCfg(text("013")), text("XXX"));
        QCOMPARE(w.panel1, text("value in binary is 1001 1001"));
        QCOMPARE(w.tabCaption[kPage], text("Configuration *"));
        QVERIFY(w.CFG.table().TableChanged);
        QCOMPARE(w.grdCFG->col(), 2);
        w.click("radID", 0);
        QCOMPARE(w.valueCfg(text("013")), text("19"));
    }

    void sendFlags()
    {
        EditorWindow w;
        w.openCfg(text("014"), text("63"));
        QVERIFY(w.control<QAbstractButton>("chkSendSS")->isChecked());
        QVERIFY(w.control<QAbstractButton>("chkSendEs")->isChecked());
        QVERIFY(!w.control<QAbstractButton>("chkSendLRC")->isChecked());
        QVERIFY(!w.control<QAbstractButton>("chkSendLC")->isChecked());
        QVERIFY(!w.control<QAbstractButton>("chkSendNBR")->isChecked());
        QCOMPARE(w.selected("radSendEr"), 2);
        w.click("radSendEr", 1);
        QCOMPARE(w.valueCfg(text("014")), text("61"));
        w.click("radSendEr", 0);
        QCOMPARE(w.valueCfg(text("014")), text("60"));
    }

    // The option of the row before must not stay selected.
    // kb-no-option
    void aFieldWithoutMatchingOptionSelectsNone()
    {
        EditorWindow w;
        w.openCfg(text("014"), text("63"));
        QCOMPARE(w.selected("radSendEr"), 2);
        w.openCfg(text("014"), text("62"));
        QCOMPARE(w.selected("radSendEr"), -1);
        w.openCfg(text("02A"), text("05"));
        QCOMPARE(w.selected("radTrkMap"), 5);
        w.openCfg(text("02A"), text("FE"));
        QCOMPARE(w.selected("radTrkMap"), -1);
        w.click("radTrkMap", 0);
        QCOMPARE(w.valueCfg(text("02A")), text("F8"));
    }

    // kb-same-option
    void clickingTheSelectedOptionMarksTheRow()
    {
        EditorWindow w;
        w.click("radTk1", 1);
        QCOMPARE(w.valueCfg(text("013")), text("95"));
        QCOMPARE(w.markCfg(text("013")), text("XXX"));
    }

    void optionsFollowTheArrowKeys()
    {
        EditorWindow w;
        w.click("radTk1", 1);
        QTest::keyClick(w.option("radTk1", 1), Qt::Key_Down);
        QCOMPARE(w.selected("radTk1"), 2);
        QCOMPARE(w.valueCfg(text("013")), text("96"));
    }

    void theByteIsReadFromTheCellAtEveryClick()
    {
        EditorWindow w;
        w.openCfg(text("013"), text("95"));
        // Written while the editor stands open, which keeps the old byte on show.
        w.CFG.PutTableEntry("013", "40", tables::kValueColumn);
        QCOMPARE(w.selected("radTk1"), 1);
        w.click("radTk2", 1);
        QCOMPARE(w.valueCfg(text("013")), text("44"));
    }

    void aTextThatIsNotHexReadsAsZero()
    {
        EditorWindow w;
        w.openCfg(text("013"), text("??"));
        QCOMPARE(w.selected("radTk1"), 0);
        QCOMPARE(w.selected("radID"), 0);
        QCOMPARE(w.panel1, text("value in binary is 0000 0000"));
    }

    // ---- rows that only a file brings ----

    void keyboardFlagsOnTheConfigurationTab()
    {
        EditorWindow w;
        w.replaceRow(kPage, 5, text("080"), text("F1"), text("x"));
        w.openCfg(text("080"), text("F1"));
        QCOMPARE(w.selected("radP080A1_CFG"), 1);
        QCOMPARE(w.selected("radP080A23_CFG"), 3);
        QCOMPARE(w.selected("radP080E_CFG"), 1);
        QCOMPARE(w.selected("radP080S_CFG"), 1);
        w.click("radP080E_CFG", 0);
        QCOMPARE(w.valueCfg(text("080")), text("F0"));
        w.click("radP080A23_CFG", 1);
        QCOMPARE(w.valueCfg(text("080")), text("B0"));
        QCOMPARE(w.markCfg(text("080")), text("XXX"));
        QCOMPARE(w.tabCaption[kPage], text("Configuration *"));
    }

    void keyboardIdentificationOnTheConfigurationTab()
    {
        EditorWindow w;
        w.replaceRow(kPage, 5, text("081"), text("3F"), text("x"));
        w.replaceRow(kPage, 6, text("082"), text("02"), text("x"));
        w.openCfg(text("081"), text("3F"));
        QCOMPARE(w.label("lblDecEntry")->text(), text("Byte 0 = 3F"));
        QCOMPARE(w.label("lblDecEntry")->toolTip(), text("This is a Read-Only Value"));
        w.openCfg(text("082"), text("02"));
        QCOMPARE(w.label("lblDecEntry")->text(), text("Byte 1 = 02"));
        QCOMPARE(w.label("lblDecEntry")->toolTip(), text("This is a Read-Only Value"));
    }

    // ---- the handlers' guard, the comment box ----

    void handlersDoNothingWhileATableIsFilled()
    {
        for (const std::uint8_t state : {tables::EditSession::kFilling, tables::EditSession::kLayingOutKeyboard}) {
            EditorWindow w;
            w.openCfg(text("022"), text("8D"));
            w.session.EditState = state;
            w.panel1 = text("as it was");
            w.editor_CFG->radSendTermAfter_Click(2);
            w.editor_CFG->radTk1_Click(2);
            w.editor_CFG->chkSendEs_Click();
            w.box("txtHexEntry")->setText(text("11"));
            w.box("txtCharEntry")->setText(text("q"));
            w.box("txtDecEntry")->setText(text("77"));
            QCOMPARE(w.valueCfg(text("022")), text("8D"));
            QCOMPARE(w.markCfg(text("022")), QString());
            QVERIFY(w.box("txtHexEntry")->isVisible());
            QCOMPARE(w.panel1, text("as it was"));
        }
    }

    // kb-comment-not-marked
    void commentsEmptyTheFirstPanel()
    {
        EditorWindow w;
        QVERIFY(!w.panel1.isEmpty());
        w.editor_CFG->txtComments_CFG_Change();
        QCOMPARE(w.panel1, QString());
        QVERIFY(!w.CFG.table().TableChanged);
    }

    void hidingAllLeavesTheTitles()
    {
        EditorWindow w;
        w.openCfg(text("022"), text("8D"));
        w.session.Hide_All();
        QCOMPARE(shownControls(w), QStringList());
        QVERIFY(w.label("lblEditTitle_CFG")->isVisible());
        QVERIFY(!w.label("lblEditTitle_KB")->isHidden());
    }

    // Opening one table's editor hides the other's, whose controls would edit under a foreign address.
    void openingTheOtherEditorHidesThisOne()
    {
        EditorWindow w;
        w.openKb(text("080"), text("00"));
        QCOMPARE(shownControls(w), QStringList());
        w.showPage(kPage);
        QCOMPARE(shownControls(w), QStringList({text("frmTk1"), text("frmTk2"), text("frmTk3"), text("frmReadTypes")}));
        QCOMPARE(w.session.CurrentAddress, "013");
    }
};

} // namespace

static const testsupport::RunnableTest<ConfigurationEditorTest> kRunnable;
#include "ConfigurationEditorTest.moc"
