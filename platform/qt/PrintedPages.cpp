#include "platform/qt/PrintedPages.h"

#include "platform/Printer.h"

#include <QFontMetricsF>
#include <QPageLayout>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform {

namespace {

constexpr qreal kMarginInches = 0.5; // printers that claim to reach the edge of the paper mostly do not
constexpr qreal kLargestPoints = 10; // on paper that is wider than a page needs

// Where text may stand, in device pixels from the corner of what the device can reach.
QRectF textArea(const QPagedPaintDevice& device)
{
    const int resolution = device.logicalDpiX();
    const QPageLayout layout = device.pageLayout();
    const QRectF reach = layout.paintRectPixels(resolution);
    const QRectF paper = layout.fullRectPixels(resolution);
    const qreal margin = kMarginInches * resolution;
    const QRectF area = reach.intersected(paper.adjusted(margin, margin, -margin, -margin));
    return (area.isEmpty() ? reach : area).translated(-reach.topLeft());
}

QFont fitted(QFont font, QPagedPaintDevice& device, qreal width)
{
    font.setPointSizeF(kLargestPoints);
    const qreal needed = QFontMetricsF(font, &device).horizontalAdvance(QLatin1Char('0')) * Printer::kColumns;
    if (needed > width) {
        font.setPointSizeF(std::max(1.0, std::floor(10 * kLargestPoints * width / needed) / 10));
    }
    return font;
}

void drawLine(QPainter& painter, const QString& line, QPointF baseline, qreal width)
{
    const qreal needed = QFontMetricsF(painter.font(), painter.device()).horizontalAdvance(line);
    painter.save();
    painter.translate(baseline);
    if (needed > width) {
        painter.scale(width / needed, 1);
    }
    painter.drawText(QPointF(0, 0), line);
    painter.restore();
}

} // namespace

PrintedPages::PrintedPages(QPagedPaintDevice& device, const QFont& font, QStringList lines)
    : m_device(device)
    , m_lines(std::move(lines))
    , m_area(textArea(device))
    , m_font(fitted(font, device, m_area.width()))
    , m_pitch(QFontMetricsF(m_font, &device).lineSpacing())
    , m_rows(std::max(1, static_cast<int>(m_area.height() / m_pitch)))
{}

int PrintedPages::count() const
{
    const int lines = static_cast<int>(m_lines.size());
    return std::max(1, (lines + m_rows - 1) / m_rows);
}

bool PrintedPages::draw(const QList<int>& pages) const
{
    if (pages.isEmpty()) {
        return true;
    }
    QPainter painter;
    if (!painter.begin(&m_device)) {
        return false;
    }
    painter.setFont(m_font);
    bool isFirst = true;
    for (const int page : pages) {
        if (!isFirst && !m_device.newPage()) {
            return false;
        }
        isFirst = false;
        drawPage(painter, page);
    }
    return painter.end();
}

void PrintedPages::drawPage(QPainter& painter, int page) const
{
    qreal baseline = m_area.top() + QFontMetricsF(m_font, &m_device).ascent();
    for (const QString& line : m_lines.mid(static_cast<qsizetype>(page - 1) * m_rows, m_rows)) {
        drawLine(painter, line, QPointF(m_area.left(), baseline), m_area.width());
        baseline += m_pitch;
    }
}

} // namespace platform
