#pragma once

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

namespace simulator {

// Something that the simulator cannot do without could not be had. what() is a sentence for the user.
class SetupError final : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// The error of the system call that has just failed: "cannot open /tmp/x: Permission denied".
[[nodiscard]] inline SetupError systemError(const std::string& what)
{
    return SetupError{"cannot " + what + ": " + std::strerror(errno)};
}

} // namespace simulator
