#include "device/ReaderLink.h"

#include "device/Commands.h"

namespace device {

ReaderLink::ReaderLink(const LinkServices& services, const LinkSurfaces& surfaces, tables::ParamTables& tables)
    : m_status(surfaces.status)
    , m_protocol(m_state, m_operations, services, surfaces, tables)
    , m_connection(m_state, m_protocol, services, surfaces, m_virtualPort)
    , m_transfer(m_state, m_operations, m_protocol, m_connection, services, surfaces, tables)
    , m_readTest(m_state, m_protocol, m_connection, services, surfaces, tables)
    , m_singleSetting(m_state, m_operations, m_protocol, m_connection, tables, services.boxes)
{}

bool ReaderLink::sendRow_CFG(const std::string& address)
{
    bool sent = false;
    m_operations.run([&] {
        if (m_connection.OpenTheDeviceDriver()) {
            m_protocol.Send_Parameter_CFG(address);
            m_connection.CloseTheDeviceDriver();
            sent = true;
        }
    });
    return sent;
}

void ReaderLink::sendSettings(std::span<const std::string> settings, const std::function<void()>& whenSent)
{
    m_operations.run([&] {
        if (!m_connection.OpenTheDeviceDriver()) {
            return;
        }
        for (const std::string& setting : settings) {
            const std::string command = commands::writeSetting(setting);
            m_protocol.Send_Cmd(command);
            m_status.setStatusText("Sent command: " + command);
        }
        m_connection.CloseTheDeviceDriver();
        if (!wasCutShort()) {
            whenSent();
        }
    });
}

void ReaderLink::beginClosing()
{
    m_state.UserAbort = true;
    m_operations.setClosing(true);
}

} // namespace device
