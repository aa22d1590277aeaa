#pragma once

#include <string_view>

// What must hold for every input whatever. Each function stops the program with a message on standard error at the
// first thing that does not; the fuzz targets and the run over the committed seeds share them.
namespace fuzz {

void checkConfigurationFile(std::string_view bytes);
void checkKeyboardLanguageFile(std::string_view bytes);
void checkLayoutList(std::string_view bytes);

} // namespace fuzz
