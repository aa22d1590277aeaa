#pragma once

#include <QString>
#include <QStringList>

namespace documents {

// A document for users, as the tests look at it. Lines that are wrapped count as one; a table's row is a line of its
// own.
class Document final
{
public:
    explicit Document(QString text)
        : m_text(std::move(text))
    {}

    [[nodiscard]] const QString& text() const { return m_text; }

    // Paragraphs, titles, entries of lists and rows of tables, without blocks and pieces of code, without the targets
    // of links, and without the numbers of steps.
    [[nodiscard]] QStringList prose() const;
    // What stands between double quotes in the prose; single characters, which are keys, left out.
    [[nodiscard]] QStringList quotedTexts() const;
    // The lines of the blocks of code.
    [[nodiscard]] QStringList codeLines() const;
    // The pieces of code within the prose.
    [[nodiscard]] QStringList codePieces() const;
    // The targets of all links and pictures, as they are written.
    [[nodiscard]] QStringList targets() const;
    // The places that links can lead to: of every title.
    [[nodiscard]] QStringList places() const;

private:
    QString m_text;
};

// The documents that every user gets: their names, such as "docs/guide.md".
[[nodiscard]] QStringList userDocuments();

// A file of the source tree as text; fails the running test when it is not there.
[[nodiscard]] QString readSource(const QString& name);

} // namespace documents
