#include "app/settings/StoredSettings.h"

#include "widgets/WindowPlacement.h"

namespace app {

namespace {

struct Setting
{
    const char* section;
    const char* key;
    const char* factoryValue;
};

constexpr Setting kFriendlyName = {"Name", "Friendly Name", "Teslin"};
constexpr Setting kVirtualPort = {"Port", "Virtual Port", "COM5"};

std::string read(const platform::ProfileStrings& settings, const Setting& setting)
{
    const std::string value = settings.get(setting.section, setting.key);
    return value.empty() ? setting.factoryValue : value;
}

} // namespace

void GetProgramConfig(const platform::ProfileStrings& settings, device::LinkState& link, device::VirtualPort& port)
{
    link.DriverFriendlyName = read(settings, kFriendlyName);
    port.setPortText(read(settings, kVirtualPort));
}

void SaveProgramConfig(platform::ProfileStrings& settings, const device::LinkState& link,
                       const device::VirtualPort& port, const QWidget& mainWindow)
{
    const platform::ProfileStrings::Together together(settings);
    widgets::SaveWindowPlacement(settings, mainWindow);
    settings.set(kFriendlyName.section, kFriendlyName.key, link.DriverFriendlyName);
    settings.set(kVirtualPort.section, kVirtualPort.key, port.portText());
}

} // namespace app
