#include "platform/qt/ReceiveEvents.h"

#include "platform/SerialControl.h"

#include <utility>

namespace platform {

void ReceiveEvents::append(std::string_view bytes)
{
    m_lines.append(bytes);
    announceLater();
}

void ReceiveEvents::clear()
{
    m_lines.clear();
    m_announced.clear();
}

void ReceiveEvents::setRThreshold(int threshold)
{
    m_threshold = threshold;
    announceLater();
}

std::string ReceiveEvents::Input()
{
    return m_announced.empty() ? m_lines.takeAll() : std::exchange(m_announced, {});
}

void ReceiveEvents::announceLater()
{
    if (m_threshold < 1 || m_isAnnouncing || !m_lines.hasLine()) {
        return;
    }
    m_isAnnouncing = true;
    // Queued: the bytes come from inside a read or a write of the port, where a handler that waits would keep the port
    // from announcing what arrives meanwhile.
    QMetaObject::invokeMethod(this, &ReceiveEvents::announceOne, Qt::QueuedConnection);
}

void ReceiveEvents::announceOne()
{
    m_isAnnouncing = false;
    if (m_threshold < 1 || !m_lines.hasLine()) {
        return;
    }
    // The handler of an earlier event may be waiting further up; it finds its own line when this one has returned.
    std::string outer = std::exchange(m_announced, m_lines.takeLine());
    announceLater(); // the next line first: this handler may wait, and the next event must come then
    m_commEvent = SerialControl::kDataReceived;
    if (m_onComm) {
        m_onComm();
    }
    m_announced = std::move(outer);
}

} // namespace platform
