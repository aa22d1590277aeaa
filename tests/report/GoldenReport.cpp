#include "tests/report/GoldenReport.h"
#include "tests/support/SourceFile.h"

#include <QFile>
#include <QTest>

namespace golden {

QByteArray report(const char* name)
{
    const QString path = testsupport::sourceFile(QStringLiteral("tests/report/golden/%1.txt").arg(QLatin1String(name)));
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray withLines(QByteArray report, const QList<LineChange>& changes)
{
    report.prepend("\r\n");
    for (const LineChange& change : changes) {
        const QByteArray before = "\r\n" + change.before + "\r\n";
        const qsizetype at = report.indexOf(before);
        if (at < 0 || report.indexOf(before, at + 1) >= 0) {
            return "(the golden report does not hold exactly once: " + change.before + ")";
        }
        report.replace(at, before.size(), "\r\n" + change.after + "\r\n");
    }
    return report.mid(2);
}

QByteArrayList lines(const QByteArray& report)
{
    return report.split('\n');
}

} // namespace golden
