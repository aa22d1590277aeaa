#include "app/dialogs/PausedButtons.h"

namespace app {

void PausedButtons::setPaused(bool paused)
{
    for (QPushButton* button : m_buttons) {
        if (paused && button->window()->focusWidget() == button) {
            m_hadKeyboard = button;
            button->window()->setFocus(); // to no control at all
        }
    }
    for (QPushButton* button : m_buttons) {
        button->setEnabled(!paused);
    }
    if (!paused && m_hadKeyboard) {
        QWidget* const window = m_hadKeyboard->window();
        if (window->focusWidget() == nullptr || window->focusWidget() == window) {
            m_hadKeyboard->setFocus();
        }
        m_hadKeyboard = nullptr;
    }
}

} // namespace app
