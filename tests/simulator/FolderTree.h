#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// What a test needs to lay out files and links, and to see what has become of them.
[[nodiscard]] bool makeFile(const QString& path, const QByteArray& content);
[[nodiscard]] bool makeLink(const QByteArray& target, const QString& link);
[[nodiscard]] QByteArray contentOf(const QString& path);
[[nodiscard]] QByteArray targetOf(const QString& link);  // as it is written in it; empty when there is no link
[[nodiscard]] QStringList treeOf(const QString& folder); // all that is below, links not followed, as paths from it

// A pseudo-terminal of somebody else.
class ForeignTerminal final
{
public:
    ForeignTerminal();
    ~ForeignTerminal();
    ForeignTerminal(const ForeignTerminal&) = delete;
    ForeignTerminal& operator=(const ForeignTerminal&) = delete;

    [[nodiscard]] QByteArray path() const { return m_path; } // empty when there was none to be had

private:
    int m_master;
    QByteArray m_path;
};
