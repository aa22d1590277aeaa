#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

// The bit fields of the parameter bytes that are edited by option buttons and check boxes, described once, as data. The
// field editors build their controls from these descriptions and rebuild the bytes with the functions below.
namespace tables {

// One option button of a field. A field is a number of its own, counted from its lowest bit; bits 5-6 of a byte holding
// 60 are the setting 3.
struct BitOption
{
    std::string_view caption;
    std::string_view toolTip;         // empty = none
    std::uint8_t setting;             // what the option makes of the field
    std::string_view wholeValue = {}; // not empty: the option stands for this value text of the whole byte instead
};

// A field that one array of option buttons chooses. Arrays and frames of the keyboard parameters exist in more than one
// editor and are given here without the suffix that tells them apart.
struct BitField
{
    std::string_view address; // of the parameter; empty for the flags byte of every scan code pair
    std::string_view array;   // name of the option array
    std::string_view frame;   // name of the frame around it
    std::string_view frameCaption;
    std::uint8_t mask;
    std::span<const BitOption> options; // by index
    bool besideTheLast = false;         // its frame stands beside that of the field before, not below
};

// A field of one bit, chosen by a check box.
struct BitCheck
{
    std::string_view box; // name of the check box
    std::string_view caption;
    std::string_view toolTip;
    std::uint8_t mask;
};

// The check boxes of a byte, in one frame above its option arrays.
struct BitChecks
{
    std::string_view address; // of the parameter
    std::string_view frame;
    std::string_view frameCaption;
    std::span<const BitCheck* const> checks; // from top to bottom
};

// The option that a value text shows: the one that stands for the whole text, else the one with the field's setting.
// None when no option has that setting. A text that is not hexadecimal reads as 0.
[[nodiscard]] std::optional<int> selectedOption(const BitField& field, std::string_view value);

// The byte after an option was chosen; bits outside the field stay as they are, except under an option that stands for
// the whole byte. An index without option changes nothing.
[[nodiscard]] std::uint8_t withOption(const BitField& field, std::uint8_t byte, int index);

[[nodiscard]] bool isSet(const BitCheck& check, std::uint8_t byte);
[[nodiscard]] std::uint8_t withCheck(const BitCheck& check, std::uint8_t byte, bool checked);

namespace fields {

// 013: what the reader does with each track, and which cards it reads.
extern const BitField radTk1;
extern const BitField radTk2;
extern const BitField radTk3;
extern const BitField radID;

// 014: what is sent of a card's data, and what on a reading error.
extern const BitCheck chkSendSS;
extern const BitCheck chkSendEs;
extern const BitCheck chkSendLRC;
extern const BitCheck chkSendLC;
extern const BitCheck chkSendNBR;
extern const BitField radSendEr;

// 022: where the terminating character goes.
extern const BitField radSendTermAfter;

// 02A: which track of the card is reported as which.
extern const BitField radTrkMap;

// 080: the keyboard flags.
extern const BitField radP080A1;
extern const BitField radP080A23;
extern const BitField radP080E;
extern const BitField radP080S;

// The keys to hold down, in the flags byte of a scan code pair.
extern const BitField radShiftA1;
extern const BitField radShiftA2;
extern const BitField radShiftA3;
extern const BitField radShiftA4;

// Those of the Configuration editor, each byte's from top to bottom: the editor is built from these.
[[nodiscard]] std::span<const BitField* const> options_CFG();
[[nodiscard]] std::span<const BitChecks> checks_CFG();
// Those of the Keyboard Language editor: of the keyboard flags, and of a pair's shift flags.
[[nodiscard]] std::span<const BitField* const> keyboardFlags_KB();
[[nodiscard]] std::span<const BitField* const> shiftFlags_KB();

} // namespace fields

} // namespace tables
