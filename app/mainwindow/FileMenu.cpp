#include "app/mainwindow/FileMenu.h"

#include "app/mainwindow/DroppedTableFile.h"

#include <QMimeData>

namespace app {

using tables::TableId;

FileMenu::FileMenu(MainWindowControls& controls, TabChange& tabs, tables::ParamTables& tables, const Services& services)
    : m_controls(controls)
    , m_tabs(tabs)
    , m_flows(tables, *controls.Toolbar1, *controls.page_CFG,
              {.dialogs = services.fileDialogs,
               .boxes = services.boxes,
               .beep = services.beep,
               .startFolder = services.programFolder,
               .copyFolder = services.settings.folder()})
{
    const MainMenu& menu = controls.menu;
    connectEntry(menu.mnuOpen_CFG, &FileMenu::mnuOpen_Click, TableId::Configuration);
    connectEntry(menu.mnuSave_CFG, &FileMenu::mnuSave_Click, TableId::Configuration);
    connectEntry(menu.mnuSaveAs_CFG, &FileMenu::mnuSaveAs_Click, TableId::Configuration);
    connectEntry(menu.mnuOpen_KB, &FileMenu::mnuOpen_Click, TableId::KeyboardLanguage);
    connectEntry(menu.mnuSave_KB, &FileMenu::mnuSave_Click, TableId::KeyboardLanguage);
    connectEntry(menu.mnuSaveAs_KB, &FileMenu::mnuSaveAs_Click, TableId::KeyboardLanguage);
}

void FileMenu::connectEntry(QAction* entry, void (FileMenu::*handler)(TableId), TableId table)
{
    QObject::connect(entry, &QAction::triggered, entry, [this, handler, table] { (this->*handler)(table); });
}

void FileMenu::mnuOpen_Click(TableId table)
{
    if (m_tabs.select(table)) {
        open(table);
    }
}

void FileMenu::mnuSave_Click(TableId table)
{
    if (m_tabs.select(table)) {
        m_flows.SaveTable(m_controls.page(table).document());
        m_controls.showFileName(table);
    }
}

void FileMenu::mnuSaveAs_Click(TableId table)
{
    if (m_tabs.select(table)) {
        saveAs(table);
    }
}

void FileMenu::open(TableId table)
{
    m_flows.OpenTableFile(m_controls.page(table).document());
    m_controls.showFileName(table);
}

void FileMenu::saveAs(TableId table)
{
    m_flows.SaveTableFileAs(m_controls.page(table).document());
    m_controls.showFileName(table);
}

bool FileMenu::accepts(QDropEvent& event)
{
    if (!droppedTableFile(*event.mimeData())) {
        return false;
    }
    if (!event.possibleActions().testFlag(Qt::CopyAction)) {
        event.ignore();
        return false;
    }
    event.setDropAction(Qt::CopyAction);
    event.accept();
    return true;
}

void FileMenu::drop(QDropEvent& event)
{
    const auto file = droppedTableFile(*event.mimeData());
    if (file && m_tabs.select(file->table)) {
        m_flows.openFile(m_controls.page(file->table).document(), file->name);
        m_controls.showFileName(file->table);
    }
}

} // namespace app
