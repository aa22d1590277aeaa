#pragma once

#include "cli/Parameters.h"
#include "files/TableFile.h"
#include "report/SummaryFacts.h"

#include <string>

namespace cli {

// The rows as a report looks parameters up in them: as in the window's table, the first row that has the address.
[[nodiscard]] report::TableAccess accessTo(Table table, const files::TableFile& rows);

// The report of a table, byte for byte as the window saves it.
[[nodiscard]] std::string reportOf(Table table, const files::TableFile& rows, const report::SummaryFacts& facts);

} // namespace cli
