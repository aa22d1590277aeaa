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
                             DriverConnection& connection, const LinkServices& services, const LinkSurfaces& surfaces,
                             tables::ParamTables& tables)
    : m_link(link)
    , m_operations(operations)
    , m_protocol(protocol)
    , m_connection(connection)
    , m_port(services.MSComm1)
    , m_display(surfaces.display)
    , m_buttons(surfaces.buttons)
    , m_unsaved(surfaces.unsaved)
    , m_tables(tables)
{}

bool TableTransfer::btnRetrieveParms_Click(tables::TableId which)
{
    if (!m_connection.OpenTheDeviceDriver()) {
        return false;
    }
    // Kept behaviour kb-late-question: the port is open and the reader identified before the user is asked.
    m_buttons.setExitCaption("Abort");
    const bool mayBegin = !isOverBeforeItBegan() && m_unsaved.CheckForUnsavedData(which);
    const bool complete = mayBegin && retrieve(m_tables.of(which));
    m_connection.CloseTheDeviceDriver();
    m_buttons.setExitCaption("Exit");
    return complete;
}

// Kept behaviour kb-retrieve-keeps-name: the comment and the name of the last file stay as they are.
bool TableTransfer::retrieve(tables::LiveTable& table)
{
    m_buttons.EnableButtons(false);
    table.grid().setTopRow(1);
    table.grid().setRow(1);
    hideEditors(table);
    m_port.setInputLen(0);
    const unsigned marksBefore = table.marksMade();
    const bool complete = retrieveRows(table);
    table.grid().setRow(1);
    // The Configuration rows have moved as well, whichever table was read.
    for (tables::LiveTable* const moved : {&m_tables.CFG, &m_tables.KB}) {
        tables::bringIntoView(moved->grid(), moved->grid().row());
    }
    const bool wasEdited = table.marksMade() != marksBefore && table.hasMarkedRows();
    if (!wasEdited) {
        table.restoreTabCaption();
    }
    m_buttons.EnableButtons(true);
    return complete;
}

// Hides the controls of both editors; the next click on a row opens its editor, also on the row that is current.
void TableTransfer::hideEditors(tables::LiveTable& table)
{
    m_tables.session.Hide_All();
    table.table().LastRow = tables::ParamTable::kNoLastRow;
}

bool TableTransfer::retrieveRows(tables::LiveTable& table)
{
    const int rows = table.table().NumParms;
    m_display.showProgress(0, rows);
    for (int row = 1; row <= rows; ++row) {
        if (!addressOfRow(table, row).empty()) {
            retrieveRow(table, row);
            if (isStopped()) {
                return false;
            }
        }
        m_display.showProgress(row, rows);
    }
    return true;
}

void TableTransfer::retrieveRow(tables::LiveTable& table, int row)
{
    const bool isKeyboard = &table == &m_tables.KB;
    // A copy: showing a row may open an editor, and the address is needed to the end.
    const std::string address = addressOfRow(table, row);
    table.grid().setRow(row);
    table.grid().setCol(tables::kChangedColumn);
    tables::scrollUpTo(table.grid(), row); // look-ups scroll down, a row at a time
    tables::uncutRow(table.grid(), row);
    const std::string oldValue = table.GetTableEntry(address);
    // One blank and not the empty text, which the Keyboard Language table does not take.
    table.PutTableEntry(address, kBlank, tables::kValueColumn);

    const std::string first = ask(address.substr(0, 3));
    if (isAValue(first)) {
        // Kept behaviour kb-marks-of-the-other: for either table it is the Configuration row of this number whose mark
        // is blanked.
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
    // Kept behaviour kb-silent-stop: a parameter that is not answered ends the run without a message.
    table.PutTableEntry(address, tables::kUnchangedMark, tables::kChangedColumn);
    if (isStopped()) {
        table.PutTableEntry(address, oldValue, tables::kValueColumn);
    }
    tables::scrollUpTo(table.grid(), table.grid().row());
    if (!isKeyboard && !table.grid().rowIsVisible(table.grid().row())) {
        table.grid().setTopRow(table.grid().topRow() + 1);
    }
    tables::uncutRow(table.grid(), table.grid().row());
}

std::string TableTransfer::ask(const std::string& address)
{
    m_protocol.Ask_For_Parameter(address);
    m_protocol.WaitForResponse();
    return m_link.LastResponse;
}

// Kept behaviour kb-marks-after-update: the marks tell of the file, so they stay.
// Kept behaviour kb-update-unconfirmed: every row goes out, and no answer to a write is looked at.
bool TableTransfer::UpdateDevice(tables::TableId which)
{
    m_buttons.EnableButtons(false);
    if (!m_connection.OpenTheDeviceDriver()) {
        m_buttons.EnableButtons(true);
        return false;
    }
    m_buttons.setExitCaption("Abort");
    const bool complete =
        !isOverBeforeItBegan() && (which == tables::TableId::Configuration ? update_CFG() : update_KB());
    m_buttons.EnableButtons(true);
    m_connection.CloseTheDeviceDriver();
    m_buttons.setExitCaption("Exit");
    return complete;
}

bool TableTransfer::update_CFG()
{
    return updateRows(m_tables.CFG, [this](std::string& address) {
        if (tables::isWritten_CFG(address)) {
            m_protocol.Send_Parameter_CFG(address);
        }
    });
}

bool TableTransfer::update_KB()
{
    // Kept behaviour kb-double-update: the entry of the address list itself is handed over, so for a pair it is
    // advanced to the second address and stays so.
    return updateRows(m_tables.KB, [this](std::string& address) { m_protocol.Send_Parameter_KB(address); });
}

bool TableTransfer::updateRows(tables::LiveTable& table, const std::function<void(std::string&)>& send)
{
    hideEditors(table);
    const int rows = table.table().NumParms;
    m_display.showProgress(0, rows);
    bool complete = true;
    for (int row = 1; row <= rows && complete; ++row) {
        table.grid().setRow(row);
        tables::bringIntoView(table.grid(), row);
        // A command without an address would mean nothing to the reader.
        if (std::string& address = addressOfRow(table, row); !address.empty()) {
            send(address);
        }
        complete = !isStopped();
        if (complete) {
            m_display.showProgress(row, rows);
        }
    }
    tables::bringIntoView(table.grid(), table.grid().row());
    return complete;
}

} // namespace device
