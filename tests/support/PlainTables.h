#pragma once

#include "tables/ParamTables.h"
#include "tests/support/PlainGrid.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

// One live table on a plain grid, with as much of a window around it as a transfer needs.
class PlainTable final : public tables::TableDisplay,
                         public tables::RowEditor,
                         public tables::StatusLine,
                         public tables::UnsavedChanges
{
public:
    PlainTable(const tables::TableKind& kind, tables::EditSession& session)
        : table(kind)
        , grid(table)
        , live(table, {.grid = grid, .display = *this, .status = *this, .unsaved = *this, .session = session})
    {
        live.setEditor(*this);
        grid.rowChanged = [this] { live.rowChanged(); };
    }

    tables::ParamTable table;
    PlainGrid grid;
    tables::LiveTable live;

    std::string tabCaption;
    std::vector<int> editedRows; // on which the editor was opened, in order
    std::function<void()> onEditData;
    std::function<void()> onHide;
    std::function<void(std::string_view)> onTitle;

    [[nodiscard]] const std::string& changed(int row) const { return table.cell(row, tables::kChangedColumn); }
    [[nodiscard]] const std::string& value(int row) const { return table.cell(row, tables::kValueColumn); }
    void setValue(int row, std::string_view value) { table.setCell(row, tables::kValueColumn, value); }
    // The value column from row 1 on.
    [[nodiscard]] std::vector<std::string> values() const { return column(tables::kValueColumn); }
    [[nodiscard]] std::vector<std::string> changedMarks() const { return column(tables::kChangedColumn); }
    // The address of a row as look-ups see it.
    [[nodiscard]] std::string& address(int row) { return table.ParmAddr[static_cast<std::size_t>(row - 1)]; }

    // An edit of the user's: the mark of the row, and what follows from it.
    void mark(int row) { live.PutTableEntry(address(row), "XXX", tables::kChangedColumn); }

    [[nodiscard]] bool CheckForUnsavedData(tables::TableId /*table*/) override { return true; }
    void hideControls() override
    {
        if (onHide) {
            onHide();
        }
    }
    void open() override
    {
        editedRows.push_back(grid.row());
        if (onEditData) {
            onEditData();
        }
    }
    void forgetCommentsAndFile() override {}
    void setTabCaption(std::string_view caption) override { tabCaption = caption; }
    void setEditTitle(std::string_view title) override
    {
        if (onTitle) {
            onTitle(title);
        }
    }
    void setStatusText(std::string_view) override {}
    void beep() override {}
    void processPendingEvents() override {}

private:
    [[nodiscard]] std::vector<std::string> column(int column) const
    {
        std::vector<std::string> texts;
        for (int row = 1; row < table.rowCount(); ++row) {
            texts.push_back(table.cell(row, column));
        }
        return texts;
    }
};

// Both tables at their factory defaults.
struct PlainTables
{
    PlainTables()
    {
        for (const tables::TableId table : {tables::TableId::KeyboardLanguage, tables::TableId::Configuration}) {
            session.tableInEffect = table;
            tables.InitGrids();
        }
    }

    tables::EditSession session;
    PlainTable CFG{tables::configurationKind(), session};
    PlainTable KB{tables::keyboardLanguageKind(), session};
    tables::ParamTables tables{CFG.live, KB.live, session};
};

} // namespace testsupport
