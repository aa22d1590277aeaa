#include "FolderTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

bool makeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

QStringList treeOf(const QString& folder)
{
    QStringList tree;
    for (const QFileInfo& info : QDir(folder).entryInfoList(
             QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name)) {
        tree += info.fileName();
        if (info.isDir() && !info.isSymLink()) {
            for (const QString& below : treeOf(info.filePath())) {
                tree += info.fileName() + QLatin1Char('/') + below;
            }
        }
    }
    return tree;
}

QByteArray targetOf(const QString& link)
{
    QByteArray target(4096, '\0');
    const ssize_t size = ::readlink(QFile::encodeName(link).constData(), target.data(), 4096);
    return target.left(size < 0 ? 0 : size);
}

bool makeLink(const QByteArray& target, const QString& link)
{
    return ::symlink(target.constData(), QFile::encodeName(link).constData()) == 0;
}

ForeignTerminal::ForeignTerminal()
    : m_master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
{
    char name[64] = "";
    if (::grantpt(m_master) == 0 && ::unlockpt(m_master) == 0 && ::ptsname_r(m_master, name, sizeof name) == 0) {
        m_path = name;
    }
}

ForeignTerminal::~ForeignTerminal()
{
    ::close(m_master);
}
