#pragma once

#include "platform/qt/WindowOrder.h"

namespace platform {

// The order of windows on the real screen.
class QtWindowOrder final : public WindowOrder
{
public:
    void SetWindowPos(QWidget& window, int insertAfter, unsigned flags) override;
};

// True for a window that stays above all others.
[[nodiscard]] bool isTopmost(const QWidget& window);

} // namespace platform
