#include "cli/Commands.h"
#include "cli/Comparison.h"
#include "cli/Updating.h"

#include <nlohmann/json.hpp>

namespace cli {

namespace {

// The parameters of the reader that a file holds.
Values only(const Values& values, const Values& wanted)
{
    Values selected;
    for (const auto& [address, value] : wanted) {
        selected.emplace(address, values.at(address));
    }
    return selected;
}

void dropReadOnly(Values& values)
{
    std::erase_if(values, [](const auto& entry) { return findParameter(entry.first)->isReadOnly; });
}

} // namespace

Exit verify(const Arguments& arguments, Console& console)
{
    std::vector<NamedTable> files = readFiles(arguments, console);
    Tables tables{.configuration = false, .keyboardLanguage = false};
    for (NamedTable& file : files) {
        (file.content.table == Table::Configuration ? tables.configuration : tables.keyboardLanguage) = true;
        if (arguments.writableOnly) {
            dropReadOnly(file.content.values);
        }
    }
    Reader reader(arguments, console);
    reader.open();
    const Values held = reader.read(tables);
    reader.close();

    Json list = Json::array();
    std::size_t total = 0;
    for (const NamedTable& file : files) {
        const Values& wanted = file.content.values;
        const Values found = only(held, wanted);
        const std::vector<Difference> differing = differences(wanted, found);
        console.print(file.file.string() + ": " +
                      (differing.empty() ? std::to_string(wanted.size()) + " parameters, all as in the reader"
                                         : std::to_string(differing.size()) + " of " + std::to_string(wanted.size()) +
                                               " parameters are not as in the reader (file | reader)"));
        Json entry = {{"file", file.file.string()},
                      {"table", shortNameOf(file.content.table)},
                      {"compared", wanted.size()},
                      {"differences", Json::array()}};
        for (const Difference& difference : differing) {
            print(difference, wanted, found, console);
            entry["differences"].push_back(jsonOf(difference, wanted, found));
        }
        list.push_back(std::move(entry));
        total += differing.size();
    }
    const Exit exit = total == 0 ? Exit::Done : Exit::Different;
    Json json = document(arguments, exit);
    json["files"] = std::move(list);
    console.answer(json);
    return exit;
}

} // namespace cli
