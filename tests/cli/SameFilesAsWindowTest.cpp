#include "cli/ReportTable.h"
#include "cli/TableFiles.h"
#include "tests/simulator/FolderTree.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

#include <random>

using cli::Table;
using namespace testsupport;
using Kind = TestFileDialogs::Kind;

Q_DECLARE_METATYPE(Table)

// Tables of many values: what teslin writes is what the main window's own Open, Save and Summary make of it.
class SameFilesAsWindowTest final : public QObject
{
    Q_OBJECT

private:
    static constexpr int kTables = 12;

    static cli::Values someValues(Table table, unsigned seed)
    {
        std::mt19937 numbers(seed);
        cli::Values values = cli::factoryValues(
            {.configuration = table == Table::Configuration, .keyboardLanguage = table == Table::KeyboardLanguage});
        for (auto& [address, value] : values) {
            value = static_cast<std::uint8_t>(numbers());
        }
        return values;
    }

    static QWidget* summaryWindow()
    {
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QLatin1String("frmSummary") && window->isVisible()) {
                return window;
            }
        }
        return nullptr;
    }

    // The report as the window's Summary button makes and saves it.
    static QByteArray savedSummary(MainWindowFixture& f)
    {
        const QString file = f.folder.filePath(QStringLiteral("summary.txt"));
        f.dialogs.expect(Kind::Save, platform::toPath(file));
        QTimer::singleShot(0, f.window.get(), [] {
            QTest::mouseClick(summaryWindow()->findChild<QPushButton*>(QStringLiteral("btnSave")), Qt::LeftButton);
            QTest::mouseClick(summaryWindow()->findChild<QPushButton*>(QStringLiteral("btnDone")), Qt::LeftButton);
        });
        f.press("KEY_SUMMARY");
        return contentOf(file);
    }

private slots:
    void tables_data()
    {
        QTest::addColumn<Table>("table");
        QTest::addColumn<QByteArray>("comment");
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 0; seed < kTables; ++seed) {
            const QByteArray comment = seed % 3 == 0 ? "shop " + QByteArray::number(seed) : QByteArray();
            QTest::addRow("cfg %u", seed) << Table::Configuration << comment << seed;
            QTest::addRow("kb %u", seed) << Table::KeyboardLanguage << comment << seed;
        }
    }
    void tables()
    {
        QFETCH(Table, table);
        QFETCH(QByteArray, comment);
        QFETCH(unsigned, seed);
        const bool isConfiguration = table == Table::Configuration;
        MainWindowFixture f;
        f.start();
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(isConfiguration ? 0 : 1);

        // teslin writes, the window opens and saves.
        const cli::Values values = someValues(table, seed);
        const QString given = f.folder.filePath(QStringLiteral("given"));
        const QString saved = f.folder.filePath(QStringLiteral("saved"));
        cli::writeTableFile(platform::toPath(given), table, values);
        f.dialogs.expect(Kind::Open, platform::toPath(given));
        f.press("KEY_LOAD");
        f.dialogs.expect(Kind::Save, platform::toPath(saved));
        f.press("KEY_SAVE");
        QVERIFY(contentOf(given).size() > 500);
        QCOMPARE(contentOf(saved), contentOf(given));

        // The window saves with a comment, teslin reads: no doubt, the same values, the same summary.
        f.find<QPlainTextEdit>(isConfiguration ? "txtComments_CFG" : "txtComments_KB")
            ->setPlainText(QString::fromLatin1(comment));
        const QString commented = f.folder.filePath(QStringLiteral("commented"));
        f.dialogs.expect(Kind::Save, platform::toPath(commented));
        f.press("KEY_SAVE");
        const cli::TableContent content = cli::readTable(table, contentOf(commented).toStdString());
        QVERIFY2(content.doubts.empty(), content.doubts.empty() ? "" : content.doubts.front().reason.c_str());
        QCOMPARE(content.values, values);
        f.dialogs.expect(Kind::Open, platform::toPath(commented));
        f.press("KEY_LOAD");
        const report::SummaryFacts facts{
            .firmwareVersion = {}, .comment = content.rows.comment, .date = FixedClock().today()};
        QCOMPARE(QByteArray::fromStdString(cli::reportOf(table, content.rows, facts)) + "\r\n", savedSummary(f));
    }
};

static const testsupport::RunnableTest<SameFilesAsWindowTest> kRunnable;
#include "SameFilesAsWindowTest.moc"
