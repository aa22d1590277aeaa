#pragma once

#include "app/mainwindow/MainWindowControls.h"
#include "device/ReaderLink.h"
#include "tables/ParamTables.h"

namespace app {

// Makes the tab that is shown the tab that is in effect. While the device is in use, a click on another tab is carried
// out when the operation has ended.
class TabChange final
{
public:
    // Everything outlives this object.
    TabChange(MainWindowControls& controls, device::ReaderLink& link, tables::ParamTables& tables);

    TabChange(const TabChange&) = delete;
    TabChange& operator=(const TabChange&) = delete;

    // Another tab is shown, or an operation has ended.
    void tabMoved();
    // Shows a table. It is in effect afterwards, if nothing else uses the device.
    void goToTab(tables::TableId table);
    // As goToTab(). False when the device is in use, and when the user has gone elsewhere or closed the window
    // meanwhile: leaving the read test takes a while.
    [[nodiscard]] bool select(tables::TableId table);
    // Ctrl+Tab; nothing in the read test, where every key is the reader's.
    void goToNextTab(int step);

    // The table of the tab in effect; on the read test the Keyboard Language table, as everywhere a table is meant.
    [[nodiscard]] tables::TableId shownTable() const;
    [[nodiscard]] bool isReadTest() const { return !m_tables.session.tableInEffect; }

    // The window has been closed for good.
    void stop() { m_isStopped = true; }

private:
    void SSTab1_Click(int previousTab);
    void showTable(tables::TableId table);
    [[nodiscard]] int tabInEffect() const;

    MainWindowControls& m_controls;
    device::ReaderLink& m_link;
    tables::ParamTables& m_tables;
    bool m_isStopped = false;
};

} // namespace app
