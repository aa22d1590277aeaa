#pragma once

#include <QKeySequence>
#include <QPoint>
#include <QString>
#include <QWidget>

// The hands of the user. Events enter the program where the window system's do, at a window, and wait in its queue
// until the event loop of the moment fetches them; so a click that opens a modal box, or starts a wait, returns here
// first. What a user could not reach is refused: hidden, disabled or covered controls, and windows behind a modal one.
namespace windowdriver {

enum class Clicks { One = 1, Two = 2 };

// The left button, at a place inside the widget.
void click(QWidget& widget, QPoint at, Clicks clicks = Clicks::One);

// The left button, where a user aims at such a control: the middle, or the mark of an option or a check box. A control
// in a scrolling area is brought into view.
void click(QWidget& widget, Clicks clicks = Clicks::One);

// Keys go to the window in front. Refused, but on its way, while that does not have the keyboard yet.
void press(const QKeySequence& keys);
void type(const QString& text);

// The close box of a window's frame.
void pressCloseBox(QWidget& window);

} // namespace windowdriver
