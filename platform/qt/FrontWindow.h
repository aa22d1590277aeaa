#pragma once

class QWidget;

namespace platform {

// The window that a box or dialog belongs to: whichever of the program's windows is in front, or none while none is
// visible. A window that stays on top of all others must be the parent, or it would cover the box.
[[nodiscard]] QWidget* frontWindow();

} // namespace platform
