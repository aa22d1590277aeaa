#pragma once

#include "report/ReportText.h"
#include "report/SummaryFacts.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// What both summaries have in common, to the letter. Everything else is each report's own, even where it looks alike.
namespace report {

// The text at the right end of a field of the given width; a longer text stays whole.
[[nodiscard]] std::string rightAligned(std::string_view text, std::size_t width);

// The product's name and the firmware version, and the date straight behind them.
void writeHeading(ReportText& report, const SummaryFacts& facts);

// What the dump shows for an address at which the reader has no parameter.
constexpr std::string_view kUndefined = "**";

// The rows of the dump: sixteen addresses a row in two groups of eight, from the row that starts at firstRow to the one
// that starts at lastRow. `cell` gives the text to show for an address, of any length.
void writeDumpRows(ReportText& report, std::uint32_t firstRow, std::uint32_t lastRow,
                   const std::function<std::string(std::uint32_t address)>& cell);

// The note that explains the tags of addresses.
void writeAddressNote(ReportText& report);

} // namespace report
