#pragma once

#include "platform/MessageBoxes.h"
#include "tables/DeviceSender.h"
#include "tables/EditedRow.h"
#include "tables/LiveTable.h"
#include "tables/Parameters.h"
#include "tables/RowEditor.h"
#include "tables/StatusLine.h"
#include "tables/ui/KeyboardLanguageControls.h"
#include "text/PairValue.h"

#include <QWidget>

#include <string>
#include <string_view>

namespace tables {

struct BitField;

// The edit area beside the Keyboard Language grid: the title and the controls that edit the grid's current row, the
// keyboard flags, the keyboard identification bytes or a pair of shift flags and scan code. Every change goes straight
// into the row and marks it changed. The window lays this widget out beside the grid, and connects the grid's
// double-click.
class KeyboardLanguageEditor final : public QWidget, public RowEditor
{
    Q_OBJECT

public:
    // All five outlive this widget, which becomes the editor of the table.
    KeyboardLanguageEditor(LiveTable& table, EditSession& session, StatusLine& status, DeviceSender& device,
                           platform::MessageBoxes& boxes, QWidget* parent = nullptr);

    // Opens the editor on the grid's current row. Editing is allowed afterwards, whatever it was before.
    void EditData_KB();

    void open() override { EditData_KB(); }
    void hideControls() override;
    void setEditTitle(std::string_view title) override;

    // Offers to send the current row to the reader. Ignored while the device is busy.
    void grdKB_DblClick();

    // Handlers of the controls, named after them. They write only while editing is allowed.
    void radP080E_KB_Click(int Index);
    void radP080A1_KB_Click(int Index);
    void radP080A23_KB_Click(int Index);
    void radP080S_KB_Click(int Index);
    void radShiftA1_KB_Click(int Index);
    void radShiftA2_KB_Click(int Index);
    void radShiftA3_KB_Click(int Index);
    void radShiftA4_KB_Click(int Index);
    void txtHexEntry_KB_Change();
    void txtHexEntry_KB_KeyPress(int& KeyAscii);
    void txtHexEntry2_KB_Change();
    void txtHexEntry2_KB_KeyPress(int& KeyAscii);

signals:
    // Before the controls are hidden: whoever gives the keyboard away takes it from them now.
    void aboutToHide();
    // A scan code pair has a place for the Configuration editor's line of words and leaves it empty.
    void emptyDecEntryShown();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void connectControls();
    void loadFlags(const std::string& value);
    void loadIdBytes(const std::string& value);
    void loadPair(const std::string& value);

    void writeFlags(const BitField& field, int index);
    void writeShiftFlag(const BitField& field, int index);
    void writePair(const text::PairValue& pair);

    LiveTable& m_table;
    EditSession& m_session;
    StatusLine& m_status;
    DeviceSender& m_device;
    platform::MessageBoxes& m_boxes;
    EditedRow m_row;
    KeyboardLanguageControls m_controls;
    KeyboardRow m_kind = KeyboardRow::None; // of the row that is open
};

} // namespace tables
