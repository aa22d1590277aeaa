#pragma once

#include <QWidget>

namespace platform {

// Waits for the window system after a window was made visible. When it is on screen, its first picture has been painted
// and its frame is known, so it can be moved to a place that counts the frame. The user's input is kept for later. A
// window that the screen does not show, such as one on another desktop, is not waited for long.
void waitUntilShown(const QWidget& window);

} // namespace platform
