#include "tables/Parameters.h"

#include "text/HexText.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tables {

namespace {

constexpr std::uint32_t kFirstPair = 0x083;
constexpr std::uint32_t kLastPair = 0x113;

using enum ConfigurationRow;

// Address, factory value, notes, controls, and who may write it. What an address means bit by bit stands in
// BitFields.cpp.
constexpr auto kParameters_CFG = std::to_array<Parameter>({
    {"001", "00", "Parameter ID and Mod Flag (Read only)", Identification, Access::ReadOnly},
    {"013", "95", "Track enables / ID Flag", BitFields},
    {"014", "63", "Track data send flags", BitFields},
    {"015", "40", "Start Sentinel Character for Track 2 - 7 Bit", Character},
    {"016", "21", "Start Sentinel Character for Track 3 - CADL", Character},
    {"017", "2B", "Start Sentinel Character for Track 3 - ISO/ABA", Character},
    {"018", "23", "Start Sentinel Character for Track 3 - AAMVA", Character},
    {"019", "26", "Start Sentinel Character for Track 3 - 7 Bit", Character},
    {"01A", "12", "Char Output Delay [Enter as decimal] (x512 uS)", Decimal},
    {"01B", "32", "Special Char Delay [Enter as decimal] (x512 uS)", Decimal},
    {"01C", "00", "Pre Card Data code (hex value sent)", Hex},
    {"01D", "00", "Pre Card Data char (Scan codes sent)", Hex},
    {"01E", "00", "Post Card Data char (Scan codes sent)", Hex},
    {"01F", "00", "Post Card Data code (hex value sent)", Hex},
    {"020", "00", "Pre Track char (Scan codes sent)", Hex},
    {"021", "00", "Post Track char (Scan codes sent)", Hex},
    {"022", "0D", "Terminating Char + per track/per card flag", Terminator},
    {"023", "00", "Pre response data code value (hex value sent)", Hex},
    {"024", "57", "Command Prefix Character", Character},
    {"025", "0D", "Post response data char value (scan codes)", Hex},
    {"026", "00", "Post response data code (hex values sent)", Hex},
    {"027", "4D", "Command prefix", Character},
    {"028", "57", "Device ID", Character},
    {"029", "0D", "Command Terminator", Hex},
    {"02A", "00", "Hardware Track mapping [map tracks 1 2 3 to:]", BitFields},
    {"02C", "00", "Table ID Number (to identify config parameters)", Hex},
    {"02D", "00", "Table Version Number (to identify config parameters)", Hex},
});

// Parameters of the other table that a file may bring into this one: they can be looked at there and 080 edited.
constexpr auto kGuests_CFG = std::to_array<Parameter>({
    {"080", {}, {}, BitFields},
    {"081", {}, {}, IdByte0, Access::ReadOnly},
    {"082", {}, {}, IdByte1, Access::ReadOnly},
});

// The characters in the reader's own order: the control codes 00 and 1C to 1F, 21 to 40, 5B to 60, 7B to 7E, and last
// the lower-case letters.
constexpr auto kParameters_KB = std::to_array<Parameter>({
    {"080", "00", "Keyboard flags"},
    {"081-082", "00-00", "Keyboard ID Bytes"},
    {"083-084", "20-03", "00"},
    {"085-086", "20-2B", "1C"},
    {"087-088", "20-1B", "1D"},
    {"089-08A", "A0-07", "1E"},
    {"08B-08C", "A0-0C", "1F"},
    {"08D-08E", "80-02", "21, USA KB key -> ! "},
    {"08F-090", "80-28", "22, USA KB key -> \" "},
    {"091-092", "80-04", "23, USA KB key -> # "},
    {"093-094", "80-05", "24, USA KB key -> $ "},
    {"095-096", "80-06", "25, USA KB key -> % "},
    {"097-098", "80-08", "26, USA KB key -> & "},
    {"099-09A", "00-28", "27, USA KB key -> ' "},
    {"09B-09C", "80-0A", "28, USA KB key -> ( "},
    {"09D-09E", "80-0B", "29, USA KB key -> ) "},
    {"09F-0A0", "80-09", "2A, USA KB key -> * "},
    {"0A1-0A2", "80-0D", "2B, USA KB key -> + "},
    {"0A3-0A4", "00-33", "2C, USA KB key -> , "},
    {"0A5-0A6", "00-0C", "2D, USA KB key -> - "},
    {"0A7-0A8", "00-34", "2E, USA KB key -> . "},
    {"0A9-0AA", "00-35", "2F, USA KB key -> / "},
    {"0AB-0AC", "00-0B", "30, USA KB key -> 0 "},
    {"0AD-0AE", "00-02", "31, USA KB key -> 1 "},
    {"0AF-0B0", "00-03", "32, USA KB key -> 2 "},
    {"0B1-0B2", "00-04", "33, USA KB key -> 3 "},
    {"0B3-0B4", "00-05", "34, USA KB key -> 4 "},
    {"0B5-0B6", "00-06", "35, USA KB key -> 5 "},
    {"0B7-0B8", "00-07", "36, USA KB key -> 6 "},
    {"0B9-0BA", "00-08", "37, USA KB key -> 7 "},
    {"0BB-0BC", "00-09", "38, USA KB key -> 8 "},
    {"0BD-0BE", "00-0A", "39, USA KB key -> 9 "},
    {"0BF-0C0", "80-27", "3A, USA KB key -> : "},
    {"0C1-0C2", "00-27", "3B, USA KB key -> ; "},
    {"0C3-0C4", "80-33", "3C, USA KB key -> < "},
    {"0C5-0C6", "00-0D", "3D, USA KB key -> = "},
    {"0C7-0C8", "80-34", "3E, USA KB key -> > "},
    {"0C9-0CA", "80-35", "3F, USA KB key -> ? "},
    {"0CB-0CC", "80-03", "40, USA KB key -> @ "},
    {"0CD-0CE", "00-1A", "5B, USA KB key -> [ "},
    {"0CF-0D0", "00-2B", "5C, USA KB key -> \\ "},
    {"0D1-0D2", "00-1B", "5D, USA KB key -> ] "},
    {"0D3-0D4", "80-07", "5E, USA KB key -> ^ "},
    {"0D5-0D6", "80-0C", "5F, USA KB key -> _ "},
    {"0D7-0D8", "00-29", "60, USA KB key -> ` "},
    {"0D9-0DA", "80-1A", "7B, USA KB key -> { "},
    {"0DB-0DC", "80-2B", "7C, USA KB key -> | "},
    {"0DD-0DE", "80-1B", "7D, USA KB key -> } "},
    {"0DF-0E0", "80-29", "7E, USA KB key -> ~ "},
    {"0E1-0E2", "00-1E", "61, USA KB key -> a "},
    {"0E3-0E4", "00-30", "62, USA KB key -> b "},
    {"0E5-0E6", "00-2E", "63, USA KB key -> c "},
    {"0E7-0E8", "00-20", "64, USA KB key -> d "},
    {"0E9-0EA", "00-12", "65, USA KB key -> e "},
    {"0EB-0EC", "00-21", "66, USA KB key -> f "},
    {"0ED-0EE", "00-22", "67, USA KB key -> g "},
    {"0EF-0F0", "00-23", "68, USA KB key -> h "},
    {"0F1-0F2", "00-17", "69, USA KB key -> i "},
    {"0F3-0F4", "00-24", "6A, USA KB key -> j "},
    {"0F5-0F6", "00-25", "6B, USA KB key -> k "},
    {"0F7-0F8", "00-26", "6C, USA KB key -> l "},
    {"0F9-0FA", "00-32", "6D, USA KB key -> m "},
    {"0FB-0FC", "00-31", "6E, USA KB key -> n "},
    {"0FD-0FE", "00-18", "6F, USA KB key -> o "},
    {"0FF-100", "00-19", "70, USA KB key -> p "},
    {"101-102", "00-10", "71, USA KB key -> q "},
    {"103-104", "00-13", "72, USA KB key -> r "},
    {"105-106", "00-1F", "73, USA KB key -> s "},
    {"107-108", "00-14", "74, USA KB key -> t "},
    {"109-10A", "00-16", "75, USA KB key -> u "},
    {"10B-10C", "00-2F", "76, USA KB key -> v "},
    {"10D-10E", "00-11", "77, USA KB key -> w "},
    {"10F-110", "00-2D", "78, USA KB key -> x "},
    {"111-112", "00-15", "79, USA KB key -> y "},
    {"113-114", "00-2C", "7A, USA KB key -> z "},
});

const Parameter* find(std::span<const Parameter> parameters, std::string_view address)
{
    const auto found = std::ranges::find(parameters, address, &Parameter::address);
    return found == parameters.end() ? nullptr : &*found;
}

} // namespace

