#pragma once

#include <string_view>

namespace device {

// What reading and writing whole tables needs of the main window, beyond the link's own displays.
class TransferWindow
{
public:
    virtual ~TransferWindow() = default;

    [[nodiscard]] virtual int currentTab() const = 0;
    [[nodiscard]] virtual bool CheckForUnsavedData_CFG() = 0;
    [[nodiscard]] virtual bool CheckForUnsavedData_KB() = 0;
    virtual void Hide_All() = 0;
    virtual void setExitCaption(std::string_view caption) = 0;

    // How far the transfer has come. What was shown last stays when it is over: it says whether every row was reached.
    virtual void showProgress(int rowsDone, int rows) = 0;
};

} // namespace device
