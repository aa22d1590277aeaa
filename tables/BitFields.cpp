#include "tables/BitFields.h"

#include "text/HexText.h"

#include <array>
#include <cstddef>

namespace tables {

namespace {

constexpr std::string_view kRequiredTip = "Track enabled AND required";

// Kept behaviour kb-spelling:
// The third caption of the first two tracks is spelled as users of the program know it.
constexpr std::array<BitOption, 3> kTrackOptions = {{
    {.caption = "Disabled", .toolTip = {}, .setting = 0},
    {.caption = "Enabled", .toolTip = {}, .setting = 1},
    {.caption = "Requried", .toolTip = kRequiredTip, .setting = 2},
}};

constexpr std::array<BitOption, 3> kTrack3Options = {{
    {.caption = "Disabled", .toolTip = {}, .setting = 0},
    {.caption = "Enabled", .toolTip = {}, .setting = 1},
    {.caption = "Required", .toolTip = kRequiredTip, .setting = 2},
}};

constexpr std::array<BitOption, 2> kCardTypeOptions = {{
    {.caption = "Read only ISO/ABA cards", .toolTip = "ISO/ABA are standard credit/ATM cards", .setting = 0},
    {.caption = "Read all card types", .toolTip = "Read driver licenses and ISO/ABA card", .setting = 1},
}};

// Sending an 'E' takes both bits; the reader knows no meaning for the upper one alone.
constexpr std::array<BitOption, 3> kSendErrorOptions = {{
    {.caption = "Don't send any  data if card error", .toolTip = {}, .setting = 0},
    {.caption = "Don't send bad track data", .toolTip = {}, .setting = 1},
    {.caption = "Send 'E' for each bad track", .toolTip = {}, .setting = 3},
}};

constexpr std::array<BitOption, 3> kTerminatorOptions = {{
    {.caption = "after the card data", .toolTip = {}, .setting = 0},
    {.caption = "after each track", .toolTip = {}, .setting = 1},
    {.caption = "Don't send", .toolTip = {}, .setting = 0, .wholeValue = "00"},
}};

constexpr std::array<BitOption, 6> kTrackMapOptions = {{
    {.caption = "0 =   1   2   3  ", .toolTip = "don't remap tracks", .setting = 0},
    {.caption = "1 =   3   2   1  ", .toolTip = "swap tracks 1 and 3", .setting = 1},
    {.caption = "2 =   2   1   3  ", .toolTip = "swap tracks 1 and 2", .setting = 2},
    {.caption = "3 =   1   3   2  ", .toolTip = "swap tracks 2 and 3", .setting = 3},
    {.caption = "4 =   2   3   1  ", .toolTip = "remap 1 to 2, 2 to 3 and 3 to 1", .setting = 4},
    {.caption = "5 =   3   1   2  ", .toolTip = "remap 1 to 3, 2 to 1 and 3 to 2", .setting = 5},
}};

constexpr std::array<BitOption, 2> kAltCodeOptions = {{
    {.caption = "ANSI, ALT+0+ASCII Code", .toolTip = {}, .setting = 0},
    {.caption = "OEM, ALT+ASCII Code", .toolTip = {}, .setting = 1},
}};

constexpr std::array<BitOption, 4> kAltUseOptions = {{
    {.caption = "No Alt Codes", .toolTip = {}, .setting = 0},
    {.caption = "Alt only if no scan code in table", .toolTip = {}, .setting = 1},
    {.caption = "Alt for all but fixed keys", .toolTip = {}, .setting = 2},
    {.caption = "Alt for all keys", .toolTip = {}, .setting = 3},
}};

constexpr std::array<BitOption, 2> kScanCodeSourceOptions = {{
    {.caption = "Use internal US keyboard scan codes", .toolTip = {}, .setting = 0},
    {.caption = "Use table stored in parameter area", .toolTip = {}, .setting = 1},
}};

constexpr std::array<BitOption, 2> kLockKeyOptions = {{
    {.caption = "Keyboard uses Caps Lock", .toolTip = {}, .setting = 0},
    {.caption = "Keyboard uses Shift Lock", .toolTip = {}, .setting = 1},
}};

constexpr std::array<BitOption, 2> kCapsOptions = {{
    {.caption = "non-Alpha or (a-z)", .toolTip = {}, .setting = 0},
    {.caption = "key affected by Caps Lock/upper case flag", .toolTip = {}, .setting = 1},
}};

constexpr std::array<BitOption, 2> kCtrlOptions = {{
    {.caption = "Does not need Ctrl Key", .toolTip = {}, .setting = 0},
    {.caption = "Needs Ctrl key", .toolTip = {}, .setting = 1},
}};

constexpr std::array<BitOption, 2> kAltGrOptions = {{
    {.caption = "Does not need AltGr Key", .toolTip = {}, .setting = 0},
    {.caption = "Needs AltGr key", .toolTip = {}, .setting = 1},
}};

constexpr std::array<BitOption, 2> kShiftOptions = {{
    {.caption = "Does not need Shift Key", .toolTip = {}, .setting = 0},
    {.caption = "Needs Shift key", .toolTip = {}, .setting = 1},
}};

// The place value of the field's lowest bit.
constexpr unsigned unitOf(std::uint8_t mask)
{
    return mask & (~static_cast<unsigned>(mask) + 1U);
}

constexpr std::uint8_t withBits(std::uint8_t byte, std::uint8_t mask, unsigned bits)
{
    return static_cast<std::uint8_t>((byte & ~static_cast<unsigned>(mask)) | (bits & mask));
}

} // namespace

// Kept behaviour kb-no-option: a setting that no option offers selects none.
std::optional<int> selectedOption(const BitField& field, std::string_view value)
{
    const unsigned setting = (text::hexByte(value) & field.mask) / unitOf(field.mask);
    std::optional<int> selected;
    int index = 0;
    for (const BitOption& option : field.options) {
        if (!option.wholeValue.empty() && option.wholeValue == value) {
            return index;
        }
        if (option.wholeValue.empty() && option.setting == setting) {
            selected = index;
        }
        ++index;
    }
    return selected;
}

std::uint8_t withOption(const BitField& field, std::uint8_t byte, int index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= field.options.size()) {
        return byte;
    }
    const BitOption& option = field.options[static_cast<std::size_t>(index)];
    if (!option.wholeValue.empty()) {
        return text::hexByte(option.wholeValue);
    }
    return withBits(byte, field.mask, option.setting * unitOf(field.mask));
}

