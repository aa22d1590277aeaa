#pragma once

#include "files/KeyboardLayouts.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace app {

// Looks a keyboard ID up in the program's list of layouts, which is read afresh each time, and brings language up to
// date. Returns the new caption of lblLanguage, or nothing when the label stays as it is.
[[nodiscard]] std::optional<std::string> lookUpLanguage(const std::filesystem::path& programFolder,
                                                        std::string_view KeyboardLanguageId,
                                                        files::KeyboardLanguage& language);

} // namespace app
