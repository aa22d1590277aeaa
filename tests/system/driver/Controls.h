#pragma once

#include <QAction>
#include <QList>
#include <QMessageBox>
#include <QString>
#include <QWidget>

// Finds what a command means among the widgets of the running program. Everything here throws Refusal when there is no
// such thing, or when it cannot tell which one is meant.
namespace windowdriver {

// A control by its object name, or by "WINDOW/NAME" with the object name of its window. Of several with that name the
// visible one is meant.
[[nodiscard]] QWidget& control(const QString& target);

// The same control as one of its classes.
template <typename Widget>
[[nodiscard]] Widget& controlAs(const QString& target);

// An action by its object name.
[[nodiscard]] QAction& action(const QString& name);

// The menu bar, tool bar or open menu on which an action can be clicked, and where.
struct ShownAction
{
    QWidget& widget;
    QPoint at;
};
[[nodiscard]] ShownAction shownAction(QAction& action);

// Everything that has a frame on the screen: windows, dialogs, open menus.
[[nodiscard]] QList<QWidget*> visibleWindows();

// The message box that waits for an answer.
[[nodiscard]] QMessageBox& messageBox();
[[nodiscard]] bool isMessageBoxOpen();

// A caption without the marks of its access key.
[[nodiscard]] QString withoutMnemonic(QString caption);

// --- Templates ---

[[noreturn]] void refuseClass(const QString& target, const QWidget& found);

template <typename Widget>
Widget& controlAs(const QString& target)
{
    QWidget& found = control(target);
    auto* const widget = qobject_cast<Widget*>(&found);
    if (widget == nullptr) {
        refuseClass(target, found);
    }
    return *widget;
}

} // namespace windowdriver
