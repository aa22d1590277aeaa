#pragma once

#include <span>
#include <string_view>

// The catalogue of the reader's parameters: everything that knows a parameter looks it up here. The bit fields of a
// byte stand in BitFields.h, under the same address.
namespace tables {

// Which controls edit a row of the Configuration table.
enum class ConfigurationRow {
    Identification, // 001: a line that cannot be edited
    BitFields,      // option buttons and check boxes alone
    Character,
    Decimal,
    Hex,
    Terminator, // 022: a hexadecimal byte and an option for its highest bit
    IdByte0,    // 081 and 082 come into this table from a file only; lines that cannot be edited
    IdByte1,
    None, // no parameter of the table
};

// Which controls edit a row of the Keyboard Language table.
enum class KeyboardRow {
    Flags,   // 080
    IdBytes, // 081-082
    Pair,    // shift flags and scan code, 083-084 to 113-114
    None,
};

enum class Access {
    ReadWrite,
    ReadOnly, // an update of the Configuration table leaves it out
};

struct Parameter
{
    std::string_view address; // "013", or a pair "083-084"
    std::string_view value;   // as the reader is delivered: "95", or a pair "20-03": shift flags, then scan code
    std::string_view notes;   // what the row is, in words
    ConfigurationRow row = ConfigurationRow::None; // of the Configuration table's parameters
    Access access = Access::ReadWrite;
};

// The Configuration table in address order: 001 and 013 to 02D, without 02B.
[[nodiscard]] std::span<const Parameter> parameters_CFG();

// The Keyboard Language table in address order: 080, the identification pair 081-082 and pairs up to 113-114.
[[nodiscard]] std::span<const Parameter> parameters_KB();

// True when the Configuration table has this address; letters in upper case only, as its look-up has it.
[[nodiscard]] bool isParameter_CFG(std::string_view address);

// The controls of a Configuration row, whose address may come from a file.
[[nodiscard]] ConfigurationRow configurationRow(std::string_view address);

// False for what an update of the Configuration table never writes: the reader's own identification and, where a file
// brought it there, that of its keyboard.
[[nodiscard]] bool isWritten_CFG(std::string_view address);

// The controls of a Keyboard Language row; judged by the first three characters of its address.
[[nodiscard]] KeyboardRow keyboardRow(std::string_view address);

} // namespace tables
