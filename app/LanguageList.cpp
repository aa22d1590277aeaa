#include "app/LanguageList.h"

#include "app/ProgramPlace.h"
#include "platform/ReplaceFile.h"

namespace app {

std::optional<std::string> lookUpLanguage(const std::filesystem::path& programFolder,
                                          std::string_view KeyboardLanguageId, files::KeyboardLanguage& language)
{
    for (const std::filesystem::path& place : layoutLists(programFolder)) {
        if (const auto list = platform::readFile(place)) {
            return files::readLayoutList(list.value(), KeyboardLanguageId, language);
        }
    }
    return files::readLayoutList(std::nullopt, KeyboardLanguageId, language);
}

} // namespace app
