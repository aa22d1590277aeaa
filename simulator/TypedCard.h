#pragma once

#include "simulator/ParameterMemory.h"
#include "simulator/SampleCards.h"

#include <string>

namespace simulator {

// What a reader with these parameters types on a US keyboard when the card is swiped, in Windows-1252. It goes by the
// track enables and the card types of 013, the send flags of 014, the start sentinels of 015 to 019, the characters
// before and after card and track of 01C to 021, the terminator of 022 and the track mapping of 02A. Empty when it
// types nothing. The delays are the business of whoever presses the keys.
[[nodiscard]] std::string typedCard(const SampleCard& card, const ParameterMemory& memory);

} // namespace simulator
