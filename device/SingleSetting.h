#pragma once

#include "device/DriverConnection.h"

#include <optional>
#include <string>
#include <string_view>

namespace device {

// The value of a Keyboard Language row after one of its addresses got a new value. A pair keeps its other half: the
// odd address is the first of its pair, the even one the second. A row of one byte takes the value as it is.
[[nodiscard]] std::string rowValueWith(std::string_view oldValue, std::string_view address, std::string_view value);

// Reads and writes one parameter of the reader by its address, outside the two tables. Addresses and values go to the
// reader as they were typed, whatever their length.
class SingleSetting final
{
public:
    // Everything outlives this object.
    SingleSetting(LinkState& link, Operations& operations, CommandProtocol& protocol, DriverConnection& connection,
                  tables::ParamTables& tables, platform::MessageBoxes& boxes);

    SingleSetting(const SingleSetting&) = delete;
    SingleSetting& operator=(const SingleSetting&) = delete;

    // The value that the reader holds at an address. Nothing when the link does not open, the reader does not answer,
    // or another operation is running.
    [[nodiscard]] std::optional<std::string> read(std::string_view address);

    // Writes a value to the reader and into the table that holds the address, marks the row there and tells the user.
    // Whether the reader got it is not known, and the table changes even when the link did not open. A connection that
    // is lost meanwhile ends it with the table as it was and nothing told. Does nothing while another operation is
    // running.
    void update(std::string_view address, std::string_view value);

private:
    void send(std::string_view address, std::string_view value);
    [[nodiscard]] bool updateTable_CFG(std::string_view address, std::string_view value);
    void updateTable_KB(std::string_view address, std::string_view value);
    void reopenEditors(tables::TableId updated);
    void tellUpdated(std::string_view tableName, std::string_view address, std::string_view value);

    LinkState& m_link;
    Operations& m_operations;
    CommandProtocol& m_protocol;
    DriverConnection& m_connection;
    tables::ParamTables& m_tables;
    platform::MessageBoxes& m_boxes;
};

} // namespace device
