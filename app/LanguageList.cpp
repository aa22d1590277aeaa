#include "app/LanguageList.h"

#include "platform/ReplaceFile.h"

namespace app {

std::optional<std::string> lookUpLanguage(const std::filesystem::path& programFolder,
                                          std::string_view KeyboardLanguageId, files::KeyboardLanguage& language)
{
    const auto list = platform::readFile(programFolder / "Languages.txt");
    const auto bytes = list ? std::optional<std::string_view>(list.value()) : std::nullopt;
    return files::readLayoutList(bytes, KeyboardLanguageId, language);
}

} // namespace app
