#include "platform/qt/PathText.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QAction>
#include <QMimeData>
#include <QPlainTextEdit>

using namespace testsupport;
using app::kConfigurationTab;
using app::kKeyboardLanguageTab;
using platform::BoxAnswer;
using Kind = TestFileDialogs::Kind;

namespace {

constexpr int kIdentificationCommands = 5;

struct Desk : MainWindowFixture
{
    Desk() { start(); }

    [[nodiscard]] std::filesystem::path written(const char* name, const QByteArray& bytes)
    {
        QFile file(folder.filePath(QLatin1String(name)));
        [&] { QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()); }();
        return platform::toPath(file.fileName());
    }
    void load(const char* entry, const std::filesystem::path& file)
    {
        dialogs.expect(Kind::Open, file);
        find<QAction>(entry)->trigger();
    }
    [[nodiscard]] bool isHidden(const char* control) const { return find<QWidget>(control)->isHidden(); }
    // True when the window takes what is dragged over it.
    [[nodiscard]] bool enters(const QMimeData& data)
    {
        QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &enter);
        return enter.isAccepted();
    }
    [[nodiscard]] bool drops(const QMimeData& data)
    {
        QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &event);
        return event.isAccepted();
    }
    [[nodiscard]] static std::unique_ptr<QMimeData> dragged(const std::vector<std::filesystem::path>& files)
    {
        auto data = std::make_unique<QMimeData>();
        QList<QUrl> urls;
        for (const auto& file : files) {
            urls << QUrl::fromLocalFile(platform::pathText(file));
        }
        data->setUrls(urls);
        return data;
    }
};

} // namespace

