#include "cli/Program.h"

#include "cli/Commands.h"
#include "cli/Ending.h"
#include "cli/Interruption.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string_view>

namespace cli {

namespace {

constexpr std::string_view kSchema = "teslin/1";

void report(const Ending& ending, const Arguments& arguments, Console& console)
{
    tell(ending, console);
    Json json = document(arguments, ending.exit);
    json["error"] = jsonOf(ending);
    console.answer(json);
}

Exit run(const Arguments& arguments, Console& console)
{
    switch (arguments.command) {
    case Command::Info:
        return info(arguments, console);
    case Command::Retrieve:
        return retrieve(arguments, console);
    case Command::Verify:
        return verify(arguments, console);
    case Command::Diff:
        return diff(arguments, console);
    case Command::Update:
        return update(arguments, console);
    case Command::Get:
        return get(arguments, console);
    case Command::Set:
        return set(arguments, console);
    case Command::Summary:
        return summary(arguments, console);
    case Command::Show:
        return show(arguments, console);
    case Command::TestRead:
        return testRead(arguments, console);
    case Command::Doctor:
        return doctor(arguments, console);
    case Command::Batch:
        return batch(arguments, console);
    }
    throw std::logic_error("no such command");
}

Exit runGuarded(const Arguments& arguments, Console& console)
{
    try {
        return run(arguments, console);
    } catch (...) {
        const Ending ending = endingOf(std::current_exception());
        report(ending, arguments, console);
        return ending.exit;
    }
}

bool asksForJson(int argc, const char* const* argv)
{
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--json") {
            return true;
        }
    }
    return false;
}

int endWithoutCommand(const ArgumentsEnd& end, bool isJson)
{
    if (end.isAnswer()) {
        std::fputs(end.what(), stdout);
        return static_cast<int>(Console::flush() ? Exit::Done : Exit::File);
    }
    Arguments arguments;
    arguments.json = isJson;
    Console console(arguments);
    report({Exit::Usage, "usage", end.what(), "Try \"teslin --help\"."}, arguments, console);
    static_cast<void>(Console::flush());
    return static_cast<int>(Exit::Usage);
}

} // namespace

Json document(const Arguments& arguments, Exit exit)
{
    return {{"schema", kSchema},
            {"command", arguments.commandName.empty() ? Json() : Json(arguments.commandName)},
            {"exit", static_cast<int>(exit)}};
}

int runProgram(int argc, const char* const* argv)
{
    Arguments arguments;
    try {
        arguments = parseArguments(argc, argv);
    } catch (const ArgumentsEnd& end) {
        return endWithoutCommand(end, asksForJson(argc, argv));
    }
    watchForInterruption();
    Console console(arguments);
    const Exit exit = runGuarded(arguments, console);
    console.endProgress();
    // An answer that did not get out is none.
    if (!Console::flush()) {
        console.complain("teslin: the answer could not be written");
        return static_cast<int>(exit == Exit::Done ? Exit::File : exit);
    }
    return static_cast<int>(exit);
}

} // namespace cli
