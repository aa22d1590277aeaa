#pragma once

#include "app/dialogs/dlgSingleField.h"
#include "app/dialogs/frmOptions.h"
#include "app/startup/Services.h"
#include "app/startup/frmSplash.h"
#include "device/ReaderLink.h"

#include <QPointer>

#include <functional>
#include <optional>

namespace app {

class frmAbout;

// The windows that the main window opens, at most one of each, and what they need of it.
class Dialogs final
{
public:
    // saveProgramConfig writes all settings. Everything outlives this object.
    Dialogs(QWidget& mainWindow, const Services& services, device::ReaderLink& link,
            std::function<void()> saveProgramConfig);

    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;

    // Before the first step of the start.
    void showSplash();
    // The main window is on screen: the splash stands above it for a moment more.
    void raiseSplash();
    // Does nothing when it is gone already.
    void closeSplash();

    // While the device is in use neither opens: the options could change the port under the operation.
    void showOptions();
    void showSingleField();
    // Returns when the about box is gone; the program goes on meanwhile. Called again meanwhile, it brings the box to
    // the front and returns at once.
    void showAbout();

    // Greys the buttons that do nothing while the device is in use.
    void setDeviceInUse(bool inUse);
    // The program ends.
    void hideAll();

private:
    QWidget& m_window;
    const Services& m_services;
    device::ReaderLink& m_link;
    frmOptions m_options;
    std::optional<dlgSingleField> m_singleField; // built when it is first opened
    QPointer<frmSplash> m_splash;                // until it is closed; the main window's
    frmAbout* m_about = nullptr;                 // while a call of showAbout() waits for it
};

} // namespace app
