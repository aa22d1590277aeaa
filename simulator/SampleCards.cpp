#include "simulator/SampleCards.h"

#include <algorithm>

namespace simulator {

// The numbers are nobody's: account numbers of zeros are not given out, and no authority goes by ZZ.
std::span<const SampleCard> sampleCards()
{
    static const std::vector<SampleCard> cards = {
        {.name = "credit",
         .meaning = "a payment card, tracks 1 and 2",
         .tracks = {{1, TrackFormat::Track1, "B0000000000000000^SAMPLE/CARD A             ^99120000000000000000"},
                    {2, TrackFormat::Track2Iso, "0000000000000000=99120000000000000000"}}},
        {.name = "bank",
         .meaning = "a bank card, all three tracks",
         .tracks = {{1, TrackFormat::Track1, "B0000000000000000^SAMPLE/BANK B             ^99120000000000000000"},
                    {2, TrackFormat::Track2Iso, "0000000000000000=99120000000000000000"},
                    {3, TrackFormat::Track3Iso,
                     "010000000000000000==0000000000000000000000000000000000=0=0000=00000000"}}},
        {.name = "licence",
         .meaning = "a driver licence, track 3 with a start sentinel of its own",
         .isIso = false,
         .tracks = {{1, TrackFormat::Track1, "ZZNOWHERE^SAMPLE$LICENCE$C^1 EXAMPLE STREET^"},
                    {2, TrackFormat::Track2Iso, "00000000000000000=991219000101="},
                    {3, TrackFormat::Track3Aamva,
                     "!00000      D               1000000BRNBLU                              "}}},
        {.name = "seven-bit",
         .meaning = "tracks 2 and 3 in the letters of track 1",
         .tracks = {{1, TrackFormat::Track1, "SAMPLE SEVEN BIT CARD"},
                    {2, TrackFormat::Track2SevenBit, "TRACK TWO: 7 BITS (A CHARACTER)"},
                    {3, TrackFormat::Track3SevenBit, "TRACK THREE, #$'*-./0123456789<=>[]_"}}},
    };
    return cards;
}

const SampleCard* findSampleCard(std::string_view name)
{
    const std::span<const SampleCard> cards = sampleCards();
    const auto card = std::ranges::find(cards, name, &SampleCard::name);
    return card == cards.end() ? nullptr : &*card;
}

} // namespace simulator
