#include "app/mainwindow/OpenedWindows.h"

#include "app/dialogs/frmAbout.h"
#include "app/mainwindow/frmMain.h"
#include "app/settings/ProgramConfig.h"
#include "platform/qt/FrontWindow.h"

#include <QEventLoop>

namespace app {

// --- SingleSettingSide ---

void SingleSettingSide::EditData_CFG()
{
    m_window.editor_CFG().EditData_CFG();
    reopenShownEditor(tables::kConfigurationTab);
}

void SingleSettingSide::EditData_KB()
{
    m_window.editor_KB().EditData_KB();
    reopenShownEditor(tables::kKeyboardLanguageTab);
}

// Only one editor has its controls at a time. When the other table's tab is shown, its editor has just lost them.
void SingleSettingSide::reopenShownEditor(int refreshedTab)
{
    const int shownTab = m_window.handledTab();
    if (shownTab == refreshedTab) {
        return;
    }
    if (shownTab == tables::kConfigurationTab) {
        m_window.paramTables().CFG.reopenEditor();
    } else if (shownTab == tables::kKeyboardLanguageTab) {
        m_window.paramTables().KB.reopenEditor();
    }
}

// --- OpenedWindows ---

OpenedWindows::OpenedWindows(frmMain& window)
    : m_window(window)
    , m_side(window)
    , m_singleSetting(window.link(), window.operations(), window.protocol(), window.connection(), window.paramTables(),
                      m_side, window.services().boxes)
    , m_options(
          window.link(), window.operations(), window.connection(), window.portSetup(), window.services().boxes,
          window.services().windowOrder,
          [&window] { SaveProgramConfig(window.services().settings, window.link(), window.portSetup(), window); },
          &window)
    , m_pleaseWait(window.services().windowOrder, &window)
{}

void OpenedWindows::showSplash()
{
    m_splash = new frmSplash(&m_window);
    m_splash->showInMiddle();
}

void OpenedWindows::raiseSplash()
{
    if (m_splash) {
        m_splash->standAboveMainWindow();
    }
}

void OpenedWindows::closeSplash()
{
    if (m_splash) {
        m_splash->close();
    }
}

void OpenedWindows::showOptions()
{
    if (!m_window.operations().isRunning()) {
        m_options.showInFront();
    }
}

void OpenedWindows::showSingleField()
{
    if (m_window.operations().isRunning()) {
        return;
    }
    if (!m_singleField) {
        m_singleField.emplace(m_singleSetting, m_window.services().windowOrder, &m_window);
    }
    m_singleField->showInFront();
}

void OpenedWindows::showAbout()
{
    // Waiting for the box inside an operation would hold the operation up.
    if (m_window.operations().isRunning()) {
        return;
    }
    if (m_about != nullptr) {
        // Closed already, perhaps, while another window's wait keeps the one below from going on.
        platform::showInFront(*m_about, m_window.services().windowOrder);
        return;
    }
    const Services& services = m_window.services();
    frmAbout about(services.registry, services.programs, services.dosNames, services.boxes, &m_window);
    m_about = &about;
    about.Form_Load();
    QEventLoop untilClosed;
    QObject::connect(&about, &frmAbout::unloaded, &untilClosed, &QEventLoop::quit);
    platform::showInFront(about, services.windowOrder);
    while (about.isVisible() && untilClosed.exec() == 0) { // no loop runs any more when the program ends
    }
    m_about = nullptr;
}

void OpenedWindows::showPleaseWait()
{
    m_pleaseWait.showOver(m_window);
}

void OpenedWindows::hidePleaseWait()
{
    m_pleaseWait.unload();
}

void OpenedWindows::setDeviceInUse(bool inUse)
{
    m_options.setDeviceInUse(inUse);
    if (m_singleField) {
        m_singleField->setDeviceInUse(inUse);
    }
}

void OpenedWindows::hideAll()
{
    closeSplash();
    m_options.hide();
    if (m_singleField) {
        m_singleField->hide();
    }
    m_pleaseWait.unload();
    if (m_about != nullptr) {
        m_about->hide();
    }
}

} // namespace app
