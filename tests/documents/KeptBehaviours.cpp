#include "tests/documents/KeptBehaviours.h"

#include "tests/support/SourceFile.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace documents {

namespace {

const QString kName = QStringLiteral("kb-[a-z0-9-]+");

QString textOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QSet<QString> namesBelow(const QStringList& folders)
{
    QSet<QString> names;
    for (const QString& folder : folders) {
        QDirIterator files(testsupport::sourceFile(folder), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            if (!file.contains(QStringLiteral("/tests/documents/"))) {
                names |= namesInComments(textOf(file));
            }
        }
    }
    return names;
}

} // namespace

QSet<QString> namesInComments(const QString& source)
{
    static const QRegularExpression comment(QStringLiteral("//[^\\n]*"));
    static const QRegularExpression name(QStringLiteral("\\b") + kName);
    QSet<QString> names;
    for (auto comments = comment.globalMatch(source); comments.hasNext();) {
        for (auto found = name.globalMatch(comments.next().captured()); found.hasNext();) {
            names.insert(found.next().captured());
        }
    }
    return names;
}

QStringList namesOfEntries(const QString& document)
{
    static const QRegularExpression entry(QStringLiteral("^`(") + kName + QStringLiteral(")`$"),
                                          QRegularExpression::MultilineOption);
    QStringList names;
    for (auto found = entry.globalMatch(document); found.hasNext();) {
        names.append(found.next().captured(1));
    }
    return names;
}

QStringList faultsOfEntries(const QString& document)
{
    static const QRegularExpression start(QStringLiteral("^### "), QRegularExpression::MultilineOption);
    static const QRegularExpression whole(
        QStringLiteral("\\A[^\\n]+\\n\\n`kb-[a-z0-9-]+`\\n\\n\\*\\*You can lose:\\*\\* .+?\\n\\n\\*\\*Do this:\\*\\*.+?"
                       "\\n\\n\\*\\*Why:\\*\\*.+"),
        QRegularExpression::DotMatchesEverythingOption);
    QStringList faults;
    for (const QString& entry : document.split(start).mid(1)) {
        if (!whole.match(entry).hasMatch()) {
            faults.append(QStringLiteral("An entry is not name, loss, remedy, reason: ") + entry.section(u'\n', 0, 0));
        }
    }
    return faults;
}

QStringList KeptBehaviours::faults() const
{
    QStringList faults;
    const QSet<QString> all = QSet<QString>(told.begin(), told.end()) | inCode | atTests;
    QStringList names(all.begin(), all.end());
    names.sort();
    for (const QString& name : std::as_const(names)) {
        if (told.count(name) != 1) {
            faults.append(QStringLiteral("%1 has %2 entries in the document").arg(name).arg(told.count(name)));
        }
        if (!inCode.contains(name)) {
            faults.append(name + QStringLiteral(" stands at no code"));
        }
        if (!atTests.contains(name)) {
            faults.append(name + QStringLiteral(" stands at no test"));
        }
    }
    return faults;
}

KeptBehaviours keptBehaviours()
{
    const QStringList rooms = {QStringLiteral("app"),   QStringLiteral("tables"), QStringLiteral("device"),
                               QStringLiteral("files"), QStringLiteral("report"), QStringLiteral("platform"),
                               QStringLiteral("text"),  QStringLiteral("widgets")};
    return {.told = namesOfEntries(textOf(testsupport::sourceFile(QStringLiteral("docs/kept-behaviours.md")))),
            .inCode = namesBelow(rooms),
            .atTests = namesBelow({QStringLiteral("tests")})};
}

} // namespace documents