// A table that is replaced, by a reset or a file: what goes with the old one, and what is not replaced at a wrong time.
class ReplacedTableTest final : public QObject
{
    Q_OBJECT

private slots:
    // Kept, the name would let the next save write the defaults over the file that was loaded.
    void aResetForgetsCommentAndFile_data()
    {
        QTest::addColumn<int>("tab");
        QTest::newRow("Configuration") << int{kConfigurationTab};
        QTest::newRow("Keyboard Language") << int{kKeyboardLanguageTab};
    }
    void aResetForgetsCommentAndFile()
    {
        QFETCH(int, tab);
        const bool onConfiguration = tab == kConfigurationTab;
        const char* const save = onConfiguration ? "mnuSave_CFG" : "mnuSave_KB";
        Desk f;
        const QByteArray mine = onConfiguration ? "Comments,mine\r\n01A,20 ;x\r\n" : ";mine\r\n080,01 ;x\r\n";
        const QByteArray other = onConfiguration ? ";theirs\r\n080,01 ;x\r\n" : "Comments,theirs\r\n01A,20 ;x\r\n";
        const auto file = f.written(onConfiguration ? "mine.tlc" : "mine.txt", mine);
        const auto otherFile = f.written(onConfiguration ? "theirs.txt" : "theirs.tlc", other);
        f.load(onConfiguration ? "mnuOpen_KB" : "mnuOpen_CFG", otherFile);
        f.load(onConfiguration ? "mnuOpen_CFG" : "mnuOpen_KB", file);
        const auto* comments = f.find<QPlainTextEdit>(onConfiguration ? "txtComments_CFG" : "txtComments_KB");
        const auto* otherComments = f.find<QPlainTextEdit>(onConfiguration ? "txtComments_KB" : "txtComments_CFG");
        QVERIFY(comments->toPlainText().startsWith(QStringLiteral("mine")));
        QVERIFY(f.find<QLabel>("lblFilename")->isVisible());

        f.press("KEY_DEFAULT");
        QCOMPARE(comments->toPlainText(), "");
        QVERIFY(!f.find<QLabel>("lblFilename")->isVisible());
        QVERIFY(otherComments->toPlainText().startsWith(QStringLiteral("theirs"))); // the other table keeps its own

        f.dialogs.expect(Kind::Save, {});
        f.find<QAction>(save)->trigger(); // asks for a name
        QVERIFY(f.dialogs.verifyAllUsed());
        QCOMPARE(f.dialogs.shown.back().setup.name.string(), onConfiguration ? "*.tlc" : "*.txt");
        QFile kept(platform::pathText(file));
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), mine);
        f.find<QAction>(onConfiguration ? "mnuSave_KB" : "mnuSave_CFG")->trigger(); // has its name still
    }

    // What was found by its address before, is not there any more.
    void aShorterTableHasNothingOfTheLongerOne()
    {
        Desk f;
        f.window->paramTables().CFG.grid().setRow(17);
        QVERIFY(!f.isHidden("frmSendTerm"));
        f.load("mnuOpen_CFG", f.written("short.tlc", "Comments,\r\n001,85 ;id\r\n02A,01 ;mapping\r\n"));
        QVERIFY(f.isHidden("frmSendTerm") && f.isHidden("txtHexEntry"));
        QVERIFY(f.find<QWidget>("frmTrkMap")->isVisible());
        for (const char* gone : {"022", "02D", "013", "014"}) {
            QCOMPARE(f.window->paramTables().GetTableEntry_CFG(gone), "");
            f.window->paramTables().PutTableEntry_CFG(gone, "XXX", 0);
        }
        QVERIFY(!f.table_CFG().TableChanged);
        for (const std::size_t index : {std::size_t{2}, std::size_t{26}}) {
            QCOMPARE(f.table_CFG().ParmAddr.at(index), "");
        }
        f.load("mnuOpen_KB", f.written("short.txt", "080,01 ;flags\r\n"));
        QCOMPARE(f.window->paramTables().GetTableEntry_KB("084"), "");
    }

    void anEmptyTableHasNoControls()
    {
        Desk f;
        f.window->paramTables().CFG.grid().setRow(17);
        f.load("mnuOpen_CFG", f.written("empty.tlc", "Comments,\r\n"));
        for (const char* control : {"frmSendTerm", "txtHexEntry", "lblHexEntry", "frmTk1", "lblDecEntry"}) {
            QVERIFY2(f.isHidden(control), control);
        }
        QCOMPARE(f.textOf("lblEditTitle_CFG"), "<past end of list> ");
    }

    void aKeyboardFileShowsTheEditorOfItsFirstRow()
    {
        Desk f;
        f.load("mnuOpen_KB", f.written("a.txt", "083,10,1E ;a\r\n084,10,1E ;b\r\n"));
        QCOMPARE(f.textOf("lblEditTitle_KB"), "<083-084> a");
        QVERIFY(f.find<QWidget>("txtHexEntry_KB")->isVisible());
        QVERIFY(f.find<QWidget>("frmShiftFlagA1_KB")->isVisible());
        QCOMPARE(f.find<QLineEdit>("txtHexEntry_KB")->text(), "1E");
    }

    // No editor opens on a row that is only half there.
    void editingIsOffWhileAFileFillsTheTable()
    {
        Desk f;
        int state = 0;
        connect(f.find<QPlainTextEdit>("txtComments_CFG"), &QPlainTextEdit::textChanged, f.window.get(),
                [&] { state = f.window->paramTables().session.EditState; });
        f.load("mnuOpen_CFG", f.written("a.tlc", "Comments,mine\r\n01A,20 ;x\r\n"));
        QCOMPARE(state, int{tables::EditSession::kLayingOutKeyboard});
        QCOMPARE(int{f.window->paramTables().session.EditState}, int{tables::EditSession::kEditing});
    }

    void theToolbarIsOffWhileAFileIsChosen()
    {
        Desk f;
        QStringList enabled;
        const auto look = [&] {
            for (const char* key :
                 {"KEY_RETRIEVE", "KEY_UPDATE", "KEY_LOAD", "KEY_SAVE", "KEY_DEFAULT", "KEY_SUMMARY", "KEY_EXIT"}) {
                if (f.find<QToolButton>(key)->isEnabled()) {
                    enabled << QLatin1String(key);
                }
            }
        };
        f.dialogs.expect(Kind::Save, {}, look);
        f.press("KEY_SAVE");
        f.dialogs.expect(Kind::Open, {}, look);
        f.press("KEY_LOAD");
        QCOMPARE(enabled, QStringList({"KEY_EXIT", "KEY_EXIT"}));
        enabled.clear();
        look();
        QCOMPARE(enabled.size(), 7);
    }

    void noNoAndCancelInARow()
    {
        Desk f;
        const auto first = f.written("first.tlc", "first");
        const auto second = f.written("second.tlc", "second");
        f.dialogs.expect(Kind::Save, first);
        f.boxes.expect(BoxAnswer::No);
        f.dialogs.expect(Kind::Save, second);
        f.boxes.expect(BoxAnswer::No);
        f.dialogs.expect(Kind::Save, first);
        f.boxes.expect(BoxAnswer::Cancel);
        f.press("KEY_SAVE");
        QVERIFY(f.dialogs.verifyAllUsed() && f.boxes.verifyAllUsed());
        for (const auto& file : {first, second}) {
            QFile kept(platform::pathText(file));
            QVERIFY(kept.open(QIODevice::ReadOnly));
            QVERIFY(kept.readAll().size() < 10);
        }
        QVERIFY(!f.find<QLabel>("lblFilename")->isVisible());
        QVERIFY(f.find<QToolButton>("KEY_SAVE")->isEnabled());
    }

    // The run goes on with the table that it began with.
    void nothingIsDroppedIntoARun()
    {
        Desk f;
        const auto data = Desk::dragged({f.written("a.tlc", "Comments,\r\n01A,20 ;x\r\n")});
        bool entered = true;
        bool dropped = true;
        f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 2) {
                entered = f.enters(*data);
                dropped = f.drops(*data); // dragged in before the run began
            }
        };
        f.press("KEY_UPDATE");
        QVERIFY(!entered);
        QVERIFY(!dropped);
        QCOMPARE(int{f.table_CFG().NumParms}, 27);
        QCOMPARE(f.reader.commands.size(), kIdentificationCommands + 26);
        f.reader.onOutput = {};
        QVERIFY(f.enters(*data) && f.drops(*data));
        QCOMPARE(int{f.table_CFG().NumParms}, 1);
    }

    // Which of them would it be?
    void severalFilesAreNotTaken()
    {
        Desk f;
        const auto one = f.written("a.tlc", "Comments,\r\n01A,20 ;x\r\n");
        const auto two = f.written("b.tlc", "Comments,\r\n01A,30 ;x\r\n");
        const auto both = Desk::dragged({one, two});
        QVERIFY(!f.enters(*both));
        QVERIFY(!f.drops(*both));
        QCOMPARE(int{f.table_CFG().NumParms}, 27);
    }

    // --- Two editors, one row at a time ---

    void anEditorThatOpensHidesTheOther()
    {
        Desk f;
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
        f.window->paramTables().KB.grid().setRow(3);
        QVERIFY(!f.isHidden("frmShiftFlagA1_KB"));
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kConfigurationTab);
        for (const char* control : {"frmShiftFlagA1_KB", "txtHexEntry_KB", "lblScanCode_KB", "lblHexEntry_KB"}) {
            QVERIFY2(f.isHidden(control), control);
        }
        f.window->paramTables().CFG.grid().setRow(17);
        QVERIFY(!f.isHidden("frmSendTerm"));
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
        QVERIFY(f.isHidden("frmSendTerm") && f.isHidden("txtHexEntry"));
        QVERIFY(!f.isHidden("frmShiftFlagA1_KB"));
    }

    void hidingHidesBoth()
    {
        Desk f;
        f.window->paramTables().CFG.grid().setRow(17);
        f.window->paramTables().session.Hide_All();
        QVERIFY(f.isHidden("frmSendTerm") && f.isHidden("txtHexEntry"));
        QVERIFY(!f.isHidden("lblEditTitle_CFG"));
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
        QVERIFY(!f.isHidden("frmA1_KB"));
        f.window->paramTables().session.Hide_All();
        QVERIFY(f.isHidden("frmA1_KB") && f.isHidden("frmS_KB"));
        QVERIFY(!f.isHidden("lblEditTitle_KB"));
    }

    void theCursorStaysOnTheRowsOfTheTable_data()
    {
        QTest::addColumn<int>("tab");
        QTest::newRow("Configuration") << int{kConfigurationTab};
        QTest::newRow("Keyboard Language") << int{kKeyboardLanguageTab};
    }
    void theCursorStaysOnTheRowsOfTheTable()
    {
        QFETCH(int, tab);
        Desk f;
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(tab);
        tables::LiveTable& table = tab == kConfigurationTab ? f.window->paramTables().CFG : f.window->paramTables().KB;
        table.table().NumParms = 5; // the grid has more rows
        const int beeps = f.beep.count;
        table.grid().setRow(9);
        QCOMPARE(table.grid().row(), 5);
        QCOMPARE(f.beep.count, beeps + 1);
    }
};

static const testsupport::RunnableTest<ReplacedTableTest> kRunnable;
#include "ReplacedTableTest.moc"
