#include "cli/Commands.h"
#include "cli/Reader.h"
#include "cli/TableFiles.h"
#include "cli/Utf8.h"
#include "platform/DosNameSteps.h"
#include "text/HexText.h"

#include <nlohmann/json.hpp>

#include <optional>

namespace cli {

namespace {

namespace fs = std::filesystem;

struct Target
{
    Table table;
    fs::path file;
};

std::optional<Table> tableOfName(const fs::path& file)
{
    const std::string extension = platform::withLowerCase(file.extension().string());
    if (extension == extensionOf(Table::Configuration)) {
        return Table::Configuration;
    }
    return extension == extensionOf(Table::KeyboardLanguage) ? std::optional(Table::KeyboardLanguage) : std::nullopt;
}

void addTargets(const fs::path& file, const Arguments& arguments, std::vector<Target>& targets)
{
    const bool wantsOne = arguments.tables.configuration != arguments.tables.keyboardLanguage;
    if (arguments.areTablesGiven && wantsOne) {
        targets.push_back({arguments.tables.configuration ? Table::Configuration : Table::KeyboardLanguage, file});
    } else if (const auto table = tableOfName(file)) {
        targets.push_back({*table, file});
    } else if (arguments.areTablesGiven) {
        targets.push_back({Table::Configuration, file.string() + ".tlc"});
        targets.push_back({Table::KeyboardLanguage, file.string() + ".txt"});
    } else {
        throw Failure(
            Exit::Usage, "Which table goes into " + file.string() + "?",
            "A name that ends in .tlc means the Configuration table, one in .txt the Keyboard Language table; "
            "or say --table cfg, kb or all.");
    }
}

std::vector<Target> targetsOf(const Arguments& arguments)
{
    std::vector<Target> targets;
    for (const std::string& output : arguments.outputs) {
        addTargets(output, arguments, targets);
    }
    return targets;
}

Tables tablesOf(const std::vector<Target>& targets, const Arguments& arguments)
{
    if (targets.empty()) {
        return arguments.tables;
    }
    Tables tables{.configuration = false, .keyboardLanguage = false};
    for (const Target& target : targets) {
        (target.table == Table::Configuration ? tables.configuration : tables.keyboardLanguage) = true;
    }
    return tables;
}

void printTables(const Values& values, Tables wanted, Console& console)
{
    for (const Table table : {Table::Configuration, Table::KeyboardLanguage}) {
        if (!wanted.holds(table)) {
            continue;
        }
        for (const tables::ParamRow& row : tableOf(table, values).rows) {
            std::string line = row.address;
            line.resize(table == Table::Configuration ? 5 : 9, ' ');
            line += row.value;
            line.resize(table == Table::Configuration ? 9 : 16, ' ');
            console.print(line + toHarmlessUtf8(row.notes));
        }
    }
}

void writeFiles(const std::vector<Target>& targets, const Values& values, bool isDryRun, Console& console)
{
    for (const Target& target : targets) {
        if (!isDryRun) {
            writeTableFile(target.file, target.table, values);
        }
        console.note("The " + std::string(nameOf(target.table)) + " table " +
                     (isDryRun ? "would be kept in " : "is kept in ") + target.file.string());
    }
}

} // namespace

Exit retrieve(const Arguments& arguments, Console& console)
{
    const std::vector<Target> targets = targetsOf(arguments);
    const Tables tables = tablesOf(targets, arguments);
    Reader reader(arguments, console);
    reader.open();
    // Files only when all is there: half a table is none.
    const Values values = reader.read(tables);
    reader.close();
    if (targets.empty()) {
        printTables(values, tables, console);
    }
    writeFiles(targets, values, arguments.dryRun, console);

    Json json = document(arguments, Exit::Done);
    json["parameters"] = Json::array();
    for (const auto& [address, value] : values) {
        json["parameters"].push_back({{"address", address}, {"value", text::hexTwoDigits(value)}});
    }
    json["files"] = Json::array();
    for (const Target& target : targets) {
        json["files"].push_back({{"table", shortNameOf(target.table)}, {"file", target.file.string()}});
    }
    json["dry_run"] = arguments.dryRun;
    console.answer(json);
    return Exit::Done;
}

} // namespace cli
