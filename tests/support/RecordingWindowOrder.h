#pragma once

#include "platform/qt/WindowOrder.h"

#include <QString>
#include <QStringList>
#include <QWidget>

namespace testsupport {

// Writes down what is asked of the order of windows and changes nothing: "name insertAfter flags visible".
class RecordingWindowOrder final : public platform::WindowOrder
{
public:
    void SetWindowPos(QWidget& window, int insertAfter, unsigned flags) override
    {
        calls << QStringLiteral("%1 %2 %3 %4")
                     .arg(window.objectName())
                     .arg(insertAfter)
                     .arg(flags)
                     .arg(QLatin1String(window.isVisible() ? "visible" : "hidden"));
    }

    QStringList calls;
};

} // namespace testsupport
