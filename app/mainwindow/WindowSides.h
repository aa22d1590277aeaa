#pragma once

#include "device/LinkWindow.h"
#include "device/ReadTest.h"
#include "device/TransferWindow.h"
#include "files/TableFileWindow.h"
#include "platform/ProfileStrings.h"
#include "report/ui/PlacementStore.h"
#include "tables/DeviceSender.h"
#include "tables/EditorHost.h"
#include "tables/ParamTables.h"
#include "tables/TableHost.h"

// The main window as the rooms below see it. Each side is thin: it hands what a room asks for to the piece of the
// window that has it.
namespace app {

class frmMain;

// What one table and its field editor see.
class TableSide final : public tables::TableHost, public tables::EditorHost
{
public:
    TableSide(frmMain& window, tables::Tab tab)
        : m_window(window)
        , m_tab(tab)
    {}

    [[nodiscard]] bool CheckForUnsavedData() override;
    void Hide_All() override;
    void EditData() override;
    void forgetCommentsAndFile() override;
    void setTabCaption(std::string_view caption) override;
    void setEditTitle(std::string_view title) override;
    void setStatusText(std::string_view text) override;
    void showEmptyDecEntry() override;
    void beep() override;
    void processPendingEvents() override;

private:
    frmMain& m_window;
    tables::Tab m_tab;
};

// What the device link and the transfers see, and what the editors see of the link.
class LinkSide final : public device::LinkWindow,
                       public device::TransferWindow,
                       public device::ReadTestWindow,
                       public tables::DeviceSender
{
public:
    explicit LinkSide(frmMain& window)
        : m_window(window)
    {}

    void setStatusText(std::string_view text) override;
    void setPortText(std::string_view text) override;
    void setSendLamp(bool lit) override;
    void setRecvLamp(bool lit) override;
    void setIdentification(device::Identification which, std::string_view caption) override;
    void showIdentification(device::Identification which, bool visible) override;
    void showDriverName() override;
    void GetLanguageName() override;
    void ShowPleaseWait() override;
    void HidePleaseWait() override;
    void EnableButtons(bool enabled) override;

    [[nodiscard]] int currentTab() const override;
    [[nodiscard]] bool CheckForUnsavedData_CFG() override;
    [[nodiscard]] bool CheckForUnsavedData_KB() override;
    void Hide_All() override;
    void setExitCaption(std::string_view caption) override;
    void showProgress(int rowsDone, int rows) override;

    void setReadTestText(std::string_view text) override;
    void appendReadTestText(std::string_view text) override;
    void focusReadTest() override;
    void hideNotesButton() override;
    void setEditTitle_CFG(std::string_view title) override;
    void enableExitButton() override;

    [[nodiscard]] bool isBusy() const override;
    [[nodiscard]] bool wasCutShort() const override;
    bool run(const std::function<void()>& work) override;
    [[nodiscard]] bool OpenTheDeviceDriver() override;
    void CloseTheDeviceDriver() override;
    void Send_Cmd(std::string_view cmd) override;
    void Send_Parameter_CFG(const std::string& address) override;

private:
    frmMain& m_window;
};

// What the summary window sees: where windows stood last time.
class PlacementSide final : public report::PlacementStore
{
public:
    explicit PlacementSide(platform::ProfileStrings& settings)
        : m_settings(settings)
    {}

    bool restore(QWidget& form) override;
    void save(const QWidget& form) override;

private:
    platform::ProfileStrings& m_settings;
};

// What opening and saving table files sees.
class FileSide final : public files::TableFileWindow
{
public:
    explicit FileSide(frmMain& window)
        : m_window(window)
    {}

    [[nodiscard]] int currentTab() const override;
    [[nodiscard]] std::string comments(tables::Tab tab) const override;
    void setComments(tables::Tab tab, std::string_view text) override;
    [[nodiscard]] std::filesystem::path rememberedFile(tables::Tab tab) const override;
    void rememberFile(tables::Tab tab, const std::filesystem::path& name) override;
    [[nodiscard]] std::string displayName(const std::filesystem::path& name) const override;
    void Hide_All() override;
    void setEditTitle_CFG(std::string_view title) override;
    void EditData_CFG() override;
    void EditData_KB() override;
    void EnableButtons(bool enabled) override;
    void beep() override;

private:
    frmMain& m_window;
};

} // namespace app
