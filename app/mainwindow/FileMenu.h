#pragma once

#include "app/mainwindow/TabChange.h"
#include "files/TableFileFlows.h"

#include <QDropEvent>

namespace app {

// Loads and saves the tables: the entries of the File menu, and files that are dropped on the window. Each shows its
// table's tab first, because files belong to the table whose tab is shown. Nothing happens while the device is in use:
// a table must not be replaced under a transfer.
class FileMenu final
{
public:
    // Everything outlives this object.
    FileMenu(MainWindowControls& controls, TabChange& tabs, tables::ParamTables& tables, const Services& services);

    FileMenu(const FileMenu&) = delete;
    FileMenu& operator=(const FileMenu&) = delete;

    void mnuOpen_Click(tables::TableId table);
    void mnuSave_Click(tables::TableId table);
    void mnuSaveAs_Click(tables::TableId table);

    // The toolbar's button: the table in effect is not changed.
    void open(tables::TableId table);
    // For a table whose tab is shown already.
    void saveAs(tables::TableId table);

    // Takes a table file, and nothing else, as a copy. The file stays where it is, whatever key is held down: who takes
    // it as moved has it removed.
    static bool accepts(QDropEvent& event);
    void drop(QDropEvent& event);

private:
    void connectEntry(QAction* entry, void (FileMenu::*handler)(tables::TableId), tables::TableId table);

    MainWindowControls& m_controls;
    TabChange& m_tabs;
    files::TableFileFlows m_flows;
};

} // namespace app
