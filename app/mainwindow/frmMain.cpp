#include "app/mainwindow/frmMain.h"

#include "app/dialogs/frmAbout.h"
#include "app/mainwindow/DroppedTableFile.h"
#include "app/mainwindow/UnsavedQuestion.h"
#include "app/settings/LanguageList.h"
#include "app/settings/ProgramConfig.h"
#include "app/settings/WindowPlacement.h"
#include "app/startup/ProgramText.h"
#include "device/Commands.h"
#include "platform/ReplaceFile.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/ShownWindow.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QShortcut>
#include <QTabBar>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace app {

namespace {

// The file stays where it is, whatever key is held down: who takes it as moved has it removed.
bool acceptAsCopy(QDropEvent& event)
{
    if (!event.possibleActions().testFlag(Qt::CopyAction)) {
        event.ignore();
        return false;
    }
    event.setDropAction(Qt::CopyAction);
    event.accept();
    return true;
}

} // namespace

frmMain::frmMain(const Services& services)
    : m_services(services)
    , m_table_CFG(tables::configurationKind())
    , m_table_KB(tables::keyboardLanguageKind())
    , m_face(*this, m_table_CFG, m_table_KB)
    , Timer1(this)
    , m_side_CFG(*this, tables::kConfigurationTab)
    , m_side_KB(*this, tables::kKeyboardLanguageTab)
    , m_linkSide(*this)
    , m_fileSide(*this)
    , m_live_CFG(m_table_CFG, m_face.page_CFG->grid(), m_side_CFG, m_session)
    , m_live_KB(m_table_KB, m_face.page_KB->grid(), m_side_KB, m_session)
    , m_tables{.CFG = m_live_CFG, .KB = m_live_KB, .session = m_session}
    , m_editor_CFG(new tables::ConfigurationEditor(m_live_CFG, m_session, m_side_CFG, m_linkSide, services.boxes,
                                                   m_face.page_CFG))
    , m_editor_KB(new tables::KeyboardLanguageEditor(m_live_KB, m_session, m_side_KB, m_linkSide, services.boxes,
                                                     m_face.page_KB))
    , m_protocol(m_link, m_operations, services.MSComm1, services.events, m_linkSide, services.boxes, m_tables)
    , m_connection(m_link, m_protocol, services.MSComm1, services.driver, services.events, m_linkSide, m_portSetup,
                   services.boxes)
    , m_transfer(m_link, m_operations, m_protocol, m_connection, services.MSComm1, m_linkSide, m_linkSide, m_tables)
    , m_readTest(m_link, m_protocol, m_connection, services.MSComm1, services.events, m_linkSide, m_linkSide)
    , m_placementSide(services.settings)
    , m_summary({.printer = services.printer,
                 .dialogs = services.fileDialogs,
                 .placements = m_placementSide,
                 .windowOrder = services.windowOrder,
                 .saveFile =
                     [this](const std::filesystem::path& file, std::string_view bytes) {
                         return bool(platform::replaceFile(file, bytes, m_services.settings.folder()));
                     },
                 .programFolder = services.programFolder})
    , m_fileFlows(m_tables, m_fileSide, services.fileDialogs, services.boxes, services.programFolder,
                  services.settings.folder())
    , m_openedWindows(*this)
{
    m_face.page_CFG->setEditor(m_editor_CFG);
    m_face.page_KB->setEditor(m_editor_KB);
    m_face.SSTab1->tabBar()->installEventFilter(this);
    resize(width(), std::max(height(), sizeHint().height())); // no row's editor need be scrolled
    connectEverything();
}

frmMain::~frmMain()
{
    // The pages go while the tables and the link that they report to are still here.
    Timer1.stop();
    m_operations.setBefore({});
    m_operations.setAfterwards({});
    hide();
    delete takeCentralWidget();
}

