#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

// The two ways into the driver.
enum class Door { DeviceObject, Port };

// One thing that a door does in reaction to a command.
struct Action
{
    enum class Kind { Write, HangUp };

    Kind kind = Kind::Write;
    std::chrono::milliseconds after{0};                 // counted from the arrival of the command
    std::string bytes;                                  // Write: one write, line end included
    std::optional<std::chrono::milliseconds> backAfter; // HangUp: the door is back so much later; empty means never

    bool operator==(const Action&) const = default;
};

// Everything that a command sets off, in order; actions of the same time keep their order.
struct Reaction
{
    std::vector<Action> actions;
    std::string rule; // the fault rule that shaped it, as it was written; empty when there was none

    bool operator==(const Reaction&) const = default;
};

} // namespace simulator
