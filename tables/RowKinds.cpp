#include "tables/RowKinds.h"

#include "tables/HexText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

namespace tables {

namespace {

struct AddressKind
{
    std::string_view address;
    ConfigurationRow kind;
};

constexpr std::array kConfigurationRows = std::to_array<AddressKind>({
    {"001", ConfigurationRow::Identification},
    {"013", ConfigurationRow::BitFields},
    {"014", ConfigurationRow::BitFields},
    {"015", ConfigurationRow::Character},
    {"016", ConfigurationRow::Character},
    {"017", ConfigurationRow::Character},
    {"018", ConfigurationRow::Character},
    {"019", ConfigurationRow::Character},
    {"01A", ConfigurationRow::Decimal},
    {"01B", ConfigurationRow::Decimal},
    {"01C", ConfigurationRow::Hex},
    {"01D", ConfigurationRow::Hex},
    {"01E", ConfigurationRow::Hex},
    {"01F", ConfigurationRow::Hex},
    {"020", ConfigurationRow::Hex},
    {"021", ConfigurationRow::Hex},
    {"022", ConfigurationRow::Terminator},
    {"023", ConfigurationRow::Hex},
    {"024", ConfigurationRow::Character},
    {"025", ConfigurationRow::Hex},
    {"026", ConfigurationRow::Hex},
    {"027", ConfigurationRow::Character},
    {"028", ConfigurationRow::Character},
    {"029", ConfigurationRow::Hex},
    {"02A", ConfigurationRow::BitFields},
    {"02C", ConfigurationRow::Hex},
    {"02D", ConfigurationRow::Hex},
    {"080", ConfigurationRow::BitFields},
    {"081", ConfigurationRow::IdByte0},
    {"082", ConfigurationRow::IdByte1},
});

constexpr std::uint32_t kFirstPair = 0x083;
constexpr std::uint32_t kLastPair = 0x113;

} // namespace

ConfigurationRow configurationRow(std::string_view address)
{
    const auto* const found = std::ranges::find(kConfigurationRows, address, &AddressKind::address);
    return found == std::end(kConfigurationRows) ? ConfigurationRow::None : found->kind;
}

KeyboardRow keyboardRow(std::string_view address)
{
    if (address == "080") {
        return KeyboardRow::Flags;
    }
    const std::string_view first = address.substr(0, 3);
    if (decimalNumber(first) == 81) {
        return KeyboardRow::IdBytes;
    }
    const std::uint32_t number = hexNumber(first);
    return number >= kFirstPair && number <= kLastPair ? KeyboardRow::Pair : KeyboardRow::None;
}

} // namespace tables
