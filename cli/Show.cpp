#include "cli/Commands.h"
#include "cli/Settings.h"
#include "cli/Utf8.h"
#include "cli/Words.h"
#include "tables/BitFields.h"
#include "tables/Parameters.h"
#include "text/HexText.h"

#include <nlohmann/json.hpp>

#include <span>

namespace cli {

namespace {

namespace fields = tables::fields;

struct Field
{
    std::uint8_t mask;
    std::string caption;
    std::vector<std::pair<std::string, std::string>> options; // bits and meaning
};

std::string trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string()
                                           : std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

Field fieldOf(const tables::BitField& field)
{
    Field known{.mask = field.mask, .caption = trimmed(field.frameCaption), .options = {}};
    int index = 0;
    for (const tables::BitOption& option : field.options) {
        const std::string bits = option.wholeValue.empty() ? text::hexTwoDigits(tables::withOption(field, 0, index))
                                                           : std::string(option.wholeValue);
        known.options.emplace_back(bits, trimmed(option.caption));
        ++index;
    }
    return known;
}

bool isFlagsOfPair(const Parameter& parameter)
{
    return parameter.table == Table::KeyboardLanguage && parameter.row.size() > 3 &&
           parameter.row.starts_with(parameter.address) &&
           tables::keyboardRow(parameter.row) == tables::KeyboardRow::Pair;
}

void addFields(std::vector<Field>& list, std::span<const tables::BitField* const> known, std::string_view address)
{
    for (const tables::BitField* const field : known) {
        if (address.empty() || field->address == address) {
            list.push_back(fieldOf(*field));
        }
    }
}

std::vector<Field> fieldsOf(const Parameter& parameter)
{
    std::vector<Field> list;
    addFields(list, parameter.table == Table::Configuration ? fields::options_CFG() : fields::keyboardFlags_KB(),
              parameter.address);
    for (const tables::BitChecks& checks : fields::checks_CFG()) {
        if (checks.address != parameter.address) {
            continue;
        }
        for (const tables::BitCheck* const check : checks.checks) {
            list.push_back({.mask = check->mask,
                            .caption = std::string(check->caption),
                            .options = {{text::hexTwoDigits(check->mask), trimmed(check->toolTip)}}});
        }
    }
    if (isFlagsOfPair(parameter)) {
        addFields(list, fields::shiftFlags_KB(), {});
    }
    return list;
}

// What kind of value it is.
std::string kindOf(const Parameter& parameter)
{
    if (parameter.table == Table::KeyboardLanguage) {
        if (parameter.row.size() == 3) {
            return "bits";
        }
        if (tables::keyboardRow(parameter.row) == tables::KeyboardRow::IdBytes) {
            return parameter.row.starts_with(parameter.address) ? "first byte of the keyboard's identification"
                                                                : "second byte of the keyboard's identification";
        }
        return isFlagsOfPair(parameter) ? "shift flags of the key" : "scan code of the key";
    }
    switch (tables::configurationRow(parameter.address)) {
    case tables::ConfigurationRow::Identification:
        return "identification, read only";
    case tables::ConfigurationRow::BitFields:
        return "bits";
    case tables::ConfigurationRow::Character:
        return "a character, by its code";
    case tables::ConfigurationRow::Decimal:
        return "a delay in units of 0.512 milliseconds";
    case tables::ConfigurationRow::Terminator:
        return "a code in the lower seven bits, and where it is sent in the highest";
    default:
        return "a byte";
    }
}

void printParameter(const Parameter& parameter, Console& console)
{
    console.print(parameter.address + "  " + toHarmlessUtf8(parameter.notes));
    console.print("  Table:         " + std::string(nameOf(parameter.table)) +
                  (parameter.row.size() > 3 ? ", row " + std::string(parameter.row) : std::string()));
    console.print("  Value:         " + kindOf(parameter));
    console.print("  Factory value: " + text::hexTwoDigits(parameter.factory));
    for (const std::string& words : wordsOf(parameter, {})) {
        console.print("    the report:  " + toHarmlessUtf8(words));
    }
    // The window's editor and its report name some bits of the keyboard parameters in opposite ways, so each of them is
    // named as the one whose words they are.
    for (const Field& field : fieldsOf(parameter)) {
        console.print("  Bits " + text::hexTwoDigits(field.mask) + ":       " + field.caption + " (in the editor)");
        for (const auto& [bits, meaning] : field.options) {
            console.print("                 " + bits + " = " + meaning);
        }
    }
}

Json jsonOf(const Parameter& parameter)
{
    Json json = {{"address", parameter.address},
                 {"table", shortNameOf(parameter.table)},
                 {"row", parameter.row},
                 {"notes", toUtf8(parameter.notes)},
                 {"value", kindOf(parameter)},
                 {"factory", text::hexTwoDigits(parameter.factory)},
                 {"read_only", parameter.isReadOnly},
                 {"factory_words", Json::array()},
                 {"fields", Json::array()}};
    for (const std::string& words : wordsOf(parameter, {})) {
        json["factory_words"].push_back(toUtf8(words));
    }
    for (const Field& field : fieldsOf(parameter)) {
        Json options = Json::array();
        for (const auto& [bits, meaning] : field.options) {
            options.push_back({{"bits", bits}, {"meaning", meaning}});
        }
        json["fields"].push_back(
            {{"mask", text::hexTwoDigits(field.mask)}, {"caption", field.caption}, {"options", std::move(options)}});
    }
    return json;
}

} // namespace

Exit show(const Arguments& arguments, Console& console)
{
    Json list = Json::array();
    if (arguments.words.empty()) {
        for (const Parameter& parameter : parameters()) {
            if (arguments.tables.holds(parameter.table)) {
                console.print(parameter.address + "  " + text::hexTwoDigits(parameter.factory) + "  " +
                              toHarmlessUtf8(parameter.notes));
                if (console.isJson()) {
                    list.push_back(jsonOf(parameter));
                }
            }
        }
    }
    for (const std::string& word : arguments.words) {
        const Parameter& parameter = *findParameter(readAddress(word, false));
        printParameter(parameter, console);
        list.push_back(jsonOf(parameter));
    }
    Json json = document(arguments, Exit::Done);
    json["parameters"] = std::move(list);
    console.answer(json);
    return Exit::Done;
}

} // namespace cli
