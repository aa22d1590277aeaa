#pragma once

#include <string_view>

namespace tables {

// The buttons that start work on the tables and the reader, and end it.
class OperationButtons
{
public:
    virtual ~OperationButtons() = default;

    // All but Exit.
    virtual void EnableButtons(bool enabled) = 0;
    // "Exit", or "Abort" while a transfer runs. Decides what the button does.
    virtual void setExitCaption(std::string_view caption) = 0;
    virtual void enableExitButton() = 0;
};

} // namespace tables
