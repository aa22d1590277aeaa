#include "tests/documents/ProgramTexts.h"

#include <QRegularExpression>

#include <algorithm>

namespace documents {

namespace {

// The text of an escape behind its backslash, and how many characters it takes.
QString escaped(const QString& source, qsizetype at, qsizetype& length)
{
    length = 1;
    switch (source[at].toLatin1()) {
    case 'n':
        return QStringLiteral("\n");
    case 'r':
        return QStringLiteral("\r");
    case 't':
        return QStringLiteral("\t");
    case 'x':
        length = 3;
        return QString(QChar(source.mid(at + 1, 2).toUShort(nullptr, 16)));
    default:
        return source.mid(at, 1);
    }
}

} // namespace

QStringList literalsOf(const QString& source)
{
    QStringList literals;
    qsizetype end = -1; // of the last literal: what follows after blanks alone is joined to it
    const auto take = [&](qsizetype start, const QString& text, qsizetype after) {
        const bool joins = end >= 0 && source.mid(end, start - end).trimmed().isEmpty();
        if (joins) {
            literals.last() += text;
        } else {
            literals.append(text);
        }
        end = after;
    };
    qsizetype i = 0;
    while (i < source.size()) {
        if (source.mid(i, 2) == u"//") {
            i = std::max(source.indexOf(u'\n', i), i + 1);
        } else if (source.mid(i, 3) == u"R\"(") {
            const qsizetype close = source.indexOf(QStringLiteral(")\""), i);
            if (close < 0) {
                break;
            }
            take(i, source.mid(i + 3, close - i - 3), close + 2);
            i = close + 2;
        } else if (source[i] == u'\'' && i + 2 < source.size() && (i == 0 || !source[i - 1].isLetterOrNumber())) {
            i += source[i + 1] == u'\\' ? 4 : 3; // a character
        } else if (source[i] == u'"') {
            const qsizetype start = i;
            QString text;
            for (++i; i < source.size() && source[i] != u'"';) {
                qsizetype length = 1;
                if (source[i] == u'\\' && i + 1 < source.size()) {
                    text += escaped(source, i + 1, length);
                    i += 1 + length;
                } else {
                    text += source[i++];
                }
            }
            take(start, text, ++i);
        } else {
            ++i;
        }
    }
    return literals;
}

void ProgramTexts::addSource(const QString& source)
{
    for (const QString& literal : literalsOf(source)) {
        m_texts.insert(plain(literal));
    }
}

bool ProgramTexts::holdsSentence(const QString& text) const
{
    const QString sentence = plain(text);
    return std::ranges::any_of(m_texts, [&](const QString& whole) {
        return sentence.size() > 3 && (whole.startsWith(sentence + u' ') || whole.contains(u' ' + sentence + u' ') ||
                                       whole.endsWith(u' ' + sentence));
    });
}

QString ProgramTexts::plain(QString text)
{
    static const QRegularExpression mark(QStringLiteral("&(?=\\w)"));
    static const QRegularExpression lineEnd(QStringLiteral("[\\r\\n\\t]+"));
    return text.remove(mark).replace(lineEnd, QStringLiteral(" ")).trimmed();
}

} // namespace documents
