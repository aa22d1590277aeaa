#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QLineEdit>

using namespace testsupport;
using app::kConfigurationTab;
using app::kKeyboardLanguageTab;
using Kind = TestFileDialogs::Kind;

namespace {

void load(MainWindowFixture& f, app::Tab tab, const char* name, const QByteArray& bytes)
{
    const QString path = f.folder.filePath(QLatin1String(name));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    file.close();
    f.dialogs.expect(Kind::Open, platform::toPath(path));
    f.find<QAction>(tab == kConfigurationTab ? "mnuOpen_CFG" : "mnuOpen_KB")->trigger();
}

} // namespace

// Values of a file that are no hexadecimal numbers: the box shows them as they are.
class MalformedCellsTest final : public QObject
{
    Q_OBJECT

private slots:
    void theHexBoxShowsTheCell_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("no hexadecimal digits") << QByteArray("G!");
        QTest::newRow("one of two") << QByteArray("1x");
        QTest::newRow("small letters") << QByteArray("0d");
    }
    void theHexBoxShowsTheCell()
    {
        QFETCH(QByteArray, value);
        MainWindowFixture f;
        f.start();
        load(f, kConfigurationTab, "shop.tlc", "Comments,\r\n013,95 ;tracks\r\n01C," + value + " ;hex\r\n");
        f.window->paramTables().CFG.grid().setRow(2);
        auto* const box = f.find<QLineEdit>("txtHexEntry");
        QVERIFY(box->isVisible());
        QCOMPARE(box->text(), QString::fromLatin1(value));
        QCOMPARE(f.window->paramTables().GetTableEntry_CFG("01C"), value.toStdString());
        QVERIFY(!f.table_CFG().TableChanged); // showing it changes nothing
    }

    void theScanCodeBoxShowsTheSecondHalf()
    {
        MainWindowFixture f;
        f.start();
        load(f, kKeyboardLanguageTab, "keys.txt", "080,00 ;flags\r\n083,20,G! ;00\r\n");
        f.window->paramTables().KB.grid().setRow(2);
        auto* const box = f.find<QLineEdit>("txtHexEntry_KB");
        QVERIFY(box->isVisible());
        QCOMPARE(box->text(), "G!");
        QVERIFY(!f.table_KB().TableChanged);
    }
};

static const testsupport::RunnableTest<MalformedCellsTest> kRunnable;
#include "MalformedCellsTest.moc"
