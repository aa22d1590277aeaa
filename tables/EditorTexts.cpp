#include "tables/EditorTexts.h"

#include "text/Dec2Bin.h"
#include "text/HexText.h"
#include "text/PairValue.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace tables {

namespace {

// More than any title shows: the notes of a file may be megabytes.
constexpr std::size_t kMostNotes = 1000;

constexpr double kMicrosecondsPerCount = 512.0;
constexpr double kLargestCount = 255.0;
constexpr std::size_t kDelayWidth = 7;

std::string joined(std::span<const std::string> settings)
{
    std::string text;
    for (const std::string& setting : settings) {
        text += (text.empty() ? "" : " and ") + setting;
    }
    return text;
}

std::string setting(std::string_view address, std::string_view value)
{
    return std::string(address) + "=" + std::string(value);
}

} // namespace

std::string editTitle_CFG(std::string_view address, std::string_view notes)
{
    const std::string title = editTitle_KB(address, notes);
    return title.substr(0, title.find('('));
}

std::string editTitle_KB(std::string_view address, std::string_view notes)
{
    return "<" + std::string(address) + "> " + std::string(notes.substr(0, kMostNotes));
}

std::string binaryText(std::uint8_t value)
{
    return "value in binary is " + text::Dec2Bin(value);
}

std::string binaryText(std::uint8_t first, std::uint8_t second)
{
    return binaryText(first) + " - " + text::Dec2Bin(second);
}

std::string identificationText(std::uint8_t value)
{
    const bool modified = (value & 0x80) != 0;
    return " ID #:" + text::hexTwoDigits(value & 0x7F) + (modified ? " (modified)  " : " (unmodified)  ");
}

std::string idByteText(int number, std::uint8_t value)
{
    return "Byte " + std::to_string(number) + " = " + text::hexTwoDigits(value);
}

bool isLegalDelay(double counts)
{
    return counts >= 0.0 && counts <= kLargestCount;
}

std::string delayText(double counts)
{
    if (!isLegalDelay(counts)) {
        return "*ERROR* (Legal range is 0 to 255)";
    }
    // A typed "-0" is legal but shows no sign.
    const double milliseconds = std::abs(counts) * kMicrosecondsPerCount / 1000.0;
    // to_chars writes a point whatever the user's language.
    std::array<char, 32> digits{};
    const auto written =
        std::to_chars(digits.data(), digits.data() + digits.size(), milliseconds, std::chars_format::fixed, 1);
    const std::string padded = "    " + std::string(digits.data(), written.ptr);
    return std::string(text::rightOf(padded, kDelayWidth)) + " milliseconds";
}

std::vector<std::string> settings_KB(std::string_view address, std::string_view value)
{
    if (address.size() == 3) {
        return {setting(address, value)};
    }
    return {setting(text::leftOf(address, 3), text::leftOf(value, 2)),
            setting(text::rightOf(address, 3), text::rightOf(value, 2))};
}

std::string sendQuestion_CFG(std::string_view address, std::string_view value)
{
    return "Do you want to send this parameter? ( " + setting(address, value) + ")";
}

std::string sendQuestion_KB(std::span<const std::string> settings)
{
    const std::string_view what = settings.size() > 1 ? "these parameters" : "this parameter";
    return "Do you want to send " + std::string(what) + "? ( " + joined(settings) + " )";
}

std::string sentNotice_KB(std::span<const std::string> settings)
{
    return (settings.size() > 1 ? "Sent parameters: " : "Sent parameter: ") + joined(settings);
}

} // namespace tables
