#pragma once

#include "app/mainwindow/MainWindowFace.h"
#include "app/mainwindow/OpenedWindows.h"
#include "app/mainwindow/WindowSides.h"
#include "app/settings/PortSetup.h"
#include "app/settings/RememberedFiles.h"
#include "app/startup/Services.h"
#include "device/ReadTest.h"
#include "device/TableTransfer.h"
#include "files/KeyboardLayouts.h"
#include "files/TableFileFlows.h"
#include "report/ui/SummaryPresenter.h"
#include "tables/ParamTables.h"
#include "tables/ui/ConfigurationEditor.h"
#include "tables/ui/KeyboardLanguageEditor.h"

#include <QMainWindow>
#include <QTimer>

namespace app {

// The main window. Owns what the whole program shares, both tables and the link, and hands things to each other: the
// work itself is done in the rooms below.
class frmMain final : public QMainWindow
{
    Q_OBJECT

public:
    explicit frmMain(const Services& services);
    ~frmMain() override;

    // Start-up, in its given order; shows the window. Call once, from the event loop.
    void Form_Load();

    void Toolbar1_ButtonClick(ToolbarKey key);
    void SSTab1_Click(int previousTab);
    void btnNotes_Click();
    void mnuExit_Click();
    void mnuRead_Click();
    // Shows the summary of the current tab's table; returns when its window has been closed.
    void BuildSummary();
    void mnuOptions_Click();
    void mnuEditSingle_Click();
    void mnuAbout_Click();

    // Sets the enabled state of toolbar buttons 1 to 6.
    void EnableButtons(bool enabled);
    // Hides the controls of both field editors, not their titles.
    void Hide_All();
    void hideNotesButton();
    void ShowPleaseWait();
    void HidePleaseWait();

    // Asks what to do with unsaved changes of a table; true = the caller may go on.
    [[nodiscard]] bool CheckForUnsavedData_CFG();
    [[nodiscard]] bool CheckForUnsavedData_KB();

    // File menu entries: each shows its table's tab first.
    void mnuOpen_Click(tables::Tab tab);
    void mnuSave_Click(tables::Tab tab);
    void mnuSaveAs_Click(tables::Tab tab);
    [[nodiscard]] const RememberedFiles& rememberedFiles() const { return m_files; }
    void rememberFile(tables::Tab tab, const std::filesystem::path& name);

    // Empties comments and remembered file name of a table.
    void forgetCommentsAndFile(tables::Tab tab);
    // Looks up the reader's keyboard layout in Languages.txt and shows its name.
    void GetLanguageName();

    // The pieces, for those who connect them.
    [[nodiscard]] const Services& services() const { return m_services; }
    [[nodiscard]] tables::ParamTables& paramTables() { return m_tables; }
    [[nodiscard]] device::LinkState& link() { return m_link; }
    [[nodiscard]] device::Operations& operations() { return m_operations; }
    [[nodiscard]] device::CommandProtocol& protocol() { return m_protocol; }
    [[nodiscard]] device::DriverConnection& connection() { return m_connection; }
    [[nodiscard]] PortSetup& portSetup() { return m_portSetup; }
    [[nodiscard]] IdentificationStrip& identification() { return *m_face.identification; }
    [[nodiscard]] StatusPanels& statusPanels() { return m_face.StatusBar1; }
    [[nodiscard]] MainToolbar& toolbar() { return *m_face.Toolbar1; }
    // The tab that is in effect, the one that everything works on: while the device is in use, a click on another one
    // waits.
    [[nodiscard]] int handledTab() const { return m_handledTab; }
    [[nodiscard]] QTabWidget& tabs() { return *m_face.SSTab1; }
    [[nodiscard]] QPlainTextEdit& comments(tables::Tab tab);
    [[nodiscard]] ReadTestBox& txtReadTest() { return m_face.page_ReadTest->txtReadTest(); }
    [[nodiscard]] tables::ConfigurationEditor& editor_CFG() { return *m_editor_CFG; }
    [[nodiscard]] tables::KeyboardLanguageEditor& editor_KB() { return *m_editor_KB; }

    // The user logs off: closes the window, with its questions if they may be asked. False when the session must not
    // end: the window stays open by an answer, or because nobody may be asked, or the device is in use.
    [[nodiscard]] bool closeForEndOfSession(bool mayAsk);

signals:
    // The window has been closed for good, its settings are written: the program may end.
    void unloaded();

public slots:
    // One tick of the 50 ms timer.
    void Timer1_Timer();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void connectEverything();
    void buildTables();
    void retrieve();
    void actionBegins();

    void goToTab(tables::Tab tab);
    void goToNextTab(int step);
    void tabMoved();
    void setDeviceInUse(bool inUse);
    void operationEnded();
    void takeKeyboardFrom(const QWidget& controls);
    void giveKeyboardToPage();
    void showTable(tables::LiveTable& table);
    void showFileName();
    // The table of the tab in effect; on the read test the Keyboard Language table, as everywhere a table is meant.
    [[nodiscard]] tables::Tab shownTable() const;
    [[nodiscard]] std::filesystem::path& rememberedFile(tables::Tab tab);
    [[nodiscard]] bool selectTabOf(tables::Tab tab);

    [[nodiscard]] bool checkForUnsavedData(tables::Tab tab, const tables::LiveTable& table);
    [[nodiscard]] bool Form_QueryUnload();
    void Form_Unload();

    Services m_services;

    // The shared state.
    tables::ParamTable m_table_CFG;
    tables::ParamTable m_table_KB;
    tables::EditSession m_session;
    device::LinkState m_link;
    device::Operations m_operations;
    PortSetup m_portSetup;
    RememberedFiles m_files;
    files::KeyboardLanguage m_language;

    // The window.
    MainWindowFace m_face;
    QTimer Timer1;
    bool m_isUnloading = false; // the questions of the end are being asked
    bool m_isUnloaded = false;
    int m_handledTab = 0;
    bool m_updateIsUnfinished = false; // the Update that has just ended did not reach its end

    // The rooms below, and what they see of this window.
    TableSide m_side_CFG;
    TableSide m_side_KB;
    LinkSide m_linkSide;
    FileSide m_fileSide;
    tables::LiveTable m_live_CFG;
    tables::LiveTable m_live_KB;
    tables::ParamTables m_tables;
    tables::ConfigurationEditor* m_editor_CFG = nullptr;
    tables::KeyboardLanguageEditor* m_editor_KB = nullptr;
    device::CommandProtocol m_protocol;
    device::DriverConnection m_connection;
    device::TableTransfer m_transfer;
    device::ReadTest m_readTest;
    PlacementSide m_placementSide;
    report::SummaryPresenter m_summary;
    files::TableFileFlows m_fileFlows;
    OpenedWindows m_openedWindows;
};

} // namespace app
