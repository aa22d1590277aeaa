#pragma once

#include "app/dialogs/Dialogs.h"
#include "app/mainwindow/FileMenu.h"
#include "app/mainwindow/MainWindowControls.h"
#include "app/mainwindow/TabChange.h"
#include "report/ui/SummaryPresenter.h"
#include "tables/UnsavedChanges.h"

#include <QMainWindow>
#include <QTimer>

namespace app {

// The main window: menu, toolbar, tabs and closing. The work is done in the rooms below.
class frmMain final : public QMainWindow, private tables::UnsavedChanges
{
    Q_OBJECT

public:
    explicit frmMain(const Services& services);
    ~frmMain() override;

    // Start-up, in its given order; shows the window. Call once, from the event loop.
    void Form_Load();

    void Toolbar1_ButtonClick(ToolbarKey key);
    void btnNotes_Click();
    void mnuExit_Click();
    void mnuRead_Click();
    // Shows the summary of the current tab's table; returns when its window has been closed.
    void BuildSummary();
    void mnuOptions_Click();
    void mnuEditSingle_Click();
    void mnuAbout_Click();

    // Asks what to do with unsaved changes of a table; true = the caller may go on.
    [[nodiscard]] bool CheckForUnsavedData_CFG() { return CheckForUnsavedData(tables::TableId::Configuration); }
    [[nodiscard]] bool CheckForUnsavedData_KB() { return CheckForUnsavedData(tables::TableId::KeyboardLanguage); }

    // The user logs off: closes the window, with its questions if they may be asked. False when the session must not
    // end: the window stays open by an answer, or because nobody may be asked, or the device is in use.
    [[nodiscard]] bool closeForEndOfSession(bool mayAsk);

    // The shared state, for those who look at it from outside.
    [[nodiscard]] tables::ParamTables& paramTables() { return m_tables; }
    [[nodiscard]] device::ReaderLink& link() { return m_link; }

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
    void connectReadTest();
    void buildTables();
    void retrieve(tables::TableId which);
    void actionBegins();
    void setDeviceInUse(bool inUse);
    void operationEnded();

    [[nodiscard]] bool CheckForUnsavedData(tables::TableId table) override;
    [[nodiscard]] bool Form_QueryUnload();
    void Form_Unload();

    Services m_services;
    tables::EditSession m_session;
    MainWindowControls m_controls;
    tables::ParamTables m_tables;
    device::ReaderLink m_link;
    TabChange m_tabs;
    FileMenu m_fileMenu;
    report::SummaryPresenter m_summary;
    Dialogs m_dialogs;
    QTimer Timer1;
    bool m_isUnloading = false; // the questions of the end are being asked
    bool m_isUnloaded = false;
    bool m_updateIsUnfinished = false; // the Update that has just ended did not reach its end
};

} // namespace app
