#pragma once

#include <filesystem>
#include <string>

namespace platform {

// A file's name in the program's own text, Windows-1252 and one byte a character. A letter that the code page lacks is
// a
// '?', and so is each byte of a name that is no text at all: good enough to show, not to open.
[[nodiscard]] std::string fileNameText(const std::filesystem::path& name);

} // namespace platform
