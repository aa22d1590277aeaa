#include "files/TableFileFlows.h"

#include "files/TableFileParser.h"
#include "files/TableFileWriter.h"
#include "platform/ReplaceFile.h"

#include <cstdint>
#include <system_error>
#include <utility>
#include <vector>

namespace files {

namespace {

// Kept behaviour kb-names-with-xxx: a name that holds this counts as none.
// What the file dialog is without a choice.
constexpr std::string_view kNoChoice = "XXX";

// What a comment box takes from a file. A file of nothing but comment lines, picked by mistake, must not stop the
// window.
// Kept behaviour kb-long-comment: the rest of a longer one is dropped.
constexpr std::size_t kLongestComment = 65'535;

struct Kind
{
    const char* pattern;
    const char* filter;
};
constexpr Kind kConfiguration = {"*.tlc", "Teslin Config Files (*.tlc)"};
constexpr Kind kKeyboardLanguage = {"*.txt", "Teslin Keyboard Language Files (*.txt)"};

// The toolbar is off while a dialog is up, however that ends.
class ButtonsOff final
{
public:
    explicit ButtonsOff(TableFileWindow& window)
        : m_window(window)
    {
        m_window.EnableButtons(false);
    }
    ~ButtonsOff() { m_window.EnableButtons(true); }
    ButtonsOff(const ButtonsOff&) = delete;
    ButtonsOff& operator=(const ButtonsOff&) = delete;

private:
    TableFileWindow& m_window;
};

// The text, or as many of its first lines as have room.
std::string_view wholeLines(std::string_view text, std::size_t most)
{
    if (text.size() <= most) {
        return text;
    }
    const std::size_t lastEnd = text.substr(0, most).rfind("\r\n");
    return text.substr(0, lastEnd == std::string_view::npos ? most : lastEnd + 2);
}

std::vector<tables::ParamRow> rowsOf(const tables::ParamTable& table)
{
    std::vector<tables::ParamRow> rows;
    for (int row = 1; row <= table.NumParms; ++row) {
        rows.push_back({.changed = {},
                        .address = table.cell(row, tables::kAddressColumn),
                        .value = table.cell(row, tables::kValueColumn),
                        .notes = table.cell(row, tables::kNotesColumn)});
    }
    return rows;
}

} // namespace

TableFileFlows::TableFileFlows(tables::ParamTables& tables, TableFileWindow& window, platform::FileDialogs& dialogs,
                               platform::MessageBoxes& boxes, std::filesystem::path startFolder,
                               std::filesystem::path copyFolder)
    : m_tables(tables)
    , m_window(window)
    , m_dialogs(dialogs)
    , m_boxes(boxes)
    , m_startFolder(std::move(startFolder))
    , m_copyFolder(std::move(copyFolder))
{}

// --- Open ---

void TableFileFlows::OpenTableFile()
{
    const ButtonsOff buttonsOff(m_window);
    openFile(m_dialogs.chooseFileToOpen(dialogSetup()));
}

// Kept behaviour kb-load-does-not-ask: a load replaces the rows without a question about unsaved ones.
void TableFileFlows::openFile(const std::filesystem::path& name)
{
    if (isNoChoice(name) || !LoadCurrent(name)) {
        return;
    }
    m_window.rememberFile(tab(), name);
    // What the marks and the flag said was said of the rows that are gone.
    table().Clear_Changed_Flags();
    table().table().TableChanged = false;
    table().restoreTabCaption();
    m_window.Hide_All();
    m_window.setEditTitle_CFG("(values will be edited here)");
    if (isConfiguration()) {
        m_window.EditData_CFG();
    } else {
        m_window.EditData_KB();
    }
}

bool TableFileFlows::LoadCurrent(const std::filesystem::path& SelectedFileName)
{
    const platform::Result<std::string> bytes = platform::readFile(SelectedFileName);
    if (!bytes) {
        // Kept behaviour kb-unopened-file: nobody is told.
        return false;
    }
    fillTable(isConfiguration() ? parseTableFile_CFG(bytes.value()) : parseTableFile_KB(bytes.value()));
    return true;
}

void TableFileFlows::fillTable(const TableFile& file)
{
    tables::ParamTable& rows = table().table();
    const int count = static_cast<int>(file.rows.size());
    // No editor may open on a row that is only half there.
    m_tables.session.EditState = tables::EditSession::kLayingOutKeyboard;
    m_window.setComments(tab(), wholeLines(file.comment, kLongestComment));
    rows.NumParms = static_cast<std::uint8_t>(count);
    rows.setRowCount(count + 1);
    for (int row = 1; row <= count; ++row) {
        const tables::ParamRow& entry = file.rows[static_cast<std::size_t>(row - 1)];
        rows.setCell(row, tables::kChangedColumn, {});
        rows.SetGridItem(row, entry.address, entry.value, entry.notes);
    }
    rows.forgetAddressesFrom(count);
    m_tables.session.EditState = tables::EditSession::kEditing;
}

// --- Save ---

// Kept behaviour kb-always-asks-name: the button of the toolbar comes here although the table has a name.
void TableFileFlows::SaveTableFileAs()
{
    const ButtonsOff buttonsOff(m_window);
    Overwrite overwrite = Overwrite::AnotherName;
    std::filesystem::path name;
    while (overwrite == Overwrite::AnotherName) {
        name = m_dialogs.chooseFileToSave(dialogSetup());
        if (isNoChoice(name)) {
            return;
        }
        overwrite = askToOverwrite(name);
    }
    if (overwrite == Overwrite::Yes && SaveCurrent(name)) {
        m_window.rememberFile(tab(), name);
        tableIsSaved();
    }
}

TableFileFlows::Overwrite TableFileFlows::askToOverwrite(const std::filesystem::path& name)
{
    std::error_code unreadable;
    if (!std::filesystem::exists(name, unreadable)) {
        return Overwrite::Yes;
    }
    switch (m_boxes.show({.text = "File: " + m_window.displayName(name) +
                                  " already exists! Do you want to overwrite it? (Yes=overwrite, No=get another "
                                  "filename, Cancel=cancel save operation)",
                          .title = "*** Warning ***",
                          .icon = platform::BoxIcon::Exclamation,
                          .buttons = platform::BoxButtons::YesNoCancel,
                          .defaultButton = platform::BoxAnswer::No,
                          .file = name})) {
    case platform::BoxAnswer::Yes:
        return Overwrite::Yes;
    case platform::BoxAnswer::No:
        return Overwrite::AnotherName;
    default:
        return Overwrite::Cancel;
    }
}

void TableFileFlows::SaveTable()
{
    const std::filesystem::path name = m_window.rememberedFile(tab());
    if (!hasName(name)) {
        SaveTableFileAs();
    } else if (SaveCurrent(name)) {
        tableIsSaved();
    }
}

void TableFileFlows::tableIsSaved()
{
    table().restoreTabCaption();
    table().Clear_Changed_Flags();
    table().table().TableChanged = false;
}

bool TableFileFlows::SaveCurrent(const std::filesystem::path& SelectedFileName)
{
    // Kept behaviour kb-crossed-comment: a keyboard language file carries the comment of the Configuration table.
    const std::string comment = m_window.comments(tables::kConfigurationTab);
    const std::vector<tables::ParamRow> rows = rowsOf(table().table());
    const platform::Result<void> written = platform::replaceFile(
        SelectedFileName, isConfiguration() ? writeTableFile_CFG(comment, rows) : writeTableFile_KB(comment, rows),
        m_copyFolder);
    if (!written) {
        m_window.beep();
        m_boxes.show({.text = "Unable to save file: \"" + m_window.displayName(SelectedFileName) + "\" because " +
                              written.error().description +
                              " (error number: " + std::to_string(written.error().number) + ").",
                      .icon = platform::BoxIcon::Exclamation,
                      .file = SelectedFileName});
    }
    return static_cast<bool>(written);
}

// --- What both share ---

bool TableFileFlows::isConfiguration() const
{
    return m_window.currentTab() == tables::kConfigurationTab;
}

tables::Tab TableFileFlows::tab() const
{
    return isConfiguration() ? tables::kConfigurationTab : tables::kKeyboardLanguageTab;
}

tables::LiveTable& TableFileFlows::table()
{
    return isConfiguration() ? m_tables.CFG : m_tables.KB;
}

bool TableFileFlows::hasName(const std::filesystem::path& name) const
{
    return !name.empty() && m_window.displayName(name).find('*') == std::string::npos;
}

bool TableFileFlows::isNoChoice(const std::filesystem::path& name) const
{
    const bool isPattern = m_window.displayName(name.filename()).find('*') != std::string::npos;
    return name.empty() || isPattern || m_window.displayName(name).find(kNoChoice) != std::string::npos;
}

// Kept behaviour kb-dialog-folder: the program's own folder, until a file was used.
platform::FileDialogSetup TableFileFlows::dialogSetup() const
{
    const Kind& kind = isConfiguration() ? kConfiguration : kKeyboardLanguage;
    const std::filesystem::path remembered = m_window.rememberedFile(tab());
    return {.folder = m_startFolder, .name = hasName(remembered) ? remembered : kind.pattern, .filter = kind.filter};
}

} // namespace files
