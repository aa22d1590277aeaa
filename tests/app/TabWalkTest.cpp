#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QTabWidget>

#include <algorithm>

using namespace testsupport;

namespace {

const QStringList kToolbar = {"KEY_RETRIEVE", "KEY_UPDATE",  "KEY_LOAD", "KEY_SAVE",
                              "KEY_DEFAULT",  "KEY_SUMMARY", "KEY_EXIT"};

} // namespace

// Where Tab goes in the main window, for every kind of row.
class TabWalkTest final : public QObject
{
    Q_OBJECT

    // From the first button of the toolbar once round.
    static QStringList walk(const MainWindowFixture& f, Qt::Key key)
    {
        f.find<QToolButton>("KEY_RETRIEVE")->setFocus();
        QStringList seen;
        for (int steps = 0; steps < 60; ++steps) {
            seen << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), key,
                            key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
            if (QApplication::focusWidget()->objectName() == seen.first()) {
                break;
            }
        }
        return seen;
    }

private slots:
    void goesInReadingOrder_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("row");
        QTest::addColumn<QStringList>("editor");
        QTest::newRow("001") << 0 << 1 << QStringList();
        QTest::newRow("013") << 0 << 2 << QStringList({"radTk1_1", "radTk2_1", "radTk3_1", "radID_1"});
        QTest::newRow("014") << 0 << 3
                             << QStringList(
                                    {"chkSendSS", "chkSendEs", "chkSendLRC", "chkSendLC", "chkSendNBR", "radSendEr_2"});
        QTest::newRow("015") << 0 << 4 << QStringList({"txtCharEntry"});
        QTest::newRow("01A") << 0 << 9 << QStringList({"txtDecEntry"});
        QTest::newRow("01C") << 0 << 11 << QStringList({"txtHexEntry"});
        QTest::newRow("022") << 0 << 17 << QStringList({"radSendTermAfter_0", "txtHexEntry"});
        QTest::newRow("02A") << 0 << 25 << QStringList({"radTrkMap_0"});
        QTest::newRow("080") << 1 << 1
                             << QStringList({"radP080A1_KB_0", "radP080A23_KB_0", "radP080E_KB_0", "radP080S_KB_0"});
        QTest::newRow("081-082") << 1 << 2 << QStringList({"txtHexEntry2_KB"});
        QTest::newRow("083-084") << 1 << 3
                                 << QStringList({"radShiftA1_KB_0", "radShiftA2_KB_1", "radShiftA3_KB_0",
                                                 "radShiftA4_KB_0", "txtHexEntry_KB"});
    }
    void goesInReadingOrder()
    {
        QFETCH(int, tab);
        QFETCH(int, row);
        QFETCH(QStringList, editor);
        MainWindowFixture f;
        f.start();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(tab);
        tables::LiveTable& table = tab == 0 ? f.window->paramTables().CFG : f.window->paramTables().KB;
        table.grid().setRow(row);
        QCOMPARE(QString::fromStdString(table.table().cell(row, 1)), QLatin1String(QTest::currentDataTag()));
        QStringList expected = kToolbar + QStringList({"qt_tabwidget_tabbar", tab == 0 ? "grdCFG" : "grdKB"}) + editor +
                               QStringList({tab == 0 ? "txtComments_CFG" : "txtComments_KB", "btnNotes"});
        QCOMPARE(walk(f, Qt::Key_Tab), expected);
        std::reverse(expected.begin() + 1, expected.end());
        QCOMPARE(walk(f, Qt::Key_Backtab), expected);
    }
};

static const testsupport::RunnableTest<TabWalkTest> kRunnable;
#include "TabWalkTest.moc"
