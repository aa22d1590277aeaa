#include "simulator/FaultRule.h"

#include "simulator/EscapedText.h"
#include "simulator/FaultText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

namespace simulator {

namespace {

constexpr int kLongestTime = 600'000; // milliseconds; a longer one is a slip of the hand
constexpr int kLongestLine = 100'000; // characters
constexpr int kMostTimes = 1'000'000;

Verdict noValue(const FaultText& fault)
{
    return fault.value ? Verdict{fault.quotedName() + " takes no value"} : Verdict{};
}

Verdict readNumber(const FaultText& fault, int lowest, int highest, int& number)
{
    const std::string& text = fault.value.value_or("");
    int read = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
    if (error != std::errc{} || end != text.data() + text.size() || read < lowest || read > highest) {
        return {fault.quotedName() + " wants a number from " + std::to_string(lowest) + " to " +
                std::to_string(highest)};
    }
    number = read;
    return {};
}

Verdict readTime(const FaultText& fault, std::chrono::milliseconds& time)
{
    int number = 0;
    Verdict verdict = readNumber(fault, 0, kLongestTime, number);
    if (verdict) {
        time = std::chrono::milliseconds(number);
    }
    return verdict;
}

Verdict readLength(const FaultText& fault, std::optional<std::size_t>& length)
{
    int number = 0;
    Verdict verdict = readNumber(fault, 0, kLongestLine, number);
    if (verdict) {
        length = static_cast<std::size_t>(number);
    }
    return verdict;
}

Verdict readText(const FaultText& fault, std::optional<std::string>& text)
{
    if (!fault.value) {
        return {fault.quotedName() + " wants a text, as in " + fault.name + "=\"a text\""};
    }
    text = fault.value;
    return {};
}

// "5,27" or "every".
Verdict readSplit(const FaultText& fault, FaultRule& rule)
{
    const auto refusal = [] { return Verdict{"'split' wants rising byte counts, as in split=5,27, or split=every"}; };
    std::string_view rest = fault.value ? std::string_view(*fault.value) : std::string_view();
    if (rest == "every") {
        rule.splitEverywhere = true;
        return {};
    }
    while (true) {
        const std::string_view count = rest.substr(0, rest.find(','));
        int number = 0;
        if (!readNumber({fault.name, std::string(count)}, 1, kLongestLine, number)) {
            return refusal();
        }
        const auto point = static_cast<std::size_t>(number);
        if (!rule.splitAfter.empty() && point <= rule.splitAfter.back()) {
            return refusal();
        }
        rule.splitAfter.push_back(point);
        if (count.size() == rest.size()) {
            return {};
        }
        rest.remove_prefix(count.size() + 1);
    }
}

// "2", "2-4" or "2-".
Verdict readOccasion(const FaultText& fault, FaultRule& rule)
{
    const auto refusal = [] { return Verdict{"'on' wants a count from 1 or a span, as in on=2, on=2-4 or on=2-"}; };
    const std::string text = fault.value.value_or("");
    const std::size_t hyphen = text.find('-');
    if (!readNumber({fault.name, text.substr(0, hyphen)}, 1, kMostTimes, rule.firstTime)) {
        return refusal();
    }
    if (hyphen == std::string::npos) {
        rule.lastTime = rule.firstTime;
        return {};
    }
    const std::string last = text.substr(hyphen + 1);
    if (!last.empty() && !readNumber({fault.name, last}, rule.firstTime, kMostTimes, rule.lastTime)) {
        return refusal();
    }
    return {};
}

Verdict readHangUp(const FaultText& fault, FaultRule& rule)
{
    std::chrono::milliseconds backAfter{0};
    if (fault.value == "for-good") {
        rule.hangUp = FaultRule::HangUp{std::nullopt};
        return {};
    }
    if (fault.value && !readTime(fault, backAfter)) {
        return {"'hang-up' wants the milliseconds until the door is back, or for-good"};
    }
    rule.hangUp = FaultRule::HangUp{backAfter};
    return {};
}

struct FaultReader
{
    FaultWord word;
    Verdict (*read)(const FaultText&, FaultRule&) = nullptr;

