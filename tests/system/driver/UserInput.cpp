#include "tests/system/driver/UserInput.h"

#include "tests/system/driver/Refusal.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QPointer>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>
#include <QWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace windowdriver {

namespace {

QString nameOf(const QWidget& widget)
{
    return widget.objectName().isEmpty() ? QLatin1String(widget.metaObject()->className()) : widget.objectName();
}

void refuse(const QWidget& widget, const char* reason)
{
    throw Refusal{nameOf(widget) + u' ' + QLatin1String(reason)};
}

// A modal window takes all input, an open menu takes it before that.
void refuseBehindOthers(const QWidget& widget)
{
    const QWidget* const window = widget.window();
    if (const QWidget* const popup = QApplication::activePopupWidget(); popup != nullptr && popup != window) {
        refuse(widget, "is behind an open menu");
    }
    if (const QWidget* const modal = QApplication::activeModalWidget();
        modal != nullptr && modal != window && window->windowType() != Qt::Popup) {
        refuse(widget, "is behind a modal window");
    }
}

void refuseUnreachable(const QWidget& widget, QPoint at)
{
    if (!widget.isVisible()) {
        refuse(widget, "is hidden");
    }
    if (!widget.isEnabled()) {
        refuse(widget, "is disabled");
    }
    refuseBehindOthers(widget);
    const QWidget* const window = widget.window();
    const QWidget* const hit = window->childAt(widget.mapTo(window, at));
    if (!widget.rect().contains(at) || (&widget != window && hit != &widget && !widget.isAncestorOf(hit))) {
        refuse(widget, "is covered there, or out of view");
    }
}

// Delivers a window-system event in the program's next turn of its event loop, whichever loop that is then. Delivery
// goes straight into the program's handlers, and those may wait or open a modal box.
template <typename Event>
void post(Event event)
{
    QMetaObject::invokeMethod(qApp, event, Qt::QueuedConnection);
}

template <typename Event>
void post(QWindow& window, Event event)
{
    post([target = QPointer<QWindow>(&window), event] {
        if (target) {
            event(*target);
        }
    });
}

// What a window manager does for a window that is clicked.
void activate(QWindow& window)
{
    if (QApplication::activePopupWidget() == nullptr && QGuiApplication::focusWindow() != &window) {
        post(window, [](QWindow& target) { target.requestActivate(); });
    }
}

// Event time moves on between clicks, so that two commands never make a double click.
int nextEventTime()
{
    static int time = 0;
    return time += QApplication::doubleClickInterval() + 1;
}

// The window that the keys are for; none when nothing is open. A window manager would give the keyboard to a modal box,
// and back to the main window when that has gone, but there may be none.
QWidget* keyboardWindow()
{
    for (QWidget* const first :
         {QApplication::activePopupWidget(), QApplication::activeModalWidget(), QApplication::activeWindow()}) {
        if (first != nullptr) {
            return first;
        }
    }
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() == Qt::Window) {
            return window;
        }
    }
    return nullptr;
}

// The character that a key with these modifiers types, if any.
QString textOf(QKeyCombination keys)
{
    if ((keys.keyboardModifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
        return {};
    }
    switch (keys.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return u"\r"_s;
    case Qt::Key_Tab:
        return u"\t"_s;
    case Qt::Key_Backspace:
        return u"\b"_s;
    case Qt::Key_Escape:
        return u"\x1b"_s;
    case Qt::Key_Delete:
        return u"\x7f"_s;
    default:
        break;
    }
    if (keys.key() < Qt::Key_Space || keys.key() > Qt::Key_ydiaeresis) {
        return {};
    }
    const QChar letter(static_cast<char16_t>(keys.key()));
    return (keys.keyboardModifiers() & Qt::ShiftModifier) != 0 ? letter : letter.toLower();
}

// Shortcuts and access keys come first, as the window system's side of Qt has it.
bool isShortcut(QWindow& window, QKeyCombination keys, const QString& text)
{
    QObject* const focus = window.focusObject();
    return qt_sendShortcutOverrideEvent(focus != nullptr ? focus : &window, 0, keys.key(), keys.keyboardModifiers(),
                                        text);
}

void deliverKey(QEvent::Type type, QKeyCombination keys, const QString& text)
{
    QWidget* const widget = keyboardWindow();
    QWindow* const window = widget == nullptr ? nullptr : widget->windowHandle();
    if (window != nullptr && (type != QEvent::KeyPress || !isShortcut(*window, keys, text))) {
        qt_handleKeyEvent(window, type, keys.key(), keys.keyboardModifiers(), text);
    }
}

// The window is looked up when the key arrives: what was done before may have moved the keyboard.
void pressAndRelease(QKeyCombination keys, const QString& text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        post([=] { deliverKey(type, keys, text); });
    }
}

