#pragma once

#include "platform/qt/WindowOrder.h"

namespace platform {

// The order of windows on the real screen.
class QtWindowOrder final : public WindowOrder
{
public:
    void SetWindowPos(QWidget& window, int insertAfter, unsigned flags) override;

private:
    int m_last = 0; // number that was given to a window
};

// True for a window that stays above all others.
[[nodiscard]] bool isTopmost(const QWidget& window);
// Of two such windows, the one put there later has the higher number; 0 for any other window.
[[nodiscard]] int topmostNumber(const QWidget& window);

} // namespace platform
