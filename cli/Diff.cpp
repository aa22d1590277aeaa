#include "cli/Commands.h"
#include "cli/Comparison.h"
#include "cli/Source.h"

#include <nlohmann/json.hpp>

namespace cli {

namespace {

// What both sides can be compared in: the table of a file, else what --table says.
Tables tablesOf(const Source& left, const Source& right, const Arguments& arguments)
{
    Tables tables = arguments.tables;
    for (const Source* const side : {&left, &right}) {
        if (side->file) {
            const bool isConfiguration = side->file->content.table == Table::Configuration;
            tables.configuration = tables.configuration && isConfiguration;
            tables.keyboardLanguage = tables.keyboardLanguage && !isConfiguration;
        }
    }
    if (!tables.configuration && !tables.keyboardLanguage) {
        throw Failure(Exit::Usage, "There is nothing to compare: " + arguments.words[0] + " and " + arguments.words[1] +
                                       " are of different tables");
    }
    return tables;
}

Values valuesOf(const Source& source, Tables tables, Reader& reader)
{
    switch (source.kind) {
    case Source::Kind::File:
        return source.file->content.values;
    case Source::Kind::Defaults:
        return factoryValues(tables);
    case Source::Kind::Reader:
        break;
    }
    reader.open();
    Values values = reader.read(tables);
    reader.close();
    return values;
}

} // namespace

Exit diff(const Arguments& arguments, Console& console)
{
    const Source left = sourceOf(arguments.words[0], arguments, console);
    const Source right = sourceOf(arguments.words[1], arguments, console);
    const Tables tables = tablesOf(left, right, arguments);
    Reader reader(arguments, console);
    const Values leftValues = valuesOf(left, tables, reader);
    const Values rightValues = valuesOf(right, tables, reader);
    const std::vector<Difference> differing = differences(leftValues, rightValues);
    const Exit exit = differing.empty() ? Exit::Done : Exit::Different;

    Json json = document(arguments, exit);
    json["left"] = arguments.words[0];
    json["right"] = arguments.words[1];
    json["differences"] = Json::array();
    for (const Difference& difference : differing) {
        print(difference, leftValues, rightValues, console);
        json["differences"].push_back(jsonOf(difference, leftValues, rightValues));
    }
    console.answer(json);
    return exit;
}

} // namespace cli
