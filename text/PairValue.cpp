#include "text/PairValue.h"

#include "text/HexText.h"

#include <algorithm>

namespace text {

std::string_view leftOf(std::string_view text, std::size_t count)
{
    return text.substr(0, count);
}

std::string_view rightOf(std::string_view text, std::size_t count)
{
    return text.substr(text.size() - std::min(count, text.size()));
}

PairValue pairValue(std::string_view text)
{
    return {.first = hexByte(leftOf(text, 2)), .second = hexByte(rightOf(text, 2))};
}

std::string pairText(const PairValue& pair)
{
    return hexTwoDigits(pair.first) + "-" + hexTwoDigits(pair.second);
}

} // namespace text
