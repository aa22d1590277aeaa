#include "app/mainwindow/FileNameLabel.h"

#include "platform/qt/PathText.h"

namespace app {

FileNameLabel::FileNameLabel(QWidget* parent)
    : widgets::ElidedLabel(Qt::ElideMiddle, parent)
{
    setObjectName(QStringLiteral("lblFilename"));
    hide();
}

void FileNameLabel::showFor(tables::TableId table, const std::filesystem::path& name)
{
    const QString text = platform::pathText(name);
    const QString otherKind = table == tables::TableId::Configuration ? QStringLiteral(".txt") : QStringLiteral(".tlc");
    setText(text);
    setVisible(!text.isEmpty() && !text.contains(QLatin1Char('*')) && !text.endsWith(otherKind, Qt::CaseInsensitive));
}

} // namespace app
