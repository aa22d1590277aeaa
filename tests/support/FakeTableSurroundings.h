#pragma once

#include "tables/RowEditor.h"
#include "tables/StatusLine.h"
#include "tables/TableDisplay.h"
#include "tables/UnsavedChanges.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

// What is around a table, its editor among it, as a record of what it was told. Shares its log with the grid, so that a
// test can compare the order of everything that happened.
class FakeTableSurroundings final : public tables::TableDisplay,
                                    public tables::RowEditor,
                                    public tables::StatusLine,
                                    public tables::UnsavedChanges
{
public:
    // The log outlives this object.
    explicit FakeTableSurroundings(std::vector<std::string>& log)
        : m_log(log)
    {}

    bool mayDiscard = true; // the answer of CheckForUnsavedData

    // What else happens inside a call.
    std::function<void()> onCheckForUnsavedData;
    std::function<void()> onEditData;
    std::function<void()> onProcessPendingEvents;

    // What the window shows.
    std::string tabCaption;
    std::string editTitle;
    std::string statusText;

    [[nodiscard]] bool CheckForUnsavedData(tables::TableId /*table*/) override
    {
        record("CheckForUnsavedData", onCheckForUnsavedData);
        return mayDiscard;
    }
    void hideControls() override { record("Hide_All"); }
    void open() override { record("EditData", onEditData); }
    void forgetCommentsAndFile() override { record("forgetCommentsAndFile"); }
    void setTabCaption(std::string_view caption) override
    {
        tabCaption = caption;
        record("tab: " + tabCaption);
    }
    void setEditTitle(std::string_view title) override
    {
        editTitle = title;
        record("title: " + editTitle);
    }
    void setStatusText(std::string_view text) override
    {
        statusText = text;
        record("status: " + statusText);
    }
    void beep() override { record("beep"); }
    void processPendingEvents() override { record("processPendingEvents", onProcessPendingEvents); }

private:
    void record(const std::string& call, const std::function<void()>& alsoDo = {})
    {
        m_log.push_back(call);
        if (alsoDo) {
            alsoDo();
        }
    }

    std::vector<std::string>& m_log;
};

} // namespace testsupport
