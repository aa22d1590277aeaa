#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

// What a summary is made from. All text is one byte a character, in Windows-1252.
namespace report {

// A parameter table as the summaries read it: the value text of the row that holds an address, or empty when no row
// does. Addresses are asked for as three upper-case hexadecimal digits ("01A"). The values are taken as they are: a
// table may hold any text that a file or a dialog put there.
using TableAccess = std::function<std::string(std::string_view address)>;

// What stands around the parameters.
struct SummaryFacts
{
    std::string firmwareVersion{};    // as the reader told it, may be empty
    std::string comment{};            // the comment of the table, its lines separated by CR LF, may be empty
    std::chrono::year_month_day date; // of the day on which the summary is made; has to be a valid one
};

} // namespace report
