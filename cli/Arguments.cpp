#include "cli/Arguments.h"

#include <CLI/CLI.hpp>

#include <array>
#include <map>
#include <sstream>
#include <string_view>

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
    std::string_view words; // what stands behind it; empty when nothing does
    int fewest;
    int most;
    const char* more; // of --help: what there is to know, and an example that works as it stands
};

constexpr int kAny = CLI::detail::expected_max_vector_size; // which --help shows as "..."

constexpr std::array kCommands = std::to_array<CommandText>({
    {Command::Info, "info", "Tells driver, firmware, identification and keyboard layout.", "", 0, 0,
     "Example:\n  teslin info"},
    {Command::Retrieve, "retrieve", "Reads the tables into files, or prints them.", "", 0, 0,
     "A file is written when all of its table has been read, and as the window saves it.\n\n"
     "Example:\n  teslin retrieve -o reader.tlc -o reader.txt"},
    {Command::Verify, "verify", "Compares the reader with files.", "FILE", 1, kAny,
     "Ends in 0 only when every parameter that the files hold is the same in the reader.\n\n"
     "Example:\n  teslin verify reader.tlc reader.txt"},
    {Command::Diff, "diff", "Compares two of: a file, \"reader\", \"defaults\".", "LEFT-RIGHT", 2, 2,
     "In hexadecimal digits and in the words of the report. Ends in 0 when nothing differs, in 1 when something "
     "does.\n\n"
     "Example:\n  teslin diff defaults reader"},
    {Command::Update, "update", "Writes what differs from files, and proves it.", "FILE", 1, kAny,
     "Reads the reader first and keeps what it held in backup files. Each parameter that is written is read back; ends "
     "in "
     "0 only when each was proven. Can be cut off and run again at any time.\n\n"
     "Example:\n  teslin update reader.tlc"},
    {Command::Get, "get", "Reads single parameters.", "ADDRESS", 1, kAny,
     "Addresses are three hexadecimal digits; values are printed as two.\n\nExample:\n  teslin get 013 01A"},
    {Command::Set, "set", "Writes single parameters and reads them back.", "ADDRESS=VALUE", 1, kAny,
     "Ends in 0 only when every parameter was read back as it was written.\n\nExample:\n  teslin set 013=95 01A=20"},
    {Command::Summary, "summary", "The report of a file, of \"reader\" or of \"defaults\".", "SOURCE", 1, 1,
     "Byte for byte as the window saves it; on a terminal in the terminal's characters.\n\n"
     "Example:\n  teslin summary reader --table cfg"},
    {Command::Show, "show", "Explains parameters: meaning, fields, factory value.", "ADDRESS", 0, kAny,
     "Without an address a list of all. Needs no reader.\n\nExample:\n  teslin show 013"},
    {Command::TestRead, "test-read", "Shows what the reader types for a card.", "", 0, 0,
     "On a terminal, which gets the reader's keystrokes. Ctrl+C ends and sets the reader back.\n\n"
     "Example:\n  teslin test-read"},
    {Command::Doctor, "doctor", "Looks for what keeps the reader from being found; touches nothing.", "", 0, 0,
     "Names, where they lead, rights, who holds the port, and what to do.\n\nExample:\n  teslin doctor"},
    {Command::Batch, "batch", "Sets up reader after reader from files.", "FILE", 1, kAny,
     "Waits for a reader, updates and proves it, logs a line and asks for the next. Ends in 0 only when every reader "
     "was "
     "proven.\n\nExample:\n  teslin batch --log readers.log reader.tlc"},
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

void addFileOptions(CLI::App& command, Arguments& into)
{
    command.add_flag("--lenient", into.lenient, "Take of doubtful files what the window would take, and tell what not");
}

void addWritingOptions(CLI::App& command, Arguments& into, Raw& raw)
{
    command.add_flag("--all", into.all, "Write every parameter of the files, not only what differs");
    command.add_flag("--no-backup", into.noBackup, "Keep no backup of what the reader held");
    command.add_option("--backup-dir", raw.backupFolder, "Folder of the backup files (the current one)")
        ->option_text("DIR");
}

void addOwnOptions(CLI::App& command, const CommandText& text, Arguments& into, Raw& raw)
{
    if (!text.words.empty()) {
        command.add_option(std::string(text.words), into.words)
            ->expected(text.fewest, text.most)
            ->required(text.fewest > 0)
            ->option_text(" ");
    }
    switch (text.command) {
    case Command::Retrieve:
    case Command::Summary:
        command.add_option("-o,--output", into.outputs, "File to write into")
            ->option_text("FILE")
            ->expected(1)
            ->take_all();
        break;
    case Command::Verify:
        command.add_flag("--writable", into.writableOnly, "Leave out what no update can write");
        break;
    case Command::Update:
        addWritingOptions(command, into, raw);
        break;
    case Command::Batch:
        addWritingOptions(command, into, raw);
        command.add_option("--log", raw.log, "File to append a line to for each reader")->option_text("FILE");
        command.add_option("--count", into.count, "End after so many readers, without asking")
            ->check(CLI::Range(1, kAny))
            ->option_text("N");
        break;
    case Command::Get:
    case Command::Set:
        command.add_flag("--force", into.force, "Also addresses and values that the reader is not known to have");
        break;
    default:
        break;
    }
    if (text.words == "FILE" || text.command == Command::Diff || text.command == Command::Summary) {
        addFileOptions(command, into);
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
