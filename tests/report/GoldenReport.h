#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QList>

// Whole reports to compare with, typed by hand and kept in golden/ byte for byte: CR LF, trailing blanks and every
// character between quotes included. They bear the date 7 March 2024, no firmware version and no comment.
namespace golden {

// The bytes of golden/<name>.txt; empty when there is no such file, which no report equals.
[[nodiscard]] QByteArray report(const char* name);

struct LineChange
{
    QByteArray before; // one line, or several joined by CR LF, without the last line end
    QByteArray after;
};

// A golden report with some lines replaced by typed ones. Each `before` has to stand in the report exactly once, as
// whole lines; otherwise the result is a complaint that no report equals.
[[nodiscard]] QByteArray withLines(QByteArray report, const QList<LineChange>& changes);

// A report in pieces, one a line, with nothing lost: two reports are the same bytes when all their pieces are. The
// comparison of the pieces names the line that differs.
[[nodiscard]] QByteArrayList lines(const QByteArray& report);

} // namespace golden
