#pragma once

#include "device/DriverConnection.h"

#include <functional>
#include <string>

namespace device {

// Reads whole tables from the reader and writes them to it, one parameter at a time.
class TableTransfer final
{
public:
    // Everything outlives this object.
    TableTransfer(LinkState& link, Operations& operations, CommandProtocol& protocol, DriverConnection& connection,
                  const LinkServices& services, const LinkSurfaces& surfaces, tables::ParamTables& tables);

    TableTransfer(const TableTransfer&) = delete;
    TableTransfer& operator=(const TableTransfer&) = delete;

    // Reads a table from the reader. A parameter without a reply ends the run: its row keeps the
    // old value, the rows after it stay as they were. True only when every row was read.
    bool btnRetrieveParms_Click(tables::TableId which);

    // Writes a table to the reader, changed or not. The driver confirms nothing. True only when
    // every row was sent and the run was not stopped.
    bool UpdateDevice(tables::TableId which);

private:
    [[nodiscard]] bool isStopped() const { return m_link.UserAbort || m_operations.isClosing(); }
    // While the port was being opened the user has closed the window, or the reader has gone.
    [[nodiscard]] bool isOverBeforeItBegan() const { return m_operations.isClosing() || m_link.connectionLost; }

    [[nodiscard]] bool retrieve(tables::LiveTable& table);
    [[nodiscard]] bool retrieveRows(tables::LiveTable& table);
    void retrieveRow(tables::LiveTable& table, int row);
    [[nodiscard]] std::string ask(const std::string& address);
    [[nodiscard]] bool update_CFG();
    [[nodiscard]] bool update_KB();
    [[nodiscard]] bool updateRows(tables::LiveTable& table, const std::function<void(std::string&)>& send);
    void hideEditors(tables::LiveTable& table);

    LinkState& m_link;
    Operations& m_operations;
    CommandProtocol& m_protocol;
    DriverConnection& m_connection;
    platform::SerialControl& m_port;
    LinkDisplay& m_display;
    tables::OperationButtons& m_buttons;
    tables::UnsavedChanges& m_unsaved;
    tables::ParamTables& m_tables;
};

} // namespace device
