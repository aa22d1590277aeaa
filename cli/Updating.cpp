#include "cli/Updating.h"

#include "cli/LocalTime.h"
#include "text/HexText.h"

#include <array>
#include <map>
#include <string_view>
#include <system_error>

namespace cli {

namespace {

namespace fs = std::filesystem;

constexpr std::array kTables = {Table::Configuration, Table::KeyboardLanguage};

Values differing(const Values& wanted, const Values& before)
{
    Values changes;
    for (const auto& [address, value] : wanted) {
        if (before.at(address) != value) {
            changes.emplace(address, value);
        }
    }
    return changes;
}

// A name that no file has.
fs::path freeName(const fs::path& folder, const std::string& name, std::string_view extension)
{
    fs::path file = folder / (name + std::string(extension));
    std::error_code unknown;
    for (int number = 2; fs::exists(fs::symlink_status(file, unknown)); ++number) {
        file = folder / (name + "-" + std::to_string(number) + std::string(extension));
    }
    return file;
}

std::vector<fs::path> keepBackup(const Values& values, Tables tables, const fs::path& folder)
{
    std::vector<fs::path> backups;
    const std::string name = "teslin-backup-" + timeStamp();
    for (const Table table : kTables) {
        if (tables.holds(table)) {
            backups.push_back(freeName(folder, name, extensionOf(table)));
            writeTableFile(backups.back(), table, values);
        }
    }
    return backups;
}

// A word of a command line that a shell takes as it is.
std::string shellWord(const std::string& word)
{
    const bool isPlain = !word.empty() && word.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                                                 "0123456789-_./:@%+=,") == std::string::npos;
    if (isPlain) {
        return word;
    }
    std::string quoted = "'";
    for (const char c : word) {
        quoted += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return quoted + "'";
}

Writing planned(const Values& changes, const Values& before)
{
    Writing writing;
    for (const auto& [address, value] : changes) {
        writing.parameters.push_back(
            {.address = address, .wanted = value, .before = before.at(address), .found = {}, .state = {}});
        writing.parameters.back().state = Written::State::NotWritten;
    }
    return writing;
}

} // namespace

std::vector<NamedTable> readFiles(const Arguments& arguments, Console& console)
{
    const FileReading reading{.isLenient = arguments.lenient,
                              .isTableGiven = arguments.areTablesGiven &&
                                              arguments.tables.configuration != arguments.tables.keyboardLanguage,
                              .table = arguments.tables.configuration ? Table::Configuration : Table::KeyboardLanguage};
    std::vector<NamedTable> files;
    for (const std::string& word : arguments.words) {
        files.push_back(readTableFile(word, reading));
        for (const Doubt& doubt : files.back().content.doubts) {
            console.complain(std::string(doubt.isLeftOut ? "Left out: " : "Read all the same: ") +
                             doubtText(files.back().file, doubt));
        }
    }
    return files;
}

Wanted wantedOf(const std::vector<NamedTable>& files)
{
    Wanted wanted;
    std::map<std::string, const NamedTable*> source;
    for (const NamedTable& file : files) {
        (file.content.table == Table::Configuration ? wanted.tables.configuration : wanted.tables.keyboardLanguage) =
            true;
        for (const auto& [address, value] : file.content.values) {
            if (findParameter(address)->isReadOnly) {
                continue;
            }
            const auto [known, isNew] = wanted.values.emplace(address, value);
            if (!isNew && known->second != value) {
                throw Failure(Exit::File, address + " is " + text::hexTwoDigits(known->second) + " in " +
                                              source[address]->file.string() + " and " + text::hexTwoDigits(value) +
                                              " in " + file.file.string());
            }
            source[address] = &file;
        }
    }
    return wanted;
}

Update updateReader(Reader& reader, const Wanted& wanted, const Arguments& arguments, Console& console)
{
    Update update;
    update.before = reader.read(wanted.tables);
    const Values changes = differing(wanted.values, update.before);
    update.alreadyRight = wanted.values.size() - changes.size();
    const Values& toWrite = arguments.all ? wanted.values : changes;
    if (arguments.dryRun) {
        update.writing = planned(toWrite, update.before);
        return update;
    }
    if (!toWrite.empty() && !arguments.noBackup) {
        update.backups = keepBackup(update.before, wanted.tables, arguments.backupFolder);
        for (const fs::path& backup : update.backups) {
            console.note("What the reader held is kept in " + backup.string());
        }
    }
    update.writing = writeWithProof(reader, toWrite, update.before, console);
    return update;
}

std::string restoringCommand(const Update& update, const Arguments& arguments)
{
    std::string command = "teslin update";
    if (arguments.port != 0) {
        command += " --port " + std::to_string(arguments.port);
    }
    if (arguments.driverName != Arguments().driverName) {
        command += " --name " + shellWord(arguments.driverName);
    }
    if (!arguments.dosDevices.empty()) {
        command += " --dosdevices " + shellWord(arguments.dosDevices.string());
    }
    for (const fs::path& backup : update.backups) {
        command += " " + shellWord(backup.string());
    }
    return command;
}

} // namespace cli
