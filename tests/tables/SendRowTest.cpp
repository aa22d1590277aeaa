// Sending one row by a double-click in the grid.

#include "tests/support/EditorWindow.h"
#include "tests/support/RunnableTest.h"

#include <QHeaderView>

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using testsupport::EditorWindow;

namespace {

constexpr auto kCfg = EditorWindow::ConfigurationPage;
constexpr auto kKb = EditorWindow::KeyboardLanguagePage;

QString text(const char* ascii)
{
    return QLatin1String(ascii);
}

using Calls = std::vector<std::string>;

void doubleClick(tables::ParamGrid* grid, int row)
{
    grid->scrollTo(grid->model()->index(row - 1, 0));
    const QPoint place = grid->visualRect(grid->model()->index(row - 1, tables::kNotesColumn)).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

void compareQuestion(const EditorWindow& w, std::size_t index, const std::string& question)
{
    QVERIFY(index < w.boxes.shown.size());
    const platform::MessageBox& box = w.boxes.shown[index];
    QCOMPARE(box.text, question);
    QCOMPARE(box.title, "Send Single Setting");
    QCOMPARE(box.icon, BoxIcon::Question);
    QCOMPARE(box.buttons, BoxButtons::YesNo);
    QCOMPARE(box.defaultButton, BoxAnswer::No);
}

void compareNotice(const EditorWindow& w, std::size_t index, const std::string& notice)
{
    QVERIFY(index < w.boxes.shown.size());
    const platform::MessageBox& box = w.boxes.shown[index];
    QCOMPARE(box.text, notice);
    QCOMPARE(box.title, "");
    QCOMPARE(box.icon, BoxIcon::None);
    QCOMPARE(box.buttons, BoxButtons::Ok);
}

class SendRowTest final : public QObject
{
    Q_OBJECT

private slots:
    void aConfigurationRowIsSent()
    {
        EditorWindow w;
        w.boxes.expect(BoxAnswer::Yes);
        doubleClick(w.grdCFG, 2);
        QCOMPARE(w.boxes.shown.size(), 1U);
        compareQuestion(w, 0, "Do you want to send this parameter? ( 013=95)");
        QCOMPARE(w.device.calls, Calls({"row 013"}));
        QCOMPARE(w.grdCFG->col(), 1);
        QCOMPARE(w.markCfg(text("013")), QString());
    }

    void noLeavesTheReaderAlone()
    {
        EditorWindow w;
        w.boxes.expect(BoxAnswer::No);
        doubleClick(w.grdCFG, 3);
        compareQuestion(w, 0, "Do you want to send this parameter? ( 014=63)");
        QCOMPARE(w.device.calls, Calls());
        QCOMPARE(w.grdCFG->col(), 2);
    }

    void aLinkThatDoesNotOpenSendsNothing()
    {
        EditorWindow w;
        w.device.opens = false;
        w.boxes.expect(BoxAnswer::Yes);
        doubleClick(w.grdCFG, 2);
        QCOMPARE(w.device.calls, Calls({"row 013"}));
        QCOMPARE(w.grdCFG->col(), 2);
    }

    void theFirstRowIsIgnored()
    {
        EditorWindow w;
        doubleClick(w.grdCFG, 1);
        QCOMPARE(w.grdCFG->row(), 1);
        QCOMPARE(w.boxes.shown.size(), 0U);
        w.grdCFG->setCol(3);
        w.editor_CFG->grdCFG_DblClick();
        QCOMPARE(w.boxes.shown.size(), 0U);
        QCOMPARE(w.grdCFG->col(), 3);
    }

    // The read-only row is known by its place, whatever address a file put there.
    // kb-first-row
    void rowsAreIgnoredByTheirPlace()
    {
        EditorWindow w;
        w.replaceRow(kCfg, 1, text("018"), text("11"), text("x"));
        w.replaceRow(kCfg, 6, text("001"), text("85"), text("x"));
        doubleClick(w.grdCFG, 1);
        QCOMPARE(w.boxes.shown.size(), 0U);
        w.boxes.expect(BoxAnswer::Yes);
        doubleClick(w.grdCFG, 6);
        compareQuestion(w, 0, "Do you want to send this parameter? ( 001=85)");
        QCOMPARE(w.device.calls, Calls({"row 001"}));
    }

    void nobodyIsAskedWhileTheDeviceIsBusy()
    {
        EditorWindow w;
        w.device.busy = true;
        w.grdCFG->setRow(2);
        w.grdCFG->setCol(3);
        w.editor_CFG->grdCFG_DblClick();
        QCOMPARE(w.grdCFG->col(), 3);
        w.showPage(kKb);
        w.editor_KB->grdKB_DblClick();
        QCOMPARE(w.boxes.shown.size(), 0U);
        QCOMPARE(w.device.calls, Calls());
    }

    void anOperationThatBeganMeanwhileWins()
    {
        EditorWindow w;
        w.boxes.expect(BoxAnswer::Yes, [&w] { w.device.busy = true; });
        doubleClick(w.grdCFG, 2);
        QCOMPARE(w.device.calls, Calls());
        QCOMPARE(w.grdCFG->col(), 2);
        w.device.busy = false;
        w.showPage(kKb);
        w.boxes.expect(BoxAnswer::Yes, [&w] { w.device.busy = true; });
        doubleClick(w.grdKB, 1);
        QCOMPARE(w.device.calls, Calls());
        QCOMPARE(w.boxes.shown.size(), 2U);
    }

    // Events run while the question stands and while the port opens.
    void theRowThatWasAskedAboutIsSent()
    {
        EditorWindow w;
        w.boxes.expect(BoxAnswer::Yes, [&w] { w.grdCFG->setRow(9); });
        doubleClick(w.grdCFG, 2);
        QCOMPARE(w.device.calls, Calls({"row 013"}));

        w.showPage(kKb);
        w.device.calls.clear();
        w.boxes.expect(BoxAnswer::Yes, [&w] { w.grdKB->setRow(9); });
        w.boxes.expect(BoxAnswer::Ok);
        doubleClick(w.grdKB, 3);
        QCOMPARE(w.device.calls, Calls({"settings 083=20 084=03"}));
    }

    // kb-sent-unconfirmed
    void aPairIsSentInTwoCommands()
    {
        EditorWindow w;
        w.openKb(text("083-084"), text("10-1E"));
        w.panelTexts.clear();
        w.boxes.expect(BoxAnswer::Yes);
        w.boxes.expect(BoxAnswer::Ok, [&w] { w.session.Hide_All(); });
        doubleClick(w.grdKB, 3);
        QCOMPARE(w.boxes.shown.size(), 2U);
        compareQuestion(w, 0, "Do you want to send these parameters? ( 083=10 and 084=1E )");
        compareNotice(w, 1, "Sent parameters: 083=10 and 084=1E");
        QCOMPARE(w.device.calls, Calls({"settings 083=10 084=1E"}));
        QCOMPARE(w.panelTexts, QStringList({QString(), text("value in binary is 0001 0000 - 0001 1110")}));
        // The editor is opened again.
        QVERIFY(w.control("frmShiftFlagA1_KB")->isVisible());
        QCOMPARE(w.grdKB->col(), 1);
        QVERIFY(w.boxes.verifyAllUsed());
    }

    void theFlagsAreSentInOneCommand()
    {
        EditorWindow w;
        w.openKb(text("080"), text("F1"));
        w.boxes.expect(BoxAnswer::Yes);
        w.boxes.expect(BoxAnswer::Ok);
        doubleClick(w.grdKB, 1);
        QCOMPARE(w.boxes.shown.size(), 2U);
        compareQuestion(w, 0, "Do you want to send this parameter? ( 080=F1 )");
        compareNotice(w, 1, "Sent parameter: 080=F1");
        QCOMPARE(w.device.calls, Calls({"settings 080=F1"}));
    }

    void identificationBytesAreSentInTwoCommands()
    {
        EditorWindow w;
        w.openKb(text("081-082"), text("12-34"));
        w.boxes.expect(BoxAnswer::Yes);
        w.boxes.expect(BoxAnswer::Ok);
        doubleClick(w.grdKB, 2);
        QCOMPARE(w.device.calls, Calls({"settings 081=12 082=34"}));
    }

    void noLeavesTheKeyboardEditorAsItWas()
    {
        EditorWindow w;
        w.openKb(text("083-084"), text("10-1E"));
        w.panel1 = text("as it was");
        w.boxes.expect(BoxAnswer::No);
        doubleClick(w.grdKB, 3);
        QCOMPARE(w.boxes.shown.size(), 1U);
        QCOMPARE(w.device.calls, Calls());
        QCOMPARE(w.panel1, text("as it was"));
    }

    void aLinkThatDoesNotOpenGivesNoNotice()
    {
        EditorWindow w;
        w.openKb(text("083-084"), text("10-1E"));
        w.panel1 = text("as it was");
        w.device.opens = false;
        w.boxes.expect(BoxAnswer::Yes);
        doubleClick(w.grdKB, 3);
        QCOMPARE(w.boxes.shown.size(), 1U);
        QCOMPARE(w.device.calls, Calls({"settings 083=10 084=1E"}));
        QCOMPARE(w.panel1, text("as it was"));
    }

    void anEmptyRowIsHarmless()
    {
        EditorWindow w;
        w.replaceRow(kKb, 4, QString(), QString(), QString());
        w.showPage(kKb);
        w.boxes.expect(BoxAnswer::No);
        doubleClick(w.grdKB, 4);
        compareQuestion(w, 0, "Do you want to send these parameters? ( = and = )");
    }

    void theHeaderIsNoRow()
    {
        EditorWindow w;
        auto* header = w.grdCFG->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(40, header->height() / 2));
        QTest::mouseDClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(40, header->height() / 2));
        QCOMPARE(w.boxes.shown.size(), 0U);
    }
};

} // namespace

static const testsupport::RunnableTest<SendRowTest> kRunnable;
#include "SendRowTest.moc"
