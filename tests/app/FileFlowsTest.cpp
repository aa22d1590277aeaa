#include "platform/qt/QtMessageBoxes.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SystemFailures.h"

#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include <cerrno>

using namespace testsupport;
using app::kConfigurationTab;
using app::kKeyboardLanguageTab;
using app::kReadTestTab;
using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using Kind = TestFileDialogs::Kind;

namespace {

// Three Configuration rows, typed as a user's editor would leave them.
const QByteArray kThreeRows = "Comments,shop 7\r\n"
                              "001,85 ;id\r\n"
                              "013,99 ;tracks\r\n"
                              "02A,01 ;mapping\r\n";

} // namespace

// Opening and saving on the real window: dialogs, questions, marks, names, and what a failure leaves behind.
class FileFlowsTest final : public QObject
{
    Q_OBJECT

    static std::filesystem::path fileIn(const MainWindowFixture& f, const char* name)
    {
        return platform::toPath(f.folder.filePath(QLatin1String(name)));
    }
    static std::filesystem::path written(const MainWindowFixture& f, const char* name, const QByteArray& bytes)
    {
        QFile file(f.folder.filePath(QLatin1String(name)));
        [&] { QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()); }();
        return fileIn(f, name);
    }
    static QByteArray contentOf(const std::filesystem::path& path)
    {
        QFile file(platform::pathText(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
    }
    // What the user reads in a message box.
    static QString shownText(const platform::MessageBox& box)
    {
        QString text;
        QTimer::singleShot(0, qApp, [&text] {
            auto* const window = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            text = window->text();
            window->close();
        });
        platform::QtMessageBoxes(QStringLiteral("Teslin Configure")).show(box);
        return text;
    }
    static QString namesOf(const std::filesystem::path& path) { return platform::pathText(path); }

private slots:
    // kb-dialog-folder
    void openDialogIsSetUpForItsTable()
    {
        MainWindowFixture f;
        f.start();
        bool wasEnabled = true;
        f.dialogs.expect(Kind::Open, {}, [&] { wasEnabled = f.find<QToolButton>("KEY_LOAD")->isEnabled(); });
        f.press("KEY_LOAD");
        QCOMPARE(f.dialogs.shown[0].setup.folder, platform::toPath(f.folder.path()));
        QCOMPARE(f.dialogs.shown[0].setup.name.string(), "*.tlc");
        QCOMPARE(f.dialogs.shown[0].setup.filter, "Teslin Config Files (*.tlc)");
        QVERIFY(f.find<QToolButton>("KEY_LOAD")->isEnabled()); // a cancelled dialog leaves the toolbar usable
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
        f.dialogs.expect(Kind::Open, {});
        f.press("KEY_LOAD");
        QCOMPARE(f.dialogs.shown[1].setup.name.string(), "*.txt");
        QCOMPARE(f.dialogs.shown[1].setup.filter, "Teslin Keyboard Language Files (*.txt)");
        QVERIFY(!wasEnabled);
    }

    // kb-load-does-not-ask
    void openingFillsTheTable()
    {
        MainWindowFixture f;
        f.start();
        // Marks and flag of the rows that go away must not outlive them.
        f.window->paramTables().PutTableEntry_CFG("001", "XXX", 0);
        f.dialogs.expect(Kind::Open, written(f, "shop.tlc", kThreeRows));
        f.press("KEY_LOAD");
        QCOMPARE(int{f.table_CFG().NumParms}, 3);
        QCOMPARE(f.table_CFG().rowCount(), 4);
        QCOMPARE(f.table_CFG().cell(2, 1), "013");
        QCOMPARE(f.table_CFG().cell(2, 2), "99");
        QCOMPARE(f.table_CFG().cell(3, 3), "mapping");
        QCOMPARE(f.table_CFG().cell(1, 0), " ");
        QVERIFY(!f.table_CFG().TableChanged);
        QCOMPARE(f.find<QTabWidget>("SSTab1")->tabText(0), "Configuration");
        QCOMPARE(f.find<QPlainTextEdit>("txtComments_CFG")->toPlainText(), "shop 7");
        QCOMPARE(f.textOf("lblFilename"), namesOf(fileIn(f, "shop.tlc")));
        QVERIFY(f.find<QLabel>("lblFilename")->isVisible());
        QCOMPARE(f.textOf("lblEditTitle_CFG"), "<013> tracks");
        QVERIFY(f.boxes.shown.empty()); // unsaved changes are not asked about
        // Rows of the longer table are gone from the look-up too.
        QCOMPARE(f.window->paramTables().GetTableEntry_CFG("018"), "");
        f.dialogs.expect(Kind::Open, {});
        f.press("KEY_LOAD");
        QCOMPARE(f.dialogs.shown[1].setup.name, fileIn(f, "shop.tlc")); // starts from the last file
    }

    void openingAKeyboardFileStartsItsEditor()
    {
        MainWindowFixture f;
        f.start();
        f.dialogs.expect(Kind::Open, written(f, "kb.txt", ";US\r\n0FF,12,34 ;x\r\n080,F1\r\n"));
        f.find<QAction>("mnuOpen_KB")->trigger();
        QCOMPARE(f.find<QTabWidget>("SSTab1")->currentIndex(), int{kKeyboardLanguageTab});
        QCOMPARE(int{f.table_KB().NumParms}, 2);
        QCOMPARE(f.table_KB().cell(1, 1), "0FF-100");
        QCOMPARE(f.table_KB().cell(1, 2), "12-34");
        QCOMPARE(f.textOf("lblEditTitle_KB"), "<0FF-100> x");
        QCOMPARE(f.textOf("lblEditTitle_CFG"), "(values will be edited here)");
        QCOMPARE(f.find<QPlainTextEdit>("txtComments_KB")->toPlainText(), "US\n");
    }

    // kb-names-with-xxx
    void aNameThatIsNoChoiceLoadsNothing_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("cancelled") << "";
        QTest::newRow("left without a choice") << "/tables/XXX.tlc";
        QTest::newRow("anywhere in the path") << "/XXX/shop.tlc";
        QTest::newRow("the pattern") << "/tables/*.tlc";
    }
    void aNameThatIsNoChoiceLoadsNothing()
    {
        QFETCH(QString, name);
        MainWindowFixture f;
        f.start();
        f.dialogs.expect(Kind::Open, platform::toPath(name));
        f.press("KEY_LOAD");
        QCOMPARE(int{f.table_CFG().NumParms}, 27);
        f.dialogs.expect(Kind::Save, platform::toPath(name));
        f.press("KEY_SAVE");
        QVERIFY(f.page(tables::TableId::Configuration).document().name().empty());
        QVERIFY(f.find<QToolButton>("KEY_SAVE")->isEnabled());
    }

    // kb-unopened-file
    void aFileThatCannotBeReadChangesNothing_data()
    {
        QTest::addColumn<bool>("isFolder");
        QTest::newRow("missing") << false;
        QTest::newRow("a folder") << true;
    }
    void aFileThatCannotBeReadChangesNothing()
    {
        QFETCH(bool, isFolder);
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
        f.find<QPlainTextEdit>("txtComments_CFG")->setPlainText(QStringLiteral("mine"));
        if (isFolder) {
            QVERIFY(QDir(f.folder.path()).mkdir(QStringLiteral("gone.tlc")));
        }
        f.dialogs.expect(Kind::Open, fileIn(f, "gone.tlc"));
        f.press("KEY_LOAD");
        QCOMPARE(int{f.table_CFG().NumParms}, 27);
        QCOMPARE(f.table_CFG().cell(9, 0), "XXX");
        QVERIFY(f.table_CFG().TableChanged);
        QCOMPARE(f.find<QPlainTextEdit>("txtComments_CFG")->toPlainText(), "mine");
        QVERIFY(f.page(tables::TableId::Configuration).document().name().empty());
        QVERIFY(f.boxes.shown.empty());
        QVERIFY(f.window->paramTables().session.isEditing());
        QVERIFY(f.find<QToolButton>("KEY_LOAD")->isEnabled());
        f.table_CFG().TableChanged = false;
    }

    void aFileWithoutRowsEmptiesTheTable()
    {
        MainWindowFixture f;
        f.start();
        f.dialogs.expect(Kind::Open, written(f, "none.tlc", "Comments,\r\n"));
        f.press("KEY_LOAD");
        QCOMPARE(int{f.table_CFG().NumParms}, 0);
        QCOMPARE(f.table_CFG().rowCount(), 1);
        f.dialogs.expect(Kind::Save, fileIn(f, "out.tlc"));
        f.press("KEY_SAVE");
        QCOMPARE(contentOf(fileIn(f, "out.tlc")), QByteArray("Comments,\r\n"));
        f.press("KEY_DEFAULT");
        QCOMPARE(int{f.table_CFG().NumParms}, 27);
    }

    void savingWritesTheFileAndTakesTheMarksOff()
    {
        MainWindowFixture f;
        f.start();
        f.dialogs.expect(Kind::Open, written(f, "shop.tlc", kThreeRows));
        f.press("KEY_LOAD");
        f.window->paramTables().PutTableEntry_CFG("02A", "02", 2);
        f.window->paramTables().PutTableEntry_CFG("02A", "XXX", 0);
        f.find<QPlainTextEdit>("txtComments_CFG")->setPlainText(QStringLiteral("a\nb"));
        f.dialogs.expect(Kind::Save, fileIn(f, "new.tlc"));
        f.press("KEY_SAVE");
        QCOMPARE(f.dialogs.shown[1].setup.name, fileIn(f, "shop.tlc"));
        QCOMPARE(contentOf(fileIn(f, "new.tlc")), QByteArray("Comments,a\x8D\x8A"
                                                             "b\r\n"
                                                             "001,85 ;id\r\n"
                                                             "013,99 ;tracks\r\n"
                                                             "02A,02 ;mapping\r\n"));
        QCOMPARE(f.table_CFG().cell(3, 0), " ");
        QVERIFY(!f.table_CFG().TableChanged);
        QCOMPARE(f.find<QTabWidget>("SSTab1")->tabText(0), "Configuration");
        QCOMPARE(f.textOf("lblFilename"), namesOf(fileIn(f, "new.tlc")));
    }

    // kb-crossed-comment
    void keyboardFileCarriesTheConfigurationComment()
    {
        MainWindowFixture f;
        f.start();
        f.find<QPlainTextEdit>("txtComments_CFG")->setPlainText(QStringLiteral("of the configuration"));
        f.find<QPlainTextEdit>("txtComments_KB")->setPlainText(QStringLiteral("of the keyboard"));
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
        f.dialogs.expect(Kind::Save, fileIn(f, "kb.txt"));
        f.press("KEY_SAVE");
        QVERIFY(contentOf(fileIn(f, "kb.txt")).startsWith(";of the configuration\n\r\n080,00 ;Keyboard flags\r\n"));
    }

    void everyByteOfACommentSurvives()
    {
        MainWindowFixture f;
        f.start();
        // 80 loads as the character 0, 89 as a tab, A0 as a blank: all of it must come out as it went in.
        const QByteArray file = "Comments,\x80\x89\x8D\x8A\x9F~\x7F\r\n001,00 ;\xA0\xFF\xAD\x81\r\n";
        f.dialogs.expect(Kind::Open, written(f, "odd.tlc", file));
        f.press("KEY_LOAD");
        f.dialogs.expect(Kind::Save, fileIn(f, "odd2.tlc"));
        f.press("KEY_SAVE");
        QCOMPARE(contentOf(fileIn(f, "odd2.tlc")), file);
    }

    // kb-always-asks-name
    void savingOverAFileAsks_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QByteArray>("left");
        QTest::newRow("yes") << int(BoxAnswer::Yes) << QByteArray("Comments,\r\n");
        QTest::newRow("cancel") << int(BoxAnswer::Cancel) << QByteArray("old");
    }
    void savingOverAFileAsks()
    {
        QFETCH(int, answer);
        QFETCH(QByteArray, left);
        MainWindowFixture f;
        f.start();
        f.dialogs.expect(Kind::Open, written(f, "none.tlc", "Comments,\r\n"));
        f.press("KEY_LOAD");
        const auto existing = written(f, "old.tlc", "old");
        f.dialogs.expect(Kind::Save, existing);
        f.boxes.expect(BoxAnswer(answer));
        f.press("KEY_SAVE");
        QCOMPARE(f.boxes.shown[0].title, "*** Warning ***");
        QCOMPARE(f.boxes.shown[0].icon, BoxIcon::Exclamation);
        QCOMPARE(f.boxes.shown[0].buttons, BoxButtons::YesNoCancel);
        QCOMPARE(f.boxes.shown[0].defaultButton, BoxAnswer::No);
        QCOMPARE(f.boxes.lastText(), "File: " + existing.string() +
                                         " already exists! Do you want to overwrite it? (Yes=overwrite, No=get another "
                                         "filename, Cancel=cancel save operation)");
        QCOMPARE(contentOf(existing), left);
        QVERIFY(f.find<QToolButton>("KEY_SAVE")->isEnabled());
    }

    void noAtTheQuestionShowsTheDialogAgain()
    {
        MainWindowFixture f;
        f.start();
        const auto existing = written(f, "old.tlc", "old");
        f.dialogs.expect(Kind::Save, existing);
        f.boxes.expect(BoxAnswer::No);
        f.dialogs.expect(Kind::Save, fileIn(f, "other.tlc"));
        f.press("KEY_SAVE");
        QCOMPARE(f.dialogs.shown[1].setup.name.string(), "*.tlc"); // prepared anew, not from the refused name
        QCOMPARE(contentOf(existing), QByteArray("old"));
        QVERIFY(contentOf(fileIn(f, "other.tlc")).startsWith("Comments,\r\n001,00 ;"));
    }

    void menuSaveUsesTheRememberedName()
    {
        MainWindowFixture f;
        f.start();
        f.dialogs.expect(Kind::Save, fileIn(f, "shop.tlc"));
        f.find<QAction>("mnuSave_CFG")->trigger(); // none yet: asks
        f.window->paramTables().PutTableEntry_CFG("01A", "20", 2);
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
        f.find<QAction>("mnuSave_CFG")->trigger(); // no dialog, no question
        QVERIFY(contentOf(fileIn(f, "shop.tlc")).contains("\r\n01A,20 ;Char Output"));
        QCOMPARE(f.find<QTabWidget>("SSTab1")->tabText(0), "Configuration");
        QCOMPARE(f.table_CFG().cell(9, 0), " ");
        QVERIFY(!f.table_CFG().TableChanged);
    }

    void menuEntriesShowTheirTableFirst()
    {
        MainWindowFixture f;
        f.start();
        f.dialogs.expect(Kind::Save, {});
        f.find<QAction>("mnuSaveAs_KB")->trigger();
        QCOMPARE(f.find<QTabWidget>("SSTab1")->currentIndex(), int{kKeyboardLanguageTab});
        QCOMPARE(f.dialogs.shown[0].setup.filter, "Teslin Keyboard Language Files (*.txt)");
        f.dialogs.expect(Kind::Open, {});
        f.find<QAction>("mnuOpen_CFG")->trigger();
        QCOMPARE(f.find<QTabWidget>("SSTab1")->currentIndex(), int{kConfigurationTab});
    }

    void aFailedSaveIsToldAndLeavesTheTableChanged()
    {
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
        const auto missing = fileIn(f, "no/such/folder/shop.tlc");
        f.dialogs.expect(Kind::Save, missing);
        f.boxes.expect(BoxAnswer::Ok);
        f.press("KEY_SAVE");
        QCOMPARE(f.beep.count, 1);
        QCOMPARE(f.boxes.lastText(),
                 "Unable to save file: \"" + missing.string() + "\" because " + reasonOf(kNoFolder));
        QCOMPARE(f.boxes.shown[0].icon, BoxIcon::Exclamation);
        QCOMPARE(f.table_CFG().cell(9, 0), "XXX");
        QVERIFY(f.table_CFG().TableChanged);
        QCOMPARE(f.find<QTabWidget>("SSTab1")->tabText(0), "Configuration *");
        QVERIFY(f.page(tables::TableId::Configuration).document().name().empty());
        QVERIFY(f.find<QToolButton>("KEY_SAVE")->isEnabled());
        f.table_CFG().TableChanged = false;
    }

    // The texts of messages know 256 letters, the names of files all there are.
    void fileNamesAreShownWithAllTheirLetters()
    {
        MainWindowFixture f;
        f.start();
#ifdef Q_OS_WIN // which allows no question mark
        const QString own = QStringLiteral("K\u0430\u0441\u0441\u0430 \u20AC \U0001F4B3.tlc");
#else
        const QString own = QStringLiteral("K\u0430\u0441\u0441\u0430 \u20AC \U0001F4B3?.tlc");
#endif
        const QString name = f.folder.filePath(own);
        f.dialogs.expect(Kind::Save, platform::toPath(name));
        f.press("KEY_SAVE");
        QVERIFY(QFile::exists(name));
        QCOMPARE(f.textOf("lblFilename"), name);
        f.dialogs.expect(Kind::Save, platform::toPath(name));
        f.boxes.expect(BoxAnswer::Cancel);
        f.press("KEY_SAVE");
        QCOMPARE(shownText(f.boxes.shown.back()),
                 "File: " + name +
                     " already exists! Do you want to overwrite it? (Yes=overwrite, No=get another filename, "
                     "Cancel=cancel save operation)");
        const QString missing = f.folder.filePath(QStringLiteral("no folder/") + own);
        f.dialogs.expect(Kind::Save, platform::toPath(missing));
        f.boxes.expect(BoxAnswer::Ok);
        f.press("KEY_SAVE");
        QCOMPARE(shownText(f.boxes.shown.back()),
                 "Unable to save file: \"" + missing + "\" because " + QString::fromStdString(reasonOf(kNoFolder)));
    }

    void savingOverAFolderIsTold()
    {
        MainWindowFixture f;
        f.start();
        QVERIFY(QDir(f.folder.path()).mkdir(QStringLiteral("folder.tlc")));
        f.dialogs.expect(Kind::Save, fileIn(f, "folder.tlc"));
        f.boxes.expect(BoxAnswer::Yes); // it exists
        f.boxes.expect(BoxAnswer::Ok);
        f.press("KEY_SAVE");
        QVERIFY(f.boxes.lastText().find("because " + reasonOf(kIsAFolder)) != std::string::npos);
    }

    // Yes at the question saves the table that was asked about, whichever tab is shown.
    void yesAtTheUnsavedQuestionSavesTheTableAskedAbout()
    {
        MainWindowFixture f;
        f.start();
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kKeyboardLanguageTab);
        f.window->paramTables().PutTableEntry_CFG("01A", "20", 2);
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
        f.boxes.expect(BoxAnswer::Yes);
        f.dialogs.expect(Kind::Save, fileIn(f, "shop.tlc"));
        QVERIFY(f.window->close());
        QCOMPARE(f.dialogs.shown[0].setup.filter, "Teslin Config Files (*.tlc)");
        QVERIFY(contentOf(fileIn(f, "shop.tlc")).contains("\r\n01A,20 ;"));
    }

    // kb-yes-without-file
    void yesThenACancelledDialogGoesOnAllTheSame()
    {
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
        f.boxes.expect(BoxAnswer::Yes);
        f.dialogs.expect(Kind::Save, {});
        QVERIFY(f.window->close());
    }

    void aDroppedFileIsOpenedOnTheTabOfItsKind()
    {
        MainWindowFixture f;
        f.start();
        // What the one who drags is told has become of the file; nothing when it was not taken.
        const auto dropOffered = [&f](const std::filesystem::path& path, Qt::DropActions offered,
                                      Qt::KeyboardModifiers keys) {
            QMimeData data;
            data.setUrls({QUrl::fromLocalFile(platform::pathText(path))});
            QDragEnterEvent enter(QPoint(50, 50), offered, &data, Qt::LeftButton, keys);
            QApplication::sendEvent(f.window.get(), &enter);
            if (!enter.isAccepted()) {
                return Qt::IgnoreAction;
            }
            QDropEvent event(QPointF(50, 50), offered, &data, Qt::LeftButton, keys);
            QApplication::sendEvent(f.window.get(), &event);
            return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
        };
        const auto drop = [&dropOffered](const std::filesystem::path& path) {
            return dropOffered(path, Qt::CopyAction, Qt::NoModifier) == Qt::CopyAction;
        };
        QVERIFY(drop(written(f, "kb.TXT", "080,F1\r\n")));
        QCOMPARE(f.find<QTabWidget>("SSTab1")->currentIndex(), int{kKeyboardLanguageTab});
        QCOMPARE(int{f.table_KB().NumParms}, 1);
        QVERIFY(drop(written(f, "shop.tlc", kThreeRows)));
        QCOMPARE(f.find<QTabWidget>("SSTab1")->currentIndex(), int{kConfigurationTab});
        QCOMPARE(int{f.table_CFG().NumParms}, 3);
        QCOMPARE(f.textOf("lblFilename"), namesOf(fileIn(f, "shop.tlc")));
        QVERIFY(!drop(written(f, "picture.png", "x")));
        // With Shift a file manager offers to move the file; it must stay where it is.
        const auto table = fileIn(f, "shop.tlc");
        QCOMPARE(dropOffered(table, Qt::MoveAction | Qt::CopyAction, Qt::ShiftModifier), Qt::CopyAction);
        QCOMPARE(dropOffered(table, Qt::MoveAction, Qt::ShiftModifier), Qt::IgnoreAction);
        // No box of the window takes the drop for itself.
        for (const QWidget* box : f.find<QTabWidget>("SSTab1")->findChildren<QLineEdit*>()) {
            QVERIFY2(!box->acceptDrops(), qPrintable(box->objectName()));
        }
        for (const char* box : {"txtComments_CFG", "txtComments_KB"}) {
            QVERIFY(!f.find<QPlainTextEdit>(box)->acceptDrops());
        }
        // A name that is no choice in the dialog is none here either.
        QVERIFY(QDir(f.folder.path()).mkdir(QStringLiteral("XXX")));
        QVERIFY(drop(written(f, "XXX/shop.tlc", "Comments,\r\n")));
        QCOMPARE(int{f.table_CFG().NumParms}, 3);
    }

    // A comment box takes what a text box has always taken, in whole lines.
    // kb-long-comment
    void aVeryLongCommentEndsWithALine()
    {
        MainWindowFixture f;
        f.start();
        f.dialogs.expect(Kind::Open, written(f, "long.txt", QByteArray(";123456\r\n").repeated(9000) + "080,F1\r\n"));
        f.find<QAction>("mnuOpen_KB")->trigger();
        QCOMPARE(f.find<QPlainTextEdit>("txtComments_KB")->toPlainText(),
                 QStringLiteral("123456\n").repeated(65535 / 8));
        QCOMPARE(int{f.table_KB().NumParms}, 1);
    }

