#include "platform/qt/AnsiText.h"

#include "text/AnsiText.h"

#include <QList>

#include <algorithm>

namespace platform {

QString toQString(std::string_view ansi)
{
    QString text(static_cast<qsizetype>(ansi.size()), Qt::Uninitialized);
    std::transform(ansi.begin(), ansi.end(), text.begin(),
                   [](char c) { return QChar(text::ansiToUnicode(static_cast<std::uint8_t>(c))); });
    return text;
}

std::string toAnsi(const QString& text)
{
    std::string ansi;
    const QList<uint> characters = text.toUcs4();
    ansi.reserve(static_cast<std::size_t>(characters.size()));
    for (const uint character : characters) {
        ansi += static_cast<char>(text::unicodeToAnsi(character));
    }
    return ansi;
}

} // namespace platform
