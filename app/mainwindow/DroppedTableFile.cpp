#include "app/mainwindow/DroppedTableFile.h"

#include "platform/qt/PathText.h"

#include <QMimeData>
#include <QUrl>

namespace app {

std::optional<DroppedTableFile> droppedTableFile(const QMimeData& dragged)
{
    const QList<QUrl> urls = dragged.urls();
    if (urls.size() != 1 || !urls.constFirst().isLocalFile()) {
        return std::nullopt;
    }
    const QString name = urls.constFirst().toLocalFile();
    if (name.endsWith(QLatin1String(".tlc"), Qt::CaseInsensitive)) {
        return DroppedTableFile{tables::TableId::Configuration, platform::toPath(name)};
    }
    if (name.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive)) {
        return DroppedTableFile{tables::TableId::KeyboardLanguage, platform::toPath(name)};
    }
    return std::nullopt;
}

} // namespace app
