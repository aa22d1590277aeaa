#include "platform/qt/QtFileDialogs.h"
#include "tests/support/RunnableTest.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using platform::FileDialogSetup;
using platform::QtFileDialogs;

namespace {

std::filesystem::path toPath(const QString& name)
{
    return name.toStdU16String();
}

QLineEdit& nameOf(const QFileDialog& dialog)
{
    return *dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
}

// Does something with the dialog when it is up; whatever that leaves open is cancelled.
template <typename Action>
void whenOpen(Action action)
{
    QTimer::singleShot(0, qApp, [action] {
        QWidget* box = QApplication::activeModalWidget();
        QVERIFY(box != nullptr);
        const auto closing = qScopeGuard([box] { box->close(); });
        auto* dialog = qobject_cast<QFileDialog*>(box);
        QVERIFY(dialog != nullptr);
        action(*dialog);
    });
}

void typeName(QFileDialog& dialog, const QString& name)
{
    nameOf(dialog).selectAll();
    QTest::keyClicks(&nameOf(dialog), name);
    // The list of completions would take the key.
    QWidget* list = QApplication::activePopupWidget();
    if (list != nullptr) {
        list->close();
    }
    QTest::keyClick(&nameOf(dialog), Qt::Key_Return);
}

} // namespace

class QtFileDialogsTest final : public QObject
{
    Q_OBJECT

private slots:
    // The dialogs keep settings of their own in the user's folder.
    void initTestCase()
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_settings.path()));
        for (const char* name : {"a.tlc", "b.tlc", "c.txt"}) {
            QFile file(m_folder.filePath(QLatin1String(name)));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
    }

    void startsAsItIsTold_data()
    {
        QTest::addColumn<bool>("saves");
        QTest::newRow("save") << true;
        QTest::newRow("open") << false;
    }
    void startsAsItIsTold()
    {
        QFETCH(bool, saves);
        int looks = 0;
        whenOpen([&](QFileDialog& dialog) {
            ++looks;
            QCOMPARE(dialog.directory(), QDir(m_folder.path()));
            QCOMPARE(nameOf(dialog).text(), QStringLiteral("*.tlc"));
            QCOMPARE(dialog.nameFilters(), QStringList{QStringLiteral("Teslin Config Files (*.tlc)")});
            QCOMPARE(dialog.acceptMode(), saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
            QCOMPARE(dialog.windowTitle(), saves ? QStringLiteral("Save As") : QStringLiteral("Open"));
        });
        QCOMPARE(choose(saves, "*.tlc"), std::filesystem::path()); // closed: no choice
        QCOMPARE(looks, 1);
    }

    void aRememberedFileBringsItsFolder()
    {
        const QTemporaryDir elsewhere;
        whenOpen([&](QFileDialog& dialog) {
            QCOMPARE(dialog.directory(), QDir(elsewhere.path()));
            QCOMPARE(nameOf(dialog).text(), QStringLiteral("mine.tlc"));
            QTest::keyClick(&nameOf(dialog), Qt::Key_Return);
        });
        const std::filesystem::path file = toPath(elsewhere.filePath(QStringLiteral("mine.tlc")));
        QCOMPARE(choose(true, file), file);
    }

    void namesComeBackAsTheyWereChosen_data()
    {
        QTest::addColumn<bool>("saves");
        QTest::addColumn<QString>("name");
        for (const bool saves : {true, false}) {
            for (const char* name : {"a.tlc", "new.tlc", "no suffix", "other.txt", "*.tlc", "XXX"}) {
                QTest::addRow("%s %s", saves ? "save" : "open", name) << saves << QString::fromLatin1(name);
            }
        }
    }
    // A file that exists is not asked about, one that does not is not refused, and no suffix is added.
    void namesComeBackAsTheyWereChosen()
    {
        QFETCH(bool, saves);
        QFETCH(QString, name);
        whenOpen([&](QFileDialog& dialog) { typeName(dialog, name); });
        QCOMPARE(choose(saves, "*.tlc"), toPath(m_folder.filePath(name)));
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }

    void escapeIsNoChoice()
    {
        whenOpen([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        QCOMPARE(choose(true, "a.tlc"), std::filesystem::path());
    }

    void showsFilesOfItsKind()
    {
        whenOpen([](QFileDialog& dialog) {
            const auto* list = dialog.findChild<QAbstractItemView*>(QStringLiteral("listView"));
            QVERIFY(list != nullptr);
            const auto names = [list] {
                QStringList all;
                for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row) {
                    all += list->model()->index(row, 0, list->rootIndex()).data().toString();
                }
                return all;
            };
            QTRY_COMPARE(names(), QStringList({QStringLiteral("a.tlc"), QStringLiteral("b.tlc")}));
        });
        QCOMPARE(choose(false, "*.tlc"), std::filesystem::path());
    }

private:
    [[nodiscard]] std::filesystem::path choose(bool saves, const std::filesystem::path& name)
    {
        QtFileDialogs dialogs;
        const FileDialogSetup setup{
            .folder = toPath(m_folder.path()), .name = name, .filter = "Teslin Config Files (*.tlc)"};
        return saves ? dialogs.chooseFileToSave(setup) : dialogs.chooseFileToOpen(setup);
    }

    const QTemporaryDir m_folder;
    const QTemporaryDir m_settings;
};

static const testsupport::RunnableTest<QtFileDialogsTest> kRunnable;
#include "QtFileDialogsTest.moc"
