#pragma once

#include <optional>
#include <span>
#include <string>

// What a program answers on its standard output instead of opening a window.
namespace app {

// The answer to --help or --version, whichever comes first; both count wherever they stand. Nothing for arguments that
// hold neither: then the program starts. The arguments are those behind the program's name, the answer is ASCII.
[[nodiscard]] std::optional<std::string> answerToCommandLine(std::span<const char* const> arguments);

} // namespace app
