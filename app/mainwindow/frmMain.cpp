#include "app/mainwindow/frmMain.h"

#include "app/dialogs/frmAbout.h"
#include "app/mainwindow/UnsavedQuestion.h"
#include "app/settings/StoredSettings.h"
#include "app/startup/ProgramText.h"
#include "platform/ReplaceFile.h"
#include "platform/qt/ShownWindow.h"
#include "widgets/WindowPlacement.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QTabBar>

#include <algorithm>
#include <utility>

namespace app {

using tables::TableId;

frmMain::frmMain(const Services& services)
    : m_services(services)
    , m_controls(*this, m_services, *this, m_session)
    , m_tables{.CFG = m_controls.page_CFG->table(), .KB = m_controls.page_KB->table(), .session = m_session}
    , m_link(
          {.MSComm1 = services.MSComm1, .driver = services.driver, .events = services.events, .boxes = services.boxes},
          {.display = *m_controls.linkPanel,
           .status = m_controls.StatusBar1,
           .buttons = *m_controls.Toolbar1,
           .readTest = *m_controls.page_ReadTest,
           .unsaved = *this},
          m_tables)
    , m_tabs(m_controls, m_link, m_tables)
    , m_fileMenu(m_controls, m_tabs, m_tables, m_services)
    , m_summary(
          {.printer = services.printer,
           .dialogs = services.fileDialogs,
           .windowOrder = services.windowOrder,
           .saveFile =
               [this](const std::filesystem::path& file, std::string_view bytes) {
                   return bool(platform::replaceFile(file, bytes, m_services.settings.folder()));
               },
           .restorePlacement = [this](QWidget& form) { return widgets::restorePlacement(m_services.settings, form); },
           .savePlacement = [this](const QWidget& form) { widgets::SaveWindowPlacement(m_services.settings, form); },
           .programFolder = services.programFolder})
    , m_dialogs(*this, m_services, m_link,
                [this] { SaveProgramConfig(m_services.settings, m_link.state(), m_link.virtualPort(), *this); })
    , Timer1(this)
{
    m_controls.page_CFG->addEditor(m_link, services.boxes);
    m_controls.page_KB->addEditor(m_link, services.boxes);
    m_controls.SSTab1->tabBar()->installEventFilter(this);
    resize(width(), std::max(height(), sizeHint().height())); // no row's editor need be scrolled
    connectEverything();
}

frmMain::~frmMain()
{
    // The pages go while the link and the session that they report to are still here.
    Timer1.stop();
    m_link.operations().setBefore({});
    m_link.operations().setAfterwards({});
    hide();
    delete takeCentralWidget();
}

void frmMain::connectEverything()
{
    connect(m_controls.Toolbar1, &MainToolbar::buttonClicked, this, &frmMain::Toolbar1_ButtonClick);
    const MainMenu& menu = m_controls.menu;
    connect(menu.mnuOptions, &QAction::triggered, this, &frmMain::mnuOptions_Click);
    connect(menu.mnuExit, &QAction::triggered, this, &frmMain::mnuExit_Click);
    connect(menu.mnuEditSingle, &QAction::triggered, this, &frmMain::mnuEditSingle_Click);
    connect(menu.mnuRead, &QAction::triggered, this, &frmMain::mnuRead_Click);
    connect(menu.mnuAbout, &QAction::triggered, this, &frmMain::mnuAbout_Click);
    connect(m_controls.btnNotes, &QPushButton::clicked, this, &frmMain::btnNotes_Click);
    connectReadTest();
    m_link.operations().setBefore([this] {
        m_controls.StatusBar1.hideProgress();
        setDeviceInUse(true);
    });
    m_link.operations().setAfterwards([this] { operationEnded(); });
    Timer1.setObjectName(QStringLiteral("Timer1"));
    Timer1.setTimerType(Qt::PreciseTimer);
    connect(&Timer1, &QTimer::timeout, this, &frmMain::Timer1_Timer);
}

void frmMain::connectReadTest()
{
    connect(m_controls.page_ReadTest, &ReadTestPage::cmdClearReadDisplay_Click, this,
            [this] { m_link.readTest().cmdClearReadDisplay_Click(); });
    m_controls.page_ReadTest->txtReadTest().setKeyPress([this](char KeyAscii) {
        const files::KeyboardLanguage& language = m_controls.linkPanel->language();
        return m_link.readTest().txtReadTest_KeyPress(KeyAscii, {.Track1Start = language.Track1Start,
                                                                 .Track2Start = language.Track2Start,
                                                                 .Track3Start = language.Track3Start,
                                                                 .TrackEnd = language.TrackEnd});
    });
}

// --- Start-up ---

void frmMain::Form_Load()
{
    // The ticks drive every wait, and one may come before start-up is over.
    if (m_services.tickMilliseconds > 0) {
        Timer1.start(m_services.tickMilliseconds);
    }
    m_dialogs.showSplash();
    frmAbout::KSD_Driver_Is_Installed(m_services.dosNames, m_services.boxes, m_services.beep);
    m_link.state().PortNumber = 0;
    GetProgramConfig(m_services.settings, m_link.state(), m_link.virtualPort());
    if (!widgets::restorePlacement(m_services.settings, *this)) { // so that it does not appear elsewhere first
        widgets::leaveRoomForFrame(*this);
    }
    show();
    platform::waitUntilShown(*this);
    showNormal();
    if (!widgets::restorePlacement(m_services.settings, *this)) {
        widgets::fitOntoScreen(*this);
    }
    m_dialogs.raiseSplash();
    activateWindow(); // nobody else gives it the keyboard where no window manager runs
    m_session.Hide_All();
    // Kept behaviour kb-defaults-at-start: the reader is not asked, so the tables start with the factory values.
    buildTables();
    m_controls.page_CFG->grid().setFocus(); // not the toolbar, where a blank would start a Retrieve
    // Kept behaviour kb-command-letter: whatever else the argument is, a file name too.
    if (!m_services.commandLine.empty() && (m_services.commandLine[0] == 'R' || m_services.commandLine[0] == 'r')) {
        m_dialogs.closeSplash(); // the first card may come at once
        m_controls.SSTab1->setCurrentIndex(kReadTestTab);
    }
    m_session.EditState = tables::EditSession::kEditing;
    m_tables.CFG.grid().setRow(1);
    m_tables.CFG.grid().setCol(tables::kValueColumn); // last: opening the editor moves the column
}

// Naming a table here is no visit to its tab.
void frmMain::buildTables()
{
    m_session.EditState = tables::EditSession::kFilling;
    for (const TableId table : {TableId::KeyboardLanguage, TableId::Configuration}) {
        m_session.tableInEffect = table;
        m_tables.InitGrids();
    }
}

// --- Toolbar and menus ---

void frmMain::Toolbar1_ButtonClick(ToolbarKey key)
{
    const bool exits = key == ToolbarKey::Exit;
    if (m_link.isBusy() && !exits) {
        return;
    }
    actionBegins();
    m_link.state().UserAbort = false;
    if (m_tabs.isReadTest() && !exits) {
        return;
    }
    const TableId table = m_tabs.shownTable();
    switch (key) {
    case ToolbarKey::Retrieve:
        retrieve(table);
        break;
    case ToolbarKey::Update:
        m_link.operations().run([this, table] { m_updateIsUnfinished = !m_link.transfer().UpdateDevice(table); });
        break;
    case ToolbarKey::Default:
        m_tables.InitGrids();
        break;
    case ToolbarKey::Load:
        m_fileMenu.open(table);
        break;
    case ToolbarKey::Save:
        m_fileMenu.mnuSaveAs_Click(table);
        break;
    case ToolbarKey::Summary:
        BuildSummary();
        break;
    case ToolbarKey::Exit:
        if (m_controls.Toolbar1->exitReadsExit()) {
            mnuExit_Click();
        } else {
            // Kept behaviour kb-two-clicks: the run ends, the button reads Exit again, and a second click exits.
            m_link.state().UserAbort = true;
        }
        break;
    }
}

// How far the last transfer came is told until the user goes on to something else.
void frmMain::actionBegins()
{
    if (!m_link.isBusy()) {
        m_controls.StatusBar1.hideProgress();
    }
}

void frmMain::retrieve(TableId which)
{
    m_link.operations().run([this, which] {
        if (m_link.transfer().btnRetrieveParms_Click(which)) {
            // Kept behaviour kb-edit-during-retrieve: a row that was edited after it was read keeps value and mark.
            // Every row now is what the reader holds, unless the user edited one while later ones were read.
            m_tables.of(which).table().TableChanged = m_tables.of(which).hasMarkedRows();
        }
    });
}

void frmMain::dragEnterEvent(QDragEnterEvent* event)
{
    if (!m_link.isBusy()) {
        (void)FileMenu::accepts(*event);
    }
}

void frmMain::dropEvent(QDropEvent* event)
{
    if (!m_link.isBusy() && FileMenu::accepts(*event)) {
        actionBegins();
        m_fileMenu.drop(*event);
    }
}

// Kept behaviour kb-exit-closes-first: the port is closed before the questions, and stays so after a Cancel.
void frmMain::mnuExit_Click()
{
    actionBegins();
    if (!m_link.isBusy()) {
        m_link.connection().CloseTheDeviceDriver();
    }
    close();
}

void frmMain::BuildSummary()
{
    TablePage& page = m_controls.page(m_tabs.shownTable());
    const bool onConfiguration = m_tabs.shownTable() == TableId::Configuration;
    m_summary.show(onConfiguration ? report::Summary::Configuration : report::Summary::KeyboardLanguage,
                   [&page](std::string_view address) { return page.table().GetTableEntry(address); },
                   {.firmwareVersion = m_link.state().FirmwareVersion,
                    .comment = page.comments(),
                    .date = m_services.clock.today()});
}

// A box would hold up an operation that runs, and the Abort button with it.
void frmMain::mnuRead_Click()
{
    if (!m_link.isBusy()) {
        m_services.boxes.show({.text = briefHelp(), .title = "Teslin Configure help"});
    }
}

void frmMain::mnuOptions_Click()
{
    m_dialogs.showOptions();
}

void frmMain::mnuEditSingle_Click()
{
    m_dialogs.showSingleField();
}

void frmMain::mnuAbout_Click()
{
    m_dialogs.showAbout();
}

void frmMain::btnNotes_Click()
{
    if (m_link.isBusy()) {
        return;
    }
    const bool onConfiguration = m_tabs.shownTable() == TableId::Configuration;
    m_services.boxes.show(
        {.text = onConfiguration ? notesOnConfiguration() : notesOnKeyboardLanguage(),
         .title = onConfiguration ? "Notes on the Configuration table" : "Notes on the Keyboard Language table",
         .icon = platform::BoxIcon::Information});
}

void frmMain::Timer1_Timer()
{
    m_link.Timer1_Timer();
}

// What would do nothing is grey.
void frmMain::setDeviceInUse(bool inUse)
{
    m_controls.menu.enableEntries(!inUse);
    if (inUse) {
        m_controls.takeKeyboardFrom(*m_controls.btnNotes);
    }
    m_controls.btnNotes->setEnabled(!inUse);
    m_dialogs.setDeviceInUse(inUse);
}

// --- Unsaved changes and the end ---

bool frmMain::CheckForUnsavedData(TableId table)
{
    if (!m_tables.of(table).table().TableChanged) {
        return true;
    }
    const platform::BoxAnswer answer = askToSaveChanges(m_services.boxes, m_tables.of(table).table().kind());
    if (answer == platform::BoxAnswer::Yes) {
        // Kept behaviour kb-yes-without-file: a cancelled dialog or a failed save does not hold the user up.
        // The tab of the table asked about is shown behind the dialog. Whatever becomes of the dialog, the user has
        // decided to go on.
        do {
            m_tabs.goToTab(table);
        } while (m_controls.SSTab1->currentIndex() !=
                 tabOf(table)); // leaving the read test lets the user click another tab
        m_fileMenu.saveAs(table);
    }
    return answer != platform::BoxAnswer::Cancel;
}

bool frmMain::Form_QueryUnload()
{
    // Both are always asked, whatever the first answer was.
    const bool mayDiscard_CFG = CheckForUnsavedData_CFG();
    const bool mayDiscard_KB = CheckForUnsavedData_KB();
    return mayDiscard_CFG && mayDiscard_KB;
}

void frmMain::Form_Unload()
{
    const platform::ProfileStrings::Together together(m_services.settings); // the summary writes its placement, too
    m_tabs.stop();
    SaveProgramConfig(m_services.settings, m_link.state(), m_link.virtualPort(), *this);
    m_link.beginClosing();
    m_link.connection().CloseTheDeviceDriver();
    m_dialogs.hideAll();
    m_controls.linkPanel->HidePleaseWait();
    m_summary.close();
    emit unloaded();
}

// The wheel over the tabs would move through them, and entering the read test sends commands to the reader.
bool frmMain::eventFilter(QObject* watched, QEvent* event)
{
    // Only the tabs are watched; they are not asked, because their last events come while they are destroyed.
    return event->type() == QEvent::Wheel || QMainWindow::eventFilter(watched, event);
}

void frmMain::closeEvent(QCloseEvent* event)
{
    if (m_link.isBusy()) {
        // The operation first puts its row and its port in order; operationEnded() closes the window then.
        m_link.beginClosing();
        event->ignore();
        return;
    }
    if (m_isUnloading || m_isUnloaded) {
        event->setAccepted(m_isUnloaded);
        return;
    }
    m_isUnloading = true;
    m_isUnloaded = Form_QueryUnload();
    m_isUnloading = false;
    if (m_isUnloaded) {
        Form_Unload();
    }
    event->setAccepted(m_isUnloaded);
}

bool frmMain::closeForEndOfSession(bool mayAsk)
{
    const bool wouldAsk = m_tables.CFG.table().TableChanged || m_tables.KB.table().TableChanged;
    // A close inside a close passes for one that went well.
    return !m_link.isBusy() && !m_isUnloading && (mayAsk || !wouldAsk) && close();
}

void frmMain::operationEnded()
{
    setDeviceInUse(false);
    const bool wasLost = std::exchange(m_link.state().connectionLost, false);
    const bool isUnfinished = std::exchange(m_updateIsUnfinished, false);
    const bool wasToClose = m_link.operations().isClosing() && !m_isUnloaded;
    if (wasToClose) {
        m_link.operations().setClosing(false);
        if (close()) {
            return;
        }
    }
    m_tabs.tabMoved();
    // Last: nobody may take a broken transfer for a finished one.
    if (wasLost) {
        m_controls.StatusBar1.setStatusText("Lost the connection to COM" + std::to_string(m_link.state().PortNumber));
    } else if (wasToClose && isUnfinished) {
        m_controls.StatusBar1.setStatusText("The update was not finished");
    }
}

} // namespace app
