#include "tests/system/driver/DriverCommands.h"

#include "tests/support/Palettes.h"
#include "tests/system/driver/Arguments.h"
#include "tests/system/driver/Controls.h"
#include "tests/system/driver/UserInput.h"

#include <QAbstractEventDispatcher>
#include <QAbstractItemView>
#include <QApplication>
#include <QGuiApplication>
#include <QMenu>
#include <QMessageBox>
#include <QMetaProperty>
#include <QPixmap>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTabWidget>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace windowdriver {

namespace {

const char* yesOrNo(bool yes)
{
    return yes ? "true" : "false";
}

// --- Looking ---

QString sizeText(QSize size)
{
    return u"%1x%2"_s.arg(size.width()).arg(size.height());
}

QString pointText(QPoint point)
{
    return u"%1,%2"_s.arg(point.x()).arg(point.y());
}

QString find(Arguments& arguments)
{
    const QWidget& widget = control(arguments.word("control"));
    return QStringList{QLatin1String(widget.metaObject()->className()), widget.isVisible() ? u"visible"_s : u"hidden"_s,
                       widget.isEnabled() ? u"enabled"_s : u"disabled"_s, pointText(widget.mapToGlobal(QPoint(0, 0))),
                       sizeText(widget.size())}
        .join(u' ');
}

QString valueText(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return QLatin1String(yesOrNo(value.toBool()));
    case QMetaType::QPoint:
        return pointText(value.toPoint());
    case QMetaType::QSize:
        return sizeText(value.toSize());
    case QMetaType::QRect:
        return pointText(value.toRect().topLeft()) + u' ' + sizeText(value.toRect().size());
    default:
        return value.canConvert<QString>() ? value.toString() : QString::number(value.toInt());
    }
}

QString get(Arguments& arguments)
{
    const QWidget& widget = control(arguments.word("control"));
    const QString name = arguments.word("property");
    if (widget.metaObject()->indexOfProperty(name.toLatin1().constData()) < 0) {
        throw Refusal{widget.objectName() + u" has no property "_s + name};
    }
    return valueText(widget.property(name.toLatin1().constData()));
}

QAbstractItemView& gridOf(Arguments& arguments)
{
    return controlAs<QAbstractItemView>(arguments.word("grid"));
}

QString cellText(const QAbstractItemView& grid, int row, int column)
{
    return grid.model()->index(row - 1, column).data(Qt::EditRole).toString();
}

// All data rows, one a line, their cells parted by tabs.
QString rows(Arguments& arguments)
{
    const QAbstractItemView& grid = gridOf(arguments);
    QStringList lines;
    for (int row = 1; row <= grid.model()->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < grid.model()->columnCount(); ++column) {
            cells.append(cellText(grid, row, column));
        }
        lines.append(cells.join(u'\t'));
    }
    return lines.join(u'\n');
}

QModelIndex cellOf(const QAbstractItemView& grid, Arguments& arguments)
{
    const int row = arguments.number("row, counted from 1");
    const int column = arguments.number("column, counted from 0");
    const QModelIndex index = grid.model()->index(row - 1, column);
    if (!index.isValid()) {
        throw Refusal{u"%1 has no such cell"_s.arg(grid.objectName())};
    }
    return index;
}

QString cell(Arguments& arguments)
{
    const QAbstractItemView& grid = gridOf(arguments);
    return cellOf(grid, arguments).data(Qt::EditRole).toString();
}

// "ROW COLUMN" of the current cell; "0 -1" when there is none.
QString current(Arguments& arguments)
{
    const QModelIndex index = gridOf(arguments).currentIndex();
    return u"%1 %2"_s.arg(index.row() + 1).arg(index.column());
}

QString header(Arguments& arguments)
{
    const QAbstractItemModel& model = *gridOf(arguments).model();
    QStringList captions;
    for (int column = 0; column < model.columnCount(); ++column) {
        captions.append(model.headerData(column, Qt::Horizontal).toString());
    }
    return captions.join(u'\t');
}

