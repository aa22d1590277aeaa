#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QSignalSpy>

using namespace testsupport;
using platform::BoxAnswer;
using Kind = testsupport::TestFileDialogs::Kind;

// What is overwritten, dropped or ended without a question: the documents warn of each.
class UnaskedLossTest final : public QObject
{
    Q_OBJECT

private slots:
    // kb-retrieve-keeps-name
    void aRetrieveKeepsNameAndCommentOfTheLastFile()
    {
        MainWindowFixture f;
        f.start();
        const QString name = f.folder.filePath(QStringLiteral("shop.tlc"));
        f.find<QPlainTextEdit>("txtComments_CFG")->setPlainText(QStringLiteral("Shop"));
        f.dialogs.expect(Kind::Save, platform::toPath(name));
        f.find<QAction>("mnuSave_CFG")->trigger();
        QVERIFY(contentOf(name).contains("\r\n01A,12 ;"));

        QVERIFY(f.model.memory().store("01A", "20")); // another reader
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.find<QPlainTextEdit>("txtComments_CFG")->toPlainText(), "Shop");
        QVERIFY(f.find<QLabel>("lblFilename")->isVisible());
        QVERIFY(f.textOf("lblFilename").contains(QStringLiteral("shop.tlc")));

        f.find<QAction>("mnuSave_CFG")->trigger(); // neither dialog nor question
        QVERIFY(contentOf(name).startsWith("Comments,Shop\r\n"));
        QVERIFY(contentOf(name).contains("\r\n01A,20 ;"));
    }

    // kb-default-clears-comment
    void setDefaultClearsANewCommentAndTheNameOfTheFile()
    {
        MainWindowFixture f;
        f.start();
        f.dialogs.expect(Kind::Save, platform::toPath(f.folder.filePath(QStringLiteral("shop.tlc"))));
        f.find<QAction>("mnuSave_CFG")->trigger();
        QVERIFY(f.find<QLabel>("lblFilename")->isVisible());
        f.find<QPlainTextEdit>("txtComments_CFG")->setPlainText(QStringLiteral("not saved"));
        f.press("KEY_DEFAULT"); // no question
        QCOMPARE(f.find<QPlainTextEdit>("txtComments_CFG")->toPlainText(), "");
        QVERIFY(!f.find<QLabel>("lblFilename")->isVisible());
        f.dialogs.expect(Kind::Save, {});
        f.find<QAction>("mnuSave_CFG")->trigger(); // asks for a name again
        QVERIFY(f.dialogs.verifyAllUsed());
    }

    // kb-exit-closes-first
    void exitClosesThePortBeforeItAsks_data()
    {
        QTest::addColumn<bool>("byExit");
        QTest::addColumn<bool>("openInTheQuestion");
        QTest::newRow("Exit") << true << false;
        QTest::newRow("title bar") << false << true;
    }
    void exitClosesThePortBeforeItAsks()
    {
        QFETCH(bool, byExit);
        MainWindowFixture f;
        f.start();
        f.window->paramTables().PutTableEntry_CFG("01A", "XXX", 0);
        QVERIFY(f.reader.setPortOpen(true)); // as the lower test of the options leaves it
        bool openInTheQuestion = false;
        f.boxes.expect(BoxAnswer::Cancel, [&] { openInTheQuestion = f.reader.PortOpen(); });
        if (byExit) {
            f.press("KEY_EXIT");
        } else {
            QVERIFY(!f.window->close());
        }
        QVERIFY(f.boxes.verifyAllUsed());
        QVERIFY(f.window->isVisible());
        QTEST(openInTheQuestion, "openInTheQuestion");
        QCOMPARE(f.reader.PortOpen(), !byExit);
    }

    // kb-two-clicks
    void aSecondClickOnAbortEndsTheProgram()
    {
        MainWindowFixture f;
        f.start();
        QSignalSpy unloaded(f.window.get(), &app::frmMain::unloaded);
        f.reader.onOutput = [&](int count) {
            if (count == 12) {
                f.press("KEY_EXIT");
            }
        };
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.reader.commands.size(), 12); // the first click ended the run
        QCOMPARE(unloaded.count(), 0);
        QCOMPARE(f.find<QToolButton>("KEY_EXIT")->text(), "Exit");
        f.press("KEY_EXIT");
        QCOMPARE(unloaded.count(), 1);
    }

private:
    static QByteArray contentOf(const QString& name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

static const testsupport::RunnableTest<UnaskedLossTest> kRunnable;
#include "UnaskedLossTest.moc"
