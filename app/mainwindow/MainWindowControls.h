#pragma once

#include "app/mainwindow/FileNameLabel.h"
#include "app/mainwindow/LinkPanel.h"
#include "app/mainwindow/MainMenu.h"
#include "app/mainwindow/MainToolbar.h"
#include "app/mainwindow/ReadTestPage.h"
#include "app/mainwindow/StatusPanels.h"
#include "app/mainwindow/Tab.h"
#include "app/mainwindow/TablePage.h"
#include "app/startup/Services.h"

#include <QMainWindow>
#include <QPushButton>
#include <QTabWidget>

namespace app {

// What the main window shows, each piece in its place. The pieces belong to the window.
struct MainWindowControls
{
    // Everything outlives the window. The field editors come into the pages later.
    MainWindowControls(QMainWindow& window, const Services& services, tables::UnsavedChanges& unsaved,
                       tables::EditSession& session);

    [[nodiscard]] TablePage& page(tables::TableId table)
    {
        return table == tables::TableId::Configuration ? *page_CFG : *page_KB;
    }

    // The name of a table's file, where there is one to show.
    void showFileName(tables::TableId table);

    // To be called before controls are hidden or switched off. Left to itself, the keyboard would go from them to the
    // next button of the toolbar, and an ordinary blank would press that. It goes to the page that is shown.
    void takeKeyboardFrom(const QWidget& controls);

    QMainWindow& window;
    MainMenu menu;
    MainToolbar* Toolbar1 = nullptr;
    StatusPanels StatusBar1;
    LinkPanel* linkPanel = nullptr;
    QTabWidget* SSTab1 = nullptr;
    TablePage* page_CFG = nullptr;
    TablePage* page_KB = nullptr;
    ReadTestPage* page_ReadTest = nullptr;
    FileNameLabel* lblFilename = nullptr;
    QPushButton* btnNotes = nullptr;

private:
    void layOut();
    void connectPages();
};

} // namespace app
