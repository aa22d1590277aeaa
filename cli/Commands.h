#pragma once

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/Failure.h"

// The commands. Each prints its answer and says how it ended; what keeps it from its end is thrown as Failure or
// device::LinkError.
namespace cli {

[[nodiscard]] Exit info(const Arguments& arguments, Console& console);
[[nodiscard]] Exit retrieve(const Arguments& arguments, Console& console);
[[nodiscard]] Exit verify(const Arguments& arguments, Console& console);
[[nodiscard]] Exit diff(const Arguments& arguments, Console& console);
[[nodiscard]] Exit update(const Arguments& arguments, Console& console);
[[nodiscard]] Exit get(const Arguments& arguments, Console& console);
[[nodiscard]] Exit set(const Arguments& arguments, Console& console);
[[nodiscard]] Exit summary(const Arguments& arguments, Console& console);
[[nodiscard]] Exit show(const Arguments& arguments, Console& console);
[[nodiscard]] Exit testRead(const Arguments& arguments, Console& console);
[[nodiscard]] Exit doctor(const Arguments& arguments, Console& console);
[[nodiscard]] Exit batch(const Arguments& arguments, Console& console);

// The head of every JSON document.
[[nodiscard]] Json document(const Arguments& arguments, Exit exit);

} // namespace cli
