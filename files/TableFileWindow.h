#pragma once

#include "tables/ParamTables.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace files {

// What opening and saving table files needs of the main window.
class TableFileWindow
{
public:
    virtual ~TableFileWindow() = default;

    [[nodiscard]] virtual int currentTab() const = 0;

    // The comment box of a table; line ends are CR LF.
    [[nodiscard]] virtual std::string comments(tables::Tab tab) const = 0;
    virtual void setComments(tables::Tab tab, std::string_view text) = 0;

    // The file last opened or saved of a table; empty, or a pattern with "*", when there is none yet.
    [[nodiscard]] virtual std::filesystem::path rememberedFile(tables::Tab tab) const = 0;
    // Remembers a file and shows its name.
    virtual void rememberFile(tables::Tab tab, const std::filesystem::path& name) = 0;
    // A file's name for a message that also carries the file itself.
    [[nodiscard]] virtual std::string displayName(const std::filesystem::path& name) const = 0;

    virtual void Hide_All() = 0;
    virtual void setEditTitle_CFG(std::string_view title) = 0;
    virtual void EditData_CFG() = 0;
    virtual void EditData_KB() = 0;
    virtual void EnableButtons(bool enabled) = 0;
    virtual void beep() = 0;
};

} // namespace files
