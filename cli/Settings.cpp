#include "cli/Settings.h"

#include "cli/Failure.h"
#include "tables/BitFields.h"
#include "text/HexText.h"

#include <algorithm>
#include <array>
#include <bit>

namespace cli {

namespace {

constexpr std::size_t kAddressLength = 3;
constexpr std::size_t kValueLength = 2;

bool isHex(std::string_view text, std::size_t length)
{
    return text.size() == length && text.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

std::uint8_t readValue(std::string_view address, std::string_view text)
{
    if (!isHex(text, kValueLength)) {
        throw Failure(Exit::Usage,
                      std::string(address) + "=" + std::string(text) + ": a value is two hexadecimal digits, 00 to FF");
    }
    return text::hexByte(text);
}

constexpr std::array kFields = {&tables::fields::radTk1, &tables::fields::radTk2, &tables::fields::radTk3,
                                &tables::fields::radSendEr, &tables::fields::radTrkMap};

std::string settingsOf(const tables::BitField& field)
{
    std::string list;
    for (const tables::BitOption& option : field.options) {
        list += (list.empty() ? "" : ", ") + std::to_string(option.setting);
    }
    return list;
}

} // namespace

std::string readAddress(std::string_view text, bool isForced)
{
    if (!isHex(text, kAddressLength)) {
        throw Failure(Exit::Usage, "\"" + std::string(text) +
                                       "\" is no address: an address is three hexadecimal digits, such as 01A");
    }
    std::string address = text::hexThreeDigits(text::hexNumber(text));
    if (findParameter(address) == nullptr && !isForced) {
        throw Failure(Exit::Usage, "The reader has no parameter " + address + "; it has " + std::string(kAddressRange));
    }
    return address;
}

Values readSettings(const std::vector<std::string>& texts, bool isForced)
{
    Values settings;
    for (const std::string& text : texts) {
        const std::size_t equals = text.find('=');
        if (equals == std::string::npos) {
            throw Failure(Exit::Usage,
                          "\"" + text + "\" is no setting: a setting is an address, =, and a value, such as 01A=20");
        }
        std::string address = readAddress(std::string_view(text).substr(0, equals), isForced);
        const std::uint8_t value = readValue(address, std::string_view(text).substr(equals + 1));
        const Parameter* const parameter = findParameter(address);
        if (parameter != nullptr && parameter->isReadOnly) {
            throw Failure(Exit::Usage, address + " is read only; the reader itself keeps it");
        }
        if (const auto objection = objectionTo(address, value); objection && !isForced) {
            throw Failure(Exit::Usage, *objection, "--force writes it all the same.");
        }
        if (!settings.emplace(address, value).second) {
            throw Failure(Exit::Usage, address + " is given twice");
        }
    }
    return settings;
}

std::optional<std::string> objectionTo(std::string_view address, std::uint8_t value)
{
    for (const tables::BitField* const field : kFields) {
        const std::string digits = text::hexTwoDigits(value);
        if (field->address == address && !tables::selectedOption(*field, digits)) {
            const unsigned setting = (value & field->mask) >> std::countr_zero(field->mask);
            return std::string(address) + "=" + digits + ": " + std::string(field->frameCaption) + " would be " +
                   std::to_string(setting) + ", and the reader knows " + settingsOf(*field);
        }
    }
    return std::nullopt;
}

} // namespace cli
