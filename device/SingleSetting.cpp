#include "device/SingleSetting.h"

#include "device/Commands.h"
#include "text/HexText.h"
#include "text/PairValue.h"

namespace device {

namespace {

constexpr std::string_view kIdentificationAddress = "001"; // the reader's own: its row is never edited
constexpr std::size_t kOneByte = 2;                        // digits
constexpr std::size_t kHalfAndDash = 3;                    // characters of a pair that are not the other half

} // namespace

std::string rowValueWith(std::string_view oldValue, std::string_view address, std::string_view value)
{
    if (oldValue.size() <= kOneByte) {
        return std::string(value);
    }
    const bool isFirst = text::hexNumber(address) % 2 == 1;
    return isFirst ? std::string(value).append(text::rightOf(oldValue, kHalfAndDash))
                   : std::string(text::leftOf(oldValue, kHalfAndDash)).append(value);
}

SingleSetting::SingleSetting(LinkState& link, Operations& operations, CommandProtocol& protocol,
                             DriverConnection& connection, tables::ParamTables& tables, platform::MessageBoxes& boxes)
    : m_link(link)
    , m_operations(operations)
    , m_protocol(protocol)
    , m_connection(connection)
    , m_tables(tables)
    , m_boxes(boxes)
{}

std::optional<std::string> SingleSetting::read(std::string_view address)
{
    std::optional<std::string> value;
    m_operations.run([&] {
        if (!m_connection.OpenTheDeviceDriver()) {
            return; // LastResponse is of another address then
        }
        m_protocol.Ask_For_Parameter(address);
        m_protocol.WaitForResponse();
        if (!m_link.LastResponse.empty()) {
            value = m_link.LastResponse;
        }
        m_connection.CloseTheDeviceDriver();
    });
    return value;
}

void SingleSetting::update(std::string_view address, std::string_view value)
{
    m_operations.run([&] {
        send(address, value);
        if (m_link.connectionLost) {
            return; // ends here, as every operation does then: nothing is changed and nothing told
        }
        if (!updateTable_CFG(address, value)) {
            updateTable_KB(address, value);
        }
    });
}

void SingleSetting::send(std::string_view address, std::string_view value)
{
    // Kept behaviour kb-single-in-any-case: whether the reader was reached is not looked at.
    (void)m_connection.OpenTheDeviceDriver(); // on a closed port the command goes nowhere
    m_protocol.Send_Cmd(commands::writeParameter(address, value));
    m_connection.CloseTheDeviceDriver();
}

bool SingleSetting::updateTable_CFG(std::string_view address, std::string_view value)
{
    if (address == kIdentificationAddress || m_tables.GetTableEntry_CFG(address).empty()) {
        return false;
    }
    m_tables.PutTableEntry_CFG(address, value, tables::kValueColumn);
    m_tables.PutTableEntry_CFG(address, tables::kChangedMark, tables::kChangedColumn);
    reopenEditors(tables::TableId::Configuration);
    tellUpdated("Configuration", address, value);
    return true;
}

void SingleSetting::updateTable_KB(std::string_view address, std::string_view value)
{
    const std::string oldValue = m_tables.GetTableEntry_KB(address);
    if (oldValue.empty()) {
        return;
    }
    m_tables.PutTableEntry_KB(address, rowValueWith(oldValue, address, value), tables::kValueColumn);
    m_tables.PutTableEntry_KB(address, tables::kChangedMark, tables::kChangedColumn);
    reopenEditors(tables::TableId::KeyboardLanguage);
    tellUpdated("Keyboard Language", address, value);
}

// Only one editor has its controls at a time. When the other table's tab is in effect, its editor has just lost them.
void SingleSetting::reopenEditors(tables::TableId updated)
{
    m_tables.of(updated).editor().open();
    const std::optional<tables::TableId> inEffect = m_tables.session.tableInEffect;
    if (inEffect && inEffect != updated) {
        m_tables.of(*inEffect).reopenEditor();
    }
}

void SingleSetting::tellUpdated(std::string_view tableName, std::string_view address, std::string_view value)
{
    std::string text("Updated ");
    text.append(tableName).append(" table with ").append(address).append("=").append(value);
    m_boxes.show({.text = std::move(text), .icon = platform::BoxIcon::Information});
}

} // namespace device
