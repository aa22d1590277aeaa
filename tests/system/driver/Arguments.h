#pragma once

#include "tests/system/driver/LineText.h"
#include "tests/system/driver/Refusal.h"

#include <QString>

#include <utility>

namespace windowdriver {

// What stands behind a command's name. Taken from the front; whatever is missing is refused.
class Arguments final
{
public:
    explicit Arguments(QString text)
        : m_text(std::move(text))
    {}

    [[nodiscard]] bool isEmpty() const { return m_text.isEmpty(); }

    [[nodiscard]] QString word(const char* meaning)
    {
        if (m_text.isEmpty()) {
            throw Refusal{QStringLiteral("missing: %1").arg(QLatin1String(meaning))};
        }
        const qsizetype end = m_text.indexOf(u' ');
        QString word = m_text.left(end);
        m_text = end < 0 ? QString() : m_text.mid(end + 1);
        return word;
    }

    [[nodiscard]] int number(const char* meaning)
    {
        const QString text = word(meaning);
        bool isNumber = false;
        const int number = text.toInt(&isNumber);
        if (!isNumber) {
            throw Refusal{QStringLiteral("not a number: %1").arg(text)};
        }
        return number;
    }

    // All that is left, blanks included.
    [[nodiscard]] QString rest() { return fromOneLine(std::exchange(m_text, {})); }

private:
    QString m_text;
};

} // namespace windowdriver
