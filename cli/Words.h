#pragma once

#include "cli/Parameters.h"

#include <string>
#include <string_view>
#include <vector>

namespace cli {

// What the reports say of a parameter that has its value in this table, a sentence an entry, in Windows-1252: "Track 1:
// Enabled". Parameters that are not given are taken to have their factory values. Empty where the reports say nothing.
[[nodiscard]] std::vector<std::string> wordsOf(const Parameter& parameter, const Values& values);

} // namespace cli
