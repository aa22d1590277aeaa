#include "cli/Writing.h"

#include "cli/Ending.h"
#include "text/HexText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string_view>

namespace cli {

namespace {

using State = Written::State;

std::string_view nameOf(State state)
{
    switch (state) {
    case State::Proven:
        return "proven";
    case State::Wrong:
        return "wrong";
    case State::Unknown:
        return "unknown";
    case State::NotWritten:
        break;
    }
    return "not-written";
}

std::string foundText(const Written& parameter)
{
    switch (parameter.state) {
    case State::Proven:
    case State::Wrong:
        return "found " + text::hexTwoDigits(*parameter.found);
    case State::Unknown:
        return "found unknown (sent, not read back)";
    case State::NotWritten:
        break;
    }
    return "not written" + (parameter.before ? ", still " + text::hexTwoDigits(*parameter.before) : std::string());
}

Json hexOrNull(const std::optional<std::uint8_t>& value)
{
    return value ? Json(text::hexTwoDigits(*value)) : Json();
}

void writeOne(device::DirectLink& link, Written& parameter)
{
    parameter.state = State::Unknown;
    link.writeParameter(parameter.address, parameter.wanted);
    parameter.found = link.readParameter(parameter.address);
    parameter.state = parameter.found == parameter.wanted ? State::Proven : State::Wrong;
}

} // namespace

bool Writing::isProven() const
{
    return !cause && std::ranges::all_of(parameters, [](const Written& p) { return p.state == State::Proven; });
}

Writing writeWithProof(Reader& reader, const Values& wanted, const Values& before, Console& console)
{
    Writing writing;
    for (const auto& [address, value] : wanted) {
        Written& parameter = writing.parameters.emplace_back();
        parameter.address = address;
        parameter.wanted = value;
        if (const auto known = before.find(address); known != before.end()) {
            parameter.before = known->second;
        }
    }
    std::size_t done = 0;
    try {
        for (Written& parameter : writing.parameters) {
            console.progress("Writing", done++, writing.parameters.size());
            writeOne(reader.link(), parameter);
            console.detail(parameter.address + "=" + text::hexTwoDigits(parameter.wanted) + " written, " +
                           foundText(parameter));
        }
    } catch (const device::LinkError&) {
        writing.cause = std::current_exception();
    }
    console.endProgress();
    return writing;
}

Exit exitOf(const Writing& writing)
{
    if (writing.cause) {
        return endingOf(writing.cause).exit;
    }
    return writing.isProven() ? Exit::Done : Exit::Different;
}

void tellFailures(const Writing& writing, Console& console)
{
    if (writing.cause) {
        tell(endingOf(writing.cause), console);
    }
    for (const Written& parameter : writing.parameters) {
        if (parameter.state != State::Proven) {
            console.complain(parameter.address + ": wanted " + text::hexTwoDigits(parameter.wanted) + ", " +
                             foundText(parameter));
        }
    }
}

Json jsonOf(const Writing& writing)
{
    Json list = Json::array();
    for (const Written& parameter : writing.parameters) {
        list.push_back({{"address", parameter.address},
                        {"before", hexOrNull(parameter.before)},
                        {"wanted", text::hexTwoDigits(parameter.wanted)},
                        {"found", hexOrNull(parameter.found)},
                        {"state", nameOf(parameter.state)}});
    }
    return list;
}

void addCause(const std::exception_ptr& cause, Json& document)
{
    if (cause) {
        document["error"] = jsonOf(endingOf(cause));
    }
}

} // namespace cli
