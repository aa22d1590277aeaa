#pragma once

#include "platform/Beep.h"
#include "platform/DosNames.h"
#include "platform/MessageBoxes.h"
#include "platform/Registry.h"
#include "platform/StartProgram.h"

#include <QDialog>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace app {

// The about box. Also checks at start-up whether the driver is installed and starts the system's own information tool.
class frmAbout final : public QDialog
{
    Q_OBJECT

public:
    // Everything outlives the box.
    frmAbout(const platform::Registry& registry, platform::StartProgram& programs, const platform::DosNames& names,
             platform::MessageBoxes& boxes, QWidget* parent);

    // True when the driver's file is at one of its fixed places; otherwise beeps, tells the user and returns false. The
    // places do not follow the system's own folder: a system installed elsewhere is reported as lacking the driver.
    // Shows no about box.
    static bool KSD_Driver_Is_Installed(const platform::DosNames& names, platform::MessageBoxes& boxes,
                                        platform::Beep& beep);
    // The same, asking the given function which file exists: one place after the other, up to the first that has it.
    [[nodiscard]] static bool hasDriverFile(const std::function<bool(std::string_view)>& exists);

    // Starts the system-information tool, or tells the user that there is none.
    void StartSysInfo();
    // Reads a value of the registry as text; false, and KeyVal as it was, when there is none.
    [[nodiscard]] bool GetKeyValue(std::uint32_t KeyRoot, std::string_view KeyName, std::string_view SubKeyRef,
                                   std::string& KeyVal) const;

    void Form_Load();
    void cmdOK_Click();
    void cmdSysInfo_Click();

signals:
    // The box is no longer visible, however that came about.
    void unloaded();

protected:
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] QLayout* makeTitle();
    [[nodiscard]] QLayout* makeButtons();
    [[nodiscard]] QLayout* makeNotices();

    [[nodiscard]] bool startedSysInfo();

    const platform::Registry& m_registry;
    platform::StartProgram& m_programs;
    const platform::DosNames& m_names;
    platform::MessageBoxes& m_boxes;
};

} // namespace app