bool isSet(const BitCheck& check, std::uint8_t byte)
{
    return (byte & check.mask) != 0;
}

std::uint8_t withCheck(const BitCheck& check, std::uint8_t byte, bool checked)
{
    return withBits(byte, check.mask, checked ? check.mask : 0U);
}

namespace fields {

constinit const BitField radTk1 = {"013", "radTk1", "frmTk1", "Track 1", 0x03, kTrackOptions};
constinit const BitField radTk2 = {"013", "radTk2", "frmTk2", "Track 2", 0x0C, kTrackOptions, true};
constinit const BitField radTk3 = {"013", "radTk3", "frmTk3", "Track 3", 0x30, kTrack3Options, true};
constinit const BitField radID = {"013", "radID", "frmReadTypes", "Read cards of type", 0x80, kCardTypeOptions};

constinit const BitCheck chkSendSS = {"chkSendSS", "Start Sentinel",
                                      "Checked = Send Start Sentinel for each track else don't", 0x40};
constinit const BitCheck chkSendEs = {"chkSendEs", "End Sentinel",
                                      "Checked = Send End Sentinel for each track else don't", 0x20};
constinit const BitCheck chkSendLRC = {"chkSendLRC", "LRC", "Checked = Send LRC for each track else don't", 0x10};
constinit const BitCheck chkSendLC = {"chkSendLC", "Lower Case", "Checked = Send data as lowercase else uppercase",
                                      0x04};
constinit const BitCheck chkSendNBR = {"chkSendNBR", "Numeric Keypad",
                                       "Checked = Send numeric keypad else numbers (top-of-keyboard)", 0x08};
constinit const BitField radSendEr = {"014", "radSendEr",      "frmSendError", "Send Error Response",
                                      0x03,  kSendErrorOptions};

constinit const BitField radSendTermAfter = {
    "022", "radSendTermAfter", "frmSendTerm", "Send Terminating Chartacter:", 0x80, kTerminatorOptions};

constinit const BitField radTrkMap = {"02A", "radTrkMap", "frmTrkMap", "Track mapping", 0x07, kTrackMapOptions};

constinit const BitField radP080A1 = {"080", "radP080A1", "frmA1", "KB Flag A1 Values", 0x10, kAltCodeOptions};
constinit const BitField radP080A23 = {"080", "radP080A23", "frmA23", "KB Flag A23 Values", 0x60, kAltUseOptions};
constinit const BitField radP080E = {"080", "radP080E", "frmE", "KB Flag E Value", 0x01, kScanCodeSourceOptions};
constinit const BitField radP080S = {"080", "radP080S", "frmS", "KB Flag S Value", 0x80, kLockKeyOptions};

constinit const BitField radShiftA1 = {"", "radShiftA1", "frmShiftFlagA1", "Shift Flag A1 Values", 0x10, kCapsOptions};
constinit const BitField radShiftA2 = {"", "radShiftA2", "frmShiftFlagA2", "Shift Flag A2 Values", 0x20, kCtrlOptions};
constinit const BitField radShiftA3 = {"", "radShiftA3", "frmShiftFlagA3", "Shift Flag A3 Values", 0x40, kAltGrOptions};
constinit const BitField radShiftA4 = {"", "radShiftA4", "frmShiftFlagA4", "Shift Flag A4 Values", 0x80, kShiftOptions};

namespace {

constexpr auto kSendFlags =
    std::to_array<const BitCheck*>({&chkSendSS, &chkSendEs, &chkSendLRC, &chkSendLC, &chkSendNBR});

constexpr auto kChecks_CFG = std::to_array<BitChecks>({{"014", "frmSendFlags", "Send Flags", kSendFlags}});

constexpr auto kOptions_CFG = std::to_array<const BitField*>({
    &radTk1,
    &radTk2,
    &radTk3,
    &radID,
    &radSendEr,
    &radSendTermAfter,
    &radTrkMap,
    &radP080A1,
    &radP080A23,
    &radP080E,
    &radP080S,
});

constexpr auto kKeyboardFlags_KB = std::to_array<const BitField*>({&radP080A1, &radP080A23, &radP080E, &radP080S});

constexpr auto kShiftFlags_KB = std::to_array<const BitField*>({&radShiftA1, &radShiftA2, &radShiftA3, &radShiftA4});

} // namespace

std::span<const BitField* const> options_CFG()
{
    return kOptions_CFG;
}

std::span<const BitChecks> checks_CFG()
{
    return kChecks_CFG;
}

std::span<const BitField* const> keyboardFlags_KB()
{
    return kKeyboardFlags_KB;
}

std::span<const BitField* const> shiftFlags_KB()
{
    return kShiftFlags_KB;
}

} // namespace fields

} // namespace tables
