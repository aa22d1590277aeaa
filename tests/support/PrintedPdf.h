#pragma once

#include <QImage>
#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>

// What a PDF file shows on its pages, told by the tools of poppler-utils. They have to be there: without them every
// function gives nothing, which no expectation equals.
namespace testsupport {

struct PdfWord
{
    QString text;
    QRectF box; // in points from the upper left corner of the paper
};

struct PdfPage
{
    QSizeF paper;         // in points
    QList<PdfWord> words; // row by row
};

[[nodiscard]] QList<PdfPage> pdfPages(const QString& file);

// The lines of all pages as text, blanks where the paper is empty; without empty lines and page breaks.
[[nodiscard]] QStringList pdfLines(const QString& file);

// The picture of a page (the first is 0).
[[nodiscard]] QImage pdfPicture(const QString& file, int page, int dotsPerInch);

// The part of a picture that is not white.
[[nodiscard]] QRect inkOf(const QImage& picture);

} // namespace testsupport
