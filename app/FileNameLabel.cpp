#include "app/FileNameLabel.h"

#include "platform/qt/PathText.h"

namespace app {

FileNameLabel::FileNameLabel(QWidget* parent)
    : QLabel(parent)
{
    setObjectName(QStringLiteral("lblFilename"));
    setTextFormat(Qt::PlainText);
    hide();
}

void FileNameLabel::showFor(tables::Tab tab, const std::filesystem::path& name)
{
    const QString text = platform::pathText(name);
    const QString otherKind = tab == tables::kConfigurationTab ? QStringLiteral(".txt") : QStringLiteral(".tlc");
    setText(text);
    setVisible(!text.isEmpty() && !text.contains(QLatin1Char('*')) && !text.endsWith(otherKind, Qt::CaseInsensitive));
}

} // namespace app
