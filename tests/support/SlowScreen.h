#pragma once

#include <QCoreApplication>
#include <QExposeEvent>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>
#include <QWindow>

namespace testsupport {

// A screen that is slower than the program: a window is there for it a while after it was shown, or never.
class SlowScreen final : public QObject
{
public:
    enum Pace { ShowsLater, ShowsNever };
    explicit SlowScreen(Pace pace)
        : m_pace(pace)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    // The names of the widgets that were painted.
    [[nodiscard]] QStringList painted() const { return m_painted; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && watched->isWidgetType()) {
            m_painted << watched->objectName();
        }
        if (event->type() != QEvent::Expose || m_shown.contains(watched)) {
            return false;
        }
        if (m_pace == ShowsLater) {
            auto* const window = qobject_cast<QWindow*>(watched);
            QTimer::singleShot(1, window, [this, window] {
                m_shown.insert(window);
                QExposeEvent exposed(QRect({}, window->size()));
                QCoreApplication::sendEvent(window, &exposed);
            });
        }
        return true;
    }

private:
    Pace m_pace;
    QSet<QObject*> m_shown;
    QStringList m_painted;
};

} // namespace testsupport
