#include "files/TableFileFlows.h"

#include "platform/FileNameText.h"
#include "platform/ReplaceFile.h"

#include <string>
#include <system_error>
#include <utility>

namespace files {

namespace {

using platform::fileNameText;

// Kept behaviour kb-names-with-xxx: a name that holds this counts as none.
// What the file dialog is without a choice.
constexpr std::string_view kNoChoice = "XXX";

// The toolbar is off while a dialog is up, however that ends.
class ButtonsOff final
{
public:
    explicit ButtonsOff(tables::OperationButtons& buttons)
        : m_buttons(buttons)
    {
        m_buttons.EnableButtons(false);
    }
    ~ButtonsOff() { m_buttons.EnableButtons(true); }
    ButtonsOff(const ButtonsOff&) = delete;
    ButtonsOff& operator=(const ButtonsOff&) = delete;

private:
    tables::OperationButtons& m_buttons;
};

bool hasName(const std::filesystem::path& name)
{
    return !name.empty() && fileNameText(name).find('*') == std::string::npos;
}

bool isNoChoice(const std::filesystem::path& name)
{
    const bool isPattern = fileNameText(name.filename()).find('*') != std::string::npos;
    return name.empty() || isPattern || fileNameText(name).find(kNoChoice) != std::string::npos;
}

} // namespace

TableFileFlows::TableFileFlows(tables::ParamTables& tables, tables::OperationButtons& buttons,
                               const CommentBox& comments_CFG, Services services)
    : m_tables(tables)
    , m_buttons(buttons)
    , m_comments_CFG(comments_CFG)
    , m_services(std::move(services))
{}

// --- Open ---

void TableFileFlows::OpenTableFile(TableDocument& document)
{
    const ButtonsOff buttonsOff(m_buttons);
    openFile(document, m_services.dialogs.chooseFileToOpen(dialogSetup(document)));
}

// Kept behaviour kb-load-does-not-ask: a load replaces the rows without a question about unsaved ones.
void TableFileFlows::openFile(TableDocument& document, const std::filesystem::path& name)
{
    if (isNoChoice(name) || !LoadCurrent(document, name)) {
        return;
    }
    document.remember(name);
    // What the marks and the flag said was said of the rows that are gone.
    document.table().Clear_Changed_Flags();
    document.table().table().nowSaved();
    document.table().restoreTabCaption();
    m_tables.session.Hide_All();
    m_tables.CFG.editor().setEditTitle("(values will be edited here)");
    document.table().editor().open();
}

bool TableFileFlows::LoadCurrent(TableDocument& document, const std::filesystem::path& SelectedFileName)
{
    const platform::Result<std::string> bytes = platform::readFile(SelectedFileName);
    if (!bytes) {
        // Kept behaviour kb-unopened-file: nobody is told.
        return false;
    }
    document.replaceBy(document.format().parse(bytes.value()), m_tables.session);
    return true;
}

// --- Save ---

// Kept behaviour kb-always-asks-name: the button of the toolbar comes here although the table has a name.
void TableFileFlows::SaveTableFileAs(TableDocument& document)
{
    const ButtonsOff buttonsOff(m_buttons);
    Overwrite overwrite = Overwrite::AnotherName;
    std::filesystem::path name;
    while (overwrite == Overwrite::AnotherName) {
        name = m_services.dialogs.chooseFileToSave(dialogSetup(document));
        if (isNoChoice(name)) {
            return;
        }
        overwrite = askToOverwrite(name);
    }
    if (overwrite == Overwrite::Yes && SaveCurrent(document, name)) {
        document.remember(name);
        document.nowSaved();
    }
}

TableFileFlows::Overwrite TableFileFlows::askToOverwrite(const std::filesystem::path& name)
{
    std::error_code unreadable;
    if (!std::filesystem::exists(name, unreadable)) {
        return Overwrite::Yes;
    }
    switch (
        m_services.boxes.show({.text = "File: " + fileNameText(name) +
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

void TableFileFlows::SaveTable(TableDocument& document)
{
    if (!hasName(document.name())) {
        SaveTableFileAs(document);
    } else if (SaveCurrent(document, document.name())) {
        document.nowSaved();
    }
}

bool TableFileFlows::SaveCurrent(const TableDocument& document, const std::filesystem::path& SelectedFileName)
{
    // Kept behaviour kb-crossed-comment: a keyboard language file carries the comment of the Configuration table.
    const std::string bytes = document.format().write(m_comments_CFG.comments(), document.table().table().rows());
    const platform::Result<void> written = platform::replaceFile(SelectedFileName, bytes, m_services.copyFolder);
    if (!written) {
        m_services.beep.sound();
        m_services.boxes.show({.text = "Unable to save file: \"" + fileNameText(SelectedFileName) + "\" because " +
                                       written.error().description +
                                       " (error number: " + std::to_string(written.error().number) + ").",
                               .icon = platform::BoxIcon::Exclamation,
                               .file = SelectedFileName});
    }
    return static_cast<bool>(written);
}

// Kept behaviour kb-dialog-folder: the program's own folder, until a file was used.
platform::FileDialogSetup TableFileFlows::dialogSetup(const TableDocument& document) const
{
    return {.folder = m_services.startFolder,
            .name = hasName(document.name()) ? document.name() : std::filesystem::path(document.format().pattern),
            .filter = std::string(document.format().filter)};
}

} // namespace files
