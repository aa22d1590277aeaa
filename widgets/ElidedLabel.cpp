#include "widgets/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include <algorithm>

namespace widgets {

namespace {

constexpr int kLeastCharacters = 6;

} // namespace

ElidedLabel::ElidedLabel(Qt::TextElideMode mode, QWidget* parent)
    : QLabel(parent)
    , m_mode(mode)
{
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const
{
    const QSize whole = QLabel::minimumSizeHint();
    return {std::min(whole.width(), fontMetrics().averageCharWidth() * kLeastCharacters), whole.height()};
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && isShortened()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent* event)
{
    if (!isShortened()) {
        QLabel::paintEvent(event);
        return;
    }
    const QString line = text().section(QLatin1Char('\n'), 0, 0);
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, palette(),
                          isEnabled(), fontMetrics().elidedText(line, m_mode, contentsRect().width()),
                          foregroundRole());
}

} // namespace widgets