// Access keys work in the active window only, and to become active takes a while.
void refuseWithoutKeyboard()
{
    QWidget* const window = keyboardWindow();
    if (window == nullptr) {
        throw Refusal{u"no window is open"_s};
    }
    if (!window->isActiveWindow() && window->windowType() != Qt::Popup) {
        activate(*window->windowHandle());
        refuse(*window, "does not have the keyboard yet");
    }
}

// Options and check boxes react to their mark and their words only, which need not reach the middle.
QPoint aim(const QWidget& widget)
{
    const bool isOption = qobject_cast<const QRadioButton*>(&widget) != nullptr;
    const bool isCheck = qobject_cast<const QCheckBox*>(&widget) != nullptr;
    if (!isOption && !isCheck) {
        return widget.rect().center();
    }
    QStyleOptionButton option;
    option.initFrom(&widget);
    const auto mark = isOption ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator;
    return widget.style()->subElementRect(mark, &option, &widget).center();
}

void bringIntoView(QWidget& widget)
{
    for (QWidget* ancestor = widget.parentWidget(); ancestor != nullptr; ancestor = ancestor->parentWidget()) {
        if (auto* const area = qobject_cast<QScrollArea*>(ancestor)) {
            area->ensureWidgetVisible(&widget);
        }
    }
}

} // namespace

void click(QWidget& widget, QPoint at, Clicks clicks)
{
    refuseUnreachable(widget, at);
    QWindow& window = *widget.window()->windowHandle();
    const QPointF local = widget.mapTo(widget.window(), at);
    const int time = nextEventTime();
    const auto send = [&](QEvent::Type type, Qt::MouseButtons held, Qt::MouseButton button) {
        post(window, [=](QWindow& target) {
            qt_handleMouseEvent(&target, local, target.mapToGlobal(local), held, button, type, Qt::NoModifier, time);
        });
    };
    activate(window);
    send(QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
    for (int done = 0; done < static_cast<int>(clicks); ++done) {
        send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, Qt::NoButton, Qt::LeftButton);
    }
}

void click(QWidget& widget, Clicks clicks)
{
    bringIntoView(widget);
    click(widget, aim(widget), clicks);
}

void press(const QKeySequence& keys)
{
    refuseWithoutKeyboard();
    for (int i = 0; i < keys.count(); ++i) {
        pressAndRelease(keys[static_cast<uint>(i)], textOf(keys[static_cast<uint>(i)]));
    }
}

void type(const QString& text)
{
    refuseWithoutKeyboard();
    for (const QChar character : text) {
        const bool isLetter = character.isLetter();
        const auto modifiers = isLetter && character.isUpper() ? Qt::ShiftModifier : Qt::NoModifier;
        const auto key = character == u'\n' ? Qt::Key_Return : static_cast<Qt::Key>(character.toUpper().unicode());
        pressAndRelease(QKeyCombination(modifiers, key), character == u'\n' ? u"\r"_s : character);
    }
}

void pressCloseBox(QWidget& window)
{
    if (!window.isVisible() || !window.isWindow()) {
        refuse(window, "is no open window");
    }
    refuseBehindOthers(window);
    post(*window.windowHandle(), [](QWindow& target) { target.close(); });
}

} // namespace windowdriver
