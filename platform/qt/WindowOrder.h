#pragma once

class QWidget;

namespace platform {

// Where SetWindowPos puts a window in the order of all windows on the screen.
inline constexpr int kTopOfOrdinaryWindows = 0;
inline constexpr int kTopmost = -1; // above the windows of all programs, until kNotTopmost
inline constexpr int kNotTopmost = -2;

// Flags: a window keeps its size (1) and its place (2).
inline constexpr unsigned kKeepSizeAndPlace = 3;

// The order of windows on the screen. A window system may treat it as a wish.
class WindowOrder
{
public:
    virtual ~WindowOrder() = default;

    // Moves a window to another place in the order; insertAfter is one of the three places above. The flags are always
    // kKeepSizeAndPlace. The window need not be visible yet.
    virtual void SetWindowPos(QWidget& window, int insertAfter, unsigned flags) = 0;
};

} // namespace platform
