#include "app/ShortenedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include <algorithm>

namespace app {

namespace {

constexpr int kLeastCharacters = 6;

} // namespace

ShortenedLabel::ShortenedLabel(Qt::TextElideMode mode, QWidget* parent)
    : QLabel(parent)
    , m_mode(mode)
{
    setTextFormat(Qt::PlainText);
}

QSize ShortenedLabel::minimumSizeHint() const
{
    const QSize whole = QLabel::minimumSizeHint();
    return {std::min(whole.width(), fontMetrics().averageCharWidth() * kLeastCharacters), whole.height()};
}

bool ShortenedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && isShortened()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

void ShortenedLabel::paintEvent(QPaintEvent* event)
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

} // namespace app
