#include "cli/Ending.h"

#include "device/LinkError.h"

#include <nlohmann/json.hpp>

namespace cli {

namespace {

std::string_view kindOf(Exit exit)
{
    switch (exit) {
    case Exit::Done:
    case Exit::Different:
        return "different";
    case Exit::Usage:
        return "usage";
    case Exit::NoPort:
        return "no-port";
    case Exit::NoReply:
        return "no-reply";
    case Exit::File:
        return "file";
    case Exit::Interrupted:
        return "interrupted";
    }
    return "different";
}

Ending endingOf(const device::LinkError& error)
{
    using Kind = device::LinkError::Kind;
    Ending ending{Exit::NoPort, {}, error.what(), error.remedy()};
    switch (error.kind()) {
    case Kind::NoDriver:
        ending.kind = "no-driver";
        break;
    case Kind::NoPort:
        ending.kind = "no-port";
        break;
    case Kind::PortInUse:
        ending.kind = "port-in-use";
        break;
    case Kind::PortLost:
        ending.kind = "port-lost";
        break;
    case Kind::NoReply:
        ending.exit = Exit::NoReply;
        ending.kind = "no-reply";
        break;
    case Kind::Interrupted:
        ending.exit = Exit::Interrupted;
        ending.kind = "interrupted";
        break;
    }
    return ending;
}

} // namespace

Ending endingOf(const std::exception_ptr& cause)
{
    if (!cause) {
        return {};
    }
    try {
        std::rethrow_exception(cause);
    } catch (const Failure& failure) {
        return {failure.exit(), kindOf(failure.exit()), failure.what(), failure.remedy()};
    } catch (const device::LinkError& error) {
        return endingOf(error);
    } catch (const std::exception& error) {
        return {Exit::File, "system", error.what(), {}};
    }
}

Json jsonOf(const Ending& ending)
{
    Json json = {{"kind", ending.kind}, {"message", ending.sentence}};
    if (!ending.remedy.empty()) {
        json["remedy"] = ending.remedy;
    }
    return json;
}

void tell(const Ending& ending, Console& console)
{
    console.complain("teslin: " + ending.sentence);
    if (!ending.remedy.empty()) {
        console.complain(ending.remedy);
    }
}

} // namespace cli