void frmMain::connectEverything()
{
    connect(m_face.Toolbar1, &MainToolbar::buttonClicked, this, &frmMain::Toolbar1_ButtonClick);
    for (const QAction* entry : menuBar()->findChildren<QAction*>()) {
        connect(entry, &QAction::triggered, this, &frmMain::actionBegins); // before the entry's own handler
    }
    connect(m_face.btnNotes, &QPushButton::clicked, this, &frmMain::actionBegins);
    const auto onFileMenu = [this](QAction* entry, void (frmMain::*handler)(tables::Tab), tables::Tab tab) {
        connect(entry, &QAction::triggered, this, [this, handler, tab] { (this->*handler)(tab); });
    };
    onFileMenu(m_face.menu.mnuOpen_CFG, &frmMain::mnuOpen_Click, tables::kConfigurationTab);
    onFileMenu(m_face.menu.mnuSave_CFG, &frmMain::mnuSave_Click, tables::kConfigurationTab);
    onFileMenu(m_face.menu.mnuSaveAs_CFG, &frmMain::mnuSaveAs_Click, tables::kConfigurationTab);
    onFileMenu(m_face.menu.mnuOpen_KB, &frmMain::mnuOpen_Click, tables::kKeyboardLanguageTab);
    onFileMenu(m_face.menu.mnuSave_KB, &frmMain::mnuSave_Click, tables::kKeyboardLanguageTab);
    onFileMenu(m_face.menu.mnuSaveAs_KB, &frmMain::mnuSaveAs_Click, tables::kKeyboardLanguageTab);
    connect(m_face.menu.mnuOptions, &QAction::triggered, this, &frmMain::mnuOptions_Click);
    connect(m_face.menu.mnuExit, &QAction::triggered, this, &frmMain::mnuExit_Click);
    connect(m_face.menu.mnuEditSingle, &QAction::triggered, this, &frmMain::mnuEditSingle_Click);
    connect(m_face.menu.mnuRead, &QAction::triggered, this, &frmMain::mnuRead_Click);
    connect(m_face.menu.mnuAbout, &QAction::triggered, this, &frmMain::mnuAbout_Click);
    connect(m_face.btnNotes, &QPushButton::clicked, this, &frmMain::btnNotes_Click);
    connect(m_face.SSTab1, &QTabWidget::currentChanged, this, [this] {
        takeKeyboardFrom(*m_face.SSTab1->currentWidget()); // from whatever had it there last, hidden perhaps
        tabMoved();
    });
    const auto onTabKeys = [this](Qt::KeyboardModifiers modifiers, int step) {
        auto* keys = new QShortcut(QKeySequence(modifiers | Qt::Key_Tab), this);
        connect(keys, &QShortcut::activated, this, [this, step] { goToNextTab(step); });
    };
    onTabKeys(Qt::ControlModifier, 1);
    onTabKeys(Qt::ControlModifier | Qt::ShiftModifier, -1);
    connect(m_face.identification, &IdentificationStrip::lblDriverName_Change, this,
            [this](const QString& caption) { m_face.StatusBar1.setFirst(caption); });
    connect(&m_face.page_CFG->comments(), &QPlainTextEdit::textChanged, m_editor_CFG,
            &tables::ConfigurationEditor::txtComments_CFG_Change);

    connect(m_face.page_ReadTest, &ReadTestPage::cmdClearReadDisplay_Click, this,
            [this] { m_readTest.cmdClearReadDisplay_Click(); });
    m_face.page_ReadTest->txtReadTest().setKeyPress([this](char KeyAscii) {
        return m_readTest.txtReadTest_KeyPress(KeyAscii, {.Track1Start = m_language.Track1Start,
                                                          .Track2Start = m_language.Track2Start,
                                                          .Track3Start = m_language.Track3Start,
                                                          .TrackEnd = m_language.TrackEnd});
    });

    const auto follow = [this](tables::ParamGrid& grid, tables::LiveTable& table) {
        connect(&grid, &tables::ParamGrid::rowCurrentChanged, this, [&table] { table.rowChanged(); });
        connect(&grid, &tables::ParamGrid::selectionMoved, this, [&table] { table.selectionChanged(); });
        // The current row may have lost its editor; a click on it raises no other event.
        connect(&grid, &tables::ParamGrid::pressed, this, [&table] { table.rowChanged(); });
    };
    follow(m_face.page_CFG->grid(), m_live_CFG);
    follow(m_face.page_KB->grid(), m_live_KB);
    connect(&m_face.page_CFG->grid(), &tables::ParamGrid::rowDoubleClicked, m_editor_CFG,
            &tables::ConfigurationEditor::grdCFG_DblClick);
    connect(&m_face.page_KB->grid(), &tables::ParamGrid::rowDoubleClicked, m_editor_KB,
            &tables::KeyboardLanguageEditor::grdKB_DblClick);

    m_operations.setBefore([this] {
        m_face.StatusBar1.hideProgress();
        setDeviceInUse(true);
    });
    m_operations.setAfterwards([this] { operationEnded(); });
    Timer1.setObjectName(QStringLiteral("Timer1"));
    Timer1.setTimerType(Qt::PreciseTimer);
    connect(&Timer1, &QTimer::timeout, this, &frmMain::Timer1_Timer);
}

