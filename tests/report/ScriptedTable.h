#pragma once

#include "report/SummaryFacts.h"

#include <string>
#include <vector>

// Stand-ins for the two parameter tables: rows of address and value, found the way each table finds its rows.
namespace scripted {

struct Row
{
    std::string address;
    std::string value;
};
using Rows = std::vector<Row>;

// Finds the row whose address is exactly the one asked for.
[[nodiscard]] report::TableAccess configurationTable(Rows rows);

// Finds the first row whose address text contains the one asked for: "084" finds "083-084".
[[nodiscard]] report::TableAccess keyboardTable(Rows rows);

[[nodiscard]] Rows defaults_CFG();
[[nodiscard]] Rows defaults_KB();

// The rows with every two-digit value replaced: "7F", or "7F-7F" in a pair row.
[[nodiscard]] Rows filledWith(Rows rows, const std::string& twoDigits);

// The rows with the values of some of them replaced; an address that no row has is an error of the test and aborts it.
[[nodiscard]] Rows withValues(Rows rows, const Rows& values);

} // namespace scripted
