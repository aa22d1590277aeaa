#include "simulator/ParameterMemory.h"

#include "simulator/EscapedText.h"
#include "tables/Parameters.h"
#include "text/HexText.h"

#include <algorithm>
#include <cstddef>

namespace simulator {

namespace {

constexpr std::size_t kAddressLength = 3;
constexpr std::size_t kValueLength = 2;

bool isHexText(std::string_view text, std::size_t length)
{
    return text.size() == length && text.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Takes the next line off the front of a text and gives it without its comment.
std::string_view takeLine(std::string_view& text)
{
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line.substr(0, line.find('#'));
}

Verdict refusal(int line, const std::string& reason)
{
    return {"line " + std::to_string(line) + ": " + reason};
}

} // namespace

ParameterMemory::ParameterMemory()
{
    for (const tables::Parameter& row : tables::parameters_CFG()) {
        m_values.emplace(row.address, row.value);
    }
    for (const tables::Parameter& row : tables::parameters_KB()) {
        m_values.emplace(row.address.substr(0, kAddressLength), row.value.substr(0, kValueLength));
        if (row.address.size() > kAddressLength) {
            m_values.emplace(row.address.substr(kAddressLength + 1), row.value.substr(kValueLength + 1));
        }
    }
    // A reader is delivered set to a layout, here the US one: its ID is 0409.
    m_values["081"] = "04";
    m_values["082"] = "09";
}

std::optional<std::string> ParameterMemory::value(std::string_view address) const
{
    const auto found = m_values.find(address);
    return found == m_values.end() ? std::nullopt : std::optional(found->second);
}

bool ParameterMemory::store(std::string_view address, std::string_view value)
{
    const auto found = m_values.find(address);
    if (found == m_values.end() || !isHexText(value, kValueLength)) {
        return false;
    }
    found->second = text::hexTwoDigits(text::hexByte(value));
    ++m_changes;
    return true;
}

Verdict ParameterMemory::load(std::string_view text)
{
    ParameterMemory loaded = *this;
    std::map<std::string, int> lineOf;
    for (int line = 1; !text.empty(); ++line) {
        const std::string_view setting = trimmed(takeLine(text));
        if (setting.empty()) {
            continue;
        }
        const std::size_t equals = std::min(setting.find('='), setting.size() - 1);
        const std::string_view address = trimmed(setting.substr(0, equals));
        const std::string_view value = trimmed(setting.substr(equals + 1));
        if (!isHexText(address, kAddressLength) || !isHexText(value, kValueLength)) {
            return refusal(line, quoted(setting) + " is not of the form aaa=vv");
        }
        const std::string key = text::hexThreeDigits(text::hexNumber(address));
        if (!loaded.store(key, value)) {
            return refusal(line, "the reader has no parameter " + key);
        }
        if (const auto [first, isNew] = lineOf.emplace(key, line); !isNew) {
            return refusal(line, "parameter " + key + " stands on line " + std::to_string(first->second) + " already");
        }
    }
    *this = std::move(loaded);
    return {};
}

std::string ParameterMemory::text() const
{
    std::string text;
    for (const auto& [address, value] : m_values) {
        text.append(address).append("=").append(value).append("\n");
    }
    return text;
}

} // namespace simulator