// --- Start-up ---

void frmMain::Form_Load()
{
    // The ticks drive every wait, and one may come before start-up is over.
    if (m_services.tickMilliseconds > 0) {
        Timer1.start(m_services.tickMilliseconds);
    }
    m_openedWindows.showSplash();
    frmAbout::KSD_Driver_Is_Installed(m_services.dosNames, m_services.boxes, m_services.beep);
    m_link.PortNumber = 0;
    GetProgramConfig(m_services.settings, m_link, m_portSetup);
    if (!restorePlacement(m_services.settings, *this)) { // so that it does not appear elsewhere first
        leaveRoomForFrame(*this);
    }
    show();
    platform::waitUntilShown(*this);
    showNormal();
    if (!restorePlacement(m_services.settings, *this)) {
        fitOntoScreen(*this);
    }
    m_openedWindows.raiseSplash();
    activateWindow(); // nobody else gives it the keyboard where no window manager runs
    Hide_All();
    // Kept behaviour kb-defaults-at-start: the reader is not asked, so the tables start with the factory values.
    buildTables();
    m_face.page_CFG->grid().setFocus(); // not the toolbar, where a blank would start a Retrieve
    // Kept behaviour kb-command-letter: whatever else the argument is, a file name too.
    if (!m_services.commandLine.empty() && (m_services.commandLine[0] == 'R' || m_services.commandLine[0] == 'r')) {
        m_openedWindows.closeSplash(); // the first card may come at once
        m_face.SSTab1->setCurrentIndex(tables::kReadTestTab);
    }
    m_session.EditState = tables::EditSession::kEditing;
    m_live_CFG.grid().setRow(1);
    m_live_CFG.grid().setCol(tables::kValueColumn); // last: opening the editor moves the column
}

void frmMain::buildTables()
{
    m_session.EditState = tables::EditSession::kFilling;
    // Moving between the tabs is only a way to name the table here, not a visit.
    const QSignalBlocker blocker(m_face.SSTab1);
    for (const int tab : {int{tables::kKeyboardLanguageTab}, int{tables::kConfigurationTab}}) {
        m_face.SSTab1->setCurrentIndex(tab);
        m_tables.InitGrids(tab);
    }
}

void frmMain::GetLanguageName()
{
    if (const auto caption = lookUpLanguage(m_services.programFolder, m_link.KeyboardLanguageId, m_language)) {
        m_face.identification->setLanguage(*caption);
    }
}

// --- Toolbar and menus ---

void frmMain::Toolbar1_ButtonClick(ToolbarKey key)
{
    const bool exits = key == ToolbarKey::Exit;
    if (m_operations.isRunning() && !exits) {
        return;
    }
    actionBegins();
    m_link.UserAbort = false;
    if (m_handledTab == tables::kReadTestTab && !exits) {
        return;
    }
    switch (key) {
    case ToolbarKey::Retrieve:
        retrieve();
        break;
    case ToolbarKey::Update:
        m_operations.run([this] { m_updateIsUnfinished = !m_transfer.UpdateDevice(); });
        break;
    case ToolbarKey::Default:
        m_tables.InitGrids(m_handledTab);
        break;
    case ToolbarKey::Load:
        m_fileFlows.OpenTableFile();
        break;
    case ToolbarKey::Save:
        mnuSaveAs_Click(shownTable());
        break;
    case ToolbarKey::Summary:
        BuildSummary();
        break;
    case ToolbarKey::Exit:
        if (m_face.Toolbar1->exitReadsExit()) {
            mnuExit_Click();
        } else {
            // Kept behaviour kb-two-clicks: the run ends, the button reads Exit again, and a second click exits.
            m_link.UserAbort = true;
        }
        break;
    }
}

