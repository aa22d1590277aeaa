#pragma once

#include "platform/MessageBoxes.h"
#include "tables/DeviceSender.h"
#include "tables/EditedRow.h"
#include "tables/EditorHost.h"
#include "tables/LiveTable.h"
#include "tables/Parameters.h"
#include "tables/ui/KeyboardLanguageControls.h"
#include "text/PairValue.h"

#include <QWidget>

#include <span>
#include <string>
#include <string_view>

namespace tables {

struct BitField;

// The edit area beside the Keyboard Language grid: the title and the controls that edit the grid's current row, the
// keyboard flags, the keyboard identification bytes or a pair of shift flags and scan code. Every change goes straight
// into the row and marks it changed. The window lays this widget out beside the grid, runs EditData_KB() when the table
// asks for its editor, and connects the grid's double-click.
class KeyboardLanguageEditor final : public QWidget
{
    Q_OBJECT

public:
    // All five outlive this widget.
    KeyboardLanguageEditor(LiveTable& table, EditSession& session, EditorHost& host, DeviceSender& device,
                           platform::MessageBoxes& boxes, QWidget* parent = nullptr);

    // Opens the editor on the grid's current row. Editing is allowed afterwards, whatever it was before.
    void EditData_KB();

    // Hides every control but the title.
    void hideControls();
    void setEditTitle(std::string_view title);

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
    void sendSettings(std::span<const std::string> settings);

    LiveTable& m_table;
    EditSession& m_session;
    EditorHost& m_host;
    DeviceSender& m_device;
    platform::MessageBoxes& m_boxes;
    EditedRow m_row;
    KeyboardLanguageControls m_controls;
    KeyboardRow m_kind = KeyboardRow::None; // of the row that is open
};

} // namespace tables
