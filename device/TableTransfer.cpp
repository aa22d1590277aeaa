#include "device/TableTransfer.h"

#include "tables/Parameters.h"
#include "text/HexText.h"

namespace device {

namespace {

constexpr std::uint32_t kLastSingleAddress = 0x80; // rows above it hold a pair
constexpr std::string_view kBlank = " ";

bool isAValue(const std::string& reply)
{
    return reply.size() > 1;
}

std::string& addressOfRow(tables::LiveTable& table, int row)
{
    return table.table().ParmAddr[static_cast<std::size_t>(row - 1)];
}

} // namespace

TableTransfer::TableTransfer(LinkState& link, Operations& operations, CommandProtocol& protocol,
                             DriverConnection& connection, platform::SerialControl& MSComm1, LinkWindow& window,
                             TransferWindow& transferWindow, tables::ParamTables& tables)
    : m_link(link)
    , m_operations(operations)
    , m_protocol(protocol)
    , m_connection(connection)
    , m_port(MSComm1)
    , m_window(window)
    , m_transfer(transferWindow)
    , m_tables(tables)
{}

bool TableTransfer::btnRetrieveParms_Click()
{
    if (!m_connection.OpenTheDeviceDriver()) {
        return false;
    }
    m_transfer.setExitCaption("Abort");
    bool complete = false;
    const int tab = m_transfer.currentTab();
    if (m_operations.isClosing()) {
        // The user closed the window while the port was being opened: no question, no row.
    } else if (tab == tables::kKeyboardLanguageTab) {
        complete = m_transfer.CheckForUnsavedData_KB() && retrieve(m_tables.KB);
    } else if (tab == tables::kConfigurationTab) {
        complete = m_transfer.CheckForUnsavedData_CFG() && retrieve(m_tables.CFG);
    }
    m_connection.CloseTheDeviceDriver();
    m_transfer.setExitCaption("Exit");
    return complete;
}

bool TableTransfer::retrieve(tables::LiveTable& table)
{
    m_window.EnableButtons(false);
    table.grid().setTopRow(1);
    table.grid().setRow(1);
    m_transfer.Hide_All();
    m_port.setInputLen(0);
    const int rows = table.table().NumParms;
    m_transfer.showProgress(0, rows);
    bool complete = true;
    for (int row = 1; row <= rows && complete; ++row) {
        if (!addressOfRow(table, row).empty()) {
            retrieveRow(table, row);
            complete = !isStopped();
        }
        m_transfer.showProgress(row, rows);
    }
    m_transfer.hideProgress();
    table.grid().setRow(1);
    table.restoreTabCaption();
    m_window.EnableButtons(true);
    return complete;
}

void TableTransfer::retrieveRow(tables::LiveTable& table, int row)
{
    const bool isKeyboard = &table == &m_tables.KB;
    // A copy: showing a row may open an editor, and the address is needed to the end.
    const std::string address = addressOfRow(table, row);
    table.grid().setRow(row);
    table.grid().setCol(tables::kChangedColumn);
    const std::string oldValue = table.GetTableEntry(address);
    // One blank and not the empty text, which the Keyboard Language table does not take.
    table.PutTableEntry(address, kBlank, tables::kValueColumn);

    const std::string first = ask(address.substr(0, 3));
    if (isAValue(first)) {
        // Kept behaviour: for either table it is the Configuration row of this number whose mark is blanked.
        const std::string twin = addressOfRow(m_tables.CFG, row);
        m_tables.PutTableEntry_CFG(twin, tables::kUnchangedMark, tables::kChangedColumn);
        table.PutTableEntry(address, first, tables::kValueColumn);
    }
    if (isKeyboard && text::hexNumber(address) > kLastSingleAddress) {
        const std::string second = ask(text::nextAddress(address));
        if (isAValue(second)) {
            table.PutTableEntry(address, first + "-" + second, tables::kValueColumn);
        }
    }
    table.PutTableEntry(address, tables::kUnchangedMark, tables::kChangedColumn);
    if (isStopped()) {
        table.PutTableEntry(address, oldValue, tables::kValueColumn);
    }
    if (!isKeyboard && !table.grid().rowIsVisible(table.grid().row())) {
        table.grid().setTopRow(table.grid().topRow() + 1);
    }
}

std::string TableTransfer::ask(const std::string& address)
{
    m_protocol.Ask_For_Parameter(address);
    m_protocol.WaitForResponse();
    return m_link.LastResponse;
}

void TableTransfer::UpdateDevice()
{
    m_window.EnableButtons(false);
    if (!m_connection.OpenTheDeviceDriver()) {
        m_window.EnableButtons(true);
        return;
    }
    m_transfer.setExitCaption("Abort");
    const int tab = m_transfer.currentTab();
    if (m_operations.isClosing()) {
        // The user closed the window while the port was being opened.
    } else if (tab == tables::kConfigurationTab) {
        update_CFG();
    } else if (tab == tables::kKeyboardLanguageTab) {
        update_KB();
    }
    m_transfer.hideProgress();
    m_window.EnableButtons(true);
    m_connection.CloseTheDeviceDriver();
    m_transfer.setExitCaption("Exit");
}

void TableTransfer::update_CFG()
{
    updateRows(m_tables.CFG, [this](std::string& address) {
        if (tables::isWritten_CFG(address)) {
            m_protocol.Send_Parameter_CFG(address);
        }
    });
}

void TableTransfer::update_KB()
{
    // Kept behaviour: the entry of the address list itself is handed over, so for a pair it is advanced to the second
    // address and stays so.
    updateRows(m_tables.KB, [this](std::string& address) { m_protocol.Send_Parameter_KB(address); });
}

void TableTransfer::updateRows(tables::LiveTable& table, const std::function<void(std::string&)>& send)
{
    m_transfer.Hide_All();
    const int rows = table.table().NumParms;
    m_transfer.showProgress(0, rows);
    for (int row = 1; row <= rows; ++row) {
        table.grid().setRow(row);
        // A command without an address would mean nothing to the reader.
        if (std::string& address = addressOfRow(table, row); !address.empty()) {
            send(address);
        }
        m_transfer.showProgress(row, rows);
        if (isStopped()) {
            return;
        }
    }
}

} // namespace device
