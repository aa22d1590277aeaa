#pragma once

class QWidget;

namespace platform {

class WindowOrder;

// The window that a box or dialog belongs to: whichever of the program's windows is in front, or none while none is
// visible. A window that stays on top of all others must be the parent, or it would cover the box. The splash is never
// the one: it goes when a box comes.
[[nodiscard]] QWidget* frontWindow();

// Makes a box or dialog come up above whatever of the program stays on top. Call before it is shown.
void comeUpAboveParent(QWidget& box);

// Shows a window above all others of the program and gives it the keyboard. While another one stays on top, this one
// does too, or it would come up underneath.
void showInFront(QWidget& window, WindowOrder& order);

} // namespace platform
