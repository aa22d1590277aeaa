#pragma once

#include <chrono>

namespace platform {

// The local calendar.
class Clock
{
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual std::chrono::year_month_day today() const = 0;
};

} // namespace platform