// How far the last transfer came is told until the user goes on to something else.
void frmMain::actionBegins()
{
    if (!m_operations.isRunning()) {
        m_face.StatusBar1.hideProgress();
    }
}

void frmMain::retrieve()
{
    m_operations.run([this] {
        tables::LiveTable& table = m_handledTab == tables::kConfigurationTab ? m_live_CFG : m_live_KB;
        if (m_transfer.btnRetrieveParms_Click()) {
            // Kept behaviour kb-edit-during-retrieve: a row that was edited after it was read keeps value and mark.
            // Every row now is what the reader holds, unless the user edited one while later ones were read.
            table.table().TableChanged = table.hasMarkedRows();
        }
    });
}

// Files belong to the table whose tab is shown. False while the device is in use: a table must not be replaced under a
// transfer.
bool frmMain::selectTabOf(tables::Tab tab)
{
    if (m_operations.isRunning()) {
        return false;
    }
    goToTab(tab);
    // Leaving the read test takes a while, in which the user may have gone elsewhere or closed the window.
    return m_handledTab == tab && !m_isUnloaded;
}

void frmMain::mnuOpen_Click(tables::Tab tab)
{
    if (selectTabOf(tab)) {
        m_fileFlows.OpenTableFile();
    }
}

void frmMain::mnuSave_Click(tables::Tab tab)
{
    if (selectTabOf(tab)) {
        m_fileFlows.SaveTable();
    }
}

void frmMain::mnuSaveAs_Click(tables::Tab tab)
{
    if (selectTabOf(tab)) {
        m_fileFlows.SaveTableFileAs();
    }
}

void frmMain::dragEnterEvent(QDragEnterEvent* event)
{
    if (droppedTableFile(*event->mimeData()) && !m_operations.isRunning()) {
        acceptAsCopy(*event);
    }
}

void frmMain::dropEvent(QDropEvent* event)
{
    const auto file = droppedTableFile(*event->mimeData());
    if (file && !m_operations.isRunning() && acceptAsCopy(*event)) {
        actionBegins();
        if (selectTabOf(file->tab)) {
            m_fileFlows.openFile(file->name);
        }
    }
}

// Kept behaviour kb-exit-closes-first: the port is closed before the questions, and stays so after a Cancel.
void frmMain::mnuExit_Click()
{
    if (!m_operations.isRunning()) {
        m_connection.CloseTheDeviceDriver();
    }
    close();
}

void frmMain::BuildSummary()
{
    const bool onConfiguration = shownTable() == tables::kConfigurationTab;
    const auto kind = onConfiguration ? report::Summary::Configuration : report::Summary::KeyboardLanguage;
    tables::LiveTable& table = onConfiguration ? m_live_CFG : m_live_KB;
    m_summary.show(kind, [&table](std::string_view address) { return table.GetTableEntry(address); },
                   {.firmwareVersion = m_link.FirmwareVersion,
                    .comment = m_fileSide.comments(shownTable()),
                    .date = m_services.clock.today()});
}

// A box would hold up an operation that runs, and the Abort button with it.
void frmMain::mnuRead_Click()
{
    if (m_operations.isRunning()) {
        return;
    }
    m_services.boxes.show({.text = briefHelp(), .title = "Teslin Configure help"});
}

void frmMain::mnuOptions_Click()
{
    m_openedWindows.showOptions();
}

void frmMain::mnuEditSingle_Click()
{
    m_openedWindows.showSingleField();
}

void frmMain::mnuAbout_Click()
{
    m_openedWindows.showAbout();
}

