#include "simulator/FaultRules.h"

#include <cstddef>
#include <utility>

namespace simulator {

namespace {

using std::chrono::milliseconds;

Action writing(std::string bytes, milliseconds after)
{
    return {Action::Kind::Write, after, std::move(bytes), std::nullopt};
}

// Replaces what the reply carries: the text behind ": " or, in the answer of the device object, behind "=". An echo
// carries nothing and stays.
std::string withValue(const std::string& reply, const std::string& value)
{
    if (const std::size_t head = reply.find(": "); head != std::string::npos) {
        return reply.substr(0, head + 2) + value;
    }
    if (reply.starts_with("/get") && reply.find('=') != std::string::npos) {
        return reply.substr(0, reply.find('=') + 1) + value;
    }
    return reply;
}

std::string garbled(std::string line)
{
    for (char& c : line) {
        c = static_cast<char>(static_cast<unsigned char>(c) | 0x80U);
    }
    return line;
}

std::string shapedLine(const FaultRule& rule, std::string line)
{
    if (rule.value) {
        line = withValue(line, *rule.value);
    }
    if (rule.garbled) {
        line = garbled(std::move(line));
    }
    if (rule.cut && line.size() > *rule.cut) {
        line.resize(*rule.cut);
    }
    if (rule.pad && line.size() < *rule.pad) {
        line.resize(*rule.pad, '.');
    }
    return line;
}

// Everything that goes out in the reply's own write.
std::string replyBytes(const FaultRule& rule, const std::string& line, std::string_view lineEnd)
{
    const std::string reply = shapedLine(rule, line).append(rule.end ? std::string_view(*rule.end) : lineEnd);
    std::string bytes = rule.twice ? reply + reply : reply;
    if (rule.with) {
        bytes.append(*rule.with).append(lineEnd);
    }
    return bytes;
}

std::vector<std::string> pieces(const FaultRule& rule, const std::string& bytes)
{
    std::vector<std::string> list;
    std::size_t from = 0;
    const auto partAfter = [&](std::size_t point) {
        if (point < bytes.size()) {
            list.push_back(bytes.substr(from, point - from));
            from = point;
        }
    };
    if (rule.splitEverywhere) {
        for (std::size_t point = 1; point < bytes.size(); ++point) {
            partAfter(point);
        }
    }
    for (const std::size_t point : rule.splitAfter) {
        partAfter(point);
    }
    if (from < bytes.size()) {
        list.push_back(bytes.substr(from));
    }
    return list;
}

std::vector<Action> actionsOf(const FaultRule& rule, const std::optional<std::string>& rightReply,
                              std::string_view lineEnd)
{
    if (rule.hangUp) {
        return {{Action::Kind::HangUp, rule.delay, {}, rule.hangUp->backAfter}};
    }
    std::vector<Action> actions;
    milliseconds at = rule.delay;
    if (rule.before) {
        actions.push_back(writing(std::string(*rule.before).append(lineEnd), at));
    }
    const std::optional<std::string>& line = rule.reply ? rule.reply : rightReply;
    if (line && !rule.silent) {
        bool first = true;
        for (std::string& piece : pieces(rule, replyBytes(rule, *line, lineEnd))) {
            at += first ? milliseconds(0) : rule.pause;
            actions.push_back(writing(std::move(piece), at));
            first = false;
        }
    }
    if (rule.after) {
        actions.push_back(writing(std::string(*rule.after).append(lineEnd), at));
    }
    return actions;
}

} // namespace

Verdict FaultRules::add(std::string_view text)
{
    FaultRule rule;
    Verdict verdict = parseFaultRule(text, rule);
    if (verdict) {
        m_rules.push_back({std::move(rule), 0});
    }
    return verdict;
}

Reaction FaultRules::react(std::string_view command, const std::optional<std::string>& reply, std::string_view lineEnd)
{
    if (const FaultRule* const rule = ruleFor(command)) {
        return {actionsOf(*rule, reply, lineEnd), rule->text};
    }
    if (!reply) {
        return {};
    }
    return {{writing(std::string(*reply).append(lineEnd), milliseconds(0))}, {}};
}

const FaultRule* FaultRules::ruleFor(std::string_view command)
{
    const FaultRule* decisive = nullptr;
    for (CountedRule& counted : m_rules) {
        if (!counted.rule.fits(command)) {
            continue;
        }
        ++counted.times;
        const bool due = counted.times >= counted.rule.firstTime && counted.times <= counted.rule.lastTime;
        if (due && decisive == nullptr) {
            decisive = &counted.rule;
        }
    }
    return decisive;
}

} // namespace simulator
