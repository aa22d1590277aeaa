#pragma once

#include <QLabel>

namespace widgets {

// A label of one line that never asks for more width than there is: a text that does not fit is painted shortened, and
// whole as the tool tip. text() is always the whole text.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    // mode: where the dots stand.
    explicit ElidedLabel(Qt::TextElideMode mode, QWidget* parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool isShortened() const { return QLabel::sizeHint().width() > width(); }

    Qt::TextElideMode m_mode;
};

} // namespace widgets