#ifndef Q_OS_WIN // which allows no such name
    // A star anywhere in the remembered name means a pattern, so saving asks for a name.
    void aStarInAFolderIsRememberedAsAPattern()
    {
        MainWindowFixture f;
        f.start();
        QVERIFY(QDir(f.folder.path()).mkdir(QStringLiteral("a*b")));
        f.dialogs.expect(Kind::Open, written(f, "a*b/shop.tlc", kThreeRows));
        f.find<QAction>("mnuOpen_CFG")->trigger();
        QCOMPARE(int{f.table_CFG().NumParms}, 3);
        QVERIFY(!f.find<QLabel>("lblFilename")->isVisible());
        f.dialogs.expect(Kind::Save, {});
        f.find<QAction>("mnuSave_CFG")->trigger();
        QCOMPARE(f.dialogs.shown.back().setup.name.string(), "*.tlc");
    }
#endif

    // The worst files a user may pick: nothing crashes, nothing hangs, and the window goes on.
    void hostileFilesLoadWithoutHarm_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QByteArray binary;
        for (int i = 0; i < 200'000; ++i) {
            binary.append(static_cast<char>((i * 7919) >> 3));
        }
        QTest::newRow("binary") << binary;
        QTest::newRow("NULs") << QByteArray(100'000, '\0');
        QTest::newRow("one line of 1 MB") << QByteArray(1'000'000, 'x');
        QTest::newRow("comment lines without end") << QByteArray(";x\n").repeated(500'000);
        QTest::newRow("megabytes of notes in one row") << "083,10,1E ;" + QByteArray(5'000'000, 'n');
        QTest::newRow("10,000 rows") << QByteArray("083,10,1E ;a\r\n").repeated(10'000);
    }
    void hostileFilesLoadWithoutHarm()
    {
        QFETCH(QByteArray, bytes);
        MainWindowFixture f;
        f.start();
        for (const char* menu : {"mnuOpen_CFG", "mnuOpen_KB"}) {
            f.dialogs.expect(Kind::Open, written(f, "hostile.bin", bytes));
            f.find<QAction>(menu)->trigger();
            QVERIFY(f.table_CFG().NumParms <= 255 && f.table_KB().NumParms <= 255);
            f.press("KEY_DEFAULT");
        }
        QCOMPARE(int{f.table_CFG().NumParms}, 27);
        QCOMPARE(int{f.table_KB().NumParms}, 75);
    }
};

static const testsupport::RunnableTest<FileFlowsTest> kRunnable;
#include "FileFlowsTest.moc"
