#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace simulator {

// How a track is written on a card. The reader types a start sentinel of its own for each; most are parameters.
enum class TrackFormat {
    Track1,         // letters
    Track2Iso,      // digits
    Track2SevenBit, // letters
    Track3Iso,      // digits
    Track3Aamva,    // letters
    Track3SevenBit, // letters
};

struct SampleTrack
{
    int number = 1; // 1 to 3: where on the stripe it is
    TrackFormat format = TrackFormat::Track1;
    std::string_view data; // between its sentinels
};

// A card that nobody owns.
struct SampleCard
{
    std::string_view name;
    std::string_view meaning;
    bool isIso = true; // a card of banks and shops, not a driver licence
    std::vector<SampleTrack> tracks;
};

[[nodiscard]] std::span<const SampleCard> sampleCards();

// Nullptr when there is no card of this name.
[[nodiscard]] const SampleCard* findSampleCard(std::string_view name);

} // namespace simulator
