#pragma once

#include "simulator/Verdict.h"

#include <chrono>
#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

// What a door does wrong with one command, or with a family of them. A rule is written as
//
//     COMMAND: FAULT [FAULT...]
//
// COMMAND is the text on the wire, without its line end; a * in it stands for any run of characters. faultWords() lists
// the faults. A rule shapes what is sent back and nothing else: a parameter that is written is stored all the same.
struct FaultRule
{
    struct HangUp
    {
        std::optional<std::chrono::milliseconds> backAfter; // empty: the door stays away
    };

    std::string text; // as it was written
    std::string command;

    // When: the rule acts from the firstTime-th to the lastTime-th command that it fits, counted from 1.
    int firstTime = 1;
    int lastTime = std::numeric_limits<int>::max();

    // The line, in the order in which the faults act on it.
    bool silent = false;
    std::optional<std::string> reply;
    std::optional<std::string> value;
    bool garbled = false;
    std::optional<std::size_t> cut;
    std::optional<std::size_t> pad;
    std::optional<std::string> end;
    bool twice = false;
    std::optional<std::string> with;

    // How and when it goes out.
    std::chrono::milliseconds delay{0};
    std::vector<std::size_t> splitAfter;
    bool splitEverywhere = false;
    std::chrono::milliseconds pause{1};
    std::optional<std::string> before;
    std::optional<std::string> after;
    std::optional<HangUp> hangUp;

    [[nodiscard]] bool fits(std::string_view wireCommand) const;
};

// One fault as a user writes it, for a help text.
struct FaultWord
{
    std::string_view form; // "delay=MS"
    std::string_view meaning;
};

[[nodiscard]] std::span<const FaultWord> faultWords();

// Reads a rule. What cannot be read, contradicts itself or could never have an effect is refused with the reason, and
// rule is left as it was.
Verdict parseFaultRule(std::string_view text, FaultRule& rule);

} // namespace simulator
