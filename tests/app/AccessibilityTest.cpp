#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QAccessible>
#include <QAction>
#include <QMetaEnum>
#include <QSet>
#include <QTabWidget>

using namespace testsupport;

namespace {

bool isControl(QAccessible::Role role)
{
    static const QSet<QAccessible::Role> kControls = {
        QAccessible::Button,  QAccessible::ButtonMenu, QAccessible::CheckBox, QAccessible::EditableText,
        QAccessible::PageTab, QAccessible::MenuItem,   QAccessible::MenuBar,  QAccessible::RadioButton,
        QAccessible::Table,   QAccessible::ToolBar,    QAccessible::Slider,   QAccessible::ProgressBar,
        QAccessible::Graphic, QAccessible::ListItem,   QAccessible::Grouping, QAccessible::Indicator};
    return kControls.contains(role);
}

// What speaks for itself: a label, a menu's entry, a tab.
bool needsDescription(QAccessible::Role role)
{
    static const QSet<QAccessible::Role> kPlain = {QAccessible::MenuItem, QAccessible::PageTab,
                                                   QAccessible::PageTabList, QAccessible::StaticText};
    return !kPlain.contains(role);
}

// Of the parts that Qt makes itself there is nothing to say that the whole has not said.
bool isPartOfAControl(const QAccessibleInterface& element)
{
    return element.object() != nullptr && element.object()->objectName().startsWith(QLatin1String("qt_"));
}

QString placeOf(const QAccessibleInterface& element)
{
    QStringList path;
    for (const QAccessibleInterface* at = &element; at != nullptr; at = at->parent()) {
        const QObject* object = at->object();
        path.prepend(object == nullptr || object->objectName().isEmpty()
                         ? QLatin1String(QMetaEnum::fromType<QAccessible::Role>().valueToKey(at->role()))
                         : object->objectName());
    }
    return path.join(QLatin1Char('/'));
}

// Every element of the tree that a screen reader can reach, with what it can say of each.
struct Walk
{
    int controls = 0;
    QStringList nameless;
    QStringList undescribed;

    void visit(QAccessibleInterface& element)
    {
        const QAccessible::State state = element.state();
        if (state.invisible) {
            return;
        }
        const bool isSpoken = isControl(element.role()) || state.focusable;
        if (isSpoken && !isPartOfAControl(element)) {
            ++controls;
            if (element.text(QAccessible::Name).trimmed().isEmpty()) {
                nameless.append(placeOf(element));
            } else if (state.focusable && needsDescription(element.role()) &&
                       element.text(QAccessible::Description).trimmed().isEmpty()) {
                undescribed.append(placeOf(element));
            }
        }
        // A table's cells speak for themselves, and there are hundreds.
        if (element.role() == QAccessible::Table) {
            return;
        }
        for (int i = 0; i < element.childCount(); ++i) {
            if (QAccessibleInterface* child = element.child(i)) {
                visit(*child);
            }
        }
    }
};

Walk walk(QWidget& window)
{
    Walk found;
    found.visit(*QAccessible::queryAccessibleInterface(&window));
    return found;
}

} // namespace

// What a screen reader finds in each window: no control without a name, none that a key can reach without a
// description.
class AccessibilityTest final : public QObject
{
    Q_OBJECT

    static void check(QWidget* window, int leastControls)
    {
        QVERIFY(window != nullptr);
        QVERIFY2(window->isVisible(), qPrintable(window->objectName()));
        const Walk found = walk(*window);
        QVERIFY2(found.controls >= leastControls, qPrintable(QString::number(found.controls)));
        QVERIFY2(found.nameless.isEmpty(), qPrintable(found.nameless.join(u' ')));
        QVERIFY2(found.undescribed.isEmpty(), qPrintable(found.undescribed.join(u' ')));
    }

    static QWidget* windowNamed(const char* name)
    {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QLatin1String(name)) {
                return window;
            }
        }
        return nullptr;
    }

private slots:
    void everyRowOfBothTables()
    {
        MainWindowFixture f;
        f.start();
        for (int row = 1; row <= 27; ++row) {
            f.window->paramTables().CFG.grid().setRow(row);
            check(f.window.get(), 20);
        }
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(app::kKeyboardLanguageTab);
        for (const int row : {1, 2, 3, 75}) {
            f.window->paramTables().KB.grid().setRow(row);
            check(f.window.get(), 20);
        }
    }

    void readTest()
    {
        MainWindowFixture f;
        f.start();
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(app::kReadTestTab);
        check(f.window.get(), 15);
    }

    void menus()
    {
        MainWindowFixture f;
        f.start();
        for (const char* name : {"mnuFile", "mnuTools", "menuHelp"}) {
            auto* menu = f.find<QMenu>(name);
            menu->popup(f.window->pos());
            QVERIFY(QTest::qWaitForWindowExposed(menu));
            check(menu, name == QByteArrayView("mnuFile") ? 8 : 1);
            menu->close();
        }
    }

    void dialogs()
    {
        MainWindowFixture f;
        f.start();
        f.find<QAction>("mnuOptions")->trigger();
        check(windowNamed("frmOptions"), 8);
        windowNamed("frmOptions")->close();
        f.find<QAction>("mnuEditSingle")->trigger();
        check(windowNamed("dlgSingleField"), 5);
        windowNamed("dlgSingleField")->close();
        QTimer::singleShot(0, f.window.get(), [] {
            check(windowNamed("frmAbout"), 3);
            windowNamed("frmAbout")->close();
        });
        f.find<QAction>("mnuAbout")->trigger();
        QTimer::singleShot(0, f.window.get(), [] {
            check(windowNamed("frmSummary"), 4);
            windowNamed("frmSummary")->close();
        });
        f.press("KEY_SUMMARY");
    }
};

static const testsupport::RunnableTest<AccessibilityTest> kRunnable;
#include "AccessibilityTest.moc"
