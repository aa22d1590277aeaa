#pragma once

#include <string_view>

namespace tables {

// What shows one table: its page with tab, comments and grid.
class TableDisplay
{
public:
    virtual ~TableDisplay() = default;

    virtual void setTabCaption(std::string_view caption) = 0;
    // Empties the comment box, the remembered file name and the file name shown.
    virtual void forgetCommentsAndFile() = 0;
    virtual void beep() = 0;
    // Handles what the user and the system have sent so far.
    virtual void processPendingEvents() = 0;
};

} // namespace tables
