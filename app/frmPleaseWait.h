#pragma once

#include "platform/qt/WindowOrder.h"

#include <QWidget>

namespace app {

// The small window that stays above all others while the device is being opened.
class frmPleaseWait final : public QWidget
{
    Q_OBJECT

public:
    // The window order outlives the window.
    explicit frmPleaseWait(platform::WindowOrder& order, QWidget* parent = nullptr);

    // Shows the window over the middle of another one, without taking the keyboard from it.
    void showOver(const QWidget& window);
    // Does nothing while it is not shown.
    void unload();

    void Form_Load();
    void Form_Unload();

private:
    void putInOrder(int insertAfter);

    platform::WindowOrder& m_order;
};

} // namespace app
