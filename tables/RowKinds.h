#pragma once

#include <string_view>

// Which controls edit a row, chosen by its address.
namespace tables {

enum class ConfigurationRow {
    Identification, // 001: read only
    BitFields,      // option buttons and check boxes alone
    Character,
    Decimal,
    Hex,
    Terminator, // 022: a hexadecimal byte and an option for its highest bit
    IdByte0,    // 081 and 082 come into this table from a file only; read only
    IdByte1,
    None, // no parameter of the table
};

[[nodiscard]] ConfigurationRow configurationRow(std::string_view address);

enum class KeyboardRow {
    Flags,   // 080
    IdBytes, // 081-082
    Pair,    // shift flags and scan code, 083-084 to 113-114
    None,
};

// Judges pairs by the first three characters of their address.
[[nodiscard]] KeyboardRow keyboardRow(std::string_view address);

} // namespace tables
