#pragma once

#include "platform/Clock.h"

#include <QDate>

namespace platform {

class QtClock final : public Clock
{
public:
    [[nodiscard]] std::chrono::year_month_day today() const override
    {
        const QDate date = QDate::currentDate();
        return std::chrono::year(date.year()) / std::chrono::month(static_cast<unsigned>(date.month())) /
               std::chrono::day(static_cast<unsigned>(date.day()));
    }
};

} // namespace platform
