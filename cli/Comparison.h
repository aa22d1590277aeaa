#pragma once

#include "cli/Console.h"
#include "cli/Parameters.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cli {

// A parameter that is not the same on both sides; nothing where a side does not have it.
struct Difference
{
    const Parameter* parameter;
    std::optional<std::uint8_t> left;
    std::optional<std::uint8_t> right;
};

// In the order of the addresses.
[[nodiscard]] std::vector<Difference> differences(const Values& left, const Values& right);

// With what the reports say of each side.
[[nodiscard]] Json jsonOf(const Difference& difference, const Values& left, const Values& right);

// The same for reading: address, both values, notes, and below them the words.
void print(const Difference& difference, const Values& left, const Values& right, Console& console);

} // namespace cli
