#pragma once

#include "app/dialogs/frmPleaseWait.h"
#include "app/mainwindow/StatusPanels.h"
#include "device/LinkDisplay.h"
#include "files/KeyboardLayouts.h"
#include "platform/qt/WindowOrder.h"
#include "widgets/Lamp.h"

#include <QLabel>
#include <QWidget>

#include <array>
#include <filesystem>
#include <string_view>

namespace app {

// What the main window shows of the link: the strip above the tabs, with what driver and reader say about themselves,
// the reader's keyboard layout and the two lamps; the port and the transfer's progress in the status bar; and the small
// window of a wait. The strip's height is that of one line whatever it shows.
class LinkPanel final : public QWidget, public device::LinkDisplay
{
    Q_OBJECT

public:
    // The list of keyboard layouts is that of the program in the folder. Panels and window order outlive the panel.
    LinkPanel(StatusPanels& panels, platform::WindowOrder& order, std::filesystem::path programFolder,
              QWidget* parent = nullptr);

    void setPortText(std::string_view text) override;
    void setLamp(device::Lamp which, bool lit) override;
    void setIdentification(device::Identification which, std::string_view caption) override;
    void showIdentification(device::Identification which, device::Shown shown) override;
    void GetLanguageName(std::string_view KeyboardLanguageId) override;
    void ShowPleaseWait() override;
    void HidePleaseWait() override;
    void showProgress(int rowsDone, int rows) override;

    // The keyboard layout that was looked up last.
    [[nodiscard]] const files::KeyboardLanguage& language() const { return m_language; }

private:
    struct Entry
    {
        QLabel* title = nullptr;
        QLabel* value = nullptr;
    };
    [[nodiscard]] Entry& entry(device::Identification which) { return m_entries[static_cast<std::size_t>(which)]; }
    [[nodiscard]] QLabel* makeLabel(const char* name, const QString& text);

    StatusPanels& m_panels;
    frmPleaseWait m_pleaseWait;
    std::filesystem::path m_programFolder;
    files::KeyboardLanguage m_language;
    std::array<Entry, 3> m_entries;
    QLabel* m_languageName = nullptr;
    widgets::Lamp* m_send = nullptr;
    widgets::Lamp* m_recv = nullptr;
};

} // namespace app