    [[nodiscard]] std::string_view name() const { return word.form.substr(0, word.form.find_first_of("=[")); }
};

constexpr std::size_t kWords = 16;

constexpr std::array<FaultReader, kWords> kReaders = {{
    {{"silent", "no reply at all"},
     [](const FaultText& f, FaultRule& r) {
         r.silent = true;
         return noValue(f);
     }},
    {{"reply=TEXT", "this line in place of the reply, even where there would be none"},
     [](const FaultText& f, FaultRule& r) { return readText(f, r.reply); }},
    {{"value=TEXT", "a wrong value: the reply carries TEXT in place of its own"},
     [](const FaultText& f, FaultRule& r) { return readText(f, r.value); }},
    {{"garbled", "the top bit of every character of the reply is set"},
     [](const FaultText& f, FaultRule& r) {
         r.garbled = true;
         return noValue(f);
     }},
    {{"cut=N", "only the first N characters of the line, and the line end"},
     [](const FaultText& f, FaultRule& r) { return readLength(f, r.cut); }},
    {{"pad=N", "the line filled up with dots to N characters, and the line end"},
     [](const FaultText& f, FaultRule& r) { return readLength(f, r.pad); }},
    {{"end=TEXT", "these bytes as the line end; end=\"\" leaves the line unfinished"},
     [](const FaultText& f, FaultRule& r) { return readText(f, r.end); }},
    {{"twice", "the reply two times in one write"},
     [](const FaultText& f, FaultRule& r) {
         r.twice = true;
         return noValue(f);
     }},
    {{"with=TEXT", "a second line behind the reply, in the same write"},
     [](const FaultText& f, FaultRule& r) { return readText(f, r.with); }},
    {{"before=TEXT", "an unsolicited line before the reply, in a write of its own"},
     [](const FaultText& f, FaultRule& r) { return readText(f, r.before); }},
    {{"after=TEXT", "an unsolicited line after the reply, in a write of its own"},
     [](const FaultText& f, FaultRule& r) { return readText(f, r.after); }},
    {{"split=N,...", "several writes, parted after these byte counts; split=every: at every byte"},
     [](const FaultText& f, FaultRule& r) { return readSplit(f, r); }},
    {{"pause=MS", "milliseconds between the writes of a split reply; 1 if not given"},
     [](const FaultText& f, FaultRule& r) { return readTime(f, r.pause); }},
    {{"delay=MS", "everything so many milliseconds late"},
     [](const FaultText& f, FaultRule& r) { return readTime(f, r.delay); }},
    {{"hang-up[=MS]", "no reply, the line goes dead; back after MS (0 if not given) or, with\n"
                      "hang-up=for-good, never"},
     [](const FaultText& f, FaultRule& r) { return readHangUp(f, r); }},
    {{"on=N", "only the N-th command that fits the rule; on=N-M a span, on=N- from then on"},
     [](const FaultText& f, FaultRule& r) { return readOccasion(f, r); }},
}};

constexpr std::array<std::string_view, 12> kNotWithSilent = {"reply", "value", "garbled", "cut",   "pad",   "end",
                                                             "twice", "with",  "split",   "pause", "delay", "hang-up"};
constexpr std::array<std::string_view, 12> kNotWithHangUp = {"reply", "value", "garbled", "cut",   "pad",   "end",
                                                             "twice", "with",  "before",  "after", "split", "pause"};
constexpr std::array<std::string_view, 1> kNotWithReply = {"value"};
constexpr std::array<std::string_view, 1> kNotWithCut = {"pad"};

struct Conflict
{
    std::string_view fault;
    std::span<const std::string_view> others;
};

// Pairs of which one would take away what the other works on.
constexpr std::array<Conflict, 4> kConflicts = {{
    {"silent", kNotWithSilent},
    {"hang-up", kNotWithHangUp},
    {"reply", kNotWithReply},
    {"cut", kNotWithCut},
}};

bool stands(const std::vector<FaultText>& faults, std::string_view name)
{
    return std::ranges::any_of(faults, [name](const FaultText& fault) { return fault.name == name; });
}

// Faults that can each be read but make no sense together, or none with this command.
Verdict checkWhole(const std::vector<FaultText>& faults, const FaultRule& rule)
{
    for (const Conflict& conflict : kConflicts) {
        for (const std::string_view other : conflict.others) {
            if (stands(faults, conflict.fault) && stands(faults, other)) {
                return {inMarks(conflict.fault) + " and " + inMarks(other) + " exclude each other"};
            }
        }
    }
    if (stands(faults, "pause") && !stands(faults, "split")) {
        return {"'pause' has no effect without 'split'"};
    }
    if (stands(faults, "on") && faults.size() == 1) {
        return {"'on' says only when; a fault is missing"};
    }
    if (rule.value && rule.command.starts_with("/rawsend")) {
        return {"'value' has no effect: a reply to /rawsend carries none"};
    }
    return {};
}

Verdict readFault(const FaultText& fault, FaultRule& rule)
{
    const auto* const reader = std::ranges::find(kReaders, std::string_view(fault.name), &FaultReader::name);
    return reader == kReaders.end() ? Verdict{"unknown fault " + fault.quotedName()} : reader->read(fault, rule);
}

} // namespace

bool FaultRule::fits(std::string_view wireCommand) const
{
    // The usual walk with one point of return: the last star, and how much of the command it has swallowed.
    const std::string_view pattern = command;
    std::size_t at = 0;
    std::size_t star = std::string_view::npos;
    std::size_t swallowed = 0;
    for (std::size_t i = 0; i < wireCommand.size();) {
        if (at < pattern.size() && pattern[at] == '*') {
            star = at++;
            swallowed = i;
        } else if (at < pattern.size() && pattern[at] == wireCommand[i]) {
            ++at;
            ++i;
        } else if (star != std::string_view::npos) {
            at = star + 1;
            i = ++swallowed;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', at) == std::string_view::npos;
}

std::span<const FaultWord> faultWords()
{
    static const auto words = [] {
        std::array<FaultWord, kWords> list;
        std::ranges::transform(kReaders, list.begin(), &FaultReader::word);
        return list;
    }();
    return words;
}

Verdict parseFaultRule(std::string_view text, FaultRule& rule)
{
    FaultRule read;
    read.text = text;
    std::vector<FaultText> faults;
    if (Verdict verdict = splitFaultRule(text, read.command, faults); !verdict) {
        return verdict;
    }
    for (std::size_t i = 0; i < faults.size(); ++i) {
        if (stands({faults.begin(), faults.begin() + static_cast<std::ptrdiff_t>(i)}, faults[i].name)) {
            return {faults[i].quotedName() + " is given twice"};
        }
        if (Verdict verdict = readFault(faults[i], read); !verdict) {
            return verdict;
        }
    }
    if (Verdict verdict = checkWhole(faults, read); !verdict) {
        return verdict;
    }
    rule = std::move(read);
    return {};
}

} // namespace simulator
