#pragma once

#include <QWidget>

namespace app {

// The small window that stays above all others while the device is being opened.
class frmPleaseWait final : public QWidget
{
    Q_OBJECT

public:
    explicit frmPleaseWait(QWidget* parent = nullptr);

    // Shows the window over the middle of another one, without taking the keyboard from it.
    void showOver(const QWidget& window);
};

} // namespace app
