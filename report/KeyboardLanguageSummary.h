#pragma once

#include "report/SummaryFacts.h"

#include <string>

namespace report {

// The report that tells the keyboard flags and the 73 keys of the Keyboard Language table in words, and ends in a dump
// of their values. Its lines end in CR LF, the last one too. Never fails: a value that is missing or not hexadecimal
// reads as 0 in the words and is shown as it is in the lists.
//
// The table answers either address of a pair with the pair's text ("20-03"). After an update of the reader it knows
// each pair by its second address only; the report then shows nothing for the first ones.
[[nodiscard]] std::string summary_KB(const TableAccess& table, const SummaryFacts& facts);

} // namespace report
