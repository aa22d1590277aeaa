#pragma once

#include "app/dialogs/PausedButtons.h"
#include "device/SingleSetting.h"
#include "platform/qt/WindowOrder.h"
#include "widgets/EntryBox.h"

#include <QDialog>
#include <QPushButton>

namespace app {

// Reads or writes one parameter of the reader by its address. Stays above other windows and leaves them usable.
class dlgSingleField final : public QDialog
{
    Q_OBJECT
    Q_PROPERTY(bool AlwaysOnTop READ AlwaysOnTop WRITE setAlwaysOnTop)

public:
    // Setting and window order outlive the dialog.
    dlgSingleField(device::SingleSetting& setting, platform::WindowOrder& order, QWidget* parent);

    // Opens the dialog afresh, or brings the open one to the front as it is.
    void showInFront();

    // The buttons that use the device are grey while something else uses it.
    void setDeviceInUse(bool inUse) { m_deviceButtons.setPaused(inUse); }

    // The state last set.
    [[nodiscard]] bool AlwaysOnTop() const { return m_alwaysOnTop; }
    void setAlwaysOnTop(bool onTop);

    void Form_Load();
    void txtSingleAddress_KeyPress(int& KeyAscii);
    void txtSingleValue_KeyPress(int& KeyAscii);
    void txtSingleAddress_LostFocus();
    void txtSingleValue_LostFocus();
    void btnGetCurrentSingle_Click();
    void btnUpdateSingleField_Click();
    void OKButton_Click();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setUpBox(widgets::EntryBox& box);
    void setUpButton(QPushButton& button, const QString& name);
    void layOut();

    device::SingleSetting& m_setting;
    platform::WindowOrder& m_order;
    bool m_alwaysOnTop = false;

    widgets::EntryBox* txtSingleAddress = nullptr;
    widgets::EntryBox* txtSingleValue = nullptr;
    QPushButton* btnGetCurrentSingle = nullptr;
    QPushButton* btnUpdateSingleField = nullptr;
    QPushButton* OKButton = nullptr;
    PausedButtons m_deviceButtons;
};

} // namespace app
