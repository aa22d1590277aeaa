#pragma once

#include "files/KeyboardLayouts.h"

#include <string_view>

namespace cli {

// The keyboard layout of an ID, from the list of layouts beside the program or in the system's data folder. Its name is
// "Unknown" when there is no list, and empty when the list does not hold it.
[[nodiscard]] files::KeyboardLanguage layoutOf(std::string_view id);

} // namespace cli
