#include "cli/Comparison.h"

#include "cli/Utf8.h"
#include "cli/Words.h"
#include "text/HexText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <set>

namespace cli {

namespace {

std::string hexText(const std::optional<std::uint8_t>& value)
{
    return value ? text::hexTwoDigits(*value) : "--";
}

Json hexOrNull(const std::optional<std::uint8_t>& value)
{
    return value ? Json(text::hexTwoDigits(*value)) : Json();
}

// The words of one side that the other side does not share.
std::vector<std::string> ownWords(const Difference& difference, bool isLeft, const Values& left, const Values& right)
{
    const std::optional<std::uint8_t>& own = isLeft ? difference.left : difference.right;
    const std::optional<std::uint8_t>& other = isLeft ? difference.right : difference.left;
    if (!own) {
        return {};
    }
    std::vector<std::string> words = wordsOf(*difference.parameter, isLeft ? left : right);
    if (other) {
        const std::vector<std::string> others = wordsOf(*difference.parameter, isLeft ? right : left);
        std::erase_if(words, [&](const std::string& word) { return std::ranges::find(others, word) != others.end(); });
    }
    return words;
}

Json jsonWords(const std::vector<std::string>& words)
{
    Json list = Json::array();
    for (const std::string& word : words) {
        list.push_back(toUtf8(word));
    }
    return list;
}

} // namespace

std::vector<Difference> differences(const Values& left, const Values& right)
{
    std::set<std::string> addresses;
    for (const Values* const side : {&left, &right}) {
        for (const auto& [address, value] : *side) {
            addresses.insert(address);
        }
    }
    const auto valueIn = [](const Values& values, const std::string& address) {
        const auto found = values.find(address);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    };
    std::vector<Difference> list;
    for (const std::string& address : addresses) {
        const Difference difference{
            .parameter = findParameter(address), .left = valueIn(left, address), .right = valueIn(right, address)};
        if (difference.left != difference.right && difference.parameter != nullptr) {
            list.push_back(difference);
        }
    }
    return list;
}

Json jsonOf(const Difference& difference, const Values& left, const Values& right)
{
    return {{"address", difference.parameter->address},
            {"table", shortNameOf(difference.parameter->table)},
            {"notes", toUtf8(difference.parameter->notes)},
            {"left", hexOrNull(difference.left)},
            {"right", hexOrNull(difference.right)},
            {"left_words", jsonWords(ownWords(difference, true, left, right))},
            {"right_words", jsonWords(ownWords(difference, false, left, right))}};
}

void print(const Difference& difference, const Values& left, const Values& right, Console& console)
{
    const Parameter& parameter = *difference.parameter;
    console.print(parameter.address + "  " + console.left(hexText(difference.left)) + " | " +
                  console.right(hexText(difference.right)) + "  " + toHarmlessUtf8(parameter.notes) +
                  (parameter.isReadOnly ? " - no update writes it" : ""));
    for (const std::string& words : ownWords(difference, true, left, right)) {
        console.print(console.left("       < " + toHarmlessUtf8(words)));
    }
    for (const std::string& words : ownWords(difference, false, left, right)) {
        console.print(console.right("       > " + toHarmlessUtf8(words)));
    }
}

} // namespace cli
