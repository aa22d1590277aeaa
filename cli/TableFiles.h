#pragma once

#include "cli/Parameters.h"
#include "files/TableFile.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// Table files as the command line takes them. The window reads whatever a file holds and drops in silence what does not
// fit; who sets up a reader without looking must be told.
namespace cli {

// A line that a file of the program does not have.
struct Doubt
{
    int line = 0; // counted from 1; 0: of the file as a whole
    std::string reason;
    bool isLeftOut = true; // no parameter is taken from it, or not all that it holds
};

struct TableContent
{
    Table table = Table::Configuration;
    files::TableFile rows; // as the window reads the file
    Values values;         // of the parameters that the reader has
    std::vector<Doubt> doubts;
};

// Reads the bytes of a file as one of a table. Never fails: what is wrong stands in the doubts.
[[nodiscard]] TableContent readTable(Table table, std::string_view bytes);

struct NamedTable
{
    std::filesystem::path file;
    TableContent content;
};

struct FileReading
{
    bool isLenient = false; // take what the window would take
    bool isTableGiven = false;
    Table table = Table::Configuration; // for files whose names do not tell
};

// Reads a file. ".tlc" is a Configuration table; any other name one of the table that was given, or else of the one its
// first line tells. Throws Failure for a file that cannot be read and, unless lenient, for one with doubts.
[[nodiscard]] NamedTable readTableFile(const std::filesystem::path& file, const FileReading& reading);

// A doubt as one line: "FILE, line 3: reason".
[[nodiscard]] std::string doubtText(const std::filesystem::path& file, const Doubt& doubt);

// The table with these values, in the default rows, as the window shows and saves it after a Retrieve. All values of
// the table must be there.
[[nodiscard]] files::TableFile tableOf(Table table, const Values& values);

// The bytes of a file, the same that the window saves.
[[nodiscard]] std::string fileBytes(Table table, const files::TableFile& rows);

// Writes the file whole or not at all. Throws Failure.
void writeTableFile(const std::filesystem::path& file, Table table, const Values& values);

[[nodiscard]] std::string_view extensionOf(Table table); // ".tlc", ".txt"

} // namespace cli
