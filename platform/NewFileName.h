#pragma once

#include <optional>
#include <string>
#include <string_view>

// The names of files that are being written and do not stand in their place yet: hidden, with the number of the process
// that writes them, so that a later save can tell those that nobody finishes any more.
namespace platform {

[[nodiscard]] std::string newFileName(unsigned long process, int number);

// The process by whose number a file has such a name; nothing for every other name.
[[nodiscard]] std::optional<unsigned long> writerOf(std::string_view name);

} // namespace platform
