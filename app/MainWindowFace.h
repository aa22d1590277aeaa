#pragma once

#include "app/FileNameLabel.h"
#include "app/IdentificationStrip.h"
#include "app/MainMenu.h"
#include "app/MainToolbar.h"
#include "app/ReadTestPage.h"
#include "app/StatusPanels.h"
#include "app/TablePage.h"

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
