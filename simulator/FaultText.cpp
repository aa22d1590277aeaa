#include "simulator/FaultText.h"

#include "simulator/EscapedText.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace simulator {

namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view withoutBlanksAround(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// The position of the quotation mark that closes the text beginning at 1, or npos.
std::size_t closingMark(std::string_view text)
{
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '\\') {
            ++at;
        } else if (text[at] == '"') {
            return at;
        }
    }
    return std::string_view::npos;
}

// Takes a value in quotation marks off the beginning of rest.
Verdict takeQuoted(std::string_view& rest, std::string& value)
{
    const std::size_t close = closingMark(rest);
    if (close == std::string_view::npos) {
        return {"a quotation mark is not closed"};
    }
    if (Verdict verdict = unescape(rest.substr(1, close - 1), value); !verdict) {
        return verdict;
    }
    rest.remove_prefix(close + 1);
    if (!rest.empty() && kBlanks.find(rest.front()) == std::string_view::npos) {
        return {"a blank is missing behind a closing quotation mark"};
    }
    return {};
}

// Takes a bare value, up to the next blank, off the beginning of rest.
Verdict takeBare(std::string_view& rest, std::string& value)
{
    value = rest.substr(0, rest.find_first_of(kBlanks));
    rest.remove_prefix(value.size());
    if (value.empty()) {
        return {"a value is missing behind '='; an empty one is written \"\""};
    }
    if (value.find_first_of("\"\\") != std::string::npos) {
        return {"a value with blanks, quotation marks or backslashes stands between quotation marks"};
    }
    return {};
}

Verdict takeFault(std::string_view& rest, FaultText& fault)
{
    fault.name = rest.substr(0, rest.find_first_of(" \t="));
    rest.remove_prefix(fault.name.size());
    if (rest.empty() || rest.front() != '=') {
        return {};
    }
    rest.remove_prefix(1);
    fault.value.emplace();
    return rest.starts_with('"') ? takeQuoted(rest, *fault.value) : takeBare(rest, *fault.value);
}

} // namespace

std::string inMarks(std::string_view name)
{
    std::string text("'");
    return text.append(name).append("'");
}

Verdict splitFaultRule(std::string_view rule, std::string& command, std::vector<FaultText>& faults)
{
    const std::size_t colon = rule.find(':');
    if (colon == std::string_view::npos) {
        return {"there is no ':' between a command and its faults"};
    }
    command = withoutBlanksAround(rule.substr(0, colon));
    if (command.empty()) {
        return {"the command before the ':' is missing"};
    }
    std::string_view rest = withoutBlanksAround(rule.substr(colon + 1));
    if (rest.empty()) {
        return {"the fault behind the ':' is missing"};
    }
    while (!rest.empty()) {
        FaultText fault;
        if (Verdict verdict = takeFault(rest, fault); !verdict) {
            return verdict;
        }
        faults.push_back(std::move(fault));
        rest = withoutBlanksAround(rest);
    }
    return {};
}

} // namespace simulator
