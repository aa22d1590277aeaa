#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

// The behaviours that look like faults and are kept. Each has a short name, such as kb-double-update, that stands in
// the document for users, in a comment at the code that behaves so, and at the test that pins it.
namespace documents {

struct KeptBehaviours
{
    QStringList told;      // by the document, in its order
    QSet<QString> inCode;  // in comments of the program's sources
    QSet<QString> atTests; // in the tests' sources

    // What is missing, one sentence each; empty when every name stands in all three places, and once in the document.
    [[nodiscard]] QStringList faults() const;
};

// The names in a source text, in its comments only.
[[nodiscard]] QSet<QString> namesInComments(const QString& source);

// The names that have an entry of their own in the document.
[[nodiscard]] QStringList namesOfEntries(const QString& document);

// What an entry lacks of title, loss, remedy and reason, in this order; one sentence each.
[[nodiscard]] QStringList faultsOfEntries(const QString& document);

// As the source tree has it.
[[nodiscard]] KeptBehaviours keptBehaviours();

} // namespace documents
