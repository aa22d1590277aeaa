#pragma once

#include <filesystem>
#include <string>

namespace platform {

// A file's name in the program's own text, Windows-1252 and one byte a character. What the code page lacks is a '?',
// and so is what is no text at all, byte for byte: good enough to show, not to open. Takes any name and throws nothing.
[[nodiscard]] std::string fileNameText(const std::filesystem::path& name);

} // namespace platform
