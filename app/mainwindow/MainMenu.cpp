#include "app/mainwindow/MainMenu.h"
namespace app {

namespace {

QMenu* addMenu(QMenuBar& bar, const char* name, const char* caption)
{
    QMenu* menu = bar.addMenu(QLatin1String(caption));
    menu->setObjectName(QLatin1String(name));
    return menu;
}

QAction* addItem(QMenu* menu, const char* name, const char* caption, const char* shortcut = "")
{
    QAction* item = menu->addAction(QLatin1String(caption));
    item->setObjectName(QLatin1String(name));
    item->setShortcut(QKeySequence(QLatin1String(shortcut)));
    return item;
}

void addSeparator(QMenu* menu, const char* name)
{
    menu->addSeparator()->setObjectName(QLatin1String(name));
}

} // namespace

MainMenu::MainMenu(QMenuBar& bar)
{
    bar.setAccessibleName(QStringLiteral("Menu bar"));
    QMenu* file = addMenu(bar, "mnuFile", "&File");
    mnuOpen_CFG = addItem(file, "mnuOpen_CFG", "&Load Teslin Config File", "Ctrl+O");
    mnuSave_CFG = addItem(file, "mnuSave_CFG", "&Save  Teslin Config File", "Ctrl+S");
    mnuSaveAs_CFG = addItem(file, "mnuSaveAs_CFG", "Save  Teslin Config File &As...", "Ctrl+Shift+S");
    addSeparator(file, "mnuSep3");
    mnuOpen_KB = addItem(file, "mnuOpen_KB", "Load &Keyboard Language File", "Ctrl+Shift+O");
    mnuSave_KB = addItem(file, "mnuSave_KB", "Sa&ve  Keyboard Language File", "Ctrl+L");
    mnuSaveAs_KB = addItem(file, "mnuSaveAs_KB", "Save  Ke&yboard Language File As...", "Ctrl+Shift+L");
    addSeparator(file, "mnuSep1");
    mnuOptions = addItem(file, "mnuOptions", "Port Setup &Options");
    addSeparator(file, "mnuSep2");
    mnuExit = addItem(file, "mnuExit", "&Exit", "Ctrl+Q");

    QMenu* tools = addMenu(bar, "mnuTools", "&Tools");
    mnuEditSingle = addItem(tools, "mnuEditSingle", "&Edit Single Field", "F2");

    QMenu* help = addMenu(bar, "menuHelp", "&Help");
    mnuRead = addItem(help, "mnuRead", "&Brief help", "F1");
    mnuAbout = addItem(help, "mnuAbout", "&About Teslin Configure");
}

std::vector<QAction*> MainMenu::pausedEntries() const
{
    return {mnuOpen_CFG,  mnuSave_CFG, mnuSaveAs_CFG, mnuOpen_KB, mnuSave_KB,
            mnuSaveAs_KB, mnuOptions,  mnuEditSingle, mnuRead,    mnuAbout};
}

void MainMenu::enableEntries(bool enabled) const
{
    for (QAction* const entry : pausedEntries()) {
        entry->setEnabled(enabled);
    }
}

} // namespace app