void frmMain::btnNotes_Click()
{
    if (m_operations.isRunning()) {
        return;
    }
    const bool onConfiguration = shownTable() == tables::kConfigurationTab;
    m_services.boxes.show(
        {.text = onConfiguration ? notesOnConfiguration() : notesOnKeyboardLanguage(),
         .title = onConfiguration ? "Notes on the Configuration table" : "Notes on the Keyboard Language table",
         .icon = platform::BoxIcon::Information});
}

void frmMain::EnableButtons(bool enabled)
{
    const QWidget* const exit = m_face.Toolbar1->widgetForAction(&m_face.Toolbar1->button(ToolbarKey::Exit));
    if (!enabled && focusWidget() != exit) {
        takeKeyboardFrom(*m_face.Toolbar1);
    }
    m_face.Toolbar1->enableButtons(enabled);
}

void frmMain::Hide_All()
{
    takeKeyboardFrom(*m_editor_CFG);
    takeKeyboardFrom(*m_editor_KB);
    m_editor_CFG->hideControls();
    m_editor_KB->hideControls();
}

void frmMain::hideNotesButton()
{
    takeKeyboardFrom(*m_face.btnNotes);
    m_face.btnNotes->hide();
}

// To be called before controls are hidden or switched off. Left to itself, the keyboard would go from them to the next
// button of the toolbar, and an ordinary blank would press that.
void frmMain::takeKeyboardFrom(const QWidget& controls)
{
    const QWidget* const holder = focusWidget();
    if (holder == &controls || controls.isAncestorOf(holder)) {
        giveKeyboardToPage();
    }
}

void frmMain::giveKeyboardToPage()
{
    if (m_face.SSTab1->currentIndex() == tables::kReadTestTab) {
        txtReadTest().setFocus();
    } else {
        m_face.page(static_cast<tables::Tab>(m_face.SSTab1->currentIndex())).grid().setFocus();
    }
}

void frmMain::ShowPleaseWait()
{
    m_openedWindows.showPleaseWait();
}

void frmMain::HidePleaseWait()
{
    m_openedWindows.hidePleaseWait();
}

void frmMain::Timer1_Timer()
{
    m_protocol.Timer1_Timer();
}

// --- Tabs ---

// A tab click while the device is in use is carried out when the operation has ended.
void frmMain::tabMoved()
{
    if (m_operations.isRunning() || m_isUnloaded || m_face.SSTab1->currentIndex() == m_handledTab) {
        return;
    }
    const int previousTab = m_handledTab;
    m_handledTab = m_face.SSTab1->currentIndex();
    m_operations.run([this, previousTab] {
        SSTab1_Click(previousTab);
        if (m_operations.isClosing()) {
            m_handledTab = previousTab; // cut short; comes again when the window stays open
        }
    });
}

// In effect afterwards, if nothing else uses the device, even where it was shown already.
void frmMain::goToTab(tables::Tab tab)
{
    m_face.SSTab1->setCurrentIndex(tab);
    tabMoved();
}

// In the read test every key is the reader's.
void frmMain::goToNextTab(int step)
{
    QTabWidget& tabs = *m_face.SSTab1;
    if (tabs.currentIndex() != tables::kReadTestTab) {
        tabs.setCurrentIndex((tabs.currentIndex() + step + tabs.count()) % tabs.count());
    }
}

// What would do nothing is grey.
void frmMain::setDeviceInUse(bool inUse)
{
    m_face.menu.enableEntries(!inUse);
    if (inUse) {
        takeKeyboardFrom(*m_face.btnNotes);
    }
    m_face.btnNotes->setEnabled(!inUse);
    m_openedWindows.setDeviceInUse(inUse);
}

void frmMain::SSTab1_Click(int previousTab)
{
    if (previousTab == tables::kReadTestTab) {
        m_readTest.leave();
    }
    // Not the tab that is shown: the user may have gone on to another one, whose turn comes afterwards.
    switch (m_handledTab) {
    case tables::kConfigurationTab:
        showTable(m_live_CFG);
        break;
    case tables::kKeyboardLanguageTab:
        showTable(m_live_KB);
        break;
    default:
        takeKeyboardFrom(*m_face.Toolbar1);
        m_face.Toolbar1->button(ToolbarKey::Retrieve).setEnabled(false);
        m_face.Toolbar1->button(ToolbarKey::Update).setEnabled(false);
        m_readTest.StartReadTest();
        break;
    }
}

