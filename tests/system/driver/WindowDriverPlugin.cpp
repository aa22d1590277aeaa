#include "tests/system/driver/WindowDriver.h"

#include <QGenericPlugin>

// Puts the window driver into a program from outside, by its environment alone:
//
//     QT_PLUGIN_PATH=FOLDER QT_QPA_GENERIC_PLUGINS=windowdriver PROGRAM
//
// where FOLDER holds generic/libwindowdriver.so. The program needs no change and knows nothing of it.
class WindowDriverPlugin final : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "windowdriver.json")

public:
    QObject* create(const QString& name, const QString&) override
    {
        return name == QLatin1String("windowdriver") ? new windowdriver::WindowDriver : nullptr;
    }
};

#include "WindowDriverPlugin.moc"
