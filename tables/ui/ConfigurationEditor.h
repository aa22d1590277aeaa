#pragma once

#include "platform/MessageBoxes.h"
#include "tables/DeviceSender.h"
#include "tables/EditedRow.h"
#include "tables/LiveTable.h"
#include "tables/RowEditor.h"
#include "tables/StatusLine.h"
#include "tables/ui/ConfigurationControls.h"

#include <QWidget>

#include <cstdint>
#include <string>
#include <string_view>

namespace tables {

struct BitCheck;
struct BitField;

// The edit area beside the Configuration grid: the title and the controls that edit the grid's current row in the
// meaning of its address. Every change goes straight into the row and marks it changed. The window lays this widget
// out beside the grid, and connects the grid's double-click.
class ConfigurationEditor final : public QWidget, public RowEditor
{
    Q_OBJECT

public:
    // All five outlive this widget, which becomes the editor of the table.
    ConfigurationEditor(LiveTable& table, EditSession& session, StatusLine& status, DeviceSender& device,
                        platform::MessageBoxes& boxes, QWidget* parent = nullptr);

    // Opens the editor on the grid's current row. Editing is allowed afterwards, whatever it was before.
    void EditData_CFG();

    void open() override { EditData_CFG(); }
    void hideControls() override;
    void setEditTitle(std::string_view title) override;
    // Shows the line of words without any.
    void showEmptyDecEntry();

    // Offers to send the current row to the reader. Ignores the read-only first row, and a time when the device is
    // busy.
    void grdCFG_DblClick();

    // Handlers of the controls, named after them. They write only while editing is allowed.
    void radTk1_Click(int Index);
    void radTk2_Click(int Index);
    void radTk3_Click(int Index);
    void radID_Click(int Index);
    void chkSendSS_Click();
    void chkSendEs_Click();
    void chkSendLRC_Click();
    void chkSendLC_Click();
    void chkSendNBR_Click();
    void radSendEr_Click(int Index);
    void radSendTermAfter_Click(int Index);
    void radTrkMap_Click(int Index);
    void radP080A1_CFG_Click(int Index);
    void radP080A23_CFG_Click(int Index);
    void radP080E_CFG_Click(int Index);
    void radP080S_CFG_Click(int Index);
    void txtHexEntry_Change();
    void txtHexEntry_KeyPress(int& KeyAscii);
    void txtDecEntry_Change();
    void txtDecEntry_KeyPress(int& KeyAscii);
    void txtCharEntry_Change();
    void txtComments_CFG_Change();

signals:
    // Before the controls are hidden: whoever gives the keyboard away takes it from them now.
    void aboutToHide();

private:
    void connectOptions();
    void connectChecks();
    void connectEntries();
    void loadControls(const std::string& value);
    void loadDecimalBox(std::uint8_t byte);
    void loadCharacterBox(std::uint8_t byte);
    void showReadOnly(std::string_view text);
    void showDelay();

    void writeOption(const BitField& field, int index);
    void writeCheck(const BitCheck& check);
    [[nodiscard]] std::uint8_t takeByte();
    void ensureTerminator();

    LiveTable& m_table;
    EditSession& m_session;
    StatusLine& m_status;
    DeviceSender& m_device;
    platform::MessageBoxes& m_boxes;
    EditedRow m_row;
    ConfigurationControls m_controls;
};

} // namespace tables
