#include "tests/documents/Document.h"

#include "tests/support/SourceFile.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

namespace documents {

namespace {

const QString kCodeIndent = QStringLiteral("    ");

// Blocks of code stand alone between empty lines; an entry of a list that goes on is indented less, or not after one.
bool isCode(const QString& line, bool afterEmptyLine)
{
    return afterEmptyLine && line.startsWith(kCodeIndent);
}

bool startsAnew(const QString& line)
{
    static const QRegularExpression start(QStringLiteral("^(#|\\||!\\[|- |\\d+\\. )"));
    return start.match(line).hasMatch();
}

QString withoutCode(QString line)
{
    static const QRegularExpression piece(QStringLiteral("`[^`]*`"));
    static const QRegularExpression target(QStringLiteral("\\]\\([^)]*\\)"));
    static const QRegularExpression step(QStringLiteral("^\\d+\\. "));
    return line.remove(step).remove(piece).replace(target, QStringLiteral("]"));
}

QStringList captures(const QString& text, const QString& pattern)
{
    const QRegularExpression expression(pattern, QRegularExpression::MultilineOption);
    QStringList all;
    for (auto found = expression.globalMatch(text); found.hasNext();) {
        all.append(found.next().captured(1));
    }
    return all;
}

} // namespace

QStringList Document::codeLines() const
{
    QStringList code;
    bool mayBegin = true;
    for (const QString& line : m_text.split(u'\n')) {
        const bool is = isCode(line, mayBegin);
        if (is) {
            code.append(line.mid(kCodeIndent.size()));
        }
        mayBegin = line.isEmpty() || is;
    }
    return code;
}

QStringList Document::prose() const
{
    QStringList lines;
    bool mayBegin = true;
    bool goesOn = false;
    for (const QString& line : m_text.split(u'\n')) {
        const bool code = isCode(line, mayBegin);
        if (!code && !line.isEmpty()) {
            if (goesOn && !startsAnew(line)) {
                lines.last() += u' ' + line.trimmed();
            } else {
                lines.append(line);
            }
        }
        goesOn = !code && !line.isEmpty();
        mayBegin = line.isEmpty() || code;
    }
    for (QString& line : lines) {
        line = withoutCode(line);
    }
    return lines;
}

QStringList Document::quotedTexts() const
{
    QStringList texts;
    for (const QString& line : prose()) {
        for (const QString& text : captures(line, QStringLiteral("\"([^\"]*)\""))) {
            if (text.size() > 1) {
                texts.append(text);
            }
        }
    }
    return texts;
}

QStringList Document::codePieces() const
{
    QStringList pieces;
    for (const QString& piece : captures(m_text, QStringLiteral("`([^`\\n]+)`"))) {
        pieces.append(piece);
    }
    return pieces;
}

QStringList Document::targets() const
{
    return captures(m_text, QStringLiteral("\\]\\(([^)]+)\\)"));
}

QStringList Document::places() const
{
    static const QRegularExpression dropped(QStringLiteral("[^\\w\\- ]"));
    QStringList places;
    for (QString title : captures(m_text, QStringLiteral("^#+ (.+)$"))) {
        places.append(title.toLower().remove(dropped).replace(u' ', u'-'));
    }
    return places;
}

QStringList userDocuments()
{
    return {QStringLiteral("docs/guide.md"), QStringLiteral("docs/daily-jobs.md"),
            QStringLiteral("docs/kept-behaviours.md"), QStringLiteral("packaging/documents/README.md")};
}

QString readSource(const QString& name)
{
    QFile file(testsupport::sourceFile(name));
    if (!file.open(QIODevice::ReadOnly)) {
        QTest::qFail(qPrintable(name + QStringLiteral(" is not there")), __FILE__, __LINE__);
        return {};
    }
    return QString::fromUtf8(file.readAll());
}

} // namespace documents
