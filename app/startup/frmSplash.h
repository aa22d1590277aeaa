#pragma once

#include <QWidget>

#include <chrono>

namespace app {

// What the user sees of the program while it starts, and for a moment afterwards. It takes the keyboard from nobody and
// holds nothing up. The first click or key anywhere in the program closes it and does what it does besides; so does
// every window that opens, but the main one. It is deleted when it is closed.
class frmSplash final : public QWidget
{
    Q_OBJECT

public:
    // How long it is seen above the main window.
    static constexpr std::chrono::milliseconds kLongestStand{1500};

    explicit frmSplash(QWidget* mainWindow);

    // Loads the window and shows it in the middle of the screen. Does not wait for it to be seen.
    void showInMiddle();
    // The main window is on screen now, and has covered it.
    void standAboveMainWindow();

    void Form_Load();
    void Form_Click();
    void Form_KeyPress();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace app
