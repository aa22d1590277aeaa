#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace documents {

// The texts that the program's sources hold: what stands between quotation marks in them, neighbours joined as the
// compiler joins them, escapes resolved.
class ProgramTexts final
{
public:
    void addSource(const QString& source);
    void addText(const QString& text) { m_texts.insert(plain(text)); }

    // Whether one of the texts is this one. Letters that are marked for the keyboard, blanks at the ends and the ends
    // of lines do not count.
    [[nodiscard]] bool holds(const QString& text) const { return m_texts.contains(plain(text)); }
    // Whether it is a line of one of them, or the beginning of one that ends a sentence.
    [[nodiscard]] bool holdsSentence(const QString& text) const;

private:
    [[nodiscard]] static QString plain(QString text);

    QSet<QString> m_texts;
};

// All literals of one source, in their order.
[[nodiscard]] QStringList literalsOf(const QString& source);

} // namespace documents
