#include "platform/qt/PathText.h"

#include <QFile>

namespace platform {

QString pathText(const std::filesystem::path& path)
{
#ifdef Q_OS_WIN
    return QString::fromStdWString(path.native());
#else
    return QFile::decodeName(path.c_str());
#endif
}

std::filesystem::path toPath(const QString& name)
{
#ifdef Q_OS_WIN
    return {name.toStdWString()};
#else
    return {QFile::encodeName(name).toStdString()};
#endif
}

} // namespace platform
