#pragma once

#include "report/SummaryFacts.h"

#include <string>

namespace report {

// The report that tells every parameter of the Configuration table in words, and ends in a dump of their values. Its
// lines end in CR LF, the last one too. Never fails: a value that is missing or not hexadecimal reads as 0 in the words
// and is shown as it is in the dump. A start sentinel or command character is put between its quotes as the one byte it
// is, so the report may hold any byte, the NUL included.
[[nodiscard]] std::string summary_CFG(const TableAccess& table, const SummaryFacts& facts);

} // namespace report
