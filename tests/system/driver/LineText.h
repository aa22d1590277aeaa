#pragma once

#include <QString>

// The window driver speaks in lines, so a text that goes in one must not break it: a line feed travels as \n, a
// carriage return as \r, a tab as \t and a backslash as \\. Everything else stands for itself, in UTF-8.
namespace windowdriver {

[[nodiscard]] inline QString inOneLine(QString text)
{
    return text.replace(u'\\', QStringLiteral("\\\\"))
        .replace(u'\n', QStringLiteral("\\n"))
        .replace(u'\r', QStringLiteral("\\r"))
        .replace(u'\t', QStringLiteral("\\t"));
}

// The text that inOneLine() was given. A backslash before any other character stands for that character.
[[nodiscard]] inline QString fromOneLine(const QString& line)
{
    QString text;
    text.reserve(line.size());
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] != u'\\' || i + 1 == line.size()) {
            text += line[i];
            continue;
        }
        const QChar code = line[++i];
        text += code == u'n' ? QChar(u'\n') : code == u'r' ? QChar(u'\r') : code == u't' ? QChar(u'\t') : code;
    }
    return text;
}

} // namespace windowdriver
