#pragma once

#include <QPointer>
#include <QPushButton>

#include <vector>

namespace app {

// Buttons of a dialog that would do nothing for a while. They are grey meanwhile. The one that has the keyboard gets it
// back: left to itself, the keyboard would go to a neighbour, and the next blank would press that.
class PausedButtons final
{
public:
    // The buttons belong to one dialog and live as long as this object is used.
    void add(QPushButton& button) { m_buttons.push_back(&button); }
    void setPaused(bool paused);

private:
    std::vector<QPushButton*> m_buttons;
    QPointer<QPushButton> m_hadKeyboard;
};

} // namespace app
