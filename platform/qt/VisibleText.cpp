#include "platform/qt/VisibleText.h"

#include "platform/qt/AnsiText.h"
#include "text/AnsiText.h"

#include <cstddef>
#include <cstdint>

namespace platform {

namespace {

constexpr char16_t kControlPictures = 0x2400;
constexpr char16_t kDeletePicture = 0x2421;
constexpr char16_t kHyphen = 0x2010;
constexpr char16_t kPrivate = 0xE000;

constexpr char16_t kDelete = 0x7F;
constexpr char16_t kSoftHyphen = 0xAD; // drawn only where a line wraps

constexpr bool isOpenByte(char16_t character)
{
    return character >= 0x80 && character < 0xA0;
}

char16_t standIn(char16_t character)
{
    if (character < u' ') {
        return static_cast<char16_t>(kControlPictures + character);
    }
    if (character == kDelete) {
        return kDeletePicture;
    }
    if (character == kSoftHyphen) {
        return kHyphen;
    }
    return isOpenByte(character) ? static_cast<char16_t>(kPrivate + character) : character;
}

char16_t meaning(char16_t character)
{
    if (character >= kControlPictures && character < kControlPictures + u' ') {
        return static_cast<char16_t>(character - kControlPictures);
    }
    if (character == kDeletePicture) {
        return kDelete;
    }
    if (character == kHyphen) {
        return kSoftHyphen;
    }
    return character >= kPrivate && isOpenByte(static_cast<char16_t>(character - kPrivate))
               ? static_cast<char16_t>(character - kPrivate)
               : character;
}

bool isLineEnd(QChar character)
{
    return character == QChar::LineFeed || character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
}

} // namespace

QString toVisible(std::string_view ansi)
{
    QString text;
    text.reserve(static_cast<qsizetype>(ansi.size()));
    for (std::size_t at = 0; at < ansi.size(); ++at) {
        if (ansi.substr(at, 2) == "\r\n") {
            text += QChar::LineFeed;
            ++at;
        } else {
            text += QChar(standIn(text::ansiToUnicode(static_cast<std::uint8_t>(ansi[at]))));
        }
    }
    return text;
}

std::string fromVisible(const QString& text)
{
    QString meant;
    meant.reserve(text.size());
    for (const QChar character : text) {
        if (isLineEnd(character)) {
            meant += QLatin1String("\r\n");
        } else {
            meant += QChar(meaning(character.unicode()));
        }
    }
    return toAnsi(meant);
}

} // namespace platform
