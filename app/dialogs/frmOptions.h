#pragma once

#include "app/dialogs/PausedButtons.h"
#include "device/DriverConnection.h"
#include "device/VirtualPort.h"
#include "platform/qt/WindowOrder.h"

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>

#include <functional>
#include <vector>

namespace app {

// The options: the driver's device name and the virtual port, entered and tested at once. What it shows lives in the
// link state and the virtual port, whether or not it is open.
class frmOptions final : public QDialog, public device::VirtualPort::Listener
{
    Q_OBJECT

public:
    // saveProgramConfig writes all settings. Everything outlives the dialog.
    frmOptions(device::LinkState& link, device::Operations& operations, device::DriverConnection& connection,
               device::VirtualPort& virtualPort, platform::MessageBoxes& boxes, platform::WindowOrder& order,
               std::function<void()> saveProgramConfig, QWidget* parent);
    ~frmOptions() override;

    // Opens the dialog, modal to its parent, or brings the open one to the front. Returns at once.
    void showInFront();

    // The tests are grey while something uses the device.
    void setDeviceInUse(bool inUse) { m_tests.setPaused(inUse); }

    void Form_Load();
    void Form_KeyDown(QKeyEvent& event);
    void txtFriendlyName_Change();
    void sclComPort_Change();
    void btnTestName_Click();
    void btnTestPort_Click();
    void cmdOK_Click();
    void cmdCancel_Click();
    void tbsOptions_Click();

    // Escape and the close box are Cancel, except while a test runs: it would come back to a dialog that is gone.
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildPage();
    void connectEverything();
    void centreOnScreen();
    void virtualPortChanged(device::VirtualPort::Part part) override;
    void followVirtualPort();
    void runTest(QPushButton& button, const std::function<void()>& test);
    void testName();
    void testPort();
    void say(std::string text);

    device::LinkState& m_link;
    device::Operations& m_operations;
    device::DriverConnection& m_connection;
    device::VirtualPort& m_virtualPort;
    platform::MessageBoxes& m_boxes;
    platform::WindowOrder& m_order;
    std::function<void()> m_saveProgramConfig;

    // Cancel goes back to the port at opening, unless a test has set another one to use.
    std::string m_portTextAtOpening;
    int m_portScrollAtOpening = 0;
    bool m_testSetPort = false;
    bool m_isTesting = false;

    QTabBar* tbsOptions = nullptr;
    std::vector<QWidget*> picOptions; // a page for each tab
    QLineEdit* txtFriendlyName = nullptr;
    QLineEdit* txtComPort = nullptr;
    QScrollBar* sclComPort = nullptr;
    QPushButton* btnTestName = nullptr;
    QPushButton* btnTestPort = nullptr;
    PausedButtons m_tests;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
};

} // namespace app
