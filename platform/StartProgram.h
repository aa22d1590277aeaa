#pragma once

#include <memory>
#include <string_view>

namespace platform {

// Starts another program and leaves it to itself: the system-information tool, which only Windows has under a fixed
// name.
class StartProgram
{
public:
    virtual ~StartProgram() = default;
    StartProgram(const StartProgram&) = delete;
    StartProgram& operator=(const StartProgram&) = delete;

    // Starts the program with a normal window and gives it the focus. Names of environment variables between percent
    // signs in its path (Windows-1252) are replaced by their values. False when it cannot be started; systems whose
    // programs have no such paths start none.
    [[nodiscard]] virtual bool start(std::string_view path) = 0;

protected:
    StartProgram() = default;
};

[[nodiscard]] std::unique_ptr<StartProgram> makeStartProgram();

} // namespace platform
