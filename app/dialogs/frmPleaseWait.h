#pragma once

#include "platform/qt/WindowOrder.h"

#include <QFrame>

namespace app {

// The small window that stays above all others while the device is being opened. It has no frame of a window manager's,
// because some of them put buttons into any frame: nobody but the program takes it away.
class frmPleaseWait final : public QFrame
{
    Q_OBJECT

public:
    // The window order outlives the window.
    explicit frmPleaseWait(platform::WindowOrder& order, QWidget* parent = nullptr);

    // Shows the window over the middle of another one, without taking the keyboard from it. Returns when it has been
    // painted, so that it is seen even when what follows takes the event loop.
    void showOver(const QWidget& window);
    // Does nothing while it is not shown.
    void unload();

    void Form_Load();
    void Form_Unload();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void putInOrder(int insertAfter);

    platform::WindowOrder& m_order;
};

} // namespace app
