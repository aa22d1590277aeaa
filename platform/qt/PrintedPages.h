#pragma once

#include <QFont>
#include <QList>
#include <QPagedPaintDevice>
#include <QRectF>
#include <QStringList>

class QPainter;

namespace platform {

// Lines of text on the pages of a device, as many pages as they need. The font gets a size at which Printer::kColumns
// characters fit the width of the paper; a longer line is drawn narrower, so that none is cut.
class PrintedPages final
{
public:
    // The device outlives the pages. Nothing is drawn yet.
    PrintedPages(QPagedPaintDevice& device, const QFont& font, QStringList lines);

    // How many there are, one at least; the first page is page 1.
    [[nodiscard]] int count() const;

    // Draws the pages with the given numbers, in this order, as one document; none without pages. False when the device
    // fails; the document is then of no use.
    [[nodiscard]] bool draw(const QList<int>& pages) const;

private:
    void drawPage(QPainter& painter, int page) const;

    QPagedPaintDevice& m_device;
    QStringList m_lines;
    QRectF m_area;
    QFont m_font;
    qreal m_pitch = 0; // from line to line
    int m_rows = 1;    // of a page
};

} // namespace platform