QString tabs(Arguments& arguments)
{
    const auto& widget = controlAs<QTabWidget>(arguments.word("tab control"));
    QStringList captions;
    for (int i = 0; i < widget.count(); ++i) {
        captions.append(widget.tabText(i));
    }
    return captions.join(u'\t');
}

// The entries of a menu or a bar, one a line: name, caption, enabled or not. A separator has no caption.
QString actions(Arguments& arguments)
{
    QStringList lines;
    for (const QAction* const entry : control(arguments.word("menu or bar")).actions()) {
        const QString caption = entry->isSeparator() ? QString() : entry->text();
        lines.append(entry->objectName() + u'\t' + caption + u'\t' + QLatin1String(yesOrNo(entry->isEnabled())));
    }
    return lines.join(u'\n');
}

QString loop(Arguments&)
{
    return QLatin1String(QAbstractEventDispatcher::instance()->metaObject()->className());
}

// --- Windows and message boxes ---

// Object names of all open windows; one without a name goes by its class.
QString windows(Arguments&)
{
    QStringList names;
    for (const QWidget* const window : visibleWindows()) {
        names.append(window->objectName().isEmpty() ? QLatin1String(window->metaObject()->className())
                                                    : window->objectName());
    }
    names.sort();
    return names.join(u' ');
}

QString iconName(QMessageBox::Icon icon)
{
    switch (icon) {
    case QMessageBox::Information:
        return u"information"_s;
    case QMessageBox::Warning:
        return u"exclamation"_s;
    case QMessageBox::Critical:
        return u"critical"_s;
    case QMessageBox::Question:
        return u"question"_s;
    case QMessageBox::NoIcon:
        break;
    }
    return u"none"_s;
}

// Four lines: title, icon, the captions of the buttons in alphabetical order with a star behind the default one, text.
// Empty when no box is open.
QString box(Arguments&)
{
    if (!isMessageBoxOpen()) {
        return {};
    }
    const QMessageBox& open = messageBox();
    QStringList buttons;
    for (const QAbstractButton* const button : open.buttons()) {
        const bool isDefault = button == open.defaultButton();
        buttons.append(withoutMnemonic(button->text()) + (isDefault ? u"*"_s : QString()));
    }
    buttons.sort(); // their order is the platform's
    return QStringList{open.windowTitle(), iconName(open.icon()), buttons.join(u' '), open.text()}.join(u'\n');
}

QString pressButton(Arguments& arguments)
{
    const QMessageBox& open = messageBox();
    const QString caption = arguments.rest();
    for (QAbstractButton* const button : open.buttons()) {
        if (withoutMnemonic(button->text()) == caption) {
            click(*button);
            return {};
        }
    }
    throw Refusal{u"the message box has no button "_s + caption};
}

QString closeWindow(Arguments& arguments)
{
    pressCloseBox(control(arguments.word("window")));
    return {};
}

// --- Mouse and keys ---

QString clickControl(Arguments& arguments)
{
    click(control(arguments.word("control")));
    return {};
}

QString doubleClickControl(Arguments& arguments)
{
    click(control(arguments.word("control")), Clicks::Two);
    return {};
}

void clickOn(Arguments& arguments, Clicks clicks)
{
    QAbstractItemView& grid = gridOf(arguments);
    const QModelIndex index = cellOf(grid, arguments);
    grid.scrollTo(index);
    click(*grid.viewport(), grid.visualRect(index).center(), clicks);
}

QString clickCell(Arguments& arguments)
{
    clickOn(arguments, Clicks::One);
    return {};
}

QString doubleClickCell(Arguments& arguments)
{
    clickOn(arguments, Clicks::Two);
    return {};
}

QString clickTab(Arguments& arguments)
{
    const auto& widget = controlAs<QTabWidget>(arguments.word("tab control"));
    const int tab = arguments.number("tab, counted from 0");
    if (tab < 0 || tab >= widget.count()) {
        throw Refusal{u"%1 has no tab %2"_s.arg(widget.objectName()).arg(tab)};
    }
    click(*widget.tabBar(), widget.tabBar()->tabRect(tab).center());
    return {};
}

