#include "simulator/SampleCards.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

// The numbers are nobody's: account numbers of zeros are not given out, and no authority goes by ZZ. Sentinels are
// those that the reader is set to at the factory.
constexpr std::array<SampleCard, 4> kCards = {{
    {"credit", "a payment card, tracks 1 and 2",
     "%B0000000000000000^SAMPLE/CARD A             ^99120000000000000000?"
     ";0000000000000000=99120000000000000000?\r"},
    {"bank", "a bank card, all three tracks",
     "%B0000000000000000^SAMPLE/BANK B             ^99120000000000000000?"
     ";0000000000000000=99120000000000000000?"
     "+010000000000000000==0000000000000000000000000000000000=0=0000=00000000?\r"},
    {"licence", "a driver licence, track 3 with a start sentinel of its own",
     "%ZZNOWHERE^SAMPLE$LICENCE$C^1 EXAMPLE STREET^?"
     ";00000000000000000=991219000101=?"
     "#!00000      D               1000000BRNBLU                              ?\r"},
    {"seven-bit", "tracks 2 and 3 in the letters of track 1",
     "%SAMPLE SEVEN BIT CARD?"
     "@TRACK TWO: 7 BITS (A CHARACTER)?"
     "&TRACK THREE, #$'*-./0123456789<=>[]_?\r"},
}};

} // namespace

std::span<const SampleCard> sampleCards()
{
    return kCards;
}

const SampleCard* findSampleCard(std::string_view name)
{
    const auto* const card = std::ranges::find(kCards, name, &SampleCard::name);
    return card == kCards.end() ? nullptr : card;
}

} // namespace simulator
