#include "tests/support/PrintedPdf.h"

#include <QProcess>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>

namespace testsupport {

namespace {

QByteArray outputOf(const QString& tool, const QStringList& arguments)
{
    QProcess process;
    process.start(tool, arguments);
    const bool ended = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
    return ended && process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

qreal number(const QXmlStreamReader& xml, const char* attribute)
{
    return xml.attributes().value(QLatin1String(attribute)).toDouble();
}

// By rows, and from left to right in each; the tool tells columns of text one after the other.
bool standsBefore(const PdfWord& one, const PdfWord& other)
{
    constexpr qreal kSameRow = 1;
    const qreal lower = one.box.top() - other.box.top();
    return std::abs(lower) < kSameRow ? one.box.left() < other.box.left() : lower < 0;
}

} // namespace

QList<PdfPage> pdfPages(const QString& file)
{
    QXmlStreamReader xml(outputOf(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), file, QStringLiteral("-")}));
    QList<PdfPage> pages;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("page")) {
            pages.append({QSizeF(number(xml, "width"), number(xml, "height")), {}});
        } else if (xml.name() == QLatin1String("word") && !pages.isEmpty()) {
            const QRectF box(QPointF(number(xml, "xMin"), number(xml, "yMin")),
                             QPointF(number(xml, "xMax"), number(xml, "yMax")));
            pages.last().words.append({xml.readElementText(), box});
        }
    }
    for (PdfPage& page : pages) {
        std::sort(page.words.begin(), page.words.end(), standsBefore);
    }
    return pages;
}

QStringList pdfLines(const QString& file)
{
    const QByteArray text =
        outputOf(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
    return QString::fromUtf8(text).remove(QLatin1Char('\f')).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QImage pdfPicture(const QString& file, int page, int dotsPerInch)
{
    const QString number = QString::number(page + 1);
    const QByteArray picture = outputOf(QStringLiteral("pdftoppm"),
                                        {QStringLiteral("-gray"), QStringLiteral("-r"), QString::number(dotsPerInch),
                                         QStringLiteral("-f"), number, QStringLiteral("-l"), number, file});
    return QImage::fromData(picture, "PGM");
}

QRect inkOf(const QImage& picture)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qGray(picture.pixel(x, y)) < 192) {
                ink |= QRect(x, y, 1, 1);
            }
        }
    }
    return ink;
}

} // namespace testsupport
