#include "tests/system/driver/Controls.h"

#include "tests/system/driver/Refusal.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace windowdriver {

namespace {

QString quoted(const QString& name)
{
    return u'\'' + name + u'\'';
}

// The one that is meant, or a refusal.
template <typename Object>
Object& onlyOne(const QList<Object*>& found, const QString& name)
{
    if (found.isEmpty()) {
        throw Refusal{u"there is no "_s + quoted(name)};
    }
    if (found.size() > 1) {
        throw Refusal{u"there are %1 of "_s.arg(found.size()) + quoted(name)};
    }
    return *found.front();
}

QMessageBox* openMessageBox()
{
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

} // namespace

QWidget& control(const QString& target)
{
    const qsizetype slash = target.indexOf(u'/');
    const QString window = target.left(std::max<qsizetype>(slash, 0));
    const QString name = target.mid(slash + 1);
    QList<QWidget*> all;
    QList<QWidget*> visible;
    for (QWidget* const widget : QApplication::allWidgets()) {
        if (widget->objectName() != name || (!window.isEmpty() && widget->window()->objectName() != window)) {
            continue;
        }
        all.append(widget);
        if (widget->isVisible()) {
            visible.append(widget);
        }
    }
    return onlyOne(visible.isEmpty() ? all : visible, target);
}

void refuseClass(const QString& target, const QWidget& found)
{
    throw Refusal{quoted(target) + u" is a "_s + QLatin1String(found.metaObject()->className())};
}

QAction& action(const QString& name)
{
    QList<QAction*> found;
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        for (QAction* const candidate : window->findChildren<QAction*>(name)) {
            if (!found.contains(candidate)) {
                found.append(candidate);
            }
        }
    }
    // A menu's own entry in its bar has no name of its own; the menu's name stands for it.
    if (found.isEmpty()) {
        return *controlAs<QMenu>(name).menuAction();
    }
    return onlyOne(found, name);
}

ShownAction shownAction(QAction& action)
{
    for (QObject* const object : action.associatedObjects()) {
        QRect place;
        auto* const widget = qobject_cast<QWidget*>(object);
        if (auto* const bar = qobject_cast<QMenuBar*>(widget)) {
            place = bar->actionGeometry(&action);
        } else if (auto* const menu = qobject_cast<QMenu*>(widget)) {
            place = menu->actionGeometry(&action);
        } else if (auto* const tools = qobject_cast<QToolBar*>(widget)) {
            place = tools->actionGeometry(&action);
        }
        if (widget != nullptr && widget->isVisible() && !place.isEmpty()) {
            return {*widget, place.center()};
        }
    }
    throw Refusal{u"not on the screen: "_s + quoted(action.text())};
}

QList<QWidget*> visibleWindows()
{
    QList<QWidget*> windows;
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() != Qt::ToolTip) {
            windows.append(window);
        }
    }
    return windows;
}

QMessageBox& messageBox()
{
    QMessageBox* const box = openMessageBox();
    if (box == nullptr) {
        throw Refusal{u"no message box is open"_s};
    }
    return *box;
}

bool isMessageBoxOpen()
{
    return openMessageBox() != nullptr;
}

QString withoutMnemonic(QString caption)
{
    return caption.remove(u'&');
}

} // namespace windowdriver
