#pragma once

#include "simulator/FaultRule.h"
#include "simulator/Reaction.h"
#include "simulator/Verdict.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

// The rules in force, in the order in which they were given. Of the rules that fit a command and are due, the first
// decides alone. Every rule counts all commands that it fits, also those for which another one decides.
class FaultRules final
{
public:
    // Takes a rule in the form that FaultRule.h describes, or says why not.
    Verdict add(std::string_view text);
    void clear() { m_rules.clear(); }

    // Turns the right reply to a command (none: nothing is sent) into what really happens. lineEnd is what lines of
    // this door end with.
    [[nodiscard]] Reaction react(std::string_view command, const std::optional<std::string>& reply,
                                 std::string_view lineEnd);

private:
    struct CountedRule
    {
        FaultRule rule;
        int times = 0;
    };

    [[nodiscard]] const FaultRule* ruleFor(std::string_view command);

    std::vector<CountedRule> m_rules;
};

} // namespace simulator