std::span<const Parameter> parameters_CFG()
{
    return kParameters_CFG;
}

std::span<const Parameter> parameters_KB()
{
    return kParameters_KB;
}

bool isParameter_CFG(std::string_view address)
{
    return find(kParameters_CFG, address) != nullptr;
}

ConfigurationRow configurationRow(std::string_view address)
{
    const Parameter* const own = find(kParameters_CFG, address);
    const Parameter* const found = own != nullptr ? own : find(kGuests_CFG, address);
    return found != nullptr ? found->row : ConfigurationRow::None;
}

bool isWritten_CFG(std::string_view address)
{
    const Parameter* const own = find(kParameters_CFG, address);
    const Parameter* const found = own != nullptr ? own : find(kGuests_CFG, address);
    return found == nullptr || found->access == Access::ReadWrite;
}

KeyboardRow keyboardRow(std::string_view address)
{
    if (address == "080") {
        return KeyboardRow::Flags;
    }
    const std::string_view first = address.substr(0, 3);
    if (text::decimalNumber(first) == 81) {
        return KeyboardRow::IdBytes;
    }
    const std::uint32_t number = text::hexNumber(first);
    return number >= kFirstPair && number <= kLastPair ? KeyboardRow::Pair : KeyboardRow::None;
}

} // namespace tables
