#pragma once

#include "cli/Parameters.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Single settings as a user types them, "01A=20".
namespace cli {

// The address in its one form: "01a" gives "01A". Throws Failure for what is none, and, unless forced, for an address
// at which the reader has no parameter.
[[nodiscard]] std::string readAddress(std::string_view text, bool isForced);

// All settings, by address. Throws Failure for what cannot be read, for a read-only parameter, for an address given
// twice, and, unless forced, for addresses and values that the reader is not known to have.
[[nodiscard]] Values readSettings(const std::vector<std::string>& texts, bool isForced);

// Why a value makes no sense for a parameter, with those that do; nothing when it does.
[[nodiscard]] std::optional<std::string> objectionTo(std::string_view address, std::uint8_t value);

} // namespace cli
