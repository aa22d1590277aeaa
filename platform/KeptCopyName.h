#pragma once

#include <filesystem>

namespace platform {

// As many copies of one file as are ever kept beside each other.
constexpr int kMostKeptCopies = 100;

// How the copy of a file is called that is kept while the file is written in place: shop.tlc.unfinished, and behind the
// first one shop.tlc.unfinished-2 and so on.
[[nodiscard]] std::filesystem::path keptCopyName(const std::filesystem::path& file, int number);

} // namespace platform
