#include "tables/EditedRow.h"
#include "tests/support/PlainTables.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace testsupport;
using namespace tables;

// An edit on its way back into the table, where the row that is current and the row that holds the address being edited
// are not the same: a file may name an address twice.
class EditedRowTest final : public QObject
{
    Q_OBJECT

private slots:
    // First the value, then the mark: the mark moves the cursor, and the value belongs to the row where it was.
    void aByteGoesIntoTheCurrentRowAndTheMarkToTheAddress()
    {
        PlainTables on;
        on.CFG.grid.setRow(12);
        on.session.CurrentAddress = "01A";
        EditedRow(on.CFG.live, on.session).writeByte(0x20);
        QCOMPARE(on.CFG.value(12), "20");
        QCOMPARE(on.CFG.value(9), "12"); // 01A
        QCOMPARE(on.CFG.changed(9), "XXX");
        QCOMPARE(on.CFG.changed(12), "");
        QCOMPARE(on.CFG.grid.row(), 9);
    }

    void bothFindTheSameRowAsARule()
    {
        PlainTables on;
        on.CFG.grid.setRow(9);
        on.session.CurrentAddress = "01A";
        EditedRow(on.CFG.live, on.session).writeByte(0x20);
        QCOMPARE(on.CFG.value(9), "20");
        QCOMPARE(on.CFG.changed(9), "XXX");
        QCOMPARE(on.CFG.grid.row(), 9);
        QCOMPARE(on.CFG.grid.col(), int{kValueColumn});
    }
};

static const testsupport::RunnableTest<EditedRowTest> kRunnable;
#include "EditedRowTest.moc"
