#pragma once

#include <chrono>
#include <string>

namespace cli {

// The user's own calendar and clock.
[[nodiscard]] std::chrono::year_month_day today();
[[nodiscard]] std::string timeStamp();    // "20261121-101530", for names of files
[[nodiscard]] std::string logTimeStamp(); // "2026-11-21 10:15:30"

} // namespace cli
