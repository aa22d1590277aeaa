#pragma once

#include <memory>
#include <string>
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

    // A path with the names of environment variables between percent signs replaced by their values; empty when that
    // cannot be done. As it is on systems whose paths have no such names.
    [[nodiscard]] virtual std::string withVariables(std::string_view path) const = 0;

    // Starts the program with a normal window and gives it the focus. Names of environment variables in its
    // path (Windows-1252) are replaced by their values. False when it cannot be started; systems whose
    // programs have no such paths start none.
    [[nodiscard]] virtual bool start(std::string_view path) = 0;

protected:
    StartProgram() = default;
};

[[nodiscard]] std::unique_ptr<StartProgram> makeStartProgram();

} // namespace platform
