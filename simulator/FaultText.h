#pragma once

#include "simulator/Verdict.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

// The name of a fault as a message shows it: 'delay'.
[[nodiscard]] std::string inMarks(std::string_view name);

// One fault of a rule as it is written, not yet understood: NAME, NAME=WORD or NAME="a text with \n".
struct FaultText
{
    std::string name;
    std::optional<std::string> value; // escapes resolved

    [[nodiscard]] std::string quotedName() const { return inMarks(name); }
};

// Parts "COMMAND: FAULT FAULT..." at its first colon; no command has one. Refuses a missing part and a text in
// quotation marks that is not well formed.
Verdict splitFaultRule(std::string_view rule, std::string& command, std::vector<FaultText>& faults);

} // namespace simulator
