#include "tests/system/driver/WindowDriver.h"

#include "tests/system/driver/CommandInput.h"
#include "tests/system/driver/DriverCommands.h"

namespace windowdriver {

WindowDriver::WindowDriver(QObject* parent)
    : QObject(parent)
{
    listenToInput(*this, [this](const QByteArray& bytes) { carryOutLines(bytes); });
}

void WindowDriver::carryOutLines(const QByteArray& bytes)
{
    m_unfinished.append(bytes);
    for (qsizetype end = m_unfinished.indexOf('\n'); end >= 0 && m_isHeard; end = m_unfinished.indexOf('\n')) {
        const QByteArray line = m_unfinished.left(end);
        m_unfinished.remove(0, end + 1);
        m_isHeard = writeToOutput(carryOut(QString::fromUtf8(line)).toUtf8() + '\n');
    }
}

} // namespace windowdriver
