#pragma once

#include <span>
#include <string_view>

namespace simulator {

// A card that nobody owns, and what a reader with factory defaults on a US keyboard types when it is swiped.
struct SampleCard
{
    std::string_view name;
    std::string_view meaning;
    // Windows-1252. Each track stands between its sentinels; Enter, a carriage return, ends the card.
    std::string_view keys;
};

[[nodiscard]] std::span<const SampleCard> sampleCards();

// Nullptr when there is no card of this name.
[[nodiscard]] const SampleCard* findSampleCard(std::string_view name);

} // namespace simulator
