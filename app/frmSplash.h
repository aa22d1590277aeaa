#pragma once

#include <QWidget>

namespace app {

// What the user sees of the program while it starts. Any click and any key closes it; it takes the keyboard from
// nobody.
class frmSplash final : public QWidget
{
    Q_OBJECT

public:
    explicit frmSplash(QWidget* parent = nullptr);

    // Loads the window and shows it in the middle of the screen. Returns when it has been painted, so that it is seen
    // even when what follows takes the event loop; a screen that does not show it is not waited for long.
    void showInMiddle();

    void Form_Load();
    void Form_Click();
    void Form_KeyPress();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace app
