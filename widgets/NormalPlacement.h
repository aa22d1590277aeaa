#pragma once

#include <QRect>
#include <QTimer>
#include <QWidget>

namespace widgets {

// Remembers where a window stands in its normal state, for the time when it is maximised or minimised. What the toolkit
// holds then does not count the frame, and where the window system sends the new size before the new state it is the
// maximised size. So a place counts once the window has kept it for a moment.
class NormalPlacement final : public QObject
{
    Q_OBJECT

public:
    // The one of a window, which owns it; made at the first call.
    [[nodiscard]] static NormalPlacement& of(QWidget& form);
    // The normal place of a window that is not in its normal state: what move() and resize() take.
    [[nodiscard]] static QRect lastOf(const QWidget& form);

    // Takes the window's present place.
    void take();
    // Null as long as none has been taken.
    [[nodiscard]] QRect place() const { return m_place; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit NormalPlacement(QWidget& form);
    void follow();

    QWidget& m_form;
    QRect m_place;
    QTimer m_settling;
};

} // namespace widgets
