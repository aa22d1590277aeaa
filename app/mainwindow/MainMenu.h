#pragma once

#include <QAction>
#include <QMenuBar>

#include <vector>

namespace app {

// The menu bar. Every entry is an action under its own name; who acts on it is the main window's business.
struct MainMenu
{
    // Fills the menu bar, which owns the entries.
    explicit MainMenu(QMenuBar& bar);

    // All entries but Exit, which also ends what is running: the others are grey while the device is in use.
    [[nodiscard]] std::vector<QAction*> pausedEntries() const;
    void enableEntries(bool enabled) const;

    QAction* mnuOpen_CFG = nullptr;
    QAction* mnuSave_CFG = nullptr;
    QAction* mnuSaveAs_CFG = nullptr;
    QAction* mnuOpen_KB = nullptr;
    QAction* mnuSave_KB = nullptr;
    QAction* mnuSaveAs_KB = nullptr;
    QAction* mnuOptions = nullptr;
    QAction* mnuExit = nullptr;
    QAction* mnuEditSingle = nullptr;
    QAction* mnuRead = nullptr;
    QAction* mnuAbout = nullptr;
};

} // namespace app
