#include "app/dialogs/Dialogs.h"

#include "app/dialogs/frmAbout.h"
#include "platform/qt/FrontWindow.h"

#include <QEventLoop>

#include <utility>

namespace app {

Dialogs::Dialogs(QWidget& mainWindow, const Services& services, device::ReaderLink& link,
                 std::function<void()> saveProgramConfig)
    : m_window(mainWindow)
    , m_services(services)
    , m_link(link)
    , m_options(link.state(), link.operations(), link.connection(), link.virtualPort(), services.boxes,
                services.windowOrder, std::move(saveProgramConfig), &mainWindow)
{}

void Dialogs::showSplash()
{
    m_splash = new frmSplash(&m_window);
    m_splash->showInMiddle();
}

void Dialogs::raiseSplash()
{
    if (m_splash) {
        m_splash->standAboveMainWindow();
    }
}

void Dialogs::closeSplash()
{
    if (m_splash) {
        m_splash->close();
    }
}

void Dialogs::showOptions()
{
    if (!m_link.isBusy()) {
        m_options.showInFront();
    }
}

void Dialogs::showSingleField()
{
    if (m_link.isBusy()) {
        return;
    }
    if (!m_singleField) {
        m_singleField.emplace(m_link.singleSetting(), m_services.windowOrder, &m_window);
    }
    m_singleField->showInFront();
}

void Dialogs::showAbout()
{
    // Waiting for the box inside an operation would hold the operation up.
    if (m_link.isBusy()) {
        return;
    }
    if (m_about != nullptr) {
        // Closed already, perhaps, while another window's wait keeps the one below from going on.
        platform::showInFront(*m_about, m_services.windowOrder);
        return;
    }
    frmAbout about(m_services.registry, m_services.programs, m_services.dosNames, m_services.boxes, &m_window);
    m_about = &about;
    about.Form_Load();
    QEventLoop untilClosed;
    QObject::connect(&about, &frmAbout::unloaded, &untilClosed, &QEventLoop::quit);
    platform::showInFront(about, m_services.windowOrder);
    while (about.isVisible() && untilClosed.exec() == 0) { // no loop runs any more when the program ends
    }
    m_about = nullptr;
}

void Dialogs::setDeviceInUse(bool inUse)
{
    m_options.setDeviceInUse(inUse);
    if (m_singleField) {
        m_singleField->setDeviceInUse(inUse);
    }
}

void Dialogs::hideAll()
{
    closeSplash();
    m_options.hide();
    if (m_singleField) {
        m_singleField->hide();
    }
    if (m_about != nullptr) {
        m_about->hide();
    }
}

} // namespace app
