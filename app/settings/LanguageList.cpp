#include "app/settings/LanguageList.h"

#include "app/settings/ProgramFolders.h"
#include "platform/ReplaceFile.h"

#include <system_error>

namespace app {

std::optional<std::string> lookUpLanguage(const std::filesystem::path& programFolder,
                                          std::string_view KeyboardLanguageId, files::KeyboardLanguage& language)
{
    for (const std::filesystem::path& place : layoutLists(programFolder)) {
        // One that is there counts alone, even when it cannot be read.
        std::error_code unknown;
        if (std::filesystem::exists(place, unknown)) {
            const auto list = platform::readFile(place);
            return files::readLayoutList(list ? std::optional<std::string_view>(list.value()) : std::nullopt,
                                         KeyboardLanguageId, language);
        }
    }
    return files::readLayoutList(std::nullopt, KeyboardLanguageId, language);
}

} // namespace app
