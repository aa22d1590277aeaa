#pragma once

#include <QString>

#include <string>
#include <string_view>

// The product's own names and long texts.
namespace app {

inline constexpr std::string_view kProgramTitle = "Teslin Configure";
inline constexpr std::string_view kCompanyName = "Brennic";
// Where the maker offers drivers and help. A placeholder of a reserved domain until the maker names one.
inline constexpr std::string_view kSupportAddress = "https://www.brennic.example/support";

// The lines of the notes on each table, joined by carriage return and line feed; wording and punctuation are kept.
[[nodiscard]] std::string notesOnConfiguration();
[[nodiscard]] std::string notesOnKeyboardLanguage();
// The brief help.
[[nodiscard]] std::string briefHelp();
// What the read-test tab tells the user.
[[nodiscard]] std::string readTestInstruction();
// Told at start-up when no driver file is found.
[[nodiscard]] std::string driverMissing();

} // namespace app
