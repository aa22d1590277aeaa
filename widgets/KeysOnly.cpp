#include "widgets/KeysOnly.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace widgets {

KeysOnly::KeysOnly(QLineEdit& box)
    : QObject(&box)
{
    box.installEventFilter(this);
}

bool KeysOnly::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
            return true;
        }
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        if (static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton) {
            return true; // pastes the selection on some systems
        }
        break;
    case QEvent::ContextMenu: // offers paste
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        event->ignore();
        return true;
    case QEvent::InputMethod:
        return true;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace widgets
