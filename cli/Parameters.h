#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// The reader's parameters one by one, as the wire knows them. The tables of the window join two to a row where they
// belong together.
namespace cli {

enum class Table { Configuration, KeyboardLanguage };

// Either table, or both.
struct Tables
{
    bool configuration = true;
    bool keyboardLanguage = true;

    [[nodiscard]] bool holds(Table table) const
    {
        return table == Table::Configuration ? configuration : keyboardLanguage;
    }
};

struct Parameter
{
    std::string address; // three upper-case hexadecimal digits
    Table table;
    std::uint8_t factory;
    bool isReadOnly;
    std::string_view row;   // the address of its row: its own, or that of a pair
    std::string_view notes; // of its row
};

// All of them, in the order of their addresses.
[[nodiscard]] const std::vector<Parameter>& parameters();

// Null when the reader has no such parameter.
[[nodiscard]] const Parameter* findParameter(std::string_view address);

// Parameter values by address.
using Values = std::map<std::string, std::uint8_t, std::less<>>;

[[nodiscard]] Values factoryValues(Tables tables);

[[nodiscard]] std::string_view nameOf(Table table);      // "Configuration"
[[nodiscard]] std::string_view shortNameOf(Table table); // "cfg", as --table has it

// Which addresses there are, for a message.
inline constexpr std::string_view kAddressRange =
    "001, 013 to 02A, 02C and 02D in the Configuration table, 080 to 114 in the Keyboard Language table";

} // namespace cli
