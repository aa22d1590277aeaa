#pragma once

#include "app/mainwindow/FileNameLabel.h"
#include "app/mainwindow/IdentificationStrip.h"
#include "app/mainwindow/MainMenu.h"
#include "app/mainwindow/MainToolbar.h"
#include "app/mainwindow/ReadTestPage.h"
#include "app/mainwindow/StatusPanels.h"
#include "app/mainwindow/TablePage.h"

#include <QMainWindow>
#include <QPushButton>
#include <QTabWidget>

namespace app {

// What the main window shows, each piece in its place. The pieces belong to the window; nothing here acts.
struct MainWindowFace
{
    // The tables outlive the window. The field editors come into the pages later.
    MainWindowFace(QMainWindow& window, tables::ParamTable& table_CFG, tables::ParamTable& table_KB);

    [[nodiscard]] TablePage& page(tables::Tab tab) { return tab == tables::kConfigurationTab ? *page_CFG : *page_KB; }

    MainMenu menu;
    MainToolbar* Toolbar1 = nullptr;
    StatusPanels StatusBar1;
    IdentificationStrip* identification = nullptr;
    QTabWidget* SSTab1 = nullptr;
    TablePage* page_CFG = nullptr;
    TablePage* page_KB = nullptr;
    ReadTestPage* page_ReadTest = nullptr;
    FileNameLabel* lblFilename = nullptr;
    QPushButton* btnNotes = nullptr;
};

} // namespace app
