#pragma once

#include "cli/Console.h"
#include "cli/Failure.h"

#include <exception>
#include <string>
#include <string_view>

namespace cli {

// Why a command, or a part of it, did not do what it was asked for.
struct Ending
{
    Exit exit = Exit::Done;
    std::string_view kind; // one word, for scripts
    std::string sentence;
    std::string remedy; // may be empty
};

// What an exception means; null means nothing is wrong.
[[nodiscard]] Ending endingOf(const std::exception_ptr& cause);

[[nodiscard]] Json jsonOf(const Ending& ending);

// On standard error.
void tell(const Ending& ending, Console& console);

} // namespace cli
