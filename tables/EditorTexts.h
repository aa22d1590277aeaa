#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The texts of the two field editors.
namespace tables {

// The title of a row beyond the end of the table.
inline constexpr std::string_view kPastEndOfList = "<past end of list> ";

// What to enter into a box: its tool tip and, where it has one, its label.
inline constexpr std::string_view kHexPrompt = "enter a hex value from 00 to FF";
inline constexpr std::string_view kCharPrompt = "enter a single character";
inline constexpr std::string_view kDecPrompt = "enter decimal value between 0 and 255";
inline constexpr std::string_view kScanCodeLabel = "Scan code";

// The tool tip of a line that shows a value nobody can edit.
inline constexpr std::string_view kReadOnlyTip = "This is a Read-Only Value";

// "<01A> Char Output Delay [Enter as decimal] ": address and name of the row. The Configuration title ends before its
// first "(", so that it shows the name without the remark.
[[nodiscard]] std::string editTitle_CFG(std::string_view address, std::string_view notes);
[[nodiscard]] std::string editTitle_KB(std::string_view address, std::string_view notes);

// The status text of a byte, and of the two bytes of a pair: "value in binary is 0010 0000 - 0000 0011".
[[nodiscard]] std::string binaryText(std::uint8_t value);
[[nodiscard]] std::string binaryText(std::uint8_t first, std::uint8_t second);

// The read-only lines: " ID #:05 (modified)  " of 001, "Byte 0 = 3F" of the keyboard identification.
[[nodiscard]] std::string identificationText(std::uint8_t value);
[[nodiscard]] std::string idByteText(int number, std::uint8_t value);

// A delay in counts of 512 microseconds: "    9.2 milliseconds", or the error text outside 0 to 255.
[[nodiscard]] bool isLegalDelay(double counts);
[[nodiscard]] std::string delayText(double counts);

// What is written to the reader for a Keyboard Language row: "080=00", or the two halves of a pair, each as
// address=value.
[[nodiscard]] std::vector<std::string> settings_KB(std::string_view address, std::string_view value);

// The questions before a row is sent, and the notice after a Keyboard Language row went out.
[[nodiscard]] std::string sendQuestion_CFG(std::string_view address, std::string_view value);
[[nodiscard]] std::string sendQuestion_KB(std::span<const std::string> settings);
[[nodiscard]] std::string sentNotice_KB(std::span<const std::string> settings);

} // namespace tables
