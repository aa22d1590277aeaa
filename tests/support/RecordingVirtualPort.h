#pragma once

#include "device/VirtualPort.h"
#include "tests/support/CallLog.h"

#include <string>

namespace testsupport {

// An open options dialog as the device link sees it: every change of the port goes to the log.
class RecordingVirtualPort final : public device::VirtualPort::Listener
{
public:
    // Both outlive this object.
    RecordingVirtualPort(CallLog& log, device::VirtualPort& port)
        : m_log(log)
        , m_port(port)
    {
        port.setListener(this);
    }
    ~RecordingVirtualPort() override { m_port.setListener(nullptr); }
    RecordingVirtualPort(const RecordingVirtualPort&) = delete;
    RecordingVirtualPort& operator=(const RecordingVirtualPort&) = delete;

    void virtualPortChanged(device::VirtualPort::Part part) override
    {
        if (part == device::VirtualPort::Part::Text) {
            m_log.push_back("port box: " + shown(m_port.portText()));
        } else {
            m_log.push_back("port scroll: " + std::to_string(m_port.portScroll()));
        }
    }

private:
    CallLog& m_log;
    device::VirtualPort& m_port;
};

} // namespace testsupport
