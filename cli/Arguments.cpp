#include "cli/Arguments.h"

#include <CLI/CLI.hpp>

#include <array>
#include <map>
#include <sstream>

namespace cli {

namespace {

constexpr int kHighestPort = 256;
constexpr int kShortestTimeout = 10;
constexpr int kLongestTimeout = 60'000;

const std::map<std::string, When> kWhens = {{"auto", When::Auto}, {"always", When::Always}, {"never", When::Never}};

struct CommandText
{
    Command command;
    const char* name;
    const char* meaning;
    const char* words; // what stands behind it; null when nothing does
    int fewest;
    int most;
    const char* more; // of --help: what there is to know, and an example that works as it stands
};

constexpr int kAny = 100'000;

constexpr std::array kCommands = std::to_array<CommandText>({
    {Command::Info, "info", "Tells driver, firmware, identification and keyboard layout.", nullptr, 0, 0,
     "Example:\n  teslin info"},
    {Command::Get, "get", "Reads single parameters.", "ADDRESS", 1, kAny,
     "Addresses are three hexadecimal digits; values are printed as two.\n\nExample:\n  teslin get 013 01A"},
    {Command::Set, "set", "Writes single parameters and reads them back.", "ADDRESS=VALUE", 1, kAny,
     "Ends in 0 only when every parameter was read back as it was written.\n\nExample:\n  teslin set 013=95 01A=20"},
});

const CommandText& textOf(const std::string& name)
{
    for (const CommandText& text : kCommands) {
        if (name == text.name) {
            return text;
        }
    }
    throw std::logic_error("no such command");
}

// What CLI11 fills in before it is checked and taken over.
struct Raw
{
    std::string table;
    std::string dosDevices;
    std::string backupFolder;
    std::string log;
};

void addCommonOptions(CLI::App& app, Arguments& into, Raw& raw)
{
    const std::string group = "Options of all commands";
    app.add_option("--table", raw.table, "Which table: cfg, kb or all")->option_text("cfg|kb|all")->group(group);
    app.add_option("--port", into.port, "Number of the COM port; the driver is not asked")
        ->check(CLI::Range(1, kHighestPort))
        ->option_text("N")
        ->group(group);
    app.add_option("--name", into.driverName, "Name of the driver's device object (Teslin)")
        ->option_text("NAME")
        ->group(group);
    app.add_option("--dosdevices", raw.dosDevices, "Folder of DOS names ($TESLIN_DOSDEVICES or ~/.teslin/dosdevices)")
        ->option_text("DIR")
        ->group(group);
    app.add_option("--timeout", into.timeoutMilliseconds, "Milliseconds to wait for a reply, asked three times (500)")
        ->check(CLI::Range(kShortestTimeout, kLongestTimeout))
        ->option_text("MS")
        ->group(group);
    app.add_flag("--json", into.json, "Answers, and errors, as one JSON document")->group(group);
    app.add_flag("--dry-run", into.dryRun, "Reads and compares, but writes nothing, neither reader nor file")
        ->group(group);
    app.add_flag("--quiet,-q", into.quiet, "Tells nothing but the answer and what is wrong")->group(group);
    app.add_flag("--verbose,-v", into.verbose, "Tells each step")->group(group);
    app.add_option("--progress", into.progress, "A bar on standard error; auto: on a terminal")
        ->transform(CLI::CheckedTransformer(kWhens))
        ->option_text("auto|always|never")
        ->group(group);
    app.add_option("--color", into.color, "Colours in differences; auto: on a terminal and without NO_COLOR")
        ->transform(CLI::CheckedTransformer(kWhens))
        ->option_text("auto|always|never")
        ->group(group);
}

void addOwnOptions(CLI::App& command, const CommandText& text, Arguments& into, [[maybe_unused]] Raw& raw)
{
    if (text.words != nullptr) {
        command.add_option(text.words, into.words)
            ->expected(text.fewest, text.most)
            ->required(text.fewest > 0)
            ->option_text(" ");
    }
    if (text.command == Command::Set) {
        command.add_flag("--force", into.force, "Also addresses and values that the reader is not known to have");
    }
}

void takeTables(const Raw& raw, Arguments& into)
{
    if (raw.table.empty()) {
        return;
    }
    if (raw.table != "cfg" && raw.table != "kb" && raw.table != "all") {
        throw ArgumentsEnd("--table: " + raw.table + " is none of cfg, kb and all", false);
    }
    into.areTablesGiven = true;
    into.tables.configuration = raw.table != "kb";
    into.tables.keyboardLanguage = raw.table != "cfg";
}

} // namespace

Arguments parseArguments(int argc, const char* const* argv)
{
    Arguments arguments;
    Raw raw;
    CLI::App app("Configures a Teslin card reader from the command line.", "teslin");
    app.set_version_flag("--version", "teslin " TESLIN_VERSION);
    app.require_subcommand(1);
    app.fallthrough();
    app.footer("\"teslin COMMAND --help\" tells more of a command, with an example.\n\n"
               "Exit status: 0 done and proven, 1 differences or a failed proof, 2 wrong usage,\n"
               "3 no driver or port, 4 no reply, 5 a file, 130 interrupted.");
    addCommonOptions(app, arguments, raw);
    for (const CommandText& text : kCommands) {
        CLI::App* const command = app.add_subcommand(text.name, text.meaning);
        command->fallthrough();
        command->footer(text.more);
        addOwnOptions(*command, text, arguments, raw);
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& end) {
        std::ostringstream answer;
        std::ostringstream ignored;
        if (end.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            app.exit(end, answer, ignored);
            throw ArgumentsEnd(answer.str(), true);
        }
        throw ArgumentsEnd(end.what(), false);
    }
    const CommandText& chosen = textOf(app.get_subcommands().front()->get_name());
    arguments.command = chosen.command;
    arguments.commandName = chosen.name;
    takeTables(raw, arguments);
    arguments.dosDevices = raw.dosDevices;
    arguments.backupFolder = raw.backupFolder;
    arguments.log = raw.log;
    return arguments;
}

} // namespace cli