void frmMain::showTable(tables::LiveTable& table)
{
    m_face.btnNotes->show();
    EnableButtons(true);
    table.reopenEditor();
    showFileName();
}

tables::Tab frmMain::shownTable() const
{
    return m_handledTab == tables::kConfigurationTab ? tables::kConfigurationTab : tables::kKeyboardLanguageTab;
}

void frmMain::showFileName()
{
    const tables::Tab tab = shownTable();
    m_face.lblFilename->showFor(tab, rememberedFile(tab));
}

void frmMain::forgetCommentsAndFile(tables::Tab tab)
{
    comments(tab).clear();
    rememberedFile(tab).clear();
    m_face.lblFilename->clear();
    m_face.lblFilename->hide();
}

QPlainTextEdit& frmMain::comments(tables::Tab tab)
{
    return m_face.page(tab).comments();
}

std::filesystem::path& frmMain::rememberedFile(tables::Tab tab)
{
    return tab == tables::kConfigurationTab ? m_files.ConfigFileName : m_files.LanguageFileName;
}

void frmMain::rememberFile(tables::Tab tab, const std::filesystem::path& name)
{
    rememberedFile(tab) = name;
    showFileName();
}

// --- Unsaved changes and the end ---

bool frmMain::CheckForUnsavedData_CFG()
{
    return checkForUnsavedData(tables::kConfigurationTab, m_live_CFG);
}

bool frmMain::CheckForUnsavedData_KB()
{
    return checkForUnsavedData(tables::kKeyboardLanguageTab, m_live_KB);
}

bool frmMain::checkForUnsavedData(tables::Tab tab, const tables::LiveTable& table)
{
    if (!table.table().TableChanged) {
        return true;
    }
    const platform::BoxAnswer answer = askToSaveChanges(m_services.boxes, table.table().kind());
    if (answer == platform::BoxAnswer::Yes) {
        // Kept behaviour kb-yes-without-file: a cancelled dialog or a failed save does not hold the user up.
        // The dialog saves the table of the current tab, which need not be the one asked about. Whatever becomes of the
        // dialog, the user has decided to go on.
        do {
            goToTab(tab);
        } while (m_face.SSTab1->currentIndex() != tab); // leaving the read test lets the user click another tab
        m_fileFlows.SaveTableFileAs();
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
    SaveProgramConfig(m_services.settings, m_link, m_portSetup, *this);
    m_link.UserAbort = true;
    m_operations.setClosing(true);
    m_connection.CloseTheDeviceDriver();
    m_openedWindows.hideAll();
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
    if (m_operations.isRunning()) {
        // The operation first puts its row and its port in order; operationEnded() closes the window then.
        m_link.UserAbort = true;
        m_operations.setClosing(true);
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
    const bool wouldAsk = m_table_CFG.TableChanged || m_table_KB.TableChanged;
    // A close inside a close passes for one that went well.
    return !m_operations.isRunning() && !m_isUnloading && (mayAsk || !wouldAsk) && close();
}

void frmMain::operationEnded()
{
    setDeviceInUse(false);
    const bool wasLost = std::exchange(m_link.connectionLost, false);
    const bool isUnfinished = std::exchange(m_updateIsUnfinished, false);
    const bool wasToClose = m_operations.isClosing() && !m_isUnloaded;
    if (wasToClose) {
        m_operations.setClosing(false);
        if (close()) {
            return;
        }
    }
    tabMoved();
    // Last: nobody may take a broken transfer for a finished one.
    if (wasLost) {
        m_face.StatusBar1.setFirst(tr("Lost the connection to COM%1").arg(m_link.PortNumber));
    } else if (wasToClose && isUnfinished) {
        m_face.StatusBar1.setFirst(tr("The update was not finished"));
    }
}

} // namespace app
