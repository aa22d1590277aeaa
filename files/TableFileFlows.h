#pragma once

#include "files/TableDocument.h"
#include "platform/Beep.h"
#include "platform/FileDialogs.h"
#include "platform/MessageBoxes.h"
#include "tables/OperationButtons.h"
#include "tables/ParamTables.h"

#include <filesystem>

namespace files {

// Opening and saving one table's document.
class TableFileFlows final
{
public:
    struct Services
    {
        platform::FileDialogs& dialogs;
        platform::MessageBoxes& boxes;
        platform::Beep& beep;
        std::filesystem::path startFolder; // dialogs start here
        std::filesystem::path copyFolder;  // what is written in place is kept here meanwhile; empty: nowhere
    };

    // Everything outlives this object. A keyboard language file carries the comment of the Configuration table.
    TableFileFlows(tables::ParamTables& tables, tables::OperationButtons& buttons, const CommentBox& comments_CFG,
                   Services services);

    // Asks for a file and loads it. Unsaved changes are not asked about. A file that cannot be read changes nothing.
    void OpenTableFile(TableDocument& document);
    // Loads a file as if it had been chosen in the dialog.
    void openFile(TableDocument& document, const std::filesystem::path& name);

    // Asks for a name, then whether an existing file may be replaced, and saves.
    void SaveTableFileAs(TableDocument& document);
    // Saves to the document's name; asks for one when there is none yet.
    void SaveTable(TableDocument& document);

    // Writes the table to a file, as replaceFile() does. On failure the user has been told and the result is false.
    [[nodiscard]] bool SaveCurrent(const TableDocument& document, const std::filesystem::path& SelectedFileName);
    // Reads a file into the document. False, and everything as it was, when it cannot be read.
    [[nodiscard]] bool LoadCurrent(TableDocument& document, const std::filesystem::path& SelectedFileName);

private:
    enum class Overwrite { Yes, AnotherName, Cancel };

    [[nodiscard]] platform::FileDialogSetup dialogSetup(const TableDocument& document) const;
    [[nodiscard]] Overwrite askToOverwrite(const std::filesystem::path& name);

    tables::ParamTables& m_tables;
    tables::OperationButtons& m_buttons;
    const CommentBox& m_comments_CFG;
    Services m_services;
};

} // namespace files
