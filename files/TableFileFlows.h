#pragma once

#include "files/TableFile.h"
#include "files/TableFileWindow.h"
#include "platform/FileDialogs.h"
#include "platform/MessageBoxes.h"
#include "tables/ParamTables.h"

#include <filesystem>

namespace files {

// Opening and saving the table of the current tab. Any tab but the first means the Keyboard Language table.
class TableFileFlows final
{
public:
    // Everything outlives this object. Dialogs start in the given folder. What has to be written in place is kept in
    // the folder for copies meanwhile, if one is given.
    TableFileFlows(tables::ParamTables& tables, TableFileWindow& window, platform::FileDialogs& dialogs,
                   platform::MessageBoxes& boxes, std::filesystem::path startFolder,
                   std::filesystem::path copyFolder = {});

    // Asks for a file and loads it. Unsaved changes are not asked about. A file that cannot be read changes nothing.
    void OpenTableFile();
    // Loads a file as if it had been chosen in the dialog.
    void openFile(const std::filesystem::path& name);

    // Asks for a name, then whether an existing file may be replaced, and saves.
    void SaveTableFileAs();
    // Saves to the remembered name; asks for one when there is none yet.
    void SaveTable();

    // Writes the table to a file, as replaceFile() does. On failure the user has been told and the result is false.
    [[nodiscard]] bool SaveCurrent(const std::filesystem::path& SelectedFileName);
    // Reads a file into the table and its comment box. False, and everything as it was, when it cannot be read.
    [[nodiscard]] bool LoadCurrent(const std::filesystem::path& SelectedFileName);

private:
    enum class Overwrite { Yes, AnotherName, Cancel };

    [[nodiscard]] bool isConfiguration() const;
    [[nodiscard]] tables::Tab tab() const;
    [[nodiscard]] tables::LiveTable& table();
    [[nodiscard]] bool hasName(const std::filesystem::path& name) const;
    [[nodiscard]] bool isNoChoice(const std::filesystem::path& name) const;
    [[nodiscard]] platform::FileDialogSetup dialogSetup() const;
    [[nodiscard]] Overwrite askToOverwrite(const std::filesystem::path& name);
    void fillTable(const TableFile& file);
    void tableIsSaved();

    tables::ParamTables& m_tables;
    TableFileWindow& m_window;
    platform::FileDialogs& m_dialogs;
    platform::MessageBoxes& m_boxes;
    std::filesystem::path m_startFolder;
    std::filesystem::path m_copyFolder;
};

} // namespace files