// An entry of a menu bar, of an open menu or of a tool bar. A menu is walked as a user does: first its title, then,
// when it has opened, the entry.
QString clickAction(Arguments& arguments)
{
    QAction& entry = action(arguments.word("action"));
    if (!entry.isEnabled()) {
        throw Refusal{entry.objectName() + u" is disabled"_s};
    }
    const ShownAction shown = shownAction(entry);
    click(shown.widget, shown.at);
    return {};
}

QString keys(Arguments& arguments)
{
    while (!arguments.isEmpty()) {
        const QString word = arguments.word("key");
        const QKeySequence sequence(word, QKeySequence::PortableText);
        if (sequence.isEmpty() || sequence[0].key() == Qt::Key_unknown) {
            throw Refusal{u"no such key: "_s + word};
        }
        press(sequence);
    }
    return {};
}

QString typeText(Arguments& arguments)
{
    type(arguments.rest());
    return {};
}

// A picture of the whole screen.
QString grab(Arguments& arguments)
{
    const QString file = arguments.rest();
    if (!QGuiApplication::primaryScreen()->grabWindow(0).save(file)) {
        throw Refusal{u"cannot write "_s + file};
    }
    return {};
}

// --- Looks ---

// The colours that a user may have chosen for the whole desktop.
QString palette(Arguments& arguments)
{
    const QString name = arguments.word("palette");
    const auto* const wanted = std::ranges::find_if(
        testsupport::kPalettes, [&name](const auto& known) { return name == QLatin1String(known.name); });
    if (wanted == testsupport::kPalettes.end()) {
        throw Refusal{u"no such palette: "_s + name};
    }
    if (name != u"light") { // the desktop's own is light
        QPalette colors = wanted->make();
        QApplication::style()->polish(colors); // as the desktop's own pass through the style
        QApplication::setPalette(colors);
    }
    return {};
}

// --- The list ---

struct Command
{
    const char* name;
    QString (*run)(Arguments&);
};

constexpr std::array<Command, 23> kCommands = {{
    // name, its arguments: what it answers or does
    {"find", find},                       // CONTROL: class, visible or hidden, enabled or disabled, place on the screen
    {"get", get},                         // CONTROL PROPERTY: its value
    {"rows", rows},                       // GRID: all data rows
    {"cell", cell},                       // GRID ROW COLUMN: its text
    {"current", current},                 // GRID: row and column of the current cell
    {"header", header},                   // GRID: captions of the columns
    {"tabs", tabs},                       // TABCONTROL: captions of the tabs
    {"actions", actions},                 // MENU: its entries
    {"loop", loop},                       // class of the event loop
    {"windows", windows},                 // names of all open windows
    {"box", box},                         // the open message box
    {"press", pressButton},               // CAPTION: clicks this button of the message box
    {"close", closeWindow},               // WINDOW: presses the close box of its frame
    {"click", clickControl},              // CONTROL
    {"doubleclick", doubleClickControl},  // CONTROL
    {"clickcell", clickCell},             // GRID ROW COLUMN
    {"doubleclickcell", doubleClickCell}, // GRID ROW COLUMN
    {"clicktab", clickTab},               // TABCONTROL TAB
    {"clickaction", clickAction},         // ACTION: clicks the entry of a bar or of an open menu
    {"keys", keys},                       // KEY...: presses keys ("Alt+F", "Tab") one after the other
    {"type", typeText},                   // TEXT: types it
    {"grab", grab},                       // FILE: saves a picture of the screen
    {"palette", palette},                 // light, dark or contrast: the desktop's colours
}};

} // namespace

QString carryOut(const QString& line)
{
    try {
        Arguments arguments(line);
        const QString name = arguments.word("command");
        const auto* const command =
            std::ranges::find_if(kCommands, [&name](const Command& c) { return name == QLatin1String(c.name); });
        if (command == kCommands.end()) {
            throw Refusal{u"no such command: "_s + name};
        }
        const QString answer = command->run(arguments);
        return answer.isEmpty() ? u"ok"_s : u"ok "_s + inOneLine(answer);
    } catch (const Refusal& refusal) {
        return u"error "_s + inOneLine(refusal.reason);
    }
}

} // namespace windowdriver
