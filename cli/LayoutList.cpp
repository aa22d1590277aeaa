#include "cli/LayoutList.h"

#include "platform/ProgramPath.h"
#include "platform/ReplaceFile.h"

#include <filesystem>
#include <optional>
#include <system_error>

namespace cli {

namespace {

std::optional<std::string> layoutList()
{
    const std::filesystem::path folder = platform::programPath().parent_path();
    for (const char* const place : {"", TESLIN_DATA_FOLDER "/teslin-tools", TESLIN_DATA_FOLDER "/teslin-configure"}) {
        // One that is there counts alone, even when it cannot be read.
        const std::filesystem::path list = folder / place / "Languages.txt";
        std::error_code unknown;
        if (std::filesystem::exists(list, unknown)) {
            const auto bytes = platform::readFile(list);
            return bytes ? std::optional(bytes.value()) : std::nullopt;
        }
    }
    return std::nullopt;
}

} // namespace

files::KeyboardLanguage layoutOf(std::string_view id)
{
    files::KeyboardLanguage language;
    const std::optional<std::string> list = layoutList();
    static_cast<void>(
        files::readLayoutList(list ? std::optional<std::string_view>(*list) : std::nullopt, id, language));
    return language;
}

} // namespace cli
