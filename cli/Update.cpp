#include "cli/Commands.h"
#include "cli/Updating.h"
#include "text/HexText.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace cli {

namespace {

Exit exitOfUpdate(const Update& update, bool isDryRun)
{
    if (isDryRun) {
        return update.writing.parameters.empty() ? Exit::Done : Exit::Different;
    }
    return exitOf(update.writing);
}

std::string count(std::size_t number)
{
    return std::to_string(number) + (number == 1 ? " parameter" : " parameters");
}

void tellPlan(const Update& update, Console& console)
{
    for (const Written& parameter : update.writing.parameters) {
        console.print(parameter.address + ": " + text::hexTwoDigits(*parameter.before) + " would become " +
                      text::hexTwoDigits(parameter.wanted));
    }
    console.print(count(update.writing.parameters.size()) + " would be written");
}

void tellEnd(const Update& update, const Arguments& arguments, Console& console)
{
    const auto proven = static_cast<std::size_t>(
        std::ranges::count(update.writing.parameters, Written::State::Proven, &Written::state));
    if (update.writing.isProven()) {
        console.print(proven == 0 ? "The reader holds all of it already, nothing was written"
                                  : count(proven) + " written and proven");
        return;
    }
    tellFailures(update.writing, console);
    console.complain(std::to_string(proven) + " of " + count(update.writing.parameters.size()) + " written and proven");
    if (!update.backups.empty()) {
        console.complain("This puts back what the reader held before:\n    " + restoringCommand(update, arguments));
    }
    console.complain("Run the same command again to go on from what the reader holds now.");
}

} // namespace

Exit update(const Arguments& arguments, Console& console)
{
    const Wanted wanted = wantedOf(readFiles(arguments, console));
    Reader reader(arguments, console);
    reader.open();
    const Update update = updateReader(reader, wanted, arguments, console);
    reader.close();
    const Exit exit = exitOfUpdate(update, arguments.dryRun);
    if (arguments.dryRun) {
        tellPlan(update, console);
    } else {
        tellEnd(update, arguments, console);
    }
    Json json = document(arguments, exit);
    json["dry_run"] = arguments.dryRun;
    json["already_right"] = update.alreadyRight;
    json["parameters"] = jsonOf(update.writing);
    json["backups"] = Json::array();
    for (const std::filesystem::path& backup : update.backups) {
        json["backups"].push_back(backup.string());
    }
    json["restore"] = update.backups.empty() ? Json() : Json(restoringCommand(update, arguments));
    addCause(update.writing.cause, json);
    console.answer(json);
    return exit;
}

} // namespace cli
