#pragma once

#include "app/dialogs/dlgSingleField.h"
#include "app/dialogs/frmOptions.h"
#include "app/dialogs/frmPleaseWait.h"
#include "app/startup/frmSplash.h"
#include "device/SingleSetting.h"

#include <QPointer>

#include <optional>

namespace app {

class frmAbout;
class frmMain;

// The main window as changing a single setting sees it.
class SingleSettingSide final : public device::SingleSettingWindow
{
public:
    explicit SingleSettingSide(frmMain& window)
        : m_window(window)
    {}

    void EditData_CFG() override;
    void EditData_KB() override;

private:
    void reopenShownEditor(int refreshedTab);

    frmMain& m_window;
};

// The windows that the main window opens, at most one of each, and what they need of it.
class OpenedWindows final
{
public:
    // The main window outlives this object; its link, tables and services are there already.
    explicit OpenedWindows(frmMain& window);

    OpenedWindows(const OpenedWindows&) = delete;
    OpenedWindows& operator=(const OpenedWindows&) = delete;

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
    void showPleaseWait();
    void hidePleaseWait();

    // Greys the buttons that do nothing while the device is in use.
    void setDeviceInUse(bool inUse);
    // The program ends.
    void hideAll();

private:
    frmMain& m_window;
    SingleSettingSide m_side;
    device::SingleSetting m_singleSetting;
    frmOptions m_options;
    std::optional<dlgSingleField> m_singleField; // built when it is first opened
    frmPleaseWait m_pleaseWait;
    QPointer<frmSplash> m_splash; // until it is closed; the main window's
    frmAbout* m_about = nullptr;  // while a call of showAbout() waits for it
};

} // namespace app
