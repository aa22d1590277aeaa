#include "tests/documents/Document.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QShortcut>

#include <algorithm>

using namespace documents;
using testsupport::MainWindowFixture;

namespace {

// Keys that the documents name and that are not the window's own: what each is.
const QStringList kOtherKeys = {
    "Ctrl+A",         // does nothing in a box for numbers
    "Ctrl+C",         // the same; and ends the simulator
    "Ctrl+V",         // the same
    "Alt+T",          // both tests of the options
    "Ctrl+Tab",       // changes the tab, by an event and not by an action
    "Ctrl+Shift+Tab", // the same
    "F10",            // of the read test, which takes all keys
};

QString withoutMarks(QString caption)
{
    return caption.remove(u'&');
}

// The cells of a table's row, without quotes.
QStringList cellsOf(const QString& line)
{
    QStringList cells = line.split(u'|').mid(1);
    cells.removeLast();
    for (QString& cell : cells) {
        cell = cell.trimmed();
        cell.remove(u'"');
    }
    return cells;
}

// The rows of the table whose first line begins with these words.
QList<QStringList> tableOf(const QString& text, const QString& head)
{
    QList<QStringList> rows;
    bool inTable = false;
    for (const QString& line : text.split(u'\n')) {
        if (line.trimmed().startsWith(head)) {
            inTable = true;
        } else if (inTable && !line.trimmed().startsWith(u'|')) {
            break;
        } else if (inTable && !line.contains(QStringLiteral("|--"))) {
            rows.append(cellsOf(line));
        }
    }
    return rows;
}

// "File|Load Teslin Config File|Ctrl+O" of every entry, in their order.
QStringList entriesOf(const QMenuBar& bar)
{
    QStringList entries;
    for (const QAction* menu : bar.actions()) {
        for (const QAction* entry : menu->menu()->actions()) {
            if (!entry->isSeparator()) {
                entries.append(withoutMarks(menu->text()) + u'|' + withoutMarks(entry->text()) + u'|' +
                               entry->shortcut().toString(QKeySequence::PortableText));
            }
        }
    }
    return entries;
}

QSet<QString> keysOf(const app::frmMain& window)
{
    QSet<QString> keys;
    const auto add = [&](const QKeySequence& sequence) { keys.insert(sequence.toString(QKeySequence::PortableText)); };
    for (const QAction* action : window.findChildren<QAction*>()) {
        add(action->shortcut());
    }
    for (const QShortcut* shortcut : window.findChildren<QShortcut*>()) {
        add(shortcut->key());
    }
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        add(button->shortcut());
    }
    return keys;
}

QSet<QString> keysIn(const QString& text)
{
    static const QRegularExpression key(QStringLiteral("\\b(?:(?:Ctrl|Alt|Shift)\\+)+(?:Tab|[A-Z])\\b|\\bF1?[0-9]\\b"));
    QSet<QString> keys;
    for (auto found = key.globalMatch(text); found.hasNext();) {
        keys.insert(found.next().captured());
    }
    return keys;
}

} // namespace

// Menus, toolbar and keys of the documents are those of the real window.
class KeysAndMenusTest final : public QObject
{
    Q_OBJECT

private slots:
    void theTableOfTheMenus()
    {
        MainWindowFixture f;
        f.start();
        QStringList told;
        QString menu;
        for (const QStringList& row : tableOf(readSource("docs/guide.md"), "| menu ")) {
            QCOMPARE(row.size(), 4);
            menu = row[0].isEmpty() ? menu : row[0];
            told.append(menu + u'|' + row[1] + u'|' + row[2]);
        }
        QCOMPARE(told, entriesOf(*f.window->menuBar()));
    }

    void theTableOfTheToolbar()
    {
        MainWindowFixture f;
        f.start();
        QStringList told;
        for (const QStringList& row : tableOf(readSource("docs/guide.md"), "| button ")) {
            told.append(row[0]);
        }
        QStringList shown;
        for (const char* key :
             {"KEY_RETRIEVE", "KEY_UPDATE", "KEY_LOAD", "KEY_SAVE", "KEY_DEFAULT", "KEY_SUMMARY", "KEY_EXIT"}) {
            shown.append(withoutMarks(f.find<QToolButton>(key)->text()));
        }
        QCOMPARE(told, shown);
    }

    void theKeysOfTheToolbar()
    {
        MainWindowFixture f;
        f.start();
        const QString guide = Document(readSource("docs/guide.md")).prose().join(u'\n');
        QVERIFY(guide.contains("F5 is \"Retrieve\", F6 \"Update\" and F7 \"Summary\". Escape is \"Abort\""));
        const QSet<QString> keys = keysOf(*f.window);
        for (const char* key : {"F5", "F6", "F7"}) {
            QVERIFY2(keys.contains(key), key);
        }
        f.reader.onOutput = [&f](int count) {
            if (count == 12) {
                QTest::keyClick(f.window.get(), Qt::Key_Escape);
            }
        };
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.reader.commands.size(), 12); // and not 32
    }

    void everyKeyIsTheWindows()
    {
        MainWindowFixture f;
        f.start();
        const QSet<QString> known = keysOf(*f.window);
        int seen = 0;
        for (const QString& name : userDocuments()) {
            for (const QString& key : keysIn(readSource(name))) {
                QVERIFY2(known.contains(key) || kOtherKeys.contains(key), qPrintable(name + ": " + key));
                ++seen;
            }
        }
        QVERIFY(seen > 10);
        QVERIFY(keysIn("F5, Ctrl+Shift+S, then Alt+F4").contains("Ctrl+Shift+S"));
        QVERIFY(!known.contains("F8"));
    }

    // The other documents take these captions for granted.
    void theButtonsOfMessageBoxes()
    {
        QMessageBox box;
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel | QMessageBox::Ok);
        QStringList captions;
        for (const QAbstractButton* button : box.buttons()) {
            captions.append(withoutMarks(button->text()));
        }
        captions.sort();
        QCOMPARE(captions, (QStringList{"Cancel", "No", "OK", "Yes"}));
    }

    void theTabs()
    {
        MainWindowFixture f;
        f.start();
        const auto* tabs = f.find<QTabWidget>("SSTab1");
        const QString jobs = readSource("docs/daily-jobs.md");
        for (int tab = 0; tab < tabs->count(); ++tab) {
            QVERIFY2(jobs.contains("the tab \"" + tabs->tabText(tab) + "\""), qPrintable(tabs->tabText(tab)));
        }
    }
};

static const testsupport::RunnableTest<KeysAndMenusTest> kRunnable;
#include "KeysAndMenusTest.moc"
