#include "app/mainwindow/WindowSides.h"

#include "app/mainwindow/frmMain.h"
#include "app/settings/WindowPlacement.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/PathText.h"
#include "platform/qt/VisibleText.h"

#include <QTextDocument>

namespace app {

using platform::toQString;

// --- TableSide ---

bool TableSide::CheckForUnsavedData()
{
    return m_tab == tables::kConfigurationTab ? m_window.CheckForUnsavedData_CFG() : m_window.CheckForUnsavedData_KB();
}

void TableSide::Hide_All()
{
    m_window.Hide_All();
}

void TableSide::EditData()
{
    if (m_tab == tables::kConfigurationTab) {
        m_window.editor_CFG().EditData_CFG();
    } else {
        m_window.editor_KB().EditData_KB();
    }
}

void TableSide::forgetCommentsAndFile()
{
    m_window.forgetCommentsAndFile(m_tab);
}

void TableSide::setTabCaption(std::string_view caption)
{
    m_window.tabs().setTabText(m_tab, toQString(caption));
}

void TableSide::setEditTitle(std::string_view title)
{
    if (m_tab == tables::kConfigurationTab) {
        m_window.editor_CFG().setEditTitle(title);
    } else {
        m_window.editor_KB().setEditTitle(title);
    }
}

void TableSide::setStatusText(std::string_view text)
{
    m_window.statusPanels().setFirst(toQString(text));
}

void TableSide::showEmptyDecEntry()
{
    m_window.editor_CFG().showEmptyDecEntry();
}

void TableSide::beep()
{
    m_window.services().beep.sound();
}

void TableSide::processPendingEvents()
{
    m_window.services().events.processPending();
}

// --- LinkSide ---

void LinkSide::setStatusText(std::string_view text)
{
    m_window.statusPanels().setFirst(toQString(text));
}

void LinkSide::setPortText(std::string_view text)
{
    m_window.statusPanels().setSecond(toQString(text));
}

void LinkSide::setSendLamp(bool lit)
{
    m_window.identification().shpSend().setLit(lit);
}

void LinkSide::setRecvLamp(bool lit)
{
    m_window.identification().shpRecv().setLit(lit);
}

void LinkSide::setIdentification(device::Identification which, std::string_view caption)
{
    m_window.identification().setCaption(which, caption);
}

void LinkSide::showIdentification(device::Identification which, bool visible)
{
    m_window.identification().showValueAndTitle(which, visible);
}

void LinkSide::showDriverName()
{
    m_window.identification().showValue(device::Identification::Driver);
}

void LinkSide::GetLanguageName()
{
    m_window.GetLanguageName();
}

void LinkSide::ShowPleaseWait()
{
    m_window.ShowPleaseWait();
}

void LinkSide::HidePleaseWait()
{
    m_window.HidePleaseWait();
}

void LinkSide::EnableButtons(bool enabled)
{
    m_window.EnableButtons(enabled);
}

int LinkSide::currentTab() const
{
    return m_window.handledTab();
}

bool LinkSide::CheckForUnsavedData_CFG()
{
    return m_window.CheckForUnsavedData_CFG();
}

bool LinkSide::CheckForUnsavedData_KB()
{
    return m_window.CheckForUnsavedData_KB();
}

void LinkSide::Hide_All()
{
    m_window.Hide_All();
}

void LinkSide::setExitCaption(std::string_view caption)
{
    m_window.toolbar().setExitCaption(toQString(caption));
}

void LinkSide::showProgress(int rowsDone, int rows)
{
    m_window.statusPanels().showProgress(rowsDone, rows);
}

void LinkSide::setReadTestText(std::string_view text)
{
    m_window.txtReadTest().setAnsiText(text);
}

void LinkSide::appendReadTestText(std::string_view text)
{
    m_window.txtReadTest().appendAnsiText(text);
}

void LinkSide::focusReadTest()
{
    if (m_window.txtReadTest().isVisible()) {
        m_window.txtReadTest().setFocus();
    }
}

void LinkSide::hideNotesButton()
{
    m_window.hideNotesButton();
}

void LinkSide::setEditTitle_CFG(std::string_view title)
{
    m_window.editor_CFG().setEditTitle(title);
}

void LinkSide::enableExitButton()
{
    m_window.toolbar().button(ToolbarKey::Exit).setEnabled(true);
}

bool LinkSide::isBusy() const
{
    return m_window.operations().isRunning();
}

bool LinkSide::wasCutShort() const
{
    return m_window.link().connectionLost || m_window.operations().isClosing();
}

bool LinkSide::run(const std::function<void()>& work)
{
    return m_window.operations().run(work);
}

bool LinkSide::OpenTheDeviceDriver()
{
    return m_window.connection().OpenTheDeviceDriver();
}

void LinkSide::CloseTheDeviceDriver()
{
    m_window.connection().CloseTheDeviceDriver();
}

void LinkSide::Send_Cmd(std::string_view cmd)
{
    m_window.protocol().Send_Cmd(cmd);
}

void LinkSide::Send_Parameter_CFG(const std::string& address)
{
    m_window.protocol().Send_Parameter_CFG(address);
}

// --- PlacementSide ---

bool PlacementSide::restore(QWidget& form)
{
    return restorePlacement(m_settings, form);
}

void PlacementSide::save(const QWidget& form)
{
    SaveWindowPlacement(m_settings, form);
}

// --- FileSide ---

int FileSide::currentTab() const
{
    return m_window.handledTab();
}

std::string FileSide::comments(tables::Tab tab) const
{
    // The raw text: what the plain one makes of no-break spaces and separators would be lost.
    return platform::fromVisible(m_window.comments(tab).document()->toRawText());
}

void FileSide::setComments(tables::Tab tab, std::string_view text)
{
    m_window.comments(tab).setPlainText(platform::toVisible(text));
}

std::filesystem::path FileSide::rememberedFile(tables::Tab tab) const
{
    const RememberedFiles& files = m_window.rememberedFiles();
    return tab == tables::kConfigurationTab ? files.ConfigFileName : files.LanguageFileName;
}

void FileSide::rememberFile(tables::Tab tab, const std::filesystem::path& name)
{
    m_window.rememberFile(tab, name);
}

std::string FileSide::displayName(const std::filesystem::path& name) const
{
    return platform::toAnsi(platform::pathText(name));
}

void FileSide::Hide_All()
{
    m_window.Hide_All();
}

void FileSide::setEditTitle_CFG(std::string_view title)
{
    m_window.editor_CFG().setEditTitle(title);
}

void FileSide::EditData_CFG()
{
    m_window.editor_CFG().EditData_CFG();
}

void FileSide::EditData_KB()
{
    m_window.editor_KB().EditData_KB();
}

void FileSide::EnableButtons(bool enabled)
{
    m_window.EnableButtons(enabled);
}

void FileSide::beep()
{
    m_window.services().beep.sound();
}

} // namespace app
